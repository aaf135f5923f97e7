// The per-user settings store: whole numbers by section and key, in an INI file.
#pragma once

#include <memory>
#include <string>

#include "platform/system/Export.h"

/// Sections are nested by backslashes. Thread safety: none.
class PLATFORM_API CSettings {
  public:
    /// @param strFile the INI file; empty: the current user's file for a program of this name. What
    /// is there but no regular file stores nothing.
    CSettings(const std::wstring& strProgram, const std::wstring& strFile);
    ~CSettings();
    CSettings(const CSettings&) = delete;
    CSettings& operator=(const CSettings&) = delete;

    /// The stored integer, or the default when the key is absent or not a number.
    int GetInt(const std::wstring& strSection, const std::wstring& strKey, int nDefault) const;
    /// @return false when it could not be stored
    bool SetInt(const std::wstring& strSection, const std::wstring& strKey, int nValue);

  private:
    struct Store;
    std::unique_ptr<Store> m_pStore;  ///< null: nothing is stored
};
