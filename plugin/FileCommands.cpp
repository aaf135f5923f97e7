#include "platform/Archive.h"
#include "plugin/DlgSetupMode.h"
void CDlgSetupMode::Serialize(CArchive&) {}
void CDlgSetupMode::OnSave() {}
void CDlgSetupMode::OnLoad() {}
void CDlgSetupMode::OnDropFiles(const std::vector<std::wstring>&) {}
LRESULT CDlgSetupMode::OnExportCsv(WPARAM, LPARAM) { return 0; }
