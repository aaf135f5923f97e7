#include "platform/system/SystemCalls.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

int OpenWithoutWaiting(const std::string& strPath, int nFlags, mode_t nMode) {
    if (strPath.find('\0') != std::string::npos) {
        errno = EINVAL;
        return -1;
    }
    nFlags |= O_CLOEXEC | O_NOCTTY;
    const int hFile =
        RetryInterrupted([&] { return ::open(strPath.c_str(), nFlags | O_NONBLOCK, nMode); });
    if (hFile >= 0) ::fcntl(hFile, F_SETFL, nFlags);
    return hFile;
}

int FlushDescriptor(int hFile) {
    if (RetryInterrupted([&] { return ::fsync(hFile); }) == 0) return 0;
    return errno == EINVAL || errno == EROFS ? 0 : errno;
}

int FlushFolder(const std::string& strFolder) {
    const CDescriptor folder(OpenWithoutWaiting(strFolder, O_RDONLY | O_DIRECTORY));
    if (!folder) return errno == EACCES ? 0 : errno;
    return FlushDescriptor(folder.Get());
}

bool IsRegularFile(int hFile) {
    struct stat status;
    return ::fstat(hFile, &status) == 0 && S_ISREG(status.st_mode);
}

CDescriptor::~CDescriptor() {
    if (m_hFile >= 0) ::close(m_hFile);
}
