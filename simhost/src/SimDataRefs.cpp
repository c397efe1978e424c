// The datarefs X-Plane itself provides. The ones simhost's world and camera
// drive are defined here by hand, with their starting values and the version
// profiles that decide which names exist on the emulated X-Plane; they take
// precedence over the row of the same name in the table of every dataref
// X-Plane 12.1 publishes (XPlaneTables.h), whose datarefs hold zeros until
// someone writes them.
#include "HostInternal.h"
#include "XPlaneTables.h"

#include "XPLMDataAccess.h"

#include <algorithm>

namespace simhost::detail {

namespace {

constexpr int kInt = xplmType_Int;
constexpr int kFloat = xplmType_Float;
constexpr int kDouble = xplmType_Float | xplmType_Double; // "double" datarefs read as both
constexpr int kFloatArray = xplmType_FloatArray;
constexpr int kIntArray = xplmType_IntArray;
constexpr int kData = xplmType_Data;

/// Which emulated versions have a name. Versions are XPLMGetVersions' numbers:
/// 3 digits up to 9.70 (740 = 7.40), 5 digits from 10 on (11550 = 11.55).
struct Availability {
    int from = 0;         ///< first version that has it (0: always)
    int before = 1 << 30; ///< first version that no longer has it
};

struct SimDataRefDef {
    const char* name;
    int types;
    int size; ///< elements for arrays, bytes for data, 1 for scalars
    bool writable;
    double initial;
    Availability avail;
};

/// X-Plane 7.40 renamed the N1 array; 7.30 renamed pitch; 8.00 renumbered the gear arrays.
constexpr int kV730 = 730, kV740 = 740, kV900 = 900, kV1000 = 1000, kV11 = 11000;

/// Gear arrays of hosts before 8.00 keep the nose and main gear at 67 and 68.
constexpr int kOldGearArraySize = 73;
constexpr int kGearArraySize = 10;

const SimDataRefDef kSimDataRefs[] = {
    // position and attitude (the world keeps these consistent, World.cpp)
    {"sim/flightmodel/position/local_x", kDouble, 1, true, 0, {}},
    {"sim/flightmodel/position/local_y", kDouble, 1, true, 0, {}},
    {"sim/flightmodel/position/local_z", kDouble, 1, true, 0, {}},
    {"sim/flightmodel/position/latitude", kDouble, 1, false, 0, {}},
    {"sim/flightmodel/position/longitude", kDouble, 1, false, 0, {}},
    {"sim/flightmodel/position/elevation", kDouble, 1, false, 0, {}},
    {"sim/flightmodel/position/lat_ref", kFloat, 1, false, 0, {}},
    {"sim/flightmodel/position/lon_ref", kFloat, 1, false, 0, {}},
    {"sim/flightmodel/position/psi", kFloat, 1, true, 0, {}},
    {"sim/flightmodel/position/theta", kFloat, 1, true, 0, {kV730, 1 << 30}},
    {"sim/flightmodel/position/the", kFloat, 1, true, 0, {0, kV730}},
    {"sim/flightmodel/position/phi", kFloat, 1, true, 0, {}},
    {"sim/flightmodel/position/R", kFloat, 1, true, 0, {}},
    {"sim/flightmodel/position/q", kFloatArray, 4, true, 0, {}},
    {"sim/flightmodel/position/groundspeed", kFloat, 1, false, 0, {}},
    {"sim/flightmodel/position/y_agl", kFloat, 1, false, 0, {}},
    {"sim/flightmodel/position/magpsi", kFloat, 1, false, 0, {}},
    {"sim/flightmodel/position/mag_psi", kFloat, 1, false, 0, {}},
    {"sim/flightmodel/ground/plugin_ground_center", kFloatArray, 3, true, 0, {}},
    // aircraft geometry (from the profile, World.cpp)
    {"sim/aircraft/parts/acf_gear_xnodef", kFloatArray, kGearArraySize, true, 0, {800, 1 << 30}},
    {"sim/aircraft/parts/acf_gear_ynodef", kFloatArray, kGearArraySize, true, 0, {800, 1 << 30}},
    {"sim/aircraft/parts/acf_gear_znodef", kFloatArray, kGearArraySize, true, 0, {800, 1 << 30}},
    {"sim/aircraft/parts/acf_gear_leglen", kFloatArray, kGearArraySize, true, 0, {800, 1 << 30}},
    {"sim/aircraft/parts/acf_gear_tirrad", kFloatArray, kGearArraySize, true, 0, {800, 1 << 30}},
    {"sim/aircraft/view/acf_tailnum", kData, 40, true, 0, {}},
    {"sim/aircraft/view/acf_size_x", kFloat, 1, true, 0, {}},
    {"sim/aircraft/view/acf_size_z", kFloat, 1, true, 0, {}},
    {"sim/aircraft/engine/acf_num_engines", kInt, 1, true, 0, {}},
    // engines and electrics
    {"sim/flightmodel/engine/ENGN_N1_", kFloatArray, 16, true, 0, {kV740, 1 << 30}},
    {"sim/flightmodel/engine/ENGN_N1", kFloatArray, 8, true, 0, {0, kV740}},
    {"sim/flightmodel/engine/ENGN_bat_volt", kFloatArray, 16, true, 0, {}},
    {"sim/cockpit2/electrical/battery_voltage_actual_volts", kFloatArray, 8, true, 0, {kV1000, 1 << 30}},
    // controls and switches
    {"sim/flightmodel/controls/parkbrake", kFloat, 1, true, 1, {}},
    {"sim/cockpit/switches/gear_handle_status", kInt, 1, true, 1, {}},
    {"sim/joystick/yolk_heading_ratio", kFloat, 1, true, 0, {}},
    {"sim/joystick/yoke_heading_ratio", kFloat, 1, true, 0, {kV11, 1 << 30}},
    {"sim/joystick/has_joystick", kInt, 1, false, 1, {}},
    {"sim/operation/override/override_joystick_heading", kInt, 1, true, 0, {}},
    {"sim/operation/prefs/text_out", kInt, 1, true, 1, {}},
    {"sim/time/paused", kInt, 1, false, 0, {}},
    {"sim/time/total_running_time_sec", kFloat, 1, false, 0, {}},
    // views
    {"sim/graphics/view/view_is_external", kInt, 1, false, 0, {}},
    {"sim/graphics/view/view_type", kInt, 1, false, 1000, {}},
    // lights and colours
    {"sim/cockpit/electrical/cockpit_lights_on", kInt, 1, false, 0, {}},
    {"sim/cockpit/electrical/cockpit_lights", kFloat, 1, true, 0, {}},
    {"sim/graphics/misc/cockpit_light_level_r", kFloat, 1, false, 1, {}},
    {"sim/graphics/misc/cockpit_light_level_g", kFloat, 1, false, 1, {}},
    {"sim/graphics/misc/cockpit_light_level_b", kFloat, 1, false, 1, {}},
    {"sim/graphics/settings/transparent_panel", kInt, 1, true, 0, {0, kV11}},
    {"sim/graphics/scenery/percent_lights_on", kFloat, 1, false, 0, {}},
    {"sim/graphics/misc/use_proportional_fonts", kInt, 1, true, 0, {}},
    {"sim/graphics/colors/menu_bkgnd_rgb", kFloatArray, 3, false, 0, {0, kV900}},
    {"sim/graphics/colors/background_rgb", kFloatArray, 3, false, 0, {}},
    {"sim/graphics/colors/menu_dark_rgb", kFloatArray, 3, false, 0, {}},
    {"sim/graphics/colors/menu_hilite_rgb", kFloatArray, 3, false, 0, {}},
    {"sim/graphics/colors/menu_lite_rgb", kFloatArray, 3, false, 0, {}},
    {"sim/graphics/colors/menu_text_rgb", kFloatArray, 3, false, 0, {}},
    {"sim/graphics/colors/menu_text_disabled_rgb", kFloatArray, 3, false, 0, {}},
    {"sim/graphics/colors/subtitle_text_rgb", kFloatArray, 3, false, 0, {}},
    {"sim/graphics/colors/tab_front_rgb", kFloatArray, 3, false, 0, {}},
    {"sim/graphics/colors/tab_back_rgb", kFloatArray, 3, false, 0, {}},
    {"sim/graphics/colors/caption_text_rgb", kFloatArray, 3, false, 0, {}},
    {"sim/graphics/colors/list_text_rgb", kFloatArray, 3, false, 0, {}},
    {"sim/graphics/colors/glass_text_rgb", kFloatArray, 3, false, 0, {}},
};

/// X-Plane's interface colours (RGB 0-1), close to X-Plane 9's grey-blue UI.
struct Colour {
    const char* name;
    float r, g, b;
};
const Colour kColours[] = {
    {"sim/graphics/colors/menu_bkgnd_rgb", 0.31f, 0.34f, 0.38f},
    {"sim/graphics/colors/background_rgb", 0.0f, 0.0f, 0.0f},
    {"sim/graphics/colors/menu_dark_rgb", 0.19f, 0.21f, 0.24f},
    {"sim/graphics/colors/menu_hilite_rgb", 0.85f, 0.75f, 0.25f},
    {"sim/graphics/colors/menu_lite_rgb", 0.54f, 0.58f, 0.63f},
    {"sim/graphics/colors/menu_text_rgb", 0.90f, 0.90f, 0.90f},
    {"sim/graphics/colors/menu_text_disabled_rgb", 0.55f, 0.55f, 0.55f},
    {"sim/graphics/colors/subtitle_text_rgb", 0.75f, 0.85f, 1.0f},
    {"sim/graphics/colors/tab_front_rgb", 0.0f, 0.0f, 0.0f},
    {"sim/graphics/colors/tab_back_rgb", 0.40f, 0.40f, 0.40f},
    {"sim/graphics/colors/caption_text_rgb", 0.95f, 0.95f, 0.95f},
    {"sim/graphics/colors/list_text_rgb", 0.0f, 0.0f, 0.0f},
    {"sim/graphics/colors/glass_text_rgb", 0.0f, 1.0f, 0.0f},
};

bool availableOn(const Availability& a, int version) {
    return version >= a.from && version < a.before;
}

DataRefRec& addRecord(HostCore& c, const std::string& name, int types, int size, bool writable) {
    c.datarefs.emplace_back();
    DataRefRec& r = c.datarefs.back();
    r.name = name;
    r.types = types;
    r.writable = writable;
    r.owner = 0;
    if (types & xplmType_Data)
        r.bytes.assign(static_cast<size_t>(size), '\0');
    else
        r.values.assign(static_cast<size_t>(size), 0.0);
    c.datarefByName[r.name] = &r;
    c.datarefHandles.insert(&r);
    return r;
}

} // namespace

DataRefRec* makeXPlaneDataRef(HostCore& c, const std::string& name) {
    const XPlaneDataRefRow* row = findXPlaneDataRef(name.c_str());
    if (!row || c.datarefByName.count(name)) return nullptr;
    --c.xplaneDataRefsPending;
    return &addRecord(c, name, row->types, row->size, row->writable);
}

void makeAllXPlaneDataRefs(HostCore& c) {
    for (int i = 0; i < kXPlaneDataRefCount && c.xplaneDataRefsPending > 0; ++i)
        if (!c.datarefByName.count(kXPlaneDataRefs[i].name)) makeXPlaneDataRef(c, kXPlaneDataRefs[i].name);
}

void installSimDataRefs(HostCore& c) {
    const int version = c.opt.xplaneVersion;
    c.xplaneDataRefsPending = kXPlaneDataRefCount;
    for (const SimDataRefDef& d : kSimDataRefs) {
        DataRefRec& r = addRecord(c, d.name, d.types, d.size, d.writable);
        if (!(d.types & xplmType_Data)) std::fill(r.values.begin(), r.values.end(), d.initial);
        // Names this version does not have stay unreachable, as if X-Plane never had them.
        r.removed = !availableOn(d.avail, version);
        if (findXPlaneDataRef(d.name)) --c.xplaneDataRefsPending; // this definition stands for the row
    }
    // Hosts before 8.00 had the gear arrays with the nose and main gear at 67 and 68.
    if (version < 800) {
        for (const char* n : {"sim/aircraft/parts/acf_gear_xnodef", "sim/aircraft/parts/acf_gear_ynodef",
                              "sim/aircraft/parts/acf_gear_znodef", "sim/aircraft/parts/acf_gear_leglen",
                              "sim/aircraft/parts/acf_gear_tirrad"}) {
            DataRefRec* r = c.datarefByName[n];
            r->values.assign(kOldGearArraySize, 0.0);
            r->removed = false;
        }
    }
    // X-Plane 9 had eight engines' worth of arrays.
    if (version < kV1000) {
        c.datarefByName["sim/flightmodel/engine/ENGN_N1_"]->values.assign(8, 0.0);
        c.datarefByName["sim/flightmodel/engine/ENGN_bat_volt"]->values.assign(8, 0.0);
    }
    for (const Colour& col : kColours) {
        DataRefRec* r = c.datarefByName[col.name];
        r->values = {col.r, col.g, col.b};
    }
}

} // namespace simhost::detail
