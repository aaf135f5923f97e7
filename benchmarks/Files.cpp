#include "Files.h"

#include "platform/system/File.h"

void WriteBytes(const std::wstring& strPath, const std::vector<std::uint8_t>& bytes, bool bToDisk) {
    CFile file(strPath, CFile::modeWrite | CFile::modeCreate);
    file.Write(bytes.data(), bytes.size());
    if (bToDisk) file.Flush();
    file.Close();
}

std::unique_ptr<std::uint8_t[]> ReadBytes(const std::wstring& strPath) {
    CFile file(strPath, CFile::modeRead);
    const std::size_t nBytes = file.GetLength();
    auto pBytes = std::make_unique_for_overwrite<std::uint8_t[]>(nBytes);
    file.Read(pBytes.get(), nBytes);
    return pBytes;
}

std::vector<std::uint8_t> CopyFile(const std::wstring& strPath) {
    CFile file(strPath, CFile::modeRead);
    std::vector<std::uint8_t> bytes(file.GetLength());
    file.Read(bytes.data(), bytes.size());
    return bytes;
}
