// The type of every API function and the size of every API struct, as the
// headers on the include path declare them. Built twice: once against our
// sdk/, once against the official headers; SdkOfficialTest compares the two.
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

#include <typeinfo>

namespace SDK_FACTS_NAMESPACE {

// FUNCTION(name) for each function the official headers declare (generated at configure time).
#define FUNCTION(fn) {#fn, typeid(decltype(&fn)).name()},
const std::vector<sdk_facts::Fact> kFunctions = {
#include "SdkFunctionList.inc"
};
#undef FUNCTION

#define STRUCT(name) {#name, std::to_string(sizeof(name))},
const std::vector<sdk_facts::Fact> kStructs = {
    STRUCT(XPLMCreateWindow_t) STRUCT(XPLMCreateFlightLoop_t) STRUCT(XPLMDataRefInfo_t)
        STRUCT(XPLMCameraPosition_t) STRUCT(XPLMDrawInfo_t) STRUCT(XPLMProbeInfo_t)
            STRUCT(XPLMPlaneDrawState_t) STRUCT(XPLMCreateMapLayer_t) STRUCT(XPLMFixedString150_t)
                STRUCT(XPLMWeatherInfoWinds_t) STRUCT(XPLMWeatherInfoClouds_t) STRUCT(XPLMWeatherInfo_t)
                    STRUCT(XPLMCustomizeAvionics_t) STRUCT(XPLMCreateAvionics_t) STRUCT(FMOD_VECTOR)
                        STRUCT(XPMouseState_t) STRUCT(XPKeyState_t) STRUCT(XPWidgetCreate_t)};
#undef STRUCT

} // namespace SDK_FACTS_NAMESPACE
