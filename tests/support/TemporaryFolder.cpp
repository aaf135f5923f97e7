#include "tests/support/TemporaryFolder.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <sys/stat.h>

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
    std::string strPattern = (fs::temp_directory_path() / "realtime-test-XXXXXX").native();
    if (!::mkdtemp(strPattern.data())) throw std::runtime_error("no temporary folder");
    m_path = strPattern;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code error;
    fs::remove_all(m_path, error);
}

void TemporaryFolder::Put(const std::string& strName, const std::string& strContents) const {
    std::ofstream(m_path / strName, std::ios::binary) << strContents;
}

void TemporaryFolder::PutPipe(const std::string& strName) const {
    if (::mkfifo((m_path / strName).c_str(), 0666) != 0) throw std::runtime_error("no pipe");
}

std::string TemporaryFolder::Get(const std::string& strName) const {
    std::ifstream file(m_path / strName, std::ios::binary);
    std::ostringstream contents;
    contents << file.rdbuf();
    return contents.str();
}

std::size_t TemporaryFolder::CountEntries() const {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(m_path), fs::directory_iterator()));
}
