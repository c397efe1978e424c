// The shown main window with a title, as the user finds it on the screen.
#pragma once

#include "XPStandardWidgets.h"

#include <simhost/Widgets.h>

#include <string>

namespace kalvora_test {

/// The first shown main window titled `title`, or null.
inline simhost::WidgetHandle ShownWindow(const std::string& title) {
    for (simhost::WidgetHandle w : simhost::topLevelWidgets()) {
        simhost::WidgetInfo info;
        if (simhost::widgetInfo(w, info) && info.widgetClass == xpWidgetClass_MainWindow && info.shown &&
            info.descriptor == title)
            return w;
    }
    return nullptr;
}

} // namespace kalvora_test
