#include "platform/system/Settings.h"

#include <QFileInfo>
#include <QSettings>
#include <algorithm>

namespace {

QString FindFile(const std::wstring& strProgram, const std::wstring& strFile) {
    if (!strFile.empty()) return QString::fromStdWString(strFile);
    return QSettings(QSettings::IniFormat, QSettings::UserScope,
                     QString::fromStdWString(strProgram))
        .fileName();
}

/// The store nests its sections by slashes.
QString KeyOf(std::wstring strSection, const std::wstring& strKey) {
    std::replace(strSection.begin(), strSection.end(), L'\\', L'/');
    return QString::fromStdWString(strSection + L'/' + strKey);
}

}  // namespace

struct CSettings::Store {
    QSettings m_settings;
};

CSettings::CSettings(const std::wstring& strProgram, const std::wstring& strFile) {
    const QFileInfo file(FindFile(strProgram, strFile));
    // A pipe would be waited for without end.
    if (file.isFile() || !file.exists())
        m_pStore.reset(new Store{{file.filePath(), QSettings::IniFormat}});
}

CSettings::~CSettings() = default;

int CSettings::GetInt(const std::wstring& strSection, const std::wstring& strKey,
                      int nDefault) const {
    if (!m_pStore) return nDefault;
    bool bNumber = false;
    const int nValue = m_pStore->m_settings.value(KeyOf(strSection, strKey)).toInt(&bNumber);
    return bNumber ? nValue : nDefault;
}

bool CSettings::SetInt(const std::wstring& strSection, const std::wstring& strKey, int nValue) {
    if (!m_pStore) return false;
    m_pStore->m_settings.setValue(KeyOf(strSection, strKey), nValue);
    m_pStore->m_settings.sync();
    return m_pStore->m_settings.status() == QSettings::NoError;
}
