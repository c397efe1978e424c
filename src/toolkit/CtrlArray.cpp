#include "toolkit/CtrlArray.h"

#include <algorithm>
#include <cstring>

#include "XPLMGraphics.h"
#include "XPStandardWidgets.h"
#include "XPWidgets.h"
#include "toolkit/ControlPlacement.h"
#include "toolkit/Colors.h"
#include "toolkit/OGLUtils.h"
#include "utils/HV_LOGUtils.h"

namespace {

/// Frame around the rows, pixels.
constexpr int kFrame = 2;
/// Text inset from a cell's left edge and above its bottom edge, pixels.
constexpr int kTextInsetX = 3;
constexpr int kTextInsetY = 3;

const float kListBack[3] = {0.95f, 0.95f, 0.95f};
const float kHeaderBack[3] = {0.55f, 0.6f, 0.65f};
const float kSelectedBack[3] = {0.25f, 0.35f, 0.7f};

void DrawCellText(const std::string& text, int x, int y, int width, const float* color) {
    const int fits = std::max(0, (width - kTextInsetX) / kHV_CharWidth);
    const std::string shown = text.substr(0, static_cast<size_t>(fits));
    // (mutable text for SDK headers before 4.2; the host only reads it)
    XPLMDrawString(const_cast<float*>(color), x + kTextInsetX, y + kTextInsetY,
                   const_cast<char*>(shown.c_str()), nullptr, xplmFont_Basic);
}

} // namespace

HV_CtrlArray::HV_CtrlArray(int columns, int visibleRows_, bool enabled_, bool visible_)
    : HV_Panel(kHV_NoStyle, false, 0, nullptr, true, visible_), visibleRows(std::max(1, visibleRows_)),
      enabled(enabled_) {
    const int count = std::clamp(columns, 1, kMaxColumns);
    titles.assign(count, std::string());
    widths.assign(count, 0);
    bottom = minHeight = maxHeight = margeY + kHeaderHeight + visibleRows * kRowHeight + kFrame;
}

HV_CtrlArray::~HV_CtrlArray() {
    UnlinkWidget(scrollBar);
}

void HV_CtrlArray::SetFatherWidget(void* rootWidget_, void* parentWidget_) {
    RememberWidgets(rootWidget_, parentWidget_);
    const int shown = visible ? 1 : 0;
    const int tableTop = top - margeY, tableBottom = top - bottom;
    widget = XPCreateCustomWidget(left, tableTop, right - kScrollBarWidth, tableBottom, shown, "", 0,
                                  rootWidget, TableHandler);
    LinkWidget(widget);
    scrollBar = XPCreateWidget(right - kScrollBarWidth, tableTop - kHeaderHeight, right, tableBottom, 0, "",
                               0, rootWidget, xpWidgetClass_ScrollBar);
    XPSetWidgetProperty(scrollBar, xpProperty_ScrollBarType, xpScrollBarTypeScrollBar);
    XPSetWidgetProperty(scrollBar, xpProperty_ScrollBarMin, 0);
    XPSetWidgetProperty(scrollBar, xpProperty_ScrollBarMax, MaxFirstRow());
    XPSetWidgetProperty(scrollBar, xpProperty_ScrollBarSliderPosition, MaxFirstRow()); // the first row on top
    LinkWidget(scrollBar);
    HV_SetWidgetEnabled(widget, enabled);
    HV_SetWidgetEnabled(scrollBar, enabled);
    UpdateScrollBar();
}

void HV_CtrlArray::SetEnable(bool enable) {
    enabled = enable;
    HV_SetWidgetEnabled(widget, enabled);
    HV_SetWidgetEnabled(scrollBar, enabled);
}

bool HV_CtrlArray::GetIsEnable() {
    return enabled;
}

void HV_CtrlArray::SetVisible(bool visible_) {
    visible = visible_;
    SetFrameVisible(widget, visible);
    UpdateScrollBar();
}

void HV_CtrlArray::SetColumn(int column, const char* title, int width) {
    if (column < 0 || column >= static_cast<int>(titles.size())) return;
    titles[column] = title ? title : "";
    widths[column] = std::max(0, width);
}

void HV_CtrlArray::SetRowCount(int rows) {
    rows = std::clamp(rows, 0, kMaxRows);
    cells.resize(rows, std::vector<std::string>(titles.size()));
    if (selectedRow >= rows) selectedRow = -1;
    const int first = GetFirstVisibleRow();
    UpdateScrollBar();
    ScrollToRow(first);
}

int HV_CtrlArray::GetRowCount() {
    return static_cast<int>(cells.size());
}

void HV_CtrlArray::SetCellText(int row, int column, const char* text) {
    if (row < 0 || row >= GetRowCount() || column < 0 || column >= static_cast<int>(titles.size())) return;
    cells[row][column] = text ? text : "";
}

void HV_CtrlArray::GetCellText(int row, int column, char* buffer, int size) {
    if (!buffer || size <= 0) return;
    buffer[0] = '\0';
    if (row < 0 || row >= GetRowCount() || column < 0 || column >= static_cast<int>(titles.size())) return;
    std::strncpy(buffer, cells[row][column].c_str(), size - 1);
    buffer[size - 1] = '\0';
}

int HV_CtrlArray::GetSelectedRow() {
    return selectedRow;
}

void HV_CtrlArray::SetSelectedRow(int row) {
    selectedRow = row >= 0 && row < GetRowCount() ? row : -1;
    if (selectedRow < 0) return;
    const int first = GetFirstVisibleRow();
    if (selectedRow < first)
        ScrollToRow(selectedRow);
    else if (selectedRow >= first + visibleRows)
        ScrollToRow(selectedRow - visibleRows + 1);
}

