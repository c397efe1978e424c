#include "toolkit/Panel.h"

#include <cstdlib>
#include <cstring>

#include "XPStandardWidgets.h"
#include "XPWidgets.h"
#include "toolkit/PanelStyle.h"
#include "utils/HV_LOGUtils.h"

namespace {

/// Line width of the default style's border, pixels.
constexpr float kDefaultBorderWidth = 2.0f;
/// Height of a framed panel's title line, pixels.
constexpr int kTitleLineHeight = 11;
/// Width of one character of the simulator's basic font, pixels.
constexpr int kCharWidth = 6;

bool InRange(int value, int low, int high) {
    return value >= low && value <= high;
}

} // namespace

char* HV_CopyString(const char* text) {
    if (!text) text = "";
    const size_t length = std::strlen(text);
    char* copy = new char[length + 1];
    std::memcpy(copy, text, length + 1);
    return copy;
}

HV_Panel::HV_Panel(HV_PanelStyle* style_, char fixedHeight_, char kind_, const char* name_,
                   bool frameVisible_, bool visible_)
    : fixedHeight(fixedHeight_), kind(kind_), visible(visible_), frameVisible(frameVisible_),
      name(name_ ? HV_CopyString(name_) : nullptr),
      style(style_ ? style_ : Style_Classic(kDefaultBorderWidth)) {}

HV_Panel::~HV_Panel() {
    UnlinkWidget(widget);
    for (int column = 0; column < kMaxColumns; ++column) {
        for (int slot = 0; slot < kChildSlots; ++slot) {
            delete children[column][slot];
            children[column][slot] = nullptr;
        }
    }
    if (style != kHV_NoStyle) delete style;
    delete[] name;
}

void HV_Panel::SetVisible(bool visible_) {
    visible = visible_;
    SetFrameVisible(frameVisible);
}

bool HV_Panel::GetIsVisible() {
    return visible;
}

void HV_Panel::SetEnable(bool) {}

bool HV_Panel::GetIsEnable() {
    return true;
}

void HV_Panel::SetPosition(int left_, int top_) {
    if (InRange(left_, minWidth, maxWidth)) left = left_;
    if (InRange(top_, minWidth, maxWidth)) top = top_;
}

void HV_Panel::SetSize(int right_, int bottom_) {
    if (InRange(right_, minWidth, maxWidth)) right = right_;
    if (fixedHeight && InRange(bottom_, minHeight, maxHeight)) bottom = bottom_;
}

void HV_Panel::SetMarge(int x, int y) {
    margeX = x;
    margeY = y;
}

void HV_Panel::SetNumberOfColumn(char n) {
    if (n < 1) n = 1;
    if (n > kMaxColumns) n = kMaxColumns;
    numberOfColumns = n;
}

void HV_Panel::SetColumnWidth(char column, int width) {
    if (column < 0 || column >= numberOfColumns) return;
    columnWidth[static_cast<int>(column)] = width;
}

void HV_Panel::SetFrameVisible(bool show) {
    frameVisible = show;
    SetFrameVisible(widget, frameVisible && visible);
}

void HV_Panel::SetFrameVisible(void* widget_, bool show) {
    if (!widget_) return;
    if (show)
        XPShowWidget(widget_);
    else
        XPHideWidget(widget_);
}

int HV_Panel::CountChild(char column) {
    if (column < 0 || column >= kMaxColumns) return 0;
    return childCount[static_cast<int>(column)];
}

HV_Panel* HV_Panel::GetChildByIndex(int index, char column) {
    if (column < 0 || column >= kMaxColumns) return nullptr;
    if (childCount[static_cast<int>(column)] <= index) return nullptr;
    // The table is read as [index][column]: the same child as AddChild stored only for
    // index 0 of column 0 or where both agree. Outside the table there is nothing.
    if (index < 0 || index >= kMaxColumns || column >= kChildSlots) return nullptr;
    return children[index][static_cast<int>(column)];
}

void HV_Panel::RememberWidgets(void* rootWidget_, void* parentWidget_) {
    created = true;
    rootWidget = rootWidget_;
    parentWidget = parentWidget_;
}

void HV_Panel::LinkWidget(void* widget_) {
    if (widget_) XPSetWidgetProperty(widget_, xpProperty_Refcon, reinterpret_cast<intptr_t>(this));
}

void HV_Panel::UnlinkWidget(void* widget_) {
    if (!widget_) return;
    if (XPGetWidgetProperty(widget_, xpProperty_Refcon, nullptr) == reinterpret_cast<intptr_t>(this))
        XPSetWidgetProperty(widget_, xpProperty_Refcon, 0);
}

HV_Panel* HV_Panel::FromWidget(void* widget_) {
    if (!widget_) return nullptr;
    return reinterpret_cast<HV_Panel*>(XPGetWidgetProperty(widget_, xpProperty_Refcon, nullptr));
}

