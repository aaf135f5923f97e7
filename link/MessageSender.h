// Brings the screen's messages to the instrument, one at a time and each once.
#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "link/LinkTime.h"
#include "link/Payloads.h"

/// What a message image asks for, as far as the link must know.
enum class ImageKind : std::uint8_t { Other, Start, Stop };

/// Numbers the images, sends one again that is not answered, and gives up.
///
/// Threads: one at a time.
class CMessageSender {
  public:
    static constexpr std::size_t MAX_WAITING = 8;  ///< behind the one on its way
    static constexpr int MAX_SENDINGS = 3;
    static constexpr LinkTime ANSWER_TIME = std::chrono::seconds(1);

    /// What an answer was to.
    struct Answered {
        ImageKind m_kind{};
        bool m_bSentAgain = false;
    };

    /// Forgets all messages; numbers begin anew.
    void Restart();

    /// @return false, and nothing taken, when too many wait
    bool Add(std::string_view image, ImageKind kind);

    /// The payload of a MESSAGE to be sent at this time, the next one or one to be repeated.
    std::optional<PayloadBytes> TakeDue(LinkTime now);

    /// The last sending was not answered in time.
    bool HasFailed(LinkTime now) const;

    /// @return nothing when the answer is to no message that is on its way
    std::optional<Answered> OnAck(std::uint32_t nNumber);

    bool IsIdle() const { return m_waiting.empty() && m_nSendings == 0; }

  private:
    struct Image {
        std::string m_bytes;
        ImageKind m_kind;
    };

    std::deque<Image> m_waiting;
    Image m_sent{};  ///< on its way, when m_nSendings is not 0
    int m_nSendings = 0;
    std::uint32_t m_nNumber = 0;  ///< of the one on its way, or of the last
    LinkTime m_sentAt{0};
};