int HV_CtrlArray::MaxFirstRow() {
    return std::max(0, GetRowCount() - visibleRows);
}

int HV_CtrlArray::GetFirstVisibleRow() {
    if (!scrollBar) return 0;
    // The scroll bar's maximum is at its top: position max shows the first row.
    const int position =
        static_cast<int>(XPGetWidgetProperty(scrollBar, xpProperty_ScrollBarSliderPosition, nullptr));
    return std::clamp(MaxFirstRow() - position, 0, MaxFirstRow());
}

void HV_CtrlArray::ScrollToRow(int row) {
    if (!scrollBar) return;
    const int first = std::clamp(row, 0, MaxFirstRow());
    XPSetWidgetProperty(scrollBar, xpProperty_ScrollBarSliderPosition, MaxFirstRow() - first);
}

void HV_CtrlArray::UpdateScrollBar() {
    if (!scrollBar) return;
    const int first = GetFirstVisibleRow();
    XPSetWidgetProperty(scrollBar, xpProperty_ScrollBarMax, MaxFirstRow());
    XPSetWidgetProperty(scrollBar, xpProperty_ScrollBarPageAmount, visibleRows);
    XPSetWidgetProperty(scrollBar, xpProperty_ScrollBarSliderPosition,
                        MaxFirstRow() - std::min(first, MaxFirstRow()));
    SetFrameVisible(scrollBar, visible && GetRowCount() > visibleRows);
}

bool HV_CtrlArray::GetRowGeometry(int row, int* l, int* t, int* r, int* b) {
    if (!widget) return false;
    const int first = GetFirstVisibleRow();
    if (row < first || row >= first + visibleRows || row >= GetRowCount()) return false;
    int wl = 0, wt = 0, wr = 0;
    XPGetWidgetGeometry(widget, &wl, &wt, &wr, nullptr);
    const int rowTop = wt - kHeaderHeight - (row - first) * kRowHeight;
    if (l) *l = wl;
    if (t) *t = rowTop;
    if (r) *r = wr;
    if (b) *b = rowTop - kRowHeight;
    return true;
}

void HV_CtrlArray::Draw() {
    int l = 0, t = 0, r = 0, b = 0;
    XPGetWidgetGeometry(widget, &l, &t, &r, &b);
    HV_OGLUtils::DrawFillRect(l, t, r, b, kListBack, 1.0f);
    HV_OGLUtils::DrawFillRect(l, t, r, t - kHeaderHeight, kHeaderBack, 1.0f);
    int x = l;
    for (size_t c = 0; c < titles.size(); ++c) {
        DrawCellText(titles[c], x, t - kHeaderHeight, widths[c], HV_OGLUtils_ColorWhite);
        x += widths[c];
        if (c + 1 < titles.size()) HV_OGLUtils::DrawLine(x, t, x, b, HV_OGLUtils_ColorGray, 1.0f, 0.6f);
    }
    const int first = GetFirstVisibleRow();
    const int last = std::min(GetRowCount(), first + visibleRows);
    for (int row = first; row < last; ++row) {
        const int rowTop = t - kHeaderHeight - (row - first) * kRowHeight;
        const bool selected = row == selectedRow;
        if (selected) HV_OGLUtils::DrawFillRect(l, rowTop, r, rowTop - kRowHeight, kSelectedBack, 1.0f);
        x = l;
        for (size_t c = 0; c < titles.size(); ++c) {
            DrawCellText(cells[row][c], x, rowTop - kRowHeight, widths[c],
                         selected ? HV_OGLUtils_ColorWhite : HV_OGLUtils_ColorBlack);
            x += widths[c];
        }
    }
    HV_OGLUtils::DrawRectBorders(l, t, r, b, HV_OGLUtils_ColorGray, 1.0f, HV_OGLUtils_ColorWhite, 1.0f, 1.0f);
}

int HV_CtrlArray::TableHandler(XPWidgetMessage message, XPWidgetID widget_, intptr_t param1, intptr_t) {
    try {
        auto* table = dynamic_cast<HV_CtrlArray*>(HV_Panel::FromWidget(widget_));
        if (!table) return 0;
        switch (message) {
        case xpMsg_Draw:
            if (table->visible) table->Draw();
            return 1;
        case xpMsg_MouseDown: {
            if (!param1 || !table->enabled) return 1;
            const auto* mouse = reinterpret_cast<const XPMouseState_t*>(param1);
            int t = 0;
            XPGetWidgetGeometry(widget_, nullptr, &t, nullptr, nullptr);
            const int below = t - kHeaderHeight - mouse->y;
            if (below < 0) return 1; // the header
            const int row = table->GetFirstVisibleRow() + below / kRowHeight;
            if (row >= table->GetRowCount()) return 1;
            table->selectedRow = row;
            // May close the window: nothing of the table is touched after this.
            XPSendMessageToWidget(widget_, static_cast<XPWidgetMessage>(kHV_MsgArrayRowSelected),
                                  xpMode_UpChain, reinterpret_cast<intptr_t>(widget_), row);
            return 1;
        }
        case xpMsg_MouseWheel: {
            if (!param1) return 0;
            const auto* mouse = reinterpret_cast<const XPMouseState_t*>(param1);
            table->ScrollToRow(table->GetFirstVisibleRow() - mouse->delta);
            return 1;
        }
        default:
            return 0;
        }
    } catch (...) {
        HV_LOGUtils::Add2Log("array control: message failed", HV_LOGUtils::kHV_LOG_ALERT);
        return 0;
    }
}
