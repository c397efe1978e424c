// The preferences window used through simhost: ticks, the speed slider, the
// truck-view key and the three buttons.
#include "dialogs/DialogsFixture.h"

#include "XPLMDefs.h"
#include "core/PluginState.h"

namespace kalvora_test {
namespace {

using PrefsDialogTest = DialogsTest;

PrefsDialog* Open() {
    OpenPrefsDialog();
    return myPrefsDialog;
}

TEST_F(PrefsDialogTest, TheWindowShowsThePreferencesDefaultsApplyAtOnceAndCancelKeepsOnlyTheSlider) {
    PrefDrawTruck = false;
    PrefFrontWheel = false;
    PrefTruckSpeed = 17.8f;
    PrefTruckViewKey = XPLM_VK_F12;
    PrefsDialog* d = Open();
    simhost::WidgetHandle window = ShownWindow("Kalvora Preferences");
    ASSERT_NE(window, nullptr);
    EXPECT_FALSE(d->drawTruckBox->isChecked());
    EXPECT_TRUE(d->rearGearBox->isChecked());
    EXPECT_EQ(d->speedSlider->GetValue(), 17); // truncated
    EXPECT_EQ(TextOf(d->keyText), "Truck view (current: F12)");

    ASSERT_TRUE(Click(d->defaultsButton));
    EXPECT_TRUE(PrefDrawTruck);
    EXPECT_TRUE(PrefFrontWheel);
    EXPECT_FLOAT_EQ(PrefTruckSpeed, 10.0f);
    EXPECT_EQ(PrefTruckViewKey, XPLM_VK_F12);
    EXPECT_TRUE(d->drawTruckBox->isChecked());
    EXPECT_FALSE(d->rearGearBox->isChecked());
    EXPECT_EQ(TextOf(d->keyText), "Truck view key (current: F12)");
    EXPECT_NE(ShownWindow("Kalvora Preferences"), nullptr) << "the dialog stays";

    // Cancel keeps the slider and the defaults, but not the boxes.
    ASSERT_TRUE(Click(d->drawTruckBox));
    ASSERT_TRUE(Drag(d->speedSlider, 30));
    ASSERT_TRUE(Click(d->cancelButton));
    EXPECT_EQ(ShownWindow("Kalvora Preferences"), nullptr);
    EXPECT_FLOAT_EQ(PrefTruckSpeed, 30.0f);
    EXPECT_DOUBLE_EQ(PrefStepValue, 0.30);
    EXPECT_TRUE(PrefDrawTruck);
}

TEST_F(PrefsDialogTest, BoxesWaitForOKTheSliderDoesNot) {
    PrefTruckViewKey = XPLM_VK_F12;
    PrefsDialog* d = Open();
    ASSERT_TRUE(Click(d->drawTruckBox));
    EXPECT_TRUE(PrefDrawTruck) << "a box waits for OK";
    ASSERT_TRUE(Drag(d->speedSlider, 25));
    EXPECT_FLOAT_EQ(PrefTruckSpeed, 25.0f) << "the slider applies at once";
    EXPECT_DOUBLE_EQ(PrefStepValue, 0.25);
    // The front and rear gear boxes stay opposite.
    for (HV_CtrlCheckBox* box : {d->rearGearBox, d->rearGearBox, d->frontGearBox}) {
        ASSERT_TRUE(Click(box));
        EXPECT_NE(d->frontGearBox->isChecked(), d->rearGearBox->isChecked());
    }
    EXPECT_TRUE(d->rearGearBox->isChecked());
    Open(); // a new dialog at every opening
    EXPECT_EQ(ShownWindows("Kalvora Preferences").size(), 2u);
    ASSERT_TRUE(ClickText(*host, ShownWindow("Kalvora Preferences"), "  OK  "));
    ASSERT_TRUE(ClickText(*host, ShownWindow("Kalvora Preferences"), "  OK  "));
    EXPECT_EQ(ShownWindow("Kalvora Preferences"), nullptr);
    EXPECT_EQ(myPrefsDialog, nullptr);
    EXPECT_FALSE(PrefDrawTruck);
    EXPECT_FALSE(PrefFrontWheel);
    EXPECT_EQ(PrefTruckViewKey, 0) << "OK without assigning a key sets key 0";
    EXPECT_EQ(Registered("hot key Toggle truckview"), 2) << "two OKs in two openings";
}

TEST_F(PrefsDialogTest, AnAssignedKeyIsShownSwallowedAndBecomesTheHotKey) {
    PrefsDialog* d = Open();
    ASSERT_TRUE(Click(d->assignButton));
    EXPECT_TRUE(mWaitingKey);
    EXPECT_EQ(Registered("key sniffer"), 1);
    host->pressKey(XPLM_VK_F5);
    EXPECT_FALSE(mWaitingKey);
    EXPECT_EQ(TextOf(d->assignButton), "Key is: F5");
    EXPECT_TRUE(d->assignButton->GetIsEnable());
    // A further key replaces the assignment and is swallowed too.
    host->pressKey(XPLM_VK_G, 0, 'g');
    EXPECT_EQ(TextOf(d->assignButton), "Key is: G");
    EXPECT_EQ(gPREF_ActiveKey, XPLM_VK_G);
    ASSERT_TRUE(Click(d->assignButton)); // pressed again once a key was caught: still one sniffer
    EXPECT_EQ(Registered("key sniffer"), 1);
    ASSERT_TRUE(Click(d->okButton));
    EXPECT_EQ(PrefTruckViewKey, XPLM_VK_G);
    EXPECT_EQ(Registered("key sniffer"), 0) << "the sniffer goes with the window";
    EXPECT_EQ(Registered("hot key Toggle truckview"), 1);
    EXPECT_FALSE(host->camera().controlled);
    host->pressKey(XPLM_VK_G, 0, 'g');
    host->runFrames(2);
    EXPECT_TRUE(host->camera().controlled) << "the new hot key starts the truck view";

    // The close box ends a key wait.
    d = Open();
    ASSERT_TRUE(Click(d->assignButton));
    ASSERT_TRUE(simhost::clickCloseBox(*host, ShownWindow("Kalvora Preferences")));
    EXPECT_EQ(ShownWindow("Kalvora Preferences"), nullptr);
    EXPECT_EQ(Registered("key sniffer"), 0);
    gPREF_ActiveKey = 0;
    host->pressKey(XPLM_VK_F5);
    EXPECT_EQ(gPREF_ActiveKey, 0) << "keys are no longer caught";
}

} // namespace
} // namespace kalvora_test
