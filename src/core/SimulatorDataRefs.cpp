// Looking up the host's datarefs: one table of handles and names, one list of
// the handles that must exist, tested in a fixed order.
#include "core/SimulatorDataRefs.h"

#include "XPLMUtilities.h"
#include "core/HostHandles.h"

#include <cfloat>
#include <cmath>
#include <cstdio>

int XPVersion = 0;

XPLMDataRef gPositionThe = nullptr;
XPLMDataRef gPositionLocalx = nullptr;
XPLMDataRef gPositionLocalz = nullptr;
XPLMDataRef gPositionLocaly = nullptr;
XPLMDataRef gPositionPsi = nullptr;
XPLMDataRef gPositionPhi = nullptr;
XPLMDataRef gDataR = nullptr;
XPLMDataRef gqDataRef = nullptr;
XPLMDataRef gDataGroundSpeed = nullptr;
XPLMDataRef gDataAGL = nullptr;
XPLMDataRef gGearPosX = nullptr;
XPLMDataRef gGearPosY = nullptr;
XPLMDataRef gGearPosZ = nullptr;
XPLMDataRef gGear_leglen = nullptr;
XPLMDataRef gGear_tirrad = nullptr;
XPLMDataRef gJoystickRatio = nullptr;
XPLMDataRef gJoyOverride = nullptr;
XPLMDataRef gIsJoystickPresent = nullptr;
XPLMDataRef gGroundPos = nullptr;
XPLMDataRef gDataParkBrake = nullptr;
XPLMDataRef gDataIsGearRet = nullptr;
XPLMDataRef gIsCockpitLitON = nullptr;
XPLMDataRef gIsViewExtern = nullptr;
XPLMDataRef gViewType = nullptr;
XPLMDataRef gDataEngineN1 = nullptr;
XPLMDataRef gBattLoad = nullptr;
XPLMDataRef gAircraftTailNumber = nullptr;
XPLMDataRef gAircraftShadowSizeX = nullptr;
XPLMDataRef gAircraftShadowSizeZ = nullptr;
XPLMDataRef gPrefShowATCmessage = nullptr;
XPLMDataRef gIsSimPaused = nullptr;
XPLMDataRef gNumberEngine = nullptr;

