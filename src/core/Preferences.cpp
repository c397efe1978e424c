#include "core/Preferences.h"

#include "utils/HV_Properties.h"

#include <algorithm>
#include <cctype>
#include <climits>
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
constexpr double kSpeedToStep = 100.0;    // step in metres per frame = speed / 100
constexpr const char* kKeyDownFlag = "8"; // stored for TruckView_KF: the host's key-down flag

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

/// A boolean key: exactly 1 is on; anything else, including text that does not parse, is off.
bool ReadBool(HV_Properties& prefs, const char* key) {
    int number = 0;
    ParseInt(prefs[key], &number);
    return number == 1;
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
    PrefSwitchView = true;
    PrefAuralCrewMessage = true;
    PrefWrittenCrewMessage = true;
    PrefDrawTruck = true;
    PrefFrontWheel = true;
    PrefTruckViewKey = kDefaultTruckViewKey;
    PrefHandleGPU = true;
    PrefTruckSpeed = kDefaultTruckSpeed;
    PrefStepValue = 0.1;
    PrefAllowEngnON = false;
    PrefRefuelUnitisKg = true;
}

void LoadPreferences(HV_Properties& prefs) {
    ParseInt(prefs[kKeyViewKey], &PrefTruckViewKey); // unparsable: keeps the previous key
    int keyFlags = 0;
    ParseInt(prefs[kKeyViewFlags], &keyFlags);
    if (keyFlags == 0) PrefTruckViewKey = kDefaultTruckViewKey;
    PrefSwitchView = ReadBool(prefs, kKeySwitchView);
    PrefAuralCrewMessage = ReadBool(prefs, kKeyAural);
    PrefWrittenCrewMessage = ReadBool(prefs, kKeyWritten);
    PrefDrawTruck = ReadBool(prefs, kKeyDrawTruck);
    PrefFrontWheel = ReadBool(prefs, kKeyFrontWheel);
    PrefHandleGPU = ReadBool(prefs, kKeyHandleGPU);
    ParseFloat(prefs[kKeyTruckSpeed], &PrefTruckSpeed); // unparsable: keeps the previous speed
    PrefStepValue = PrefTruckSpeed / kSpeedToStep;
    PrefAllowEngnON = ReadBool(prefs, kKeyAllowEngine);
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
    std::FILE* file = std::fopen(path, "r");
    if (file == nullptr) return false;
    std::fclose(file);
    return true;
}
