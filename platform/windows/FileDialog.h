// The standard dialogs that ask for a file.
#pragma once

#include <string>

#include "platform/system/Export.h"

/// Asks for a file to open or to save to, modally. User-interface thread.
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

    /// @return IDOK or IDCANCEL
    int DoModal();

    const std::wstring& GetPathName() const { return m_strPath; }  ///< the full path chosen
    std::wstring GetFileName() const;                              ///< its name with extension

  private:
    bool m_bOpen;
    std::wstring m_strDefaultExtension;
    std::wstring m_strFilter;
    std::wstring m_strPath;
};
