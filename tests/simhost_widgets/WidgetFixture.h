// A host with an in-process plug-in owning the widgets, and a recorder of the
// messages widgets receive.
#pragma once

#include "XPStandardWidgets.h"
#include "XPWidgetUtils.h"
#include "XPWidgets.h"
#include "simhost/Simhost.h"
#include "simhost/Widgets.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace simhost::testing {

/// One message a recording callback saw.
struct Seen {
    std::string by; ///< which recorder
    XPWidgetMessage msg;
    XPWidgetID widget;
    intptr_t p1, p2;
};

/// Every message the recorders saw, in order (widget functions are plain C functions).
inline std::vector<Seen>& seen() {
    static std::vector<Seen> log;
    return log;
}

/// The notifications of a kind, in order.
inline std::vector<Seen> seenOf(XPWidgetMessage msg) {
    std::vector<Seen> out;
    for (const Seen& s : seen())
        if (s.msg == msg) out.push_back(s);
    return out;
}

/// A widget function that records every message as `kName` and says it handled it when `kHandles`.
template <char kName, int kHandles> int record(XPWidgetMessage m, XPWidgetID w, intptr_t p1, intptr_t p2) {
    seen().push_back({std::string(1, kName), m, w, p1, p2});
    return kHandles;
}
inline constexpr XPWidgetFunc_t recordA = record<'A', 0>, recordB = record<'B', 0>,
                                recordAndHandle = record<'H', 1>;

class WidgetTest : public ::testing::Test {
protected:
    void SetUp() override {
        seen().clear();
        host = std::make_unique<Host>(options());
        InProcessPlugin owner;
        owner.name = "Widget owner";
        owner.signature = "kalvora.test.widgets";
        plugin = host->addPlugin(owner);
        ASSERT_GT(plugin, 0);
        host->setDirectCaller(plugin);
    }
    void TearDown() override {
        host.reset();
        seen().clear();
    }
    virtual HostOptions options() { return HostOptions{}; }

    /// A visible main window (root) at the given rectangle.
    XPWidgetID mainWindow(int l, int t, int r, int b, const char* title = "Window") {
        return XPCreateWidget(l, t, r, b, 1, title, 1, nullptr, xpWidgetClass_MainWindow);
    }
    XPWidgetID child(XPWidgetID parent, XPWidgetClass cls, int l, int t, int r, int b,
                     const char* text = "") {
        return XPCreateWidget(l, t, r, b, 1, text, 0, parent, cls);
    }

    std::unique_ptr<Host> host;
    int plugin = -1;
};

} // namespace simhost::testing
