// The real Kalvora.xpl with its shipped data folder (tug and GPU models) on an
// emulated X-Plane 12, every preference on (the truck drawn, the crew heard
// and read, the view switched at the start, the GPU handled).
#pragma once

#include "support/InstalledPlugin.h"

namespace kalvora_test {

constexpr int kXPlane1141 = 11410; ///< the last X-Plane that calls the 3-D drawing phases

class ModernTest : public InstalledPluginTest {
protected:
    void SetUp() override {
        InstalledPluginTest::SetUp();
        shippedData = true;
        WritePreferences(PreferencesText());
    }
};

} // namespace kalvora_test
