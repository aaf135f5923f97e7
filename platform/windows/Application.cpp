#include "platform/windows/Application.h"

#include <QApplication>
#include <QFontDatabase>
#include <QPalette>
#include <QScreen>
#include <QStyleFactory>
#include <clocale>
#include <cstdio>
#include <cstdlib>

#include "platform/windows/ErrorBox.h"
#include "platform/windows/WindowScale.h"
#include "platform/windows/qt/FrameWidget.h"
#include "platform/windows/qt/OpenDisplay.h"
#include "platform/windows/qt/ScaledStyle.h"
#include "platform/windows/qt/UiQueue.h"
#include "platform/windows/qt/Widgets.h"
#include "platform/windows/qt/WindowManager.h"

namespace {

CApplication* g_pApp = nullptr;
DisplayKind g_displayKind = DisplayKind::Panel;
bool g_bOpening = false;  // the display is being opened

const QColor BACKGROUND(52, 64, 80);  ///< of a display that is filled

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
/// or a run-time folder always says. One that it cannot go on after ends the program.
void WriteMessage(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (g_bOpening && type == QtFatalMsg) EndWithoutDisplay(message);
    if (message.startsWith(QLatin1String("This plugin does not support")) ||
        message.startsWith(QLatin1String("Could not load the Qt platform plugin")) ||
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

CWindowSystem::CWindowSystem(int& argc, char** argv, const char* pAdvice) {
    qInstallMessageHandler(WriteMessage);
    ChooseDisplay(pAdvice);
    SwitchOffDesktopScaling();
    g_bOpening = true;
    m_pState = std::make_unique<State>(argc, argv);
    if (QGuiApplication::screens().isEmpty()) EndWithoutDisplay({});
    g_bOpening = false;
    g_displayKind = HasWindowManager() ? DisplayKind::Desktop : DisplayKind::Panel;
    // The window system takes over the user's locale, and with it a comma in what is printed and
    // read by the standard library.
    std::setlocale(LC_NUMERIC, "C");
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setStyle(new CScaledStyle);
    QApplication::setPalette(InstrumentPalette());
    ScaleWindows(1);
    QApplication::setCursorFlashTime(0);
    QAccessible::installFactory(DescribePainted);
    OpenUiQueue();
    KeepMemoryForErrors();
}

std::unique_ptr<CWindowSystem> CWindowSystem::MakeOffscreen(int& argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return std::make_unique<CWindowSystem>(argc, argv);
}

DisplayKind GetDisplayKind() { return g_displayKind; }

bool CWindowSystem::IsPlatformChosen() { return !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"); }

CWindowSystem::~CWindowSystem() { CloseUiQueue(); }

void PumpMessages() {
    ReleaseMemoryForErrors();
    QCoreApplication::processEvents();
    KeepMemoryForErrors();
}

bool CFrameWindow::Create(const std::wstring& strTitle) {
    auto* pWidget = new ViewWidget(this, nullptr, Qt::Window);
    pWidget->setWindowTitle(QString::fromStdWString(strTitle));
    return true;
}

void CFrameWindow::FillDisplay() {
    NativeWindow* pNative = NativeWindow::Of(*this);
    if (!pNative) return;
    QWidget& widget = pNative->m_widget;
    widget.setWindowFlag(Qt::FramelessWindowHint);
    widget.setPalette(QPalette(BACKGROUND));
    widget.setGeometry(widget.screen()->geometry());
    widget.show();
}

bool CView::Create(CWnd* pParent) {
    NativeWindow* pNative = pParent ? NativeWindow::Of(*pParent) : nullptr;
    new ViewWidget(this, pNative ? &pNative->m_widget : nullptr);
    return true;
}

bool CView::CreateFoot(CWnd& dialog, int nHeight) {
    FrameWidget* pFrame = FrameWidget::Of(NativeWindow::Of(dialog));
    if (!pFrame) return false;
    pFrame->AddFoot(*new ViewWidget(this, pFrame), nHeight);
    return true;
}

bool CView::CreateCover(CWnd& dialog, const CRect& area) {
    FrameWidget* pFrame = FrameWidget::Of(NativeWindow::Of(dialog));
    if (!pFrame) return false;
    pFrame->AddCover(*new ViewWidget(this, pFrame), area);
    return true;
}

CApplication::CApplication(const std::wstring& strName, const std::wstring& strSettingsFile)
    : m_settings(strName, strSettingsFile) {
    g_pApp = this;
}

CApplication::~CApplication() { g_pApp = nullptr; }

CApplication* GetApp() { return g_pApp; }
