// A fresh simhost per test with the plug-in's flight loops, draw callback and
// published datarefs registered as the plug-in does at start, every global of
// the push-back sequence back at its start value, and the steps the menu takes
// to start a manoeuvre.
#pragma once

#include "core/AppFixture.h"

#include "XPLMDataAccess.h"
#include "XPLMDisplay.h"
#include "XPLMProcessing.h"
#include "core/CrewMessages.h"
#include "core/PluginMenu.h"
#include "core/PushbackControl.h"
#include "motion/AircraftPlacement.h"
#include "gpu/GPUService.h"
#include "toolkit/Dialog.h"
#include "truck/TruckMovement.h"
#include "objects/TruckModel.h"
#include "support/DataRefNames.h"
#include "utils/HostRelease.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

namespace kalvora_test {

class PushbackTest : public AppTest {
protected:
    void SetUp() override {
        AppTest::SetUp();
        Boot();
    }

    void TearDown() override {
        host->setDirectCaller(pluginId);
        HV_Message::Close();
        AppTest::TearDown();
    }

    /// A new host with these options, set up as in SetUp.
    void Reboot(const simhost::HostOptions& options) {
        host->setDirectCaller(pluginId);
        HV_Message::Close();
        Restart(options);
        Boot();
    }
    /// A new host whose aircraft stands on that heading, degrees true.
    void RebootAtHeading(double headingDeg) {
        simhost::HostOptions options;
        options.startHeadingDeg = headingDeg;
        Reboot(options);
    }

    /// Picks a manoeuvre's menu item. Returns the refusal code (0 when started); a refusal leaves
    /// its text in ErrorMessage.
    int StartFromMenu(int item) {
        const int verdict = validatePushBackenvironment();
        KLVMenuHandlerCallback(nullptr, reinterpret_cast<void*>(static_cast<intptr_t>(item)));
        return std::min(verdict, 0);
    }

    /// Writes the status dataref as another plug-in (a cockpit panel) does.
    void WriteStatus(int value) {
        host->setDirectCaller(panelId);
        XPLMSetDatai(XPLMFindDataRef(kStatus), value);
        host->setDirectCaller(pluginId);
    }
    int Status() { return host->geti(kStatus); }

    /// Towing gear position in the local frame, metres.
    void Gear(double* x, double* z) {
        double y = 0.0;
        GearPostionOGL(gKLVGearIndex, x, &y, z);
    }
    /// Flat distance from the truck to the towing gear, metres.
    double TruckToGear() {
        double gx = 0.0, gz = 0.0;
        Gear(&gx, &gz);
        return std::hypot(gKLVTruckX - gx, gKLVTruckZ - gz);
    }
    /// How far the truck is ahead of the towing gear along the aircraft's heading, metres.
    double TruckAheadOfGear() {
        double gx = 0.0, gz = 0.0;
        Gear(&gx, &gz);
        const double h = Psi() * M_PI / 180.0; // heading 0 looks towards -z
        return (gKLVTruckX - gx) * std::sin(h) - (gKLVTruckZ - gz) * std::cos(h);
    }

    std::vector<std::string> Spoken() { return host->transcriptTexts("speech"); }
    /// The timed message on screen, or null.
    static HV_Message* Shown() {
        return gXPLMWindowID ? static_cast<HV_Message*>(XPLMGetWindowRefCon(gXPLMWindowID)) : nullptr;
    }

    bool RunUntilPhase(int phase, double seconds) {
        return host->runUntil([phase] { return gKLVTruckMovementPhase == phase; }, seconds);
    }
    bool RunUntilMoving(double seconds) {
        return host->runUntil([] { return gKLVisPlaneMoving; }, seconds);
    }
    /// Runs until the approaching truck is close to the towing gear, then a little longer so that
    /// it has taken its last steps (at most a few frames at full speed).
    bool RunUntilTruckAtGear(double seconds) {
        const bool near = host->runUntil(
            [this] { return gKLVTruckMovementPhase == kTruckApproach && TruckToGear() < 0.5; }, seconds);
        host->runFor(0.25);
        return near;
    }

private:
    void Boot() {
        ResetSequenceGlobals();
        host->set("sim/joystick/has_joystick", 1);
        host->set(kTextOut, 1);
        RegisterPublishedDataRefs();
        XPLMRegisterFlightLoopCallback(PlaneMoveCallBack, -1.0f, nullptr);
        XPLMRegisterFlightLoopCallback(TruckMovementCallBack, 1.0f, nullptr);
        XPLMRegisterFlightLoopCallback(ResetATCCallBack, -1.0f, nullptr);
        XPLMRegisterDrawCallback(DrawTruckCallBack, xplm_Phase_Airplanes, 0, nullptr);
        simhost::InProcessPlugin panel;
        panel.name = "Panel";
        panel.signature = "test.panel";
        panelId = host->addPlugin(panel);
        host->setDirectCaller(pluginId);
    }

    int panelId = -1;

    static void ResetSequenceGlobals() {
        HV_GNLUtils::detail::ReleaseClock();
        gKLVTruckMovementPhase = kTruckIdle;
        theCurrentSpeed = 0.0015f;
        theLastTime = 0.0f;
        theTruckGearInTimer = theTruckGearOutTimer = theBreakMessTempo = 0.0f;
        wasBreakSet = 0;
        TruckFinalHdg = TruckInitialHdg = 0.0f;
        theSwitch = 0;
        ResetWrittenATCswitch = false;
        ResetATCtimer = 0.0f;
        ErrorMessage[0] = '\0';
        GroundMessage[0] = '\0';
        gKLVisGPUpresent = false;
        gKLVtheTruck.SetVisibility(false);
    }
};

} // namespace kalvora_test
