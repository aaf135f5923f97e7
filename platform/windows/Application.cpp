#include "platform/windows/Application.h"

#include <QApplication>
#include <QFontDatabase>
#include <QPalette>
#include <QStyleFactory>
#include <clocale>
#include <cstdio>
#include <cstdlib>

#include "platform/drawing/qt/Surface.h"
#include "platform/windows/ErrorBox.h"
#include "platform/windows/qt/UiQueue.h"
#include "platform/windows/qt/Widgets.h"

namespace {

CApplication* g_pApp = nullptr;

/// The look of the instrument, whatever the desktop's theme is.
QPalette InstrumentPalette() {
    const QColor face(240, 240, 240);
    const QColor text(0, 0, 0);
    const QColor faint(120, 120, 120);
    QPalette palette(face, face);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::AlternateBase, QColor(246, 249, 254));
    palette.setColor(QPalette::Highlight, QColor(38, 96, 164));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    palette.setColor(QPalette::Disabled, QPalette::Base, face);
    return palette;
}

/// Writes the window system's messages to standard error, apart from what a run without a display
/// or a run-time folder always says.
void WriteMessage(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (message.startsWith(QLatin1String("This plugin does not support")) ||
        message.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR not set")))
        return;
    std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, message)));
    if (type == QtFatalMsg) std::abort();
}

/// Keeps what the window system itself throws, out of memory, from its event loop, which nothing
/// may pass through.
class CGuardedApplication : public QApplication {
  public:
    using QApplication::QApplication;

    bool notify(QObject* pReceiver, QEvent* pEvent) override {
        try {
            return QApplication::notify(pReceiver, pEvent);
        } catch (...) {
            ReportCurrentExceptionLater();
            return false;
        }
    }
};

}  // namespace

struct CWindowSystem::State {
    State(int& argc, char** argv) : m_application(argc, argv) {}
    CGuardedApplication m_application;
};

CWindowSystem::CWindowSystem(int& argc, char** argv) {
    qInstallMessageHandler(WriteMessage);
    const bool bDisplay =
        !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    if (!bDisplay && !std::getenv("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    m_pState = std::make_unique<State>(argc, argv);
    // The window system takes over the user's locale, and with it a comma in what is printed and
    // read by the standard library.
    std::setlocale(LC_NUMERIC, "C");
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(InstrumentPalette());
    CFont font;
    font.CreatePointFont(80, L"MS Shell Dlg");
    QApplication::setFont(ToQFont(font));
    QApplication::setCursorFlashTime(0);
    QAccessible::installFactory(DescribeStatic);
    OpenUiQueue();
    KeepMemoryForErrors();
}

std::unique_ptr<CWindowSystem> CWindowSystem::MakeOffscreen(int& argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return std::make_unique<CWindowSystem>(argc, argv);
}

DisplayKind GetDisplayKind() {
    const QString strPlatform = QGuiApplication::platformName();
    const bool bManaged =
        strPlatform.startsWith(QLatin1String("wayland")) || strPlatform == QLatin1String("xcb");
    return bManaged ? DisplayKind::Desktop : DisplayKind::Panel;
}

CWindowSystem::~CWindowSystem() { CloseUiQueue(); }

void PumpMessages() {
    ReleaseMemoryForErrors();
    QCoreApplication::processEvents();
    KeepMemoryForErrors();
}

bool CFrameWindow::Create(const std::wstring& strTitle) {
    auto* pWidget = new DialogWidget(this, nullptr, Qt::Window);
    pWidget->setWindowTitle(QString::fromStdWString(strTitle));
    return true;
}

bool CView::Create(CWnd* pParent) {
    NativeWindow* pNative = pParent ? NativeWindow::Of(*pParent) : nullptr;
    new DialogWidget(this, pNative ? &pNative->m_widget : nullptr, Qt::Widget);
    return true;
}

CApplication::CApplication(const std::wstring& strName, const std::wstring& strSettingsFile)
    : m_settings(strName, strSettingsFile) {
    g_pApp = this;
}

CApplication::~CApplication() { g_pApp = nullptr; }

CApplication* GetApp() { return g_pApp; }
