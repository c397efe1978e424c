// A fresh simhost per test with the plug-in's code attributed to an
// in-process plug-in, the host datarefs bound and every global of the
// bindings, motion and truck code back at its start value.
#pragma once

#include <gtest/gtest.h>

#include "core/LocalOrigin.h"
#include "core/Preferences.h"
#include "core/PublishedDataRefs.h"
#include "core/SimulatorDataRefs.h"
#include "motion/PushbackKinematics.h"
#include "truck/TruckState.h"
#include "support/InProcessKalvora.h"
#include "truck/TruckSteering.h"

#include <simhost/Simhost.h>

#include <cmath>
#include <memory>
#include <string>

namespace kalvora_test {

/// Difference of two headings in degrees, folded into -180..180.
inline double HeadingDiff(double a, double b) {
    return std::remainder(a - b, 360.0);
}

class AppTest : public ::testing::Test {
protected:
    void SetUp() override { Restart(simhost::HostOptions{}); }

    void TearDown() override {
        host->setDirectCaller(pluginId);
        UnregisterPublishedDataRefs(); // while their host is alive
        host.reset();
    }

    /// Replaces the host (only one may live at a time), binds the datarefs and resets the globals.
    void Restart(const simhost::HostOptions& options) {
        if (host) {
            host->setDirectCaller(pluginId);
            UnregisterPublishedDataRefs();
            host.reset();
        }
        host = std::make_unique<simhost::Host>(options);
        pluginId = AddInProcessKalvora(*host);
        ResetGlobals();
        initResult = InitDataRef();
    }

    static void ResetGlobals() {
        SetDefaultPref();
        ResetPlaneMovementParam();
        gKLVPbLength = 0;
        gKLVRotationRate = 0.0f;
        gKLVTruckX = gKLVTruckY = gKLVTruckZ = 0.0;
        myTruckHeading = 0.0f;
        theOffset = 0.0f;
        k_KLV_Front_Gear = k_KLV_Rear_Gear = gKLVGearIndex = 0;
    }

    double X() { return host->getf("sim/flightmodel/position/local_x"); }
    double Z() { return host->getf("sim/flightmodel/position/local_z"); }
    float Psi() { return static_cast<float>(host->getf("sim/flightmodel/position/psi")); }

    std::unique_ptr<simhost::Host> host;
    int pluginId = -1;
    bool initResult = false;
};

} // namespace kalvora_test
