#include "curves/CsvFile.h"

#include "platform/system/Exceptions.h"
#include "platform/system/Interrupt.h"
#include "platform/system/TextFile.h"

void WriteCsv(CTextFile& file, const std::function<void()>& writeRows) {
    const bool bKept = file.IsRegular();
    try {
        writeRows();
        file.Close();
    } catch (CFileException& error) {
        if (bKept) error.m_strDetail = L"The lines written before the failure are kept.";
        throw;
    }
}

void ExportCsv(const std::wstring& strPath, const std::function<void(CTextFile& file)>& write) {
    CTextFile file;
    CUnfinishedFile unfinished;
    unfinished.Create(file, strPath);
    try {
        write(file);
    } catch (const CUserException&) {
        unfinished.Remove();
        throw;
    }
}
