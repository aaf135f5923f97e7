// A folder of a test's own, removed with everything in it.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string>

#include "platform/system/Text.h"

class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::string strPattern =
            (std::filesystem::temp_directory_path() / "realtime-test-XXXXXX").native();
        if (!::mkdtemp(strPattern.data())) throw std::runtime_error("no temporary folder");
        m_path = strPattern;
    }
    ~TemporaryFolder() {
        std::error_code error;
        std::filesystem::remove_all(m_path, error);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& GetPath() const { return m_path; }
    std::wstring Path(const std::string& strName) const {
        return FromUtf8((m_path / strName).native());
    }

    void Put(const std::string& strName, const std::string& strContents) const {
        std::ofstream(m_path / strName, std::ios::binary) << strContents;
    }
    std::string Get(const std::string& strName) const {
        std::ifstream file(m_path / strName, std::ios::binary);
        std::ostringstream contents;
        contents << file.rdbuf();
        return contents.str();
    }
    std::size_t CountEntries() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(m_path),
                                                      std::filesystem::directory_iterator()));
    }

  private:
    std::filesystem::path m_path;
};
