// A fresh simhost per test with the plug-in's code attributed to an in-process
// plug-in, and the means to use the plug-in's windows as a user would: click
// controls, press keys, drag sliders. Windows left open are closed as their
// close boxes would before the host goes.
#pragma once

#include "core/AppFixture.h"
#include "dialogs/ShownWindow.h"

#include "XPStandardWidgets.h"
#include "XPWidgets.h"
#include "core/PrefsDialog.h"
#include "toolkit/Controls.h"
#include "toolkit/Window.h"

#include <simhost/Widgets.h>

#include <string>
#include <vector>

namespace kalvora_test {

class DialogsTest : public AppTest {
protected:
    void SetUp() override {
        AppTest::SetUp();
        gPREF_ActiveKey = 0;
        mWaitingKey = false;
    }

    void TearDown() override {
        host->setDirectCaller(pluginId);
        HV_Window::CloseAll(); // as the plug-in's stop does
        AppTest::TearDown();
    }

    /// Clicks a control as the user does (its widget's centre).
    bool Click(HV_Panel* control) { return control && simhost::clickWidget(*host, control->widget); }
    bool Drag(HV_CtrlSlider* slider, int value) {
        return simhost::dragSliderTo(*host, slider->widget, value);
    }

    /// The text of a text line or a button.
    template <class Control> static std::string TextOf(Control* control) {
        char buffer[200];
        control->GetText(buffer, sizeof buffer);
        return buffer;
    }

    /// How many of the plug-in's registrations now start with `prefix`.
    int Registered(const std::string& prefix) {
        int n = 0;
        for (const std::string& line : host->registrations(pluginId))
            n += line.rfind(prefix, 0) == 0;
        return n;
    }
};

} // namespace kalvora_test
