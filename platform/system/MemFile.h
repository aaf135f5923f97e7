// A file in memory.
#pragma once

#include <vector>

#include "platform/system/File.h"

/// Behaves like a file whose contents are a growing block of memory; nothing of it reaches a disk.
/// @throws CMemoryException when it cannot grow
class PLATFORM_API CMemFile : public CFile {
  public:
    /// A file with the given contents, at its beginning, that calls itself strName in errors.
    explicit CMemFile(std::wstring strName, std::vector<std::uint8_t> contents = {});

    std::size_t Read(void* pBuffer, std::size_t nCount) override;
    void Write(const void* pBuffer, std::size_t nCount) override;
    std::uint64_t GetPosition() const override { return m_nPosition; }
    std::uint64_t GetLength() const override { return m_contents.size(); }
    void Seek(std::uint64_t nPosition) override { m_nPosition = nPosition; }
    void Flush() override {}
    void Close() override {}

    const std::vector<std::uint8_t>& GetContents() const { return m_contents; }

  private:
    std::vector<std::uint8_t> m_contents;
    std::size_t m_nPosition = 0;
};
