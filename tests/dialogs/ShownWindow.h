// The shown main windows with a title, as the user finds them on the screen, and their buttons.
#pragma once

#include "XPStandardWidgets.h"

#include <simhost/Simhost.h>
#include <simhost/Widgets.h>

#include <string>
#include <vector>

namespace kalvora_test {

/// Every shown main window titled `title`, oldest first.
inline std::vector<simhost::WidgetHandle> ShownWindows(const std::string& title) {
    return simhost::findWidgets([&](const simhost::WidgetInfo& info) {
        return info.isRoot && info.widgetClass == xpWidgetClass_MainWindow && info.shown &&
               info.descriptor == title;
    });
}

/// The first shown main window titled `title`, or null.
inline simhost::WidgetHandle ShownWindow(const std::string& title) {
    const std::vector<simhost::WidgetHandle> shown = ShownWindows(title);
    return shown.empty() ? nullptr : shown.front();
}

/// Clicks the widget with this exact text inside a window, as the user does.
inline bool ClickText(simhost::Host& host, simhost::WidgetHandle window, const std::string& text) {
    simhost::WidgetHandle w = simhost::findWidget(text, window);
    return w && simhost::clickWidget(host, w);
}

} // namespace kalvora_test
