// Makes the pictures of operating.md, and that of the panel in evaluation.md: works the real panel
// as an operator would, in a folder of its own. The target "pictures" runs it; without a display it
// needs none.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <stdexcept>

#include "host/Judgement.h"
#include "host/Panel.h"
#include "host/VerdictStrip.h"
#include "platform/operator/Operator.h"
#include "platform/system/Text.h"
#include "platform/windows/WindowScale.h"
#include "plugin/DlgBase.h"
#include "plugin/ScreenTemplate.h"
#include "ui/DlgBarInfo.h"
#include "ui/DlgBarMainMenu.h"
#include "ui/DlgListFiles.h"

namespace fs = std::filesystem;

namespace {

constexpr unsigned PATIENCE = 30000;  ///< milliseconds, for all that is waited for

/// How long things settle before a picture is taken, in milliseconds: the strip looks ten times a
/// second.
constexpr unsigned STRIP_TIME = 300;

/// One run of the panel, and what an operator does with its screen.
class CSitting {
  public:
    CSitting(const fs::path& pictures, const fs::path& data, std::vector<std::string> arguments)
        : m_pictures(pictures), m_data(data), m_arguments(std::move(arguments)) {
        m_arguments.insert(m_arguments.end(), {"--data-folder", data.native(), "--settings",
                                               (data / "settings.ini").native()});
    }

    /// Runs the panel until the script has ended.
    void Run(const std::function<void(CSitting&)>& script) {
        const std::vector<const char*> arguments = [this] {
            std::vector<const char*> pointers;
            for (const std::string& strArgument : m_arguments)
                pointers.push_back(strArgument.c_str());
            return pointers;
        }();
        const Options options = ReadOptions(arguments);
        CPanel panel(options, PrepareJudgement(options));
        m_pPanel = &panel;
        Operator::CScript running([&] {
            Operator::WaitFor("the screen", [this] {
                m_pScreen = dynamic_cast<CDlgBase*>(Operator::ModalWindow());
                return m_pScreen != nullptr;
            });
            script(*this);
            m_pScreen->PostMessage(WM_CLOSE);
        });
        panel.Run();
        running.Join();
    }

    void TakePicture(const char* pName) {
        Operator::Wait(STRIP_TIME);
        const fs::path path = m_pictures / (std::string(pName) + ".png");
        Operator::TakeStackPicture(*m_pScreen).SavePng(FromUtf8(path.native()));
        std::printf("%s, %ju bytes\n", path.c_str(), fs::file_size(path));
    }

