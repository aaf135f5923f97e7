#include "platform/windows/ErrorBox.h"

#include <QApplication>
#include <QMessageBox>
#include <new>

#include "platform/system/Exceptions.h"

void ShowErrorBox(const std::wstring& strText) {
    QWidget* pOwner = QApplication::activeModalWidget();
    QMessageBox box(QMessageBox::Warning,
                    pOwner ? pOwner->windowTitle() : QApplication::applicationDisplayName(),
                    QString::fromStdWString(strText), QMessageBox::Ok, pOwner);
    box.exec();
}

void ReportCurrentException() {
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
    }
}