void HV_Panel::SetFatherWidget(void* rootWidget_, void* parentWidget_) {
    RememberWidgets(rootWidget_, parentWidget_);
    const int shown = frameVisible && visible;
    if (name) {
        // A framed sub-window with its title on the first line; children start under the title.
        widget = XPCreateWidget(left + margeX, top - margeY - kTitleLineHeight, right - margeX,
                                bottom + margeY, shown, "", 0, rootWidget, xpWidgetClass_SubWindow);
        const int titleLeft = left + margeX;
        XPWidgetID caption = XPCreateWidget(
            titleLeft, top - margeY, titleLeft + kCharWidth * static_cast<int>(std::strlen(name)),
            top - margeY - kTitleLineHeight, shown, name, 0, rootWidget, xpWidgetClass_Caption);
        LinkWidget(caption);
        top -= kTitleLineHeight;
    } else {
        widget = XPCreateCustomWidget(left + margeX, top - margeY, right - margeX, bottom + margeY, shown, "",
                                      0, rootWidget, HV_PanelHandler);
    }
    LinkWidget(widget);
}

bool HV_Panel::AddChild(HV_Panel* child, char column) {
    if (!child) return false;
    if (column < 0 || column >= numberOfColumns) return false;
    const int col = column;
    if (childCount[col] >= kMaxChildrenPerColumn) return false;
    if (!created)
        HV_LOGUtils::Add2Log("HV_Panel::AddChild: the panel has no widget yet; add it to its parent first",
                             HV_LOGUtils::kHV_LOG_WARNING);

    // Vertical place: under the children already in the column.
    int childTop = top - margeY;
    for (int i = 0; i < childCount[col]; ++i)
        childTop -= std::abs(children[col][i]->bottom) + children[col][i]->margeY;
    child->top = childTop;

    // Horizontal place: columns are meant to share one width, so this column's width is used for
    // every column before it too.
    int candidateRight;
    if (columnWidth[col] != 0) {
        const int x = left + col * columnWidth[col];
        child->left = x + margeX;
        candidateRight = x + columnWidth[col] + margeX;
    } else {
        child->left = left + margeX * (col + 1);
        candidateRight = right - margeX;
    }

    children[col][childCount[col]] = child;
    if (InRange(candidateRight, child->minWidth, child->maxWidth)) child->right = candidateRight;
    if (child->fixedHeight && InRange(bottom, child->minHeight, child->maxHeight)) child->bottom = bottom;

    child->SetFatherWidget(rootWidget, widget);

    if (!fixedHeight) {
        int lowest = 0; // relative to top, pixels (negative downwards)
        for (int c = 0; c < kMaxColumns; ++c) {
            int y = top - margeY;
            const int count = c == col ? childCount[c] + 1 : childCount[c];
            for (int i = 0; i < count; ++i)
                y -= std::abs(children[c][i]->bottom) + children[c][i]->margeY;
            if (count > 0 && y - top < lowest) lowest = y - top;
        }
        if (widget) XPSetWidgetGeometry(widget, left + margeX, top - margeY, right - margeX, top + lowest);
        bottom = lowest - margeY;
    }

    ++childCount[col];
    if (col == 0 && parentWidget && parentWidget != rootWidget) {
        if (HV_Panel* parent = FromWidget(parentWidget))
            parent->Event(kHV_MsgChildBottomMoved, widget, bottom + top - margeY, 0);
    }
    return true;
}

int HV_Panel::Event(long message, void* widget_, long param1, long param2) {
    if (message == kHV_MsgChildBottomMoved) {
        if (param1 >= lowestBottom) return 0;
        lowestBottom = static_cast<int>(std::labs(param1));
        if (widget) XPSetWidgetGeometry(widget, left + margeX, top - margeY, right - margeX, lowestBottom);
        if (parentWidget && parentWidget != rootWidget) {
            if (HV_Panel* parent = FromWidget(parentWidget)) parent->Event(message, widget, param1, param2);
        }
        return 1;
    }
    for (int c = 0; c < kMaxColumns; ++c) {
        for (int i = 0; i < childCount[c]; ++i) {
            if (children[c][i] && children[c][i]->Event(message, widget_, param1, param2) != 0) return 1;
        }
    }
    return 0;
}

void HV_Panel::Pack() {
    bottom = top - lowestBottom + margeY;
}

int HV_Panel::HV_PanelHandler(XPWidgetMessage message, XPWidgetID widget_, intptr_t, intptr_t) {
    if (message != xpMsg_Draw) return 0;
    try {
        HV_Panel* panel = FromWidget(widget_);
        if (!panel || !panel->visible) return 0;
        int l = 0, t = 0, r = 0, b = 0;
        XPGetWidgetGeometry(widget_, &l, &t, &r, &b);
        if (panel->style && panel->style != kHV_NoStyle) panel->style->Draw(l - 1, t + 1, r + 1, b - 1);
    } catch (...) {
        HV_LOGUtils::Add2Log("HV_PanelHandler: drawing failed", HV_LOGUtils::kHV_LOG_ALERT);
    }
    return 1;
}