    void Tap(int nID) {
        if (!Operator::Tap(*m_pScreen, nID)) throw std::runtime_error("a button cannot be pressed");
    }
    void TapBar(int nID) {
        const CWnd* pBar = nullptr;
        Operator::Ask([&] { pBar = m_pScreen->GetControl(IDC_BAR); });
        if (!pBar || !Operator::Tap(*pBar, nID))
            throw std::runtime_error("a button of the bar cannot be pressed");
    }
    void AwaitWindow() {
        Operator::WaitFor(
            "a window", [this] { return Operator::ModalWindow() != m_pScreen; }, PATIENCE);
    }
    void AwaitScreen() {
        Operator::WaitFor(
            "the screen", [this] { return Operator::ModalWindow() == m_pScreen; }, PATIENCE);
    }
    void AwaitStatus(const wchar_t* pPart) {
        Operator::WaitFor(
            ToUtf8(pPart),
            [&] {
                std::wstring strText;
                Operator::Ask([&] { strText = m_pPanel->GetStatusText(); });
                return strText.find(pPart) != std::wstring::npos;
            },
            PATIENCE);
    }
    void TakeCapture() {
        Tap(IDC_START);
        AwaitIdle();
    }
    void AwaitIdle() {
        Operator::WaitFor(
            "the end of the capture",
            [this] {
                bool bIdle = false;
                Operator::Ask([&] { bIdle = m_pScreen->GetControl(IDC_START)->IsWindowEnabled(); });
                return bIdle;
            },
            PATIENCE);
    }
    void Show(const std::wstring& strQuantities) {
        if (!Operator::Select(*m_pScreen->GetControl(IDC_DISPLAY_LIST), strQuantities))
            throw std::runtime_error("the list has not what is to be shown");
    }
    /// Opens the entry of a control, types into it, and leaves it open.
    void TypeInto(int nID, const std::wstring& strText) {
        Tap(nID);
        AwaitWindow();
        Operator::Type(strText);
    }
    void Confirm() {
        Operator::PressKey(Operator::Key::Enter);
        AwaitScreen();
    }
    void Enter(int nID, const std::wstring& strText) {
        TypeInto(nID, strText);
        Confirm();
    }
    /// A point of the plot: of the design's pixels, from its left edge.
    CPoint AtPlot(int x) const {
        CRect area;
        Operator::Ask([&] {
            area = m_pScreen->GetControl(IDC_PLOT_1)->GetWindowRect();
            m_pScreen->ScreenToClient(area);
        });
        return {area.left + x, area.top + area.Height() / 3};
    }
    void TapPlot(int x) {
        Operator::Press(Screen(), AtPlot(x));
        Operator::Release(Screen(), AtPlot(x));
    }
    void TapVerdict() {
        if (!Operator::Tap(*m_pPanel->GetVerdictStrip()))
            throw std::runtime_error("the verdict cannot be tapped");
    }
    CDlgBase& Screen() const { return *m_pScreen; }
    const fs::path& DataFolder() const { return m_data; }

