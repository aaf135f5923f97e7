#include "link/MessageSender.h"

#include <utility>

void CMessageSender::Restart() {
    m_waiting.clear();
    m_nSendings = 0;
    m_nNumber = 0;
}

bool CMessageSender::Add(std::string_view image, ImageKind kind) {
    if (m_waiting.size() >= MAX_WAITING) return false;
    m_waiting.push_back({std::string(image), kind});
    return true;
}

std::optional<PayloadBytes> CMessageSender::TakeDue(LinkTime now) {
    if (m_nSendings == 0) {
        if (m_waiting.empty()) return std::nullopt;
        m_sent = std::move(m_waiting.front());
        m_waiting.pop_front();
        ++m_nNumber;
    } else if (m_nSendings >= MAX_SENDINGS || now - m_sentAt < ANSWER_TIME) {
        return std::nullopt;
    }
    ++m_nSendings;
    m_sentAt = now;
    const PayloadBytes image(m_sent.m_bytes.begin(), m_sent.m_bytes.end());
    return FormMessage({m_nNumber, image});
}

bool CMessageSender::HasFailed(LinkTime now) const {
    return m_nSendings >= MAX_SENDINGS && now - m_sentAt >= ANSWER_TIME;
}

std::optional<CMessageSender::Answered> CMessageSender::OnAck(std::uint32_t nNumber) {
    if (m_nSendings == 0 || nNumber != m_nNumber) return std::nullopt;
    return Answered{m_sent.m_kind, std::exchange(m_nSendings, 0) > 1};
}
