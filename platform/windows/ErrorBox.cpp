#include "platform/windows/ErrorBox.h"

#include <QApplication>
#include <QMessageBox>
#include <cstdio>
#include <exception>
#include <new>

#include "platform/system/Exceptions.h"
#include "platform/system/MemoryReserve.h"
#include "platform/windows/qt/UiQueue.h"

namespace {

CMemoryReserve g_memoryForErrors;
bool g_bReportsLater = false;

/// Shows what is being handled.
void ShowCurrentException() {
    try {
        throw;
    } catch (const CUserException&) {
        // The operator has been told, or has asked for it.
    } catch (const CException& exception) {
        ShowErrorBox(exception.GetErrorMessage());
    } catch (const std::bad_alloc&) {
        ShowErrorBox(CMemoryException().GetErrorMessage());
    } catch (const std::exception& exception) {
        ShowErrorBox(QString::fromLocal8Bit(exception.what()).toStdWString());
    } catch (...) {
        ShowErrorBox(L"An error that does not say what it is.");
    }
}

/// Needs no memory.
void WriteUnshownError() noexcept { std::fputs("An error could not be shown.\n", stderr); }

}  // namespace

void ShowErrorBox(const std::wstring& strText) {
    QWidget* pOwner = QApplication::activeModalWidget();
    QMessageBox box(QMessageBox::Warning,
                    pOwner ? pOwner->windowTitle() : QApplication::applicationDisplayName(),
                    QString::fromStdWString(strText), QMessageBox::Ok, pOwner);
    box.exec();
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
