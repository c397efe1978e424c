#include "core/Preferences.h"

#include "XPLMDefs.h"
#include "utils/HV_Properties.h"
#include "utils/Utf8Path.h"

#include <algorithm>
#include <cctype>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

bool PrefSwitchView = false;
bool PrefAuralCrewMessage = false;
bool PrefWrittenCrewMessage = false;
bool PrefDrawTruck = false;
bool PrefFrontWheel = false;
int PrefTruckViewKey = 0;
bool PrefHandleGPU = false;
float PrefTruckSpeed = 0.0f;
double PrefStepValue = 0.0;
bool PrefAllowEngnON = false;
bool PrefRefuelUnitisKg = false;
char PrefLastTruck[kPrefLastTruckBytes] = {};

namespace {

constexpr const char* kFileVersion = "1.2.2b3";
constexpr int kDefaultTruckViewKey = 123; // the host's virtual key code of F12
constexpr float kDefaultTruckSpeed = 10.0f;
constexpr bool kDefaultOn = true;              // every boolean but ALLOW_ENGN_ON
constexpr bool kDefaultEnginesAllowed = false; // ALLOW_ENGN_ON
constexpr double kSpeedToStep = 100.0;         // step in metres per frame = speed / 100
constexpr const char* kKeyDownFlag = "8";      // stored for TruckView_KF: the host's key-down flag

constexpr const char* kKeyVersion = "VERSION";
constexpr const char* kKeySwitchView = "SWITCH_VIEW";
constexpr const char* kKeyAural = "AURAL_CREW_MESSAGE";
constexpr const char* kKeyWritten = "WRITTEN_CREW_MESSAGE";
constexpr const char* kKeyDrawTruck = "DRAW_TRUCK";
constexpr const char* kKeyFrontWheel = "FRONT_WHEEL";
constexpr const char* kKeyTruckSpeed = "TRUCK_SPEED";
constexpr const char* kKeyHandleGPU = "HANDLE_GPU";
constexpr const char* kKeyAllowEngine = "ALLOW_ENGN_ON";
constexpr const char* kKeyTruck = "Truck";
constexpr const char* kKeyViewKey = "TruckView_KEY";
constexpr const char* kKeyViewFlags = "TruckView_KF";

/// The host's virtual key codes (XPLM_VK_*), as runs of consecutive codes.
constexpr struct {
    int first, last;
} kVirtualKeys[] = {
    {XPLM_VK_BACK, XPLM_VK_TAB},       {XPLM_VK_CLEAR, XPLM_VK_RETURN}, {XPLM_VK_ESCAPE, XPLM_VK_ESCAPE},
    {XPLM_VK_SPACE, XPLM_VK_9},        {XPLM_VK_A, XPLM_VK_Z},          {XPLM_VK_NUMPAD0, XPLM_VK_F24},
    {XPLM_VK_EQUAL, XPLM_VK_NUMPAD_EQ}};

bool IsVirtualKey(int code) {
    for (const auto& run : kVirtualKeys)
        if (code >= run.first && code <= run.last) return true;
    return false;
}

/// Says on log that key's value was replaced: "[WRNG] Preferences: KEY=value <problem>, <used> used instead".
void ReportReplaced(std::ostream* log, const char* key, const std::string& value, const char* problem,
                    const std::string& used) {
    if (!log) return;
    if (value.empty()) problem = "is missing";
    *log << "[WRNG] Preferences: " << key << "=" << value << " " << problem << ", " << used
         << " used instead\n";
    log->flush();
}

/// Parses a decimal integer as "%d" does (leading blanks, optional sign, digits). Values beyond
/// the int range are clamped instead of overflowing. False when no digit was found.
bool ParseInt(const std::string& text, int* out) {
    const char* begin = text.c_str();
    while (std::isspace(static_cast<unsigned char>(*begin)))
        ++begin;
    char* end = nullptr;
    const long long value = std::strtoll(begin, &end, 10);
    if (end == begin) return false;
    if (value > INT_MAX)
        *out = INT_MAX;
    else if (value < INT_MIN)
        *out = INT_MIN;
    else
        *out = static_cast<int>(value);
    return true;
}

/// Parses a number as "%f" does. False when nothing could be read.
bool ParseFloat(const std::string& text, float* out) {
    const char* begin = text.c_str();
    while (std::isspace(static_cast<unsigned char>(*begin)))
        ++begin;
    char* end = nullptr;
    const float value = std::strtof(begin, &end);
    if (end == begin) return false;
    *out = value;
    return true;
}

/// A boolean key: a number, on when exactly 1; text that does not read as a number gives the default.
bool ReadBool(HV_Properties& prefs, const char* key, bool byDefault, std::ostream* log) {
    int number = 0;
    if (ParseInt(prefs[key], &number)) return number == 1;
    ReportReplaced(log, key, prefs[key], "cannot be read", byDefault ? "1" : "0");
    return byDefault;
}

/// TRUCK_SPEED: a number from kPrefTruckSpeedMin to kPrefTruckSpeedMax. Unreadable, not finite, zero or
/// negative (a truck that never moves): the default; beyond the range: its nearest end.
float ReadTruckSpeed(HV_Properties& prefs, std::ostream* log) {
    const std::string& text = prefs[kKeyTruckSpeed];
    float speed = 0.0f;
    char used[64]; // "%f" of any float in the range fits
    if (!ParseFloat(text, &speed) || !std::isfinite(speed) || speed <= 0.0f) {
        std::snprintf(used, sizeof used, "%f", kDefaultTruckSpeed);
        ReportReplaced(log, kKeyTruckSpeed, text, "is not a usable speed", used);
        return kDefaultTruckSpeed;
    }
    const float clamped = std::clamp(speed, kPrefTruckSpeedMin, kPrefTruckSpeedMax);
    if (clamped != speed) {
        std::snprintf(used, sizeof used, "%f", clamped);
        ReportReplaced(log, kKeyTruckSpeed, text, "is out of range", used);
    }
    return clamped;
}

/// TruckView_KEY: one of the host's virtual key codes, else the default (F12).
int ReadTruckViewKey(HV_Properties& prefs, std::ostream* log) {
    const std::string& text = prefs[kKeyViewKey];
    int key = 0;
    if (!ParseInt(text, &key)) {
        ReportReplaced(log, kKeyViewKey, text, "cannot be read", std::to_string(kDefaultTruckViewKey));
        return kDefaultTruckViewKey;
    }
    if (!IsVirtualKey(key)) {
        ReportReplaced(log, kKeyViewKey, text, "is not a key", std::to_string(kDefaultTruckViewKey));
        return kDefaultTruckViewKey;
    }
    return key;
}

/// The first blank-free word of text, cut to fit PrefLastTruck. False when there is none.
bool ReadWord(const std::string& text, char* out, std::size_t outBytes) {
    std::size_t begin = 0;
    while (begin < text.size() && std::isspace(static_cast<unsigned char>(text[begin])))
        ++begin;
    std::size_t end = begin;
    while (end < text.size() && !std::isspace(static_cast<unsigned char>(text[end])))
        ++end;
    if (end == begin) return false;
    const std::size_t length = std::min(end - begin, outBytes - 1);
    std::memcpy(out, text.data() + begin, length);
    out[length] = '\0';
    return true;
}

const char* BoolText(bool on) {
    return on ? "1" : "0";
}

} // namespace

