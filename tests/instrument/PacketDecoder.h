// Reads an instrument's packets back, as the wire format has them.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "acquisition/RTPacket.h"

/// Everything that was queued: the events in order, and the values of each channel.
struct Received {
    /// 'S' samples, 'P' new curve, 'R' running, 'I' idle, 'C' / 'c' capture started (continuous or
    /// not). Consecutive samples make one letter.
    std::string m_strEvents;
    std::vector<std::vector<int>> m_channels;
    std::string m_strLines;  ///< "end:lines " of every block, in values of channel 1
    std::size_t m_nPackets = 0;
    int m_nLongestPayload = 0;
};

class CPacketDecoder {
  public:
    CPacketDecoder(unsigned nChannels, unsigned nPerChannel)
        : m_nChannels(nChannels), m_nPerChannel(nPerChannel) {
        m_received.m_channels.resize(nChannels);
    }

    /// Takes everything out of the queue.
    const Received& Drain(RTPacketQueue& queue) {
        for (std::shared_ptr<RTPacket> spPacket; queue.try_pop(spPacket);) Decode(*spPacket);
        return m_received;
    }

  private:
    void Decode(const RTPacket& packet) {
        ++m_received.m_nPackets;
        m_received.m_nLongestPayload = std::max(m_received.m_nLongestPayload, packet.m_nLength);
        const std::uint8_t* p = packet.m_pData;
        if (packet.m_nType == 3) {
            DecodeSamples(p, packet.m_nLength);
        } else if (packet.m_nType == 20 && packet.m_nLength >= 1 && p[0] == 0x50) {
            m_received.m_strEvents += 'P';
        } else if (packet.m_nType == 39 && packet.m_nLength == 41 && p[0] == 1) {
            m_received.m_strEvents += p[3] == 0 ? 'I' : 'R';
        } else if (packet.m_nType == 39 && packet.m_nLength == 41 && p[0] == 2) {
            m_received.m_strEvents += p[5] == 0 ? 'c' : 'C';
        } else {
            throw std::runtime_error("a packet of no known form");
        }
    }

    void DecodeSamples(const std::uint8_t* p, int nLength) {
        if (!m_received.m_strEvents.ends_with('S')) m_received.m_strEvents += 'S';
        const unsigned nSet = m_nChannels * m_nPerChannel;
        int nOffset = 1;
        while (nOffset < nLength) {
            const unsigned nValues = p[nOffset + 1] * 256u + p[nOffset + 2];
            if (nOffset + 3 + 2 * static_cast<int>(nValues) > nLength)
                throw std::runtime_error("a block runs past its packet");
            if (nValues % nSet != 0) throw std::runtime_error("a block of broken sets");
            for (unsigned n = 0; n < nValues; ++n) {
                const std::uint8_t* pValue = p + nOffset + 3 + 2 * n;
                const int nBits = pValue[0] + 256 * pValue[1];
                m_received.m_channels[n % nSet / m_nPerChannel].push_back(
                    nBits < 32768 ? nBits : nBits - 65536);
            }
            m_received.m_strLines += std::to_string(m_received.m_channels[0].size()) + ":" +
                                     std::to_string(p[nOffset]) + " ";
            nOffset += 3 + 2 * static_cast<int>(nValues);
        }
    }

    unsigned m_nChannels;
    unsigned m_nPerChannel;
    Received m_received;
};
