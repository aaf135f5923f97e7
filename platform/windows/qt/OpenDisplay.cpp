#include "platform/windows/qt/OpenDisplay.h"

#include <QByteArray>
#include <QString>
#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr const char* PLATFORM = "QT_QPA_PLATFORM";

const char* g_pAdvice = "";
QString g_strDisplay;  // what is to be opened, as NAME=VALUE

bool IsNamed(const char* pVariable) { return !qEnvironmentVariableIsEmpty(pVariable); }

[[noreturn]] void End(const QString& strWhat) {
    // Whatever stands half made in the window system stays as it is.
    std::fflush(stdout);
    std::fprintf(stderr, "%s: %s\n%s", program_invocation_short_name, qPrintable(strWhat),
                 "A display is named by DISPLAY (X) or WAYLAND_DISPLAY; without either,\n"
                 "QT_QPA_PLATFORM=linuxfb shows the windows on the framebuffer, and\n"
                 "QT_QPA_PLATFORM=vnc serves them to a VNC client.\n");
    if (*g_pAdvice) std::fprintf(stderr, "%s\n", g_pAdvice);
    std::_Exit(EXIT_FAILURE);
}

/// The name that decides which display is opened; null without any.
const char* FindNamed() {
    for (const char* pVariable : {PLATFORM, "DISPLAY", "WAYLAND_DISPLAY"})
        if (IsNamed(pVariable)) return pVariable;
    return nullptr;
}

}  // namespace

void ChooseDisplay(const char* pAdvice) {
    g_pAdvice = pAdvice;
    const char* const pNamed = FindNamed();
    if (!pNamed) End(QStringLiteral("there is no display"));
    g_strDisplay = QString::fromLatin1(pNamed) + u'=' + qEnvironmentVariable(pNamed);
    if (!IsNamed(PLATFORM) && !IsNamed("DISPLAY")) qputenv(PLATFORM, "wayland");
}

void EndWithoutDisplay(const QString& strReason) {
    QString strWhat = QStringLiteral("the display cannot be opened (%1)").arg(g_strDisplay);
    // Qt lists the platforms it has, when it has been able to load none.
    const QString strPlatform = qEnvironmentVariable(PLATFORM).section(u':', 0, 0);
    const auto isMissing = [&](QLatin1String name) {
        return strPlatform.startsWith(name) && strReason.contains(QLatin1String("Available")) &&
               !strReason.section(QLatin1String("Available"), 1).contains(name);
    };
    if (isMissing(QLatin1String("wayland")))
        strWhat += QStringLiteral("; Qt's part for it is in the package qt6-wayland");
    else if (isMissing(QLatin1String("vnc")))
        strWhat += QStringLiteral("; Qt's part for it is in the package qt6-qpa-plugins");
    End(strWhat);
}
