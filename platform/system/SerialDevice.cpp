#include "platform/system/SerialDevice.h"

// These, not termios.h, which contradicts them, take any rate.
#include <asm/termbits.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>

#include "platform/system/SystemCalls.h"

namespace {

bool MakeRaw(int hDevice, std::uint32_t nBaud, bool bHardwareFlow) {
    struct termios2 settings;
    if (::ioctl(hDevice, TCGETS2, &settings) != 0) return false;
    settings.c_iflag = IGNBRK;
    settings.c_oflag = 0;
    settings.c_lflag = 0;
    settings.c_cflag = (settings.c_cflag & HUPCL) | CS8 | CREAD | CLOCAL | BOTHER;
    if (bHardwareFlow) settings.c_cflag |= CRTSCTS;
    settings.c_ispeed = settings.c_ospeed = nBaud;
    settings.c_cc[VMIN] = 1;
    settings.c_cc[VTIME] = 0;
    return ::ioctl(hDevice, TCSETS2, &settings) == 0 && ::ioctl(hDevice, TCFLSH, TCIOFLUSH) == 0;
}

}  // namespace

int OpenSerialDevice(const std::string& strPath, std::uint32_t nBaud, bool bHardwareFlow) {
    CDescriptor device(OpenWithoutWaiting(strPath, O_RDWR));
    if (!device) return -1;
    // The lock keeps out also the system's administrator, whom the other one lets in.
    if (::flock(device.Get(), LOCK_EX | LOCK_NB) != 0) {
        if (errno == EWOULDBLOCK) errno = EBUSY;
        return -1;
    }
    if (::ioctl(device.Get(), TIOCEXCL) != 0) return -1;
    if (!MakeRaw(device.Get(), nBaud, bHardwareFlow)) {
        const int nError = errno;
        ReleaseSerialDevice(device.Get());
        errno = nError;
        return -1;
    }
    ::fcntl(device.Get(), F_SETFL, O_RDWR | O_NONBLOCK);
    return device.Release();
}

int CountUnsentBytes(int hDevice) {
    int nBytes = 0;
    return ::ioctl(hDevice, TIOCOUTQ, &nBytes) == 0 ? nBytes : 0;
}

void ReleaseSerialDevice(int hDevice) {
    // Of a pseudo-terminal it would take away what the other side has not read yet.
    if (CountUnsentBytes(hDevice) > 0) ::ioctl(hDevice, TCFLSH, TCOFLUSH);
    ::ioctl(hDevice, TIOCNXCL);
}