namespace {

/// Pitch is "the" on hosts older than 7.30.
constexpr int kThetaSinceVersion = 730;
/// The N1 array gained its trailing underscore with 7.40.
constexpr int kN1UnderscoreSinceVersion = 740;

/// One host dataref: where its handle lives, its name, and the older name used below a host version.
struct HostDataRef {
    XPLMDataRef* handle;
    const char* name;
    const char* legacyName; ///< null: same name on every host
    int legacyBelowVersion; ///< XPVersion below which legacyName is used
};

const HostDataRef kHostDataRefs[] = {
    {&gPositionThe, "sim/flightmodel/position/theta", "sim/flightmodel/position/the", kThetaSinceVersion},
    {&gPositionLocalx, "sim/flightmodel/position/local_x", nullptr, 0},
    {&gPositionLocalz, "sim/flightmodel/position/local_z", nullptr, 0},
    {&gPositionLocaly, "sim/flightmodel/position/local_y", nullptr, 0},
    {&gPositionPsi, "sim/flightmodel/position/psi", nullptr, 0},
    {&gPositionPhi, "sim/flightmodel/position/phi", nullptr, 0},
    {&gDataR, "sim/flightmodel/position/R", nullptr, 0},
    {&gqDataRef, "sim/flightmodel/position/q", nullptr, 0},
    {&gDataGroundSpeed, "sim/flightmodel/position/groundspeed", nullptr, 0},
    {&gDataAGL, "sim/flightmodel/position/y_agl", nullptr, 0},
    {&gGearPosX, "sim/aircraft/parts/acf_gear_xnodef", nullptr, 0},
    {&gGearPosY, "sim/aircraft/parts/acf_gear_ynodef", nullptr, 0},
    {&gGearPosZ, "sim/aircraft/parts/acf_gear_znodef", nullptr, 0},
    {&gGear_leglen, "sim/aircraft/parts/acf_gear_leglen", nullptr, 0},
    {&gGear_tirrad, "sim/aircraft/parts/acf_gear_tirrad", nullptr, 0},
    {&gJoystickRatio, "sim/joystick/yolk_heading_ratio", nullptr, 0},
    {&gJoyOverride, "sim/operation/override/override_joystick_heading", nullptr, 0},
    {&gIsJoystickPresent, "sim/joystick/has_joystick", nullptr, 0},
    {&gGroundPos, "sim/flightmodel/ground/plugin_ground_center", nullptr, 0},
    {&gDataParkBrake, "sim/flightmodel/controls/parkbrake", nullptr, 0},
    {&gDataIsGearRet, "sim/cockpit/switches/gear_handle_status", nullptr, 0},
    {&gIsCockpitLitON, "sim/cockpit/electrical/cockpit_lights_on", nullptr, 0},
    {&gIsViewExtern, "sim/graphics/view/view_is_external", nullptr, 0},
    {&gViewType, "sim/graphics/view/view_type", nullptr, 0},
    {&gDataEngineN1, "sim/flightmodel/engine/ENGN_N1_", "sim/flightmodel/engine/ENGN_N1",
     kN1UnderscoreSinceVersion},
    {&gBattLoad, "sim/flightmodel/engine/ENGN_bat_volt", nullptr, 0},
    {&gAircraftTailNumber, "sim/aircraft/view/acf_tailnum", nullptr, 0},
    {&gAircraftShadowSizeX, "sim/aircraft/view/acf_size_x", nullptr, 0},
    {&gAircraftShadowSizeZ, "sim/aircraft/view/acf_size_z", nullptr, 0},
    {&gPrefShowATCmessage, "sim/operation/prefs/text_out", nullptr, 0},
    {&gIsSimPaused, "sim/time/paused", nullptr, 0},
    {&gNumberEngine, "sim/aircraft/engine/acf_num_engines", nullptr, 0},
};

/// The handles that must exist, in the order they are tested (the first null one decides).
/// local_y and the two size datarefs are looked up but not required; N1 is tested last.
XPLMDataRef* const kRequiredInOrder[] = {
    &gPositionLocalx,     &gPositionLocalz, &gPositionPsi,       &gPositionPhi,   &gPositionThe,
    &gJoyOverride,        &gqDataRef,       &gIsJoystickPresent, &gJoystickRatio, &gGearPosX,
    &gGearPosY,           &gGearPosZ,       &gGear_leglen,       &gGear_tirrad,   &gDataGroundSpeed,
    &gDataParkBrake,      &gDataAGL,        &gDataIsGearRet,     &gDataR,         &gAircraftTailNumber,
    &gPrefShowATCmessage, &gIsCockpitLitON, &gIsSimPaused,       &gIsViewExtern,  &gViewType,
    &gNumberEngine,       &gBattLoad,       &gGroundPos,         &gDataEngineN1,
};

const char* NameInUse(const HostDataRef& ref) {
    return (ref.legacyName != nullptr && XPVersion < ref.legacyBelowVersion) ? ref.legacyName : ref.name;
}

void LogMissing(const char* name) {
    char line[256]; // dataref names are well below 200 characters
    std::snprintf(line, sizeof line, "Kalvora: dataref not found: %s\n", name);
    XPLMDebugString(line);
}

/// Name of the dataref whose handle lives at handle (for the log line).
const char* NameOfHandle(const XPLMDataRef* handle) {
    for (const HostDataRef& ref : kHostDataRefs)
        if (ref.handle == handle) return NameInUse(ref);
    return "?";
}

/// Name of the dataref a handle refers to (for the report of an unusable value).
std::string NameOfRef(XPLMDataRef value) {
    for (const HostDataRef& ref : kHostDataRefs)
        if (*ref.handle == value && value != nullptr) return NameInUse(ref);
    return "a host dataref";
}

std::string ReadAs(const std::string& name, double value) {
    char number[32]; // "%g" of any double fits
    std::snprintf(number, sizeof number, "%g", value);
    return name + " read as " + number;
}

template <typename Value> Value Checked(Value value, XPLMDataRef ref, int index = -1) {
    if (IsUsableNumber(value)) return value;
    std::string name = NameOfRef(ref);
    if (index >= 0) name += "[" + std::to_string(index) + "]";
    throw NonFiniteHostValue(name, value);
}

} // namespace

bool InitDataRef() {
    ForgetHostHandles();
    for (const HostDataRef& ref : kHostDataRefs)
        *ref.handle = XPLMFindDataRef(NameInUse(ref));
    for (XPLMDataRef* handle : kRequiredInOrder) {
        if (*handle == nullptr) {
            LogMissing(NameOfHandle(handle));
            return false;
        }
    }
    return true;
}

bool IsUsableNumber(double value) {
    return std::isfinite(value) && std::fabs(value) <= FLT_MAX;
}

NonFiniteHostValue::NonFiniteHostValue(const std::string& name, double read)
    : std::runtime_error(ReadAs(name, read)), dataref(name), value(read) {}

float ReadHostFloat(XPLMDataRef ref) {
    return Checked(XPLMGetDataf(ref), ref);
}

double ReadHostDouble(XPLMDataRef ref) {
    return Checked(XPLMGetDatad(ref), ref);
}

float ReadHostFloatAt(XPLMDataRef ref, int index) {
    float value = 0.0f;
    if (index >= 0) XPLMGetDatavf(ref, &value, index, 1);
    return Checked(value, ref, index);
}