void SetDefaultPref() {
    PrefSwitchView = kDefaultOn;
    PrefAuralCrewMessage = kDefaultOn;
    PrefWrittenCrewMessage = kDefaultOn;
    PrefDrawTruck = kDefaultOn;
    PrefFrontWheel = kDefaultOn;
    PrefTruckViewKey = kDefaultTruckViewKey;
    PrefHandleGPU = kDefaultOn;
    PrefTruckSpeed = kDefaultTruckSpeed;
    PrefStepValue = 0.1;
    PrefAllowEngnON = kDefaultEnginesAllowed;
    PrefRefuelUnitisKg = true;
}

void LoadPreferences(HV_Properties& prefs, std::ostream* log) {
    PrefTruckViewKey = ReadTruckViewKey(prefs, log);
    int keyFlags = 0;
    ParseInt(prefs[kKeyViewFlags], &keyFlags); // 0, missing or unreadable: the hot key is F12
    if (keyFlags == 0) PrefTruckViewKey = kDefaultTruckViewKey;
    PrefSwitchView = ReadBool(prefs, kKeySwitchView, kDefaultOn, log);
    PrefAuralCrewMessage = ReadBool(prefs, kKeyAural, kDefaultOn, log);
    PrefWrittenCrewMessage = ReadBool(prefs, kKeyWritten, kDefaultOn, log);
    PrefDrawTruck = ReadBool(prefs, kKeyDrawTruck, kDefaultOn, log);
    PrefFrontWheel = ReadBool(prefs, kKeyFrontWheel, kDefaultOn, log);
    PrefHandleGPU = ReadBool(prefs, kKeyHandleGPU, kDefaultOn, log);
    PrefTruckSpeed = ReadTruckSpeed(prefs, log);
    PrefStepValue = PrefTruckSpeed / kSpeedToStep;
    PrefAllowEngnON = ReadBool(prefs, kKeyAllowEngine, kDefaultEnginesAllowed, log);
    ReadWord(prefs[kKeyTruck], PrefLastTruck, sizeof PrefLastTruck); // none: keeps the previous name
}

void StorePreferences(HV_Properties& prefs) {
    char number[64]; // "%f" of any float fits in 50 characters
    prefs[kKeyVersion] = kFileVersion;
    prefs[kKeySwitchView] = BoolText(PrefSwitchView);
    prefs[kKeyAural] = BoolText(PrefAuralCrewMessage);
    prefs[kKeyWritten] = BoolText(PrefWrittenCrewMessage);
    prefs[kKeyDrawTruck] = BoolText(PrefDrawTruck);
    prefs[kKeyFrontWheel] = BoolText(PrefFrontWheel);
    std::snprintf(number, sizeof number, "%f", PrefTruckSpeed);
    prefs[kKeyTruckSpeed] = number;
    prefs[kKeyHandleGPU] = BoolText(PrefHandleGPU);
    prefs[kKeyAllowEngine] = BoolText(PrefAllowEngnON);
    PrefLastTruck[kPrefLastTruckBytes - 1] = '\0';
    prefs[kKeyTruck] = PrefLastTruck;
    std::snprintf(number, sizeof number, "%d", PrefTruckViewKey);
    prefs[kKeyViewKey] = number;
    prefs[kKeyViewFlags] = kKeyDownFlag;
}

bool PrefFileExist(const char* path) {
    if (path == nullptr) return false;
    std::FILE* file = HV_FileUtils::OpenFile(path, "r");
    if (file == nullptr) return false;
    std::fclose(file);
    return true;
}
