// The toolkit's element: a rectangle laid out in up to ten columns of child
// panels stacked from the top down, painted by its HV_PanelStyle and backed by
// one simulator widget. Every control is a panel; a window hosts a root panel.
//
// Coordinates are the simulator's window pixels (origin bottom left, y up).
// A panel's widget exists only once SetFatherWidget ran, which AddChild does:
// add a panel to its parent before adding children to it.
//
// The link from a widget back to its toolkit object is the widget's property 0
// (the reference constant): every panel stores `this` there.
#pragma once

#include <cstdint>

#include "XPWidgetDefs.h"

class HV_PanelStyle;

/// Style value meaning "no style": never drawn and never deleted.
inline HV_PanelStyle* const kHV_NoStyle = reinterpret_cast<HV_PanelStyle*>(static_cast<intptr_t>(-1));

/// The toolkit's own message: a child's bottom edge moved; param1 is the new bottom (pixels).
constexpr long kHV_MsgChildBottomMoved = 12104;

/// A rectangle of the layout, owning its style and its children.
class HV_Panel {
public:
    static constexpr int kMaxColumns = 10;           ///< columns of children
    static constexpr int kChildSlots = 100;          ///< child slots per column
    static constexpr int kMaxChildrenPerColumn = 99; ///< AddChild refuses more than this per column

    char fixedHeight;      ///< false: the height follows the children; true: set from outside
    char kind;             ///< reserved for the subclasses (the alignment of text controls)
    int left = 0, top = 0; ///< position, window pixels
    int right = 0;         ///< right edge, pixels
    int bottom = 0;        ///< bottom edge; after packing an auto-height panel, its negative height
    int minWidth = 10, minHeight = 10;                 ///< lower bounds for SetSize and layout, pixels
    int maxWidth = 9999, maxHeight = 9999;             ///< upper bounds, pixels
    int margeX = 5, margeY = 5;                        ///< margins inside the parent, pixels
    bool visible;                                      ///< shown as far as the panel is concerned
    bool frameVisible;                                 ///< whether the panel's own widget is shown
    HV_Panel* children[kMaxColumns][kChildSlots] = {}; ///< owned children, per column
    void* rootWidget = nullptr;                        ///< the window's widget
    void* widget = nullptr;                            ///< this panel's own widget
    void* parentWidget = nullptr;                      ///< widget of the panel that holds this one
    int numberOfColumns = 1;                           ///< 1..10
    char* name = nullptr;              ///< owned copy; non-null gives a framed sub-window with this title
    int childCount[kMaxColumns] = {};  ///< children per column
    int columnWidth[kMaxColumns] = {}; ///< pixels; 0: a child takes the panel's width
    bool created = false;              ///< SetFatherWidget ran
    int lowestBottom = 9999;           ///< lowest bottom edge reported by the children, pixels
    HV_PanelStyle* style;              ///< owned; kHV_NoStyle for none

    /// A panel; a null style gets Style_Classic(2.0), kHV_NoStyle none. `name` is copied.
    HV_Panel(HV_PanelStyle* style, char fixedHeight, char kind, const char* name, bool frameVisible,
             bool visible);
    /// Deletes the style and every child.
    virtual ~HV_Panel();
    HV_Panel(const HV_Panel&) = delete;
    HV_Panel& operator=(const HV_Panel&) = delete;

    /// Stores visible, then re-applies the frame visibility.
    virtual void SetVisible(bool visible);
    /// The visible flag.
    virtual bool GetIsVisible();
    /// Nothing to enable in a plain panel.
    virtual void SetEnable(bool enable);
    /// A plain panel is always enabled.
    virtual bool GetIsEnable();
    /// Handles 12104 (a child's bottom moved), or offers the message to the children in order.
    virtual int Event(long message, void* widget, long param1, long param2);
    /// Creates this panel's widget inside rootWidget; parentWidget belongs to the holding panel.
    virtual void SetFatherWidget(void* rootWidget, void* parentWidget);

    /// Sets left and top when each lies within [minWidth, maxWidth].
    void SetPosition(int left, int top);
    /// Sets right when within the width bounds, and bottom when fixed-height and within the height bounds.
    void SetSize(int right, int bottom);
    /// Margins inside the parent, pixels.
    void SetMarge(int x, int y);
    /// Number of columns, clamped to 1..10.
    void SetNumberOfColumn(char n);
    /// Width of a column in pixels; ignored for a column not below numberOfColumns.
    void SetColumnWidth(char column, int width);
    /// Stores frameVisible and shows the widget only if it and visible are both set.
    void SetFrameVisible(bool show);
    /// Shows or hides any widget (null is ignored).
    static void SetFrameVisible(void* widget, bool show);

    /// Children in the column (0 for a column out of range).
    int CountChild(char column);
    /// The child at slot `column` of column `index` (indices deliberately exchanged; callers use
    /// index 0); null when the column holds no more than `index` children or out of the table.
    HV_Panel* GetChildByIndex(int index, char column);
    /// Places the child under the column's last one, creates its widget and re-computes this panel's
    /// height. Refused for a column out of range or already holding 99 children; then the caller
    /// still owns the child.
    /// @return true when the child was added (and is now owned by this panel)
    bool AddChild(HV_Panel* child, char column);
    /// bottom := the packed height (top - lowestBottom + margeY).
    void Pack();

    /// The toolkit object stored in a widget's property 0 (null for none).
    static HV_Panel* FromWidget(void* widget);
    /// Widget function of unnamed panels: draws the style.
    static int HV_PanelHandler(XPWidgetMessage message, XPWidgetID widget, intptr_t param1, intptr_t param2);

protected:
    /// Stores both widgets and marks the panel created (first step of every SetFatherWidget).
    void RememberWidgets(void* rootWidget, void* parentWidget);
    /// Lets the widget's property 0 point at this panel.
    void LinkWidget(void* widget);
    /// Clears property 0 of the widget if it still points at this panel.
    void UnlinkWidget(void* widget);
};

/// A heap copy of text (null gives an empty string); free with delete[].
char* HV_CopyString(const char* text);
