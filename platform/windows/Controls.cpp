#include "platform/windows/Controls.h"

#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <algorithm>
#include <cwctype>

#include "platform/drawing/qt/Surface.h"
#include "platform/windows/qt/FingerScroll.h"
#include "platform/windows/qt/Widgets.h"

namespace {

/// The control's widget as its class, or null without a window or when it is of another kind.
template <class Widget>
Widget* WidgetOf(const CWnd& wnd) {
    NativeWindow* pNative = NativeWindow::Of(wnd);
    return pNative ? dynamic_cast<Widget*>(&pNative->m_widget) : nullptr;
}

bool ComesBefore(const std::wstring& strLeft, const std::wstring& strRight) {
    return std::lexicographical_compare(
        strLeft.begin(), strLeft.end(), strRight.begin(), strRight.end(),
        [](wchar_t a, wchar_t b) { return std::towlower(a) < std::towlower(b); });
}

/// The widget counts 16-bit units, of which a character outside of the basic plane has two.
int UnitsOf(const std::wstring& strText, int nCharacters) {
    const auto nFirst = static_cast<std::size_t>(std::max(nCharacters, 0));
    return static_cast<int>(QString::fromStdWString(strText.substr(0, nFirst)).size());
}

int CharactersOf(const QString& text, int nUnits) {
    return static_cast<int>(text.left(nUnits).toStdWString().size());
}

/// Where a text goes: behind the items that do not come after it.
template <class TextAt>
int FindSortedPlace(int nCount, const std::wstring& strText, TextAt textAt) {
    int nPlace = 0;
    while (nPlace < nCount && !ComesBefore(strText, textAt(nPlace))) ++nPlace;
    return nPlace;
}

}  // namespace

void CStatic::SetCentered(bool bCentered) {
    if (auto* pWidget = WidgetOf<StaticWidget>(*this)) {
        pWidget->m_bCentered = bCentered;
        pWidget->m_native.MarkStale();
    }
}

void CButton::SetCheck(bool bChecked) {
    if (auto* pWidget = WidgetOf<ButtonWidget>(*this)) {
        pWidget->setCheckable(true);
        pWidget->setChecked(bChecked);
    }
}

void CButton::SetTakesFocus(bool bTakesFocus) {
    if (auto* pWidget = WidgetOf<ButtonWidget>(*this))
        pWidget->setFocusPolicy(bTakesFocus ? Qt::StrongFocus : Qt::NoFocus);
}

void CStyledButton::SetImage(const CBitmap* pBitmap) {
    if (auto* pWidget = WidgetOf<ButtonWidget>(*this)) {
        pWidget->m_picture = pBitmap ? *pBitmap : CBitmap();
        pWidget->update();
    }
}

void CEdit::SetSelection(int nStart, int nEnd) {
    auto* pWidget = WidgetOf<EditWidget>(*this);
    if (!pWidget) return;
    if (nEnd < 0) {
        pWidget->selectAll();
        return;
    }
    const std::wstring strText = GetWindowText();
    const int nUnitStart = UnitsOf(strText, nStart);
    pWidget->setSelection(nUnitStart, UnitsOf(strText, nEnd) - nUnitStart);
}

void CEdit::GetSelection(int& nStart, int& nEnd) const {
    nStart = nEnd = 0;
    auto* pWidget = WidgetOf<EditWidget>(*this);
    if (!pWidget) return;
    const bool bSelected = pWidget->hasSelectedText();
    const int nUnitStart = bSelected ? pWidget->selectionStart() : pWidget->cursorPosition();
    const int nUnitEnd = bSelected ? pWidget->selectionEnd() : nUnitStart;
    nStart = CharactersOf(pWidget->text(), nUnitStart);
    nEnd = CharactersOf(pWidget->text(), nUnitEnd);
}

int CListBox::AddString(const std::wstring& strText) {
    auto* pWidget = WidgetOf<ListWidget>(*this);
    if (!pWidget) return -1;
    const int nPlace =
        pWidget->m_bSorted
            ? FindSortedPlace(pWidget->count(), strText, [this](int nRow) { return GetText(nRow); })
            : pWidget->count();
    const QSignalBlocker quiet(pWidget);
    pWidget->insertItem(nPlace, QString::fromStdWString(strText));
    if (pWidget->m_nRowHeight) pWidget->item(nPlace)->setSizeHint({0, pWidget->m_nRowHeight});
    return nPlace;
}

void CListBox::ResetContent() {
    if (auto* pWidget = WidgetOf<ListWidget>(*this)) {
        const QSignalBlocker quiet(pWidget);
        pWidget->clear();
    }
}

int CListBox::GetCount() const {
    auto* pWidget = WidgetOf<ListWidget>(*this);
    return pWidget ? pWidget->count() : 0;
}

