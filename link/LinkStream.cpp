#include "link/LinkStream.h"

#include <array>
#include <asio/buffer.hpp>
#include <asio/posix/stream_descriptor.hpp>
#include <asio/ssl/error.hpp>
#include <asio/steady_timer.hpp>
#include <asio/write.hpp>
#include <cctype>
#include <optional>
#include <type_traits>
#include <utility>

#include "platform/system/SerialDevice.h"

namespace {

using Tcp = asio::ip::tcp::socket;
using Line = asio::posix::stream_descriptor;

constexpr const char* DEVICE_GONE = "the device is gone";
/// How often a closing line is asked whether its last bytes have left.
constexpr std::chrono::milliseconds DRAIN_LOOK{10};

void CloseSocket(Tcp& socket) {
    asio::error_code ignored;  // there is nothing left to be done about it
    socket.close(ignored);
}

void CloseSocket(TlsSocket& socket) { CloseSocket(socket.next_layer()); }

void CloseSocket(Line& line) {
    if (line.is_open()) ReleaseSerialDevice(line.native_handle());
    asio::error_code ignored;
    line.close(ignored);
}

template <class Socket>
class CStreamOn final : public CLinkStream, public std::enable_shared_from_this<CStreamOn<Socket>> {
  public:
    explicit CStreamOn(Socket socket)
        : m_socket(std::move(socket)), m_timer(m_socket.get_executor()) {}
    ~CStreamOn() override { CloseSocket(m_socket); }

    void Start(StreamEvents events) override {
        m_events = std::move(events);
        Read();
    }

    void SetReading(bool bReading) override {
        m_bWanted = bReading;
        Read();
    }

    void Send(CFrameQueue& queue) override {
        if (m_bWriting || m_state != State::Open) return;
        Append(queue.Take(PIECE));
        if (!m_out.empty()) Write();
    }

    void Close(const std::vector<OutFrame>& lastFrames) override {
        if (m_state != State::Open) return;
        m_state = State::Closing;
        m_lastFrames = lastFrames;
        m_timer.expires_after(CLOSE_TIME);
        m_timer.async_wait([sp = this->shared_from_this()](const asio::error_code& error) {
            if (!error) sp->Finish();
        });
        if (!m_bWriting) WriteLast();
        Read();
    }

    void Abandon() override { Finish(); }

  private:
    enum class State : std::uint8_t { Open, Closing, Gone };

    void Append(const std::vector<OutFrame>& frames) {
        for (const OutFrame& frame : frames) frame.AppendTo(m_out);
    }

    void Read() {
        const bool bWanted = m_state == State::Open ? m_bWanted : m_state == State::Closing;
        if (m_bReading || !bWanted) return;
        m_bReading = true;
        m_socket.async_read_some(
            asio::buffer(m_in),
            [sp = this->shared_from_this()](const asio::error_code& error, std::size_t nBytes) {
                sp->OnRead(error, nBytes);
            });
    }

    void OnRead(const asio::error_code& error, std::size_t nBytes) {
        m_bReading = false;
        if (m_state == State::Open && nBytes > 0) m_events.m_onBytes(std::span(m_in).first(nBytes));
        if (!error) return Read();
        if (m_state == State::Open) return Lose(error);
        // A line is closed when its last bytes have left, whatever comes in.
        if constexpr (!std::is_same_v<Socket, Line>) Finish();
    }

    void Write() {
        m_bWriting = true;
        asio::async_write(m_socket, asio::buffer(m_out),
                          [sp = this->shared_from_this()](const asio::error_code& error,
                                                          std::size_t) { sp->OnWritten(error); });
    }

    void OnWritten(const asio::error_code& error) {
        m_bWriting = false;
        m_out.clear();
        if (m_state == State::Closing) return error ? Finish() : WriteLast();
        if (m_state != State::Open) return;
        if (!error) return m_events.m_onSent();
        // What the other side has said before it went is still to be read.
        m_bWriting = true;
        if (!m_bReading) Lose(error);
    }

    void WriteLast() {
        Append(std::exchange(m_lastFrames, {}));
        if (!m_out.empty()) return Write();
        if constexpr (std::is_same_v<Socket, Line>) {
            AwaitDrained();
        } else if constexpr (std::is_same_v<Socket, TlsSocket>) {
            m_socket.async_shutdown([sp = this->shared_from_this()](const asio::error_code&) {
                sp->EndSending(sp->m_socket.next_layer());
            });
        } else {
            EndSending(m_socket);
        }
    }

    void EndSending(Tcp& socket) {
        if (m_state != State::Closing) return;
        asio::error_code error;
        socket.shutdown(Tcp::shutdown_send, error);
        if (error) Finish();
    }

    void AwaitDrained() {
        if (m_state != State::Closing) return;
        if constexpr (std::is_same_v<Socket, Line>) {
            if (CountUnsentBytes(m_socket.native_handle()) == 0) return Finish();
            m_look.emplace(m_socket.get_executor(), DRAIN_LOOK);
            m_look->async_wait(
                [sp = this->shared_from_this()](const asio::error_code&) { sp->AwaitDrained(); });
        }
    }

    void Lose(const asio::error_code& error) {
        Finish();
        // A line has no end by itself.
        const bool bGone = std::is_same_v<Socket, Line> && error == asio::error::eof;
        m_events.m_onLost(bGone ? DEVICE_GONE : DescribeTransportError(error),
                          IsCertificateTrouble(error));
    }

    void Finish() {
        m_state = State::Gone;
        m_timer.cancel();
        CloseSocket(m_socket);
    }

    Socket m_socket;
    asio::steady_timer m_timer;
    std::optional<asio::steady_timer> m_look;
    StreamEvents m_events;
    State m_state = State::Open;
    bool m_bWanted = true;  ///< to read
    bool m_bReading = false;
    bool m_bWriting = false;  ///< or it has become impossible
    std::array<std::uint8_t, PIECE> m_in;
    std::vector<std::uint8_t> m_out;
    std::vector<OutFrame> m_lastFrames;
};

void SendAtOnce(Tcp& socket) {
    asio::error_code ignored;  // it only costs time
    socket.set_option(asio::ip::tcp::no_delay(true), ignored);
}

}  // namespace

std::shared_ptr<CLinkStream> MakeTcpStream(Tcp socket) {
    SendAtOnce(socket);
    return std::make_shared<CStreamOn<Tcp>>(std::move(socket));
}

std::shared_ptr<CLinkStream> MakeTlsStream(TlsSocket socket) {
    SendAtOnce(socket.next_layer());
    return std::make_shared<CStreamOn<TlsSocket>>(std::move(socket));
}

std::shared_ptr<CLinkStream> OpenLine(asio::io_context& context, const LinkAddress& address,
                                      asio::error_code& error) {
    const int hDevice =
        OpenSerialDevice(address.m_strDevice, address.m_nBaud, address.m_bHardwareFlow);
    if (hDevice < 0) {
        error = {errno, asio::system_category()};
        return nullptr;
    }
    return std::make_shared<CStreamOn<Line>>(Line(context, hDevice));
}

std::string DescribeTransportError(const asio::error_code& error) {
    if (error == asio::error::eof || error == asio::ssl::error::stream_truncated)
        return "closed by the other side";
    if (error == std::errc::io_error) return DEVICE_GONE;
    std::string strText = error.message();
    // A sentence begins elsewhere; abbreviations stay.
    if (strText.size() > 1 && std::islower(static_cast<unsigned char>(strText[1])) != 0)
        strText[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(strText[0])));
    return strText;
}
