// Values no dataref should hold (NaN, infinities, huge and negative numbers),
// written into every dataref Kalvora publishes and every host dataref it reads,
// at each step of a push-back and of the GPU service, one value for two frames
// at a time: the plug-in must not crash, must never hand a non-finite number to
// the host, must stop a push it cannot carry on (and say why), and a fresh push
// afterwards must work.
#include "support/InstalledPlugin.h"

#include <climits>
#include <functional>
#include <sstream>

namespace kalvora_test {
namespace {

using HostileValuesTest = InstalledPluginTest;

const double kHostile[] = {NAN, INFINITY, -INFINITY, 1e30, -1e30, -1.0};

/// Every dataref Kalvora publishes, then every host dataref it reads ("[i]": an array element).
const char* const kTargets =
    "halvern/kalvora/PBstatus halvern/kalvora/GPUstatus halvern/kalvora/truck/position_ogl_x "
    "halvern/kalvora/truck/position_ogl_y halvern/kalvora/truck/position_ogl_z "
    "halvern/kalvora/truck/position_hdg halvern/kalvora/GPU/position_ogl_x "
    "halvern/kalvora/GPU/position_ogl_y halvern/kalvora/GPU/position_ogl_z "
    "halvern/kalvora/truck/wheel_rotation_deg halvern/kalvora/truck/steering_deg "
    "sim/flightmodel/position/local_x sim/flightmodel/position/local_y sim/flightmodel/position/local_z "
    "sim/flightmodel/position/psi sim/flightmodel/position/theta sim/flightmodel/position/phi "
    "sim/flightmodel/position/groundspeed sim/flightmodel/position/y_agl sim/flightmodel/position/lat_ref "
    "sim/flightmodel/position/lon_ref sim/aircraft/parts/acf_gear_xnodef[0] "
    "sim/aircraft/parts/acf_gear_ynodef[0] sim/aircraft/parts/acf_gear_znodef[0] "
    "sim/aircraft/parts/acf_gear_leglen[0] sim/aircraft/parts/acf_gear_tirrad[0] "
    "sim/aircraft/parts/acf_gear_znodef[1] sim/aircraft/view/acf_size_x sim/aircraft/view/acf_size_z "
    "sim/aircraft/engine/acf_num_engines sim/flightmodel/engine/ENGN_N1_[0] "
    "sim/flightmodel/engine/ENGN_bat_volt[0] sim/flightmodel/engine/ENGN_bat_volt[1] "
    "sim/joystick/yolk_heading_ratio sim/joystick/has_joystick sim/flightmodel/controls/parkbrake "
    "sim/cockpit/switches/gear_handle_status sim/cockpit/electrical/cockpit_lights_on "
    "sim/graphics/view/view_is_external sim/graphics/view/view_type sim/operation/prefs/text_out "
    "sim/time/paused";

/// What another plug-in's int conversion makes of a hostile number (NaN gives 0, as X-Plane reads it).
double AsInt(double value) {
    if (std::isnan(value)) return 0;
    return std::max<double>(INT_MIN, std::min<double>(INT_MAX, std::trunc(value)));
}

TEST_F(HostileValuesTest, NoPhaseLetsANonFiniteValueThroughAndAFreshPushStillWorks) {
    AddTruck("KLVdefault"); // models, so that truck and GPU are object instances the host places
    std::ofstream(DataFolder() / "GroundServices" / "GPU.obj") << kEmptyObj8;
    Load();
    const char* const kGroundSpeed = "sim/flightmodel/position/groundspeed";
    const auto pushing = [&] { return host->geti(kStatus) != 0; };
    const auto braked = [&] { return host->getf(kParkBrake) == 1.0; };
    double startPsi = 0;
    const auto turned = [&] { return std::fabs(std::remainder(host->getf(kPsi) - startPsi, 360.0)) > 2.0; };
    // An automated tail-left push from the menu, up to the crew's question, then with the brake released
    // until `until` holds.
    const auto push = [&](bool release, const std::function<bool()>& until) {
        Pick("Stop PushBack!");
        host->set(kParkBrake, 1);
        host->runFrames(2); // standing still: a start while moving is refused as taxiing
        startPsi = host->getf(kPsi);
        const int asked = Said("confirm brake");
        ASSERT_TRUE(Pick("Automated tail left"));
        host->runUntil([&] { return Said("confirm brake") > asked; }, 60);
        if (!release) return;
        host->set(kParkBrake, 0);
        host->runUntil(until, 60);
    };
    int running = 0; // the GPU's "running" messages when it was last connected
    const auto gpu = [&](double seconds) {
        if (host->geti(kGPUStatus) == 1) host->set(kGPUStatus, 2);
        running = Said("GPU is running");
        host->set(kGPUStatus, 1);
        host->runFor(seconds);
    };
    const auto gpuOn = [&] { return host->geti(kGPUStatus) == 1; };
    const struct {
        const char* name;
        std::function<void()> reach;
        std::function<bool()> holds;
    } phases[] = {
        {"truck approaching", [&] { push(false, nullptr); }, pushing},
        {"straight leg", [&] { push(true, [&] { return host->getf(kGroundSpeed) > 0.5; }); },
         [&] { return pushing() && !turned() && !braked(); }},
        {"turning", [&] { push(true, turned); }, [&] { return pushing() && turned() && !braked(); }},
        {"truck leaving", [&] { push(true, [&] { return turned() && braked(); }); },
         [&] { return pushing() && braked(); }},
        {"GPU warming up", [&] { gpu(1.0); }, [&] { return gpuOn() && Said("GPU is running") == running; }},
        {"GPU charging", [&] { gpu(16.0); }, gpuOn},
    };

    size_t placements = 0; // instance positions checked
    for (const auto& phase : phases) {
        phase.reach();
        ASSERT_TRUE(phase.holds()) << "never reached: " << phase.name;
        std::istringstream targets(kTargets);
        for (std::string target; targets >> target;) {
            const std::string::size_type bracket = target.find('[');
            const std::string name = target.substr(0, bracket);
            const int index = bracket == std::string::npos ? -1 : std::stoi(target.substr(bracket + 1));
            // A status write is an action: never written back, and an int as another plug-in makes it.
            const bool status = name.find("status") != std::string::npos;
            for (const double bad : kHostile) {
                const std::string what =
                    std::string(phase.name) + ": " + target + " = " + std::to_string(bad);
                const double before = host->getf(name, std::max(index, 0));
                // Where the sim itself moves or turns the aircraft for a hostile value (a taxi speed,
                // an attitude), the aircraft is put back as it stood.
                const char* const kept[] = {kLocalX, kLocalZ, "sim/flightmodel/position/theta",
                                            "sim/flightmodel/position/phi", kPsi};
                double stood[5];
                for (int i = 0; i < 5; ++i)
                    stood[i] = host->getf(kept[i]);
                host->set(name, status ? AsInt(bad) : bad, index);
                host->runFrames(2);
                for (const simhost::InstanceInfo& i : host->instances()) {
                    ++placements;
                    ASSERT_TRUE(std::isfinite(i.x) && std::isfinite(i.y) && std::isfinite(i.z) &&
                                std::isfinite(i.heading))
                        << what << ": " << i.objectPath;
                }
                if (!status) host->set(name, name == kGroundSpeed ? 0.0 : before, index); // 0: no taxiing
                for (int i = 0; i < 5; ++i)
                    host->set(kept[i], stood[i]);
                host->runFrames(1);
                ASSERT_TRUE(host->pluginEnabled(kalvora)) << what;
                const std::vector<std::string> written = host->transcriptTexts("dataref");
                ASSERT_TRUE(written.empty()) << what << ": " << written.front();
                if (name == "sim/flightmodel/position/psi" && !std::isfinite(bad) &&
                    std::string(phase.name).rfind("GPU", 0) != 0) {
                    EXPECT_FALSE(pushing()) << what << ": the push goes on without a heading";
                }
                if (!phase.holds()) phase.reach(); // stopped, as it should be for some: start again
                ASSERT_TRUE(phase.holds()) << "cannot reach " << phase.name << " again after " << what;
            }
        }
        if (std::string(phase.name) == "truck leaving") {
            // A heading another plug-in writes while the tug drives away: the next truck step takes
            // over and the drive ends.
            for (const double bad : {static_cast<double>(NAN), 1e30, -1e30}) {
                host->set(kTruckHdg, bad);
                EXPECT_TRUE(host->runUntil([&] { return !pushing(); }, 60)) << "stuck after " << bad;
                phase.reach();
            }
        }
    }
    EXPECT_GT(placements, 0u);
    EXPECT_NE(PluginLog().find("sim/flightmodel/position/psi read as nan"), std::string::npos);
    EXPECT_NE(PluginLog().find("; the push-back is stopped\n"), std::string::npos);

    // A fresh push from where the aircraft now stands.
    Pick("Stop PushBack!");
    host->set(kGPUStatus, 2);
    host->set(kParkBrake, 1);
    const int cleared = Said("cleared to taxi");
    StartPush("Push straight back");
    ASSERT_TRUE(host->runUntil([&] { return Said("cleared to taxi") > cleared; }, 120));
    EXPECT_NEAR(Moved(), 13.0, 0.15) << "the A320's push length";
    bool tugShown = false; // and the tug's instance still follows the tug
    for (const simhost::InstanceInfo& i : host->instances()) {
        if (i.objectPath.find("KLVdefault") == std::string::npos) continue;
        tugShown = true;
        EXPECT_NEAR(i.x, host->getf(kTruckX), 1e-3);
        EXPECT_NEAR(i.z, host->getf(kTruckZ), 1e-3);
    }
    EXPECT_TRUE(tugShown);
}

} // namespace
} // namespace kalvora_test
