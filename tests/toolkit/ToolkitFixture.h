// A simhost with one in-process plug-in that owns the toolkit's widgets, a window whose handler
// records what it is told, and the means to find widgets and use them as a user would.
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
#include "toolkit/Controls.h"
#include "toolkit/Window.h"

namespace toolkit_test {

/// Screen rectangle of a widget, pixels.
struct Rect {
    int left = 0, top = 0, right = 0, bottom = 0;
    int width() const { return right - left; }
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
    return simhost::widgetDescriptor(w);
}

inline std::vector<XPWidgetID> WidgetsOfClass(XPWidgetID root, int widgetClass) {
    return simhost::findWidgets(
        [&](const simhost::WidgetInfo& info) { return info.widgetClass == widgetClass; }, root);
}

/// Main-window roots alive now, oldest first.
inline std::vector<XPWidgetID> MainWindows() {
    return simhost::findWidgets([](const simhost::WidgetInfo& info) {
        return info.isRoot && info.widgetClass == xpWidgetClass_MainWindow;
    });
}

/// One message a window handler received.
struct Heard {
    long message;
    HV_Panel* source;
    long param2;
};

/// A window handler that records every message and lets a test look at the controls while the
/// message is being handled (`onMessage`).
struct Recorder {
    std::vector<Heard> heard;
    std::function<void(const Heard&)> onMessage;

    static int Handle(void* user, long message, HV_Panel* source, long, long param2) {
        auto* self = static_cast<Recorder*>(user);
        self->heard.push_back({message, source, param2});
        if (self->onMessage) self->onMessage(self->heard.back());
        return 0;
    }
    /// (source, param2) of every message of one kind.
    std::vector<std::pair<HV_Panel*, long>> Of(long message) const {
        std::vector<std::pair<HV_Panel*, long>> out;
        for (const Heard& h : heard)
            if (h.message == message) out.emplace_back(h.source, h.param2);
        return out;
    }
};

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
        pluginId_ = host_->addPlugin(plugin);
        ASSERT_GE(pluginId_, 0);
        host_->setDirectCaller(pluginId_);
    }

    void TearDown() override {
        delete window;
        host_.reset();
    }

    simhost::Host& host() { return *host_; }

    /// A 400-pixel-wide window handled by `recorder`, with one unstyled auto-height panel.
    HV_Panel* PanelInAWindow() {
        window = new HV_Window(&recorder, Recorder::Handle, 400, "Test", false, true);
        auto* panel = new HV_Panel(kHV_NoStyle, false, 0, nullptr, true, true);
        EXPECT_TRUE(window->AddChild(panel));
        return panel;
    }

    /// Mouse down and up in the middle of a widget.
    void Click(XPWidgetID w) { EXPECT_TRUE(simhost::clickWidget(*host_, w)) << "click on " << GeometryOf(w); }

    std::unique_ptr<simhost::Host> host_;
    int pluginId_ = -1;
    bool render_;
    Recorder recorder;
    HV_Window* window = nullptr; ///< deleted at tear-down
};

} // namespace toolkit_test