  private:
    const fs::path m_pictures;
    const fs::path m_data;
    std::vector<std::string> m_arguments;
    CPanel* m_pPanel = nullptr;
    CDlgBase* m_pScreen = nullptr;
};

void ShowCaptures(CSitting& sitting) {
    sitting.Enter(IDC_SAMPLE_TIME, L"2");
    sitting.TypeInto(IDC_TRIGGER, L"12.5");
    sitting.TakePicture("trigger");
    sitting.Confirm();
    sitting.Tap(IDC_START);
    sitting.AwaitStatus(L"Capturing 1.");
    sitting.TakePicture("capturing");
    sitting.AwaitIdle();
}

void ShowFiles(CSitting& sitting) {
    for (const wchar_t* pName : {L"housing", L"housing worn tool", L"spring 12"}) {
        sitting.TypeInto(IDC_SAVE, pName);
        if (std::wstring_view(pName) == L"spring 12") sitting.TakePicture("save");
        sitting.Confirm();
    }
    sitting.Show(L"F/V vs P");
    sitting.TakePicture("capture");
    sitting.Show(L"Force/Voltage");
    sitting.Tap(IDC_LOAD);
    sitting.AwaitWindow();
    Operator::Select(*Operator::ModalWindow()->GetControl(CDlgListFiles::ID_FILES), L"housing");
    sitting.TakePicture("load");
    Operator::PressKey(Operator::Key::Escape);
    sitting.AwaitScreen();
}

void ShowZoomAndMarkers(CSitting& sitting) {
    Operator::Press(sitting.Screen(), sitting.AtPlot(50));
    Operator::MoveTo(sitting.Screen(), sitting.AtPlot(260));
    sitting.TakePicture("zoom");
    Operator::Release(sitting.Screen(), sitting.AtPlot(260));
    sitting.TakePicture("zoomed");
    sitting.TapBar(CDlgBarMainMenu::ID_INFO);
    sitting.TapBar(CDlgBarInfo::ID_MARKER_A);
    sitting.TapPlot(90);
    sitting.TapPlot(470);
    sitting.TakePicture("markers");
    sitting.TapBar(CDlgBarInfo::ID_CLEAR_MARKERS);
    sitting.TapBar(CDlgBarInfo::ID_BACK);
    sitting.Tap(IDC_ZOOM_ALL);
}

void ShowSettingsAndExport(CSitting& sitting) {
    sitting.Tap(IDC_SETTINGS);
    sitting.AwaitWindow();
    sitting.TakePicture("settings");
    Operator::PressKey(Operator::Key::Escape);
    sitting.AwaitScreen();
    for (const wchar_t* pName : {L"housing.csv", L"housing worn tool.csv", L"spring 12.csv"}) {
        sitting.TapBar(CDlgBarMainMenu::ID_EXPORT_CSV);
        sitting.AwaitWindow();
        Operator::Type(pName);
        if (std::wstring_view(pName) == L"spring 12.csv") sitting.TakePicture("export");
        sitting.Confirm();
    }
}

/// A level that the press does not reach.
void ShowWaiting(CSitting& sitting) {
    sitting.Tap(IDC_CLEAR);
    sitting.Enter(IDC_TRIGGER, L"80");
    sitting.Tap(IDC_START);
    sitting.AwaitStatus(L"80.0 %");
    sitting.TakePicture("waiting");
    sitting.Tap(IDC_STOP);
    sitting.AwaitIdle();
}

void ShowFailure(CSitting& sitting) {
    const fs::path store = sitting.DataFolder() / "RealTimeFiles";
    fs::resize_file(store / "housing.rt3", fs::file_size(store / "housing.rt3") / 3);
    sitting.Tap(IDC_LOAD);
    sitting.AwaitWindow();
    const CWnd* const pList = Operator::ModalWindow();
    Operator::Select(*pList->GetControl(CDlgListFiles::ID_FILES), L"housing");
    Operator::Tap(*pList, IDOK);
    sitting.AwaitStatus(L"housing.rt3");
    sitting.TakePicture("failed");
    Operator::PressKey(Operator::Key::Enter);
    sitting.AwaitScreen();
}

/// One stroke that is taken whole, and one of which a trigger leaves out the beginning.
void ShowVerdict(CSitting& sitting) {
    sitting.TakeCapture();
    sitting.TapVerdict();
    sitting.Enter(IDC_TRIGGER, L"40");
    sitting.TakeCapture();
    sitting.TakePicture("verdict");
}

void MakePictures(const fs::path& pictures, const fs::path& data) {
    fs::create_directories(pictures);
    CSitting(pictures, data, {}).Run([](CSitting& sitting) {
        ShowCaptures(sitting);
        ShowFiles(sitting);
        ShowZoomAndMarkers(sitting);
        ShowSettingsAndExport(sitting);
        ShowWaiting(sitting);
        ShowFailure(sitting);
    });
    const fs::path limits = fs::path(RT_SOURCES) / "samples/stroke.json";
    CSitting(pictures, data, {"--sample-time=1", "--limits", limits.native()}).Run(ShowVerdict);
    CSitting(pictures, data, {"--sample-time=2", "--language=German"}).Run([](CSitting& sitting) {
        sitting.TakeCapture();
        sitting.TakePicture("german");
    });
    ScaleWindows(1.5);
    CSitting(pictures, data, {"--sample-time=2", "--trigger=12.5"}).Run([](CSitting& sitting) {
        sitting.TakeCapture();
        sitting.TakePicture("large");
    });
}

/// A folder whose name is to be read in the pictures; it goes with the object.
class CDataFolder {
  public:
    CDataFolder() {
        if (!fs::create_directory(m_path))
            throw std::runtime_error(m_path.native() + " is in the way");
    }
    ~CDataFolder() {
        std::error_code error;
        fs::remove_all(m_path, error);
    }
    CDataFolder(const CDataFolder&) = delete;
    CDataFolder& operator=(const CDataFolder&) = delete;

    const fs::path m_path = fs::temp_directory_path() / "panel";
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: operating_pictures FOLDER\n");
        return EXIT_FAILURE;
    }
    try {
        const auto pWindowSystem = CWindowSystem::MakeOffscreen(argc, argv);
        const CDataFolder data;
        MakePictures(fs::absolute(argv[1]), data.m_path);
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "operating_pictures: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
