#include "platform/windows/FileDialog.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileIconProvider>

#include "platform/system/Paths.h"
#include "platform/windows/Messages.h"

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

}  // namespace

int CFileDialog::DoModal() {
    NameIconProvider icons;
    QFileDialog dialog(QApplication::activeModalWidget());
    dialog.setIconProvider(&icons);
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setAcceptMode(m_bOpen ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    dialog.setFileMode(m_bOpen ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    dialog.setNameFilters(NameFilters(m_strFilter));
    dialog.setDefaultSuffix(QString::fromStdWString(m_strDefaultExtension));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return IDCANCEL;
    m_strPath = dialog.selectedFiles().constFirst().toStdWString();
    return IDOK;
}

std::wstring CFileDialog::GetFileName() const { return GetNameOfPath(m_strPath); }
