// The standard dialogs that ask for a file.
#pragma once

#include <optional>
#include <string>

#include "platform/system/Export.h"
#include "platform/windows/Application.h"

/// Asks for a file to open or to save to, modally: on a panel in a dialog for a finger, on a
/// desktop in the platform's own. User-interface thread.
class PLATFORM_API CFileDialog {
  public:
    /// @param bOpen true: an existing file to open; false: a file to save to, with a question
    ///        before an existing one is overwritten
    /// @param strDefaultExtension appended to a name without one, as ".rt3"; empty: none
    /// @param strFilter pairs of name and pattern, as "Text File (*.csv)|*.csv||"; patterns match
    ///        without regard to case
    CFileDialog(bool bOpen, std::wstring strDefaultExtension, std::wstring strFilter)
        : m_bOpen(bOpen), m_strDefaultExtension(std::move(strDefaultExtension)),
          m_strFilter(std::move(strFilter)) {}

    /// Where a panel's dialog begins; without this, in the program folder. The platform's own
    /// begins where the operator was last.
    void SetFolder(const std::wstring& strFolder) { m_strFolder = strFolder; }

    /// @return IDOK or IDCANCEL
    int DoModal();

    const std::wstring& GetPathName() const { return m_strPath; }  ///< the full path chosen
    std::wstring GetFileName() const;                              ///< its name with extension

    /// For which kind of display the dialogs are; at first, and without a value, for the one that
    /// there is. A program that works the windows itself can work those of a panel alone.
    static void SetKind(std::optional<DisplayKind> kind);

  private:
    bool ShowForFinger();
    bool ShowPlatforms();

    bool m_bOpen;
    std::wstring m_strDefaultExtension;
    std::wstring m_strFilter;
    std::wstring m_strFolder;
    std::wstring m_strPath;
};
