// The type of every API function, struct sizes and offsets, and constants, as
// the headers on the include path declare them. Built twice: once against our
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

#include <cstddef>
#include <typeinfo>

namespace SDK_FACTS_NAMESPACE {

// FUNCTION(name) for each function the official headers declare (generated at configure time).
#define FUNCTION(fn) {#fn, typeid(decltype(&fn)).name()},
const std::vector<sdk_facts::Fact> kFunctions = {
#include "SdkFunctionList.inc"
};
#undef FUNCTION

// Struct sizes and offsets, and the values of the newer headers' constants.
#define VALUE(expression) {#expression, std::to_string(expression)},
const std::vector<sdk_facts::Fact> kValues = {
    VALUE(sizeof(XPLMCreateWindow_t)) VALUE(sizeof(XPLMCreateFlightLoop_t)) VALUE(
        sizeof(XPLMDataRefInfo_t)) VALUE(sizeof(XPLMCameraPosition_t)) VALUE(sizeof(XPLMDrawInfo_t))
        VALUE(sizeof(XPLMProbeInfo_t)) VALUE(sizeof(XPLMPlaneDrawState_t)) VALUE(sizeof(
            XPLMCreateMapLayer_t)) VALUE(sizeof(XPLMFixedString150_t)) VALUE(sizeof(XPLMWeatherInfoWinds_t))
            VALUE(sizeof(XPLMWeatherInfoClouds_t)) VALUE(sizeof(XPLMWeatherInfo_t)) VALUE(
                offsetof(XPLMWeatherInfo_t, wave_dir)) VALUE(offsetof(XPLMWeatherInfo_t, temp_layers))
                VALUE(offsetof(XPLMWeatherInfo_t, max_altitude_msl_ft)) VALUE(sizeof(XPLMCustomizeAvionics_t))
                    VALUE(offsetof(XPLMCustomizeAvionics_t, keyboardCallback)) VALUE(
                        sizeof(XPLMCreateAvionics_t)) VALUE(offsetof(XPLMCreateAvionics_t, drawOnDemand))
                        VALUE(offsetof(XPLMCreateAvionics_t, deviceID)) VALUE(sizeof(FMOD_VECTOR))
                            VALUE(sizeof(XPMouseState_t)) VALUE(sizeof(XPKeyState_t)) VALUE(
                                sizeof(XPWidgetCreate_t)) VALUE(XPLM_NAV_NOT_FOUND) VALUE(xplm_Nav_Fix)
                                VALUE(xplm_Nav_LatLon) VALUE(xplm_Nav_TACAN) VALUE(xplm_Fpl_CoPilot_Temporary)
                                    VALUE(xplm_AudioInterior) VALUE(xplm_AudioGround) VALUE(
                                        xplm_Master) VALUE(xplm_RadioBank) VALUE(FMOD_SOUND_FORMAT_PCM16)
                                        VALUE(XPLM_NUM_WIND_LAYERS) VALUE(XPLM_NUM_CLOUD_LAYERS) VALUE(
                                            XPLM_NUM_TEMPERATURE_LAYERS) VALUE(XPLM_WIND_UNDEFINED_LAYER)
                                            VALUE(XPLM_DEFAULT_WXR_RADIUS_NM) VALUE(
                                                XPLM_DEFAULT_WXR_RADIUS_MSL_FT) VALUE(xplm_device_G1000_MFD)
                                                VALUE(xplm_device_MCDU_2) VALUE(xplm_DataFile_ReplayMovie)
                                                    VALUE(xplm_MapLayer_Markings)
                                                        VALUE(xplm_MapOrientation_UI)
                                                            VALUE(xplm_WindowDecorationSelfDecoratedResizable)
                                                                VALUE(xplm_WindowLayerGrowlNotifications)};
#undef VALUE

} // namespace SDK_FACTS_NAMESPACE
