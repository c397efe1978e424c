// The type of every API function, the size of every structure and the value of every constant, as the
// headers on the include path declare them. Built twice: once against our sdk/, once against the
// official headers; SdkOfficialTest compares the two. The lists of names come from the official
// headers (generated at configure time).
#include "XPLMCamera.h"
#include "XPLMDataAccess.h"
#include "XPLMDefs.h"
#include "XPLMDisplay.h"
#include "XPLMGraphics.h"
#include "XPLMInstance.h"
#include "XPLMMap.h"
#include "XPLMMenus.h"
#include "XPLMNavigation.h"
#include "XPLMPlanes.h"
#include "XPLMPlugin.h"
#include "XPLMProcessing.h"
#include "XPLMScenery.h"
#include "XPLMSound.h"
#include "XPLMUtilities.h"
#include "XPLMWeather.h"
#include "XPStandardWidgets.h"
#include "XPUIGraphics.h"
#include "XPWidgetDefs.h"
#include "XPWidgetUtils.h"
#include "XPWidgets.h"

#include "sdk/SdkFacts.h"

#include <cstddef>
#include <typeinfo>

namespace SDK_FACTS_NAMESPACE {

#define FUNCTION(fn) sdk_facts::Fact{#fn, typeid(decltype(&fn)).name()},
const std::vector<sdk_facts::Fact> kFunctions = {
#include "SdkFunctionList.inc"
};
#undef FUNCTION

// Constants and structure sizes, then offsets that a swap of two fields of one size would move.
#define VALUE(expression)                                                                                    \
    sdk_facts::Fact {                                                                                        \
#expression, std::to_string(expression)                                                              \
    }
const std::vector<sdk_facts::Fact> kValues = {
#include "SdkValueList.inc"
    VALUE(offsetof(XPLMCreateWindow_t, handleMouseClickFunc)),
    VALUE(offsetof(XPLMCreateWindow_t, handleKeyFunc)),
    VALUE(offsetof(XPLMCreateWindow_t, layer)),
    VALUE(offsetof(XPLMCameraPosition_t, pitch)),
    VALUE(offsetof(XPLMCameraPosition_t, heading)),
    VALUE(offsetof(XPLMDrawInfo_t, heading)),
    VALUE(offsetof(XPLMProbeInfo_t, normalX)),
    VALUE(offsetof(XPLMDataRefInfo_t, writable)),
    VALUE(offsetof(XPLMWeatherInfo_t, wave_dir)),
    VALUE(offsetof(XPLMWeatherInfo_t, temp_layers)),
    VALUE(offsetof(XPLMCreateAvionics_t, deviceID)),
    VALUE(offsetof(XPKeyState_t, vkey)),
};
#undef VALUE

} // namespace SDK_FACTS_NAMESPACE
