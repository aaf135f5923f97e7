#include "platform/windows/ErrorBox.h"

#include <QString>
#include <cstdio>
#include <exception>
#include <new>

#include "platform/system/Exceptions.h"
#include "platform/system/MemoryReserve.h"
#include "platform/system/NumberedText.h"
#include "platform/windows/NoticeBox.h"
#include "platform/windows/qt/UiQueue.h"

namespace {

CMemoryReserve g_memoryForErrors;
bool g_bReportsLater = false;

constexpr NumberedText SOMETHING_WRONG{3108, L"Something has gone wrong."};

/// Shows what is being handled.
void ShowCurrentException() {
    try {
        throw;
    } catch (const CUserException&) {
        // The operator has been told, or has asked for it.
    } catch (const CException& exception) {
        const std::wstring strSummary = exception.GetSummary();
        const std::wstring strDetails = exception.GetErrorMessage();
        ShowErrorBox(strSummary, strDetails == strSummary ? std::wstring() : strDetails);
    } catch (const std::bad_alloc&) {
        ShowErrorBox(CMemoryException().GetSummary());
    } catch (const std::exception& exception) {
        ShowErrorBox(GetText(SOMETHING_WRONG),
                     QString::fromLocal8Bit(exception.what()).toStdWString());
    } catch (...) {
        ShowErrorBox(GetText(SOMETHING_WRONG));
    }
}

/// Needs no memory.
void WriteUnshownError() noexcept { std::fputs("An error could not be shown.\n", stderr); }

}  // namespace

void ShowErrorBox(const std::wstring& strSummary, const std::wstring& strDetails) {
    CNoticeBox(CNoticeBox::Kind::Notice, GetText({3100, L"Error"}), strSummary, strDetails)
        .DoModal();
}

void KeepMemoryForErrors() noexcept { g_memoryForErrors.Take(WINDOW_MEMORY); }

void ReleaseMemoryForErrors() noexcept { g_memoryForErrors.Release(); }

void ReportCurrentException() noexcept {
    g_memoryForErrors.Release();
    try {
        ShowCurrentException();
    } catch (...) {
        WriteUnshownError();
    }
    KeepMemoryForErrors();
}

void ReportCurrentExceptionLater() noexcept {
    if (g_bReportsLater) {
        WriteUnshownError();
        return;
    }
    g_memoryForErrors.Release();
    try {
        PostToUi([pException = std::current_exception()] {
            try {
                std::rethrow_exception(pException);
            } catch (...) {
                ReportCurrentException();
            }
            g_bReportsLater = false;
        });
        g_bReportsLater = true;
    } catch (...) {
        WriteUnshownError();
    }
}
