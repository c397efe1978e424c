// The headers with every level up to XPLM440 (as simhost and newer plug-ins
// build them): the 4.x additions and their layouts.
#include "XPLMDefs.h"
#include "XPLMDataAccess.h"
#include "XPLMProcessing.h"
#include "XPLMUtilities.h"
#include "XPLMPlugin.h"
#include "XPLMMenus.h"
#include "XPLMDisplay.h"
#include "XPLMGraphics.h"
#include "XPLMCamera.h"
#include "XPLMPlanes.h"
#include "XPLMScenery.h"
#include "XPLMInstance.h"
#include "XPLMMap.h"
#include "XPWidgetDefs.h"
#include "XPWidgets.h"
#include "XPStandardWidgets.h"
#include "XPUIGraphics.h"
#include "XPWidgetUtils.h"

#include "sdk/SdkLevels.h"

#include <cstddef>
#include <type_traits>

static_assert(XPLM_MSG_FMOD_BANK_LOADED == 112 && XPLM_MSG_FMOD_BANK_UNLOADING == 113 &&
                  XPLM_MSG_DATAREFS_ADDED == 114 && XPLM_MSG_WEATHER_DELIVERED == 115,
              "4.0 messages");
static_assert(xplm_Language_Ukrainian == 11 && xplm_Tex_Radar_Pilot == 3 && xplm_Tex_Radar_Copilot == 4,
              "4.x enumerators");
static_assert(sizeof(XPLMDataRefInfo_t) == 32 && offsetof(XPLMDataRefInfo_t, name) == 8 &&
                  offsetof(XPLMDataRefInfo_t, type) == 16 && offsetof(XPLMDataRefInfo_t, writable) == 20 &&
                  offsetof(XPLMDataRefInfo_t, owner) == 24,
              "XPLMDataRefInfo_t layout");
static_assert(sizeof(XPLMDrawInfoDouble_t) == 56 && alignof(XPLMDrawInfoDouble_t) == 8 &&
                  offsetof(XPLMDrawInfoDouble_t, x) == 8 && offsetof(XPLMDrawInfoDouble_t, pitch) == 32 &&
                  offsetof(XPLMDrawInfoDouble_t, roll) == 48,
              "XPLMDrawInfoDouble_t layout");
static_assert(xplm_CoordSpace_World == 0 && xplm_CoordSpace_AircraftInterior == 1 &&
                  xplm_CoordSpace_AircraftExterior == 2 && xplm_CoordSpace_Camera == 3,
              "instance coordinate spaces");
static_assert(sizeof(XPLMInstanceObject_t) == 32 && offsetof(XPLMInstanceObject_t, x) == 8 &&
                  offsetof(XPLMInstanceObject_t, roll) == 28,
              "XPLMInstanceObject_t layout");
static_assert(sizeof(XPLMCreateInstance_t) == 48 && offsetof(XPLMCreateInstance_t, objects) == 8 &&
                  offsetof(XPLMCreateInstance_t, objectCount) == 16 &&
                  offsetof(XPLMCreateInstance_t, datarefs) == 24 &&
                  offsetof(XPLMCreateInstance_t, coordinateSpace) == 32 &&
                  offsetof(XPLMCreateInstance_t, aircraftIndex) == 36 &&
                  offsetof(XPLMCreateInstance_t, autoShift) == 40,
              "XPLMCreateInstance_t layout");
static_assert(std::is_same<decltype(&XPLMGetDataRefsByIndex), void (*)(int, int, XPLMDataRef*)>::value &&
                  std::is_same<decltype(&XPLMInstanceSetPositionDouble),
                               void (*)(XPLMInstanceRef, const XPLMDrawInfoDouble_t*, const float*)>::value &&
                  std::is_same<decltype(&XPLMInstanceSetCoordinateSpace),
                               void (*)(XPLMInstanceRef, XPLMCoordinateSpace_t, int)>::value,
              "4.x signatures");
static_assert(xplm_MapStyle_IFR_HighEnroute == 2 && xplm_MapLayer_Markings == 1 &&
                  xplm_MapOrientation_UI == 1,
              "map enumerators");

// The same expressions as the C translation unit measures (SdkLayoutC.c).
#define LAYOUT_ENTRY(expr)                                                                                   \
    { #expr, expr }

std::vector<std::pair<std::string, std::size_t>> sdk_levels::newestLayout() {
    return {
#include "SdkLayoutEntries.inc"
    };
}
