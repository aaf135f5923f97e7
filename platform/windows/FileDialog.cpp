#include "platform/windows/FileDialog.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileIconProvider>

#include "platform/system/Paths.h"
#include "platform/windows/FingerFileDialog.h"

namespace {

/// Tells files by their names. The window system's own way reads the beginning of every file that a
/// folder shows, on the user-interface thread, and waits as long as a device or a share lets it.
class NameIconProvider : public QFileIconProvider {
  public:
    QIcon icon(const QFileInfo& file) const override {
        return QFileIconProvider::icon(file.isDir() ? Folder : File);
    }
    QString type(const QFileInfo& file) const override {
        return file.isDir() ? QFileDialog::tr("Folder") : file.suffix();
    }
};

QStringList NameFilters(const std::wstring& strFilter) {
    const QStringList parts = QString::fromStdWString(strFilter).split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size() && !parts[i].isEmpty(); i += 2) {
        const QString name = parts[i].section(QStringLiteral(" ("), 0, 0);
        filters << QStringLiteral("%1 (%2)").arg(name, parts[i + 1]);
    }
    return filters;
}

/// Keeps the icon provider in a dialog of the window system's own: it may turn to that only when it
/// is shown, as it does where the platform's cannot be.
class QuietFileDialog : public QFileDialog {
  public:
    using QFileDialog::QFileDialog;

  protected:
    void showEvent(QShowEvent* pEvent) override {
        setIconProvider(&m_icons);
        QFileDialog::showEvent(pEvent);
    }

  private:
    NameIconProvider m_icons;
};

/// The extension of the first pattern, as ".csv"; empty when it matches all files.
std::wstring FirstExtension(const std::wstring& strFilter) {
    const std::size_t nPattern = strFilter.find(L"|*.");
    if (nPattern == std::wstring::npos) return {};
    const std::wstring strRest = strFilter.substr(nPattern + 2);
    const std::wstring strExtension = strRest.substr(0, strRest.find_first_of(L"|;"));
    return strExtension == L".*" ? std::wstring() : strExtension;
}

std::optional<DisplayKind> g_kind;

}  // namespace

void CFileDialog::SetKind(std::optional<DisplayKind> kind) { g_kind = kind; }

int CFileDialog::DoModal() {
    const bool bPanel = g_kind.value_or(GetDisplayKind()) == DisplayKind::Panel;
    return (bPanel ? ShowForFinger() : ShowPlatforms()) ? IDOK : IDCANCEL;
}

bool CFileDialog::ShowForFinger() {
    CFingerFileDialog dialog(m_bOpen, FirstExtension(m_strFilter), m_strDefaultExtension,
                             m_strFolder.empty() ? GetProgramFolder() : m_strFolder);
    if (dialog.DoModal() != IDOK) return false;
    m_strPath = dialog.GetPathName();
    return true;
}

bool CFileDialog::ShowPlatforms() {
    QuietFileDialog dialog(QApplication::activeModalWidget());
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setAcceptMode(m_bOpen ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    dialog.setFileMode(m_bOpen ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    dialog.setNameFilters(NameFilters(m_strFilter));
    dialog.setDefaultSuffix(QString::fromStdWString(m_strDefaultExtension));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return false;
    m_strPath = dialog.selectedFiles().constFirst().toStdWString();
    return true;
}

std::wstring CFileDialog::GetFileName() const { return GetNameOfPath(m_strPath); }
