// A folder of a test's own, removed with everything in it.
#pragma once

#include <filesystem>
#include <string>

#include "platform/system/Text.h"

class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& GetPath() const { return m_path; }
    std::wstring Path(const std::string& strName) const {
        return FromUtf8((m_path / strName).native());
    }

    void Put(const std::string& strName, const std::string& strContents) const;
    void PutPipe(const std::string& strName) const;
    std::string Get(const std::string& strName) const;
    std::size_t CountEntries() const;

  private:
    std::filesystem::path m_path;
};
