// A simhost with one in-process plug-in that owns the toolkit's widgets, and the
// means to find widgets and use them as a user would: click, type, drag.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "XPLMDefs.h"
#include "XPStandardWidgets.h"
#include "XPWidgets.h"
#include "simhost/Simhost.h"
#include "simhost/Widgets.h"

namespace toolkit_test {

/// Screen rectangle of a widget, pixels.
struct Rect {
    int left = 0, top = 0, right = 0, bottom = 0;
    int width() const { return right - left; }
    int height() const { return top - bottom; }
    int midX() const { return (left + right) / 2; }
    int midY() const { return (top + bottom) / 2; }
    bool operator==(const Rect& o) const {
        return left == o.left && top == o.top && right == o.right && bottom == o.bottom;
    }
};
inline std::ostream& operator<<(std::ostream& out, const Rect& r) {
    return out << "(" << r.left << ", " << r.top << ", " << r.right << ", " << r.bottom << ")";
}

inline Rect GeometryOf(XPWidgetID w) {
    Rect r;
    XPGetWidgetGeometry(w, &r.left, &r.top, &r.right, &r.bottom);
    return r;
}

inline std::string DescriptorOf(XPWidgetID w) {
    const int length = XPGetWidgetDescriptor(w, nullptr, 0);
    std::string text(static_cast<size_t>(length > 0 ? length : 0), '\0');
    if (length > 0) XPGetWidgetDescriptor(w, text.data(), length);
    return text;
}

inline long PropertyOf(XPWidgetID w, XPWidgetPropertyID property) {
    return static_cast<long>(XPGetWidgetProperty(w, property, nullptr));
}

/// Every widget under `root` (depth first, root excluded).
inline void CollectWidgets(XPWidgetID root, std::vector<XPWidgetID>& out) {
    const int count = XPCountChildWidgets(root);
    for (int i = 0; i < count; ++i) {
        XPWidgetID child = XPGetNthChildWidget(root, i);
        out.push_back(child);
        CollectWidgets(child, out);
    }
}

inline std::vector<XPWidgetID> WidgetsUnder(XPWidgetID root) {
    std::vector<XPWidgetID> all;
    CollectWidgets(root, all);
    return all;
}

/// The first widget under root whose descriptor is `text`, or null.
inline XPWidgetID FindByDescriptor(XPWidgetID root, const std::string& text) {
    for (XPWidgetID w : WidgetsUnder(root))
        if (DescriptorOf(w) == text) return w;
    return nullptr;
}

/// Main-window roots alive now, oldest first.
inline std::vector<XPWidgetID> MainWindows() {
    std::vector<XPWidgetID> roots;
    for (simhost::WidgetHandle w : simhost::topLevelWidgets()) {
        simhost::WidgetInfo info;
        if (simhost::widgetInfo(w, info) && info.isRoot && info.widgetClass == xpWidgetClass_MainWindow)
            roots.push_back(w);
    }
    return roots;
}

/// Widgets of a class under `root`, in tree order.
inline std::vector<XPWidgetID> WidgetsOfClass(XPWidgetID root, int widgetClass) {
    return simhost::findWidgets(
        [&](const simhost::WidgetInfo& info) { return info.widgetClass == widgetClass; }, root);
}

/// Test base: a fresh host and an in-process plug-in every API call is attributed to.
class ToolkitTest : public ::testing::Test {
protected:
    explicit ToolkitTest(bool render = false) : render_(render) {}

    void SetUp() override {
        simhost::HostOptions options;
        options.render = render_;
        host_ = std::make_unique<simhost::Host>(options);
        simhost::InProcessPlugin plugin;
        plugin.name = "ToolkitTest";
        plugin.signature = "kalvora.test.toolkit";
        plugin.description = "widget toolkit tests";
        pluginId_ = host_->addPlugin(plugin);
        ASSERT_GE(pluginId_, 0);
        host_->setDirectCaller(pluginId_);
    }

    void TearDown() override { host_.reset(); }

    simhost::Host& host() { return *host_; }

    /// Mouse down and up in the middle of a widget.
    void Click(XPWidgetID w) { EXPECT_TRUE(simhost::clickWidget(*host_, w)) << "click on " << GeometryOf(w); }

    /// Types characters into the focused widget (key down and up each).
    void Type(const std::string& text) {
        for (char c : text)
            host_->pressKey(VirtualKeyOf(c), 0, c);
    }

    /// Presses backspace.
    void Backspace() { host_->pressKey(XPLM_VK_BACK, 0, XPLM_KEY_DELETE); }

    static int VirtualKeyOf(char c) {
        if (c >= 'a' && c <= 'z') return XPLM_VK_A + (c - 'a');
        if (c >= 'A' && c <= 'Z') return XPLM_VK_A + (c - 'A');
        if (c >= '0' && c <= '9') return XPLM_VK_0 + (c - '0');
        if (c == '.') return XPLM_VK_PERIOD;
        return 0;
    }

    std::unique_ptr<simhost::Host> host_;
    int pluginId_ = -1;
    bool render_;
};

} // namespace toolkit_test