int CListBox::GetCurSel() const {
    auto* pWidget = WidgetOf<ListWidget>(*this);
    if (!pWidget || pWidget->selectedItems().isEmpty()) return -1;
    return pWidget->row(pWidget->selectedItems().front());
}

void CListBox::SetCurSel(int nRow) {
    if (auto* pWidget = WidgetOf<ListWidget>(*this)) {
        const QSignalBlocker quiet(pWidget);
        if (nRow < 0)
            pWidget->clearSelection();
        else
            pWidget->setCurrentRow(nRow, QItemSelectionModel::ClearAndSelect);
    }
}

std::wstring CListBox::GetText(int nRow) const {
    auto* pWidget = WidgetOf<ListWidget>(*this);
    auto* pItem = pWidget ? pWidget->item(nRow) : nullptr;
    return pItem ? pItem->text().toStdWString() : std::wstring();
}

void CListBox::SetItemData(int nRow, DWORD nData) {
    auto* pWidget = WidgetOf<ListWidget>(*this);
    if (auto* pItem = pWidget ? pWidget->item(nRow) : nullptr) pItem->setData(Qt::UserRole, nData);
}

DWORD CListBox::GetItemData(int nRow) const {
    auto* pWidget = WidgetOf<ListWidget>(*this);
    auto* pItem = pWidget ? pWidget->item(nRow) : nullptr;
    return pItem ? pItem->data(Qt::UserRole).toUInt() : 0;
}

int CListBox::GetTopIndex() const {
    auto* pWidget = WidgetOf<ListWidget>(*this);
    return pWidget ? pWidget->row(pWidget->itemAt(1, 1)) : -1;
}

void CListBox::SetTopIndex(int nRow) {
    auto* pWidget = WidgetOf<ListWidget>(*this);
    if (auto* pItem = pWidget ? pWidget->item(nRow) : nullptr)
        pWidget->scrollToItem(pItem, QAbstractItemView::PositionAtTop);
}

void CListBox::SetFingerRows(int nHeight) {
    auto* pWidget = WidgetOf<ListWidget>(*this);
    if (!pWidget) return;
    pWidget->m_nRowHeight = nHeight;
    pWidget->setIconSize({nHeight * 2 / 3, nHeight * 2 / 3});
    pWidget->setTextElideMode(Qt::ElideMiddle);
    pWidget->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    new FingerScroll(*pWidget);  // the list's own
}

void CListBox::SetItemPicture(int nRow, const CBitmap& picture) {
    auto* pWidget = WidgetOf<ListWidget>(*this);
    auto* pItem = pWidget ? pWidget->item(nRow) : nullptr;
    if (!pItem || !picture) return;
    QPixmap pixels(pWidget->iconSize());
    pixels.fill(Qt::transparent);
    QPainter painter(&pixels);
    DrawBitmap(painter, picture, pixels.rect());
    painter.end();
    pItem->setIcon(QIcon(pixels));
}

int CComboBox::AddString(const std::wstring& strText) {
    auto* pWidget = WidgetOf<ComboWidget>(*this);
    if (!pWidget) return -1;
    const int nPlace = pWidget->m_bSorted
                           ? FindSortedPlace(pWidget->count(), strText,
                                             [this](int nIndex) { return GetItemText(nIndex); })
                           : pWidget->count();
    const int nSelected = pWidget->currentIndex();
    const QSignalBlocker quiet(pWidget);
    pWidget->insertItem(nPlace, QString::fromStdWString(strText));
    // The first item of an empty list would become the selected one by itself.
    if (nSelected < 0) pWidget->setCurrentIndex(-1);
    return nPlace;
}

void CComboBox::ResetContent() {
    if (auto* pWidget = WidgetOf<ComboWidget>(*this)) pWidget->clear();
}

int CComboBox::GetCount() const {
    auto* pWidget = WidgetOf<ComboWidget>(*this);
    return pWidget ? pWidget->count() : 0;
}

int CComboBox::GetCurSel() const {
    auto* pWidget = WidgetOf<ComboWidget>(*this);
    return pWidget ? pWidget->currentIndex() : -1;
}

void CComboBox::SetCurSel(int nIndex) {
    if (auto* pWidget = WidgetOf<ComboWidget>(*this)) pWidget->setCurrentIndex(nIndex);
}

std::wstring CComboBox::GetItemText(int nIndex) const {
    auto* pWidget = WidgetOf<ComboWidget>(*this);
    return pWidget ? pWidget->itemText(nIndex).toStdWString() : std::wstring();
}

void CComboBox::SetItemData(int nIndex, DWORD nData) {
    if (auto* pWidget = WidgetOf<ComboWidget>(*this)) pWidget->setItemData(nIndex, nData);
}

DWORD CComboBox::GetItemData(int nIndex) const {
    auto* pWidget = WidgetOf<ComboWidget>(*this);
    return pWidget ? pWidget->itemData(nIndex).toUInt() : 0;
}
