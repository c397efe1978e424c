// A table of text cells: a header row, columns of fixed widths, a selectable
// row, and a vertical scroll bar when there are more rows than fit.
//
// A click on a row selects it (highlighted) and sends kHV_MsgArrayRowSelected to
// the window's handler with the control as source and the row as param2. The
// wheel and the scroll bar scroll the rows.
#pragma once

#include <string>
#include <vector>

#include "toolkit/Panel.h"

/// Message sent up the table's widget chain when the user selects a row: param1 the table widget, param2 the
/// row.
constexpr long kHV_MsgArrayRowSelected = 12106;

/// A table control.
class HV_CtrlArray : public HV_Panel {
public:
    static constexpr int kRowHeight = 14;      ///< pixels
    static constexpr int kHeaderHeight = 16;   ///< pixels
    static constexpr int kScrollBarWidth = 14; ///< pixels
    static constexpr int kMaxRows = 10000;     ///< larger row counts are cut
    static constexpr int kMaxColumns = 10;     ///< larger column counts are cut

    int visibleRows;                             ///< rows shown at once
    bool enabled;                                ///< clicks select only when enabled
    std::vector<std::string> titles;             ///< header text per column
    std::vector<int> widths;                     ///< column widths, pixels
    std::vector<std::vector<std::string>> cells; ///< [row][column]
    int selectedRow = -1;                        ///< -1: none
    void* scrollBar = nullptr;                   ///< the scroll bar widget (widget is the table)

    /// A table of `columns` columns (1..10) showing `visibleRows` rows (at least 1) at a time.
    HV_CtrlArray(int columns, int visibleRows, bool enabled, bool visible);
    ~HV_CtrlArray() override;
    void SetFatherWidget(void* rootWidget, void* parentWidget) override;
    void SetEnable(bool enable) override;
    bool GetIsEnable() override;
    void SetVisible(bool visible) override;

    /// Header text and width (pixels) of a column; ignored for a column out of range.
    void SetColumn(int column, const char* title, int width);
    /// Number of rows (new rows are empty); the selection is cleared when its row goes.
    void SetRowCount(int rows);
    /// Number of rows.
    int GetRowCount();
    /// Text of one cell; ignored out of range.
    void SetCellText(int row, int column, const char* text);
    /// Copies one cell's text into buffer (always terminated; empty out of range).
    void GetCellText(int row, int column, char* buffer, int size);
    /// The selected row, or -1.
    int GetSelectedRow();
    /// Selects a row (-1: none) and scrolls it into view; sends no message.
    void SetSelectedRow(int row);
    /// First row shown, 0-based.
    int GetFirstVisibleRow();
    /// Scrolls so that `row` is the first row shown (as far as the rows allow).
    void ScrollToRow(int row);
    /// Screen rectangle of a row's cells while it is shown; false otherwise.
    bool GetRowGeometry(int row, int* left, int* top, int* right, int* bottom);

    /// Widget function of the table: draws it and takes clicks and the wheel.
    static int TableHandler(XPWidgetMessage message, XPWidgetID widget, intptr_t param1, intptr_t param2);

private:
    int MaxFirstRow();
    void UpdateScrollBar();
    void Draw();
};
