// The plug-in's API levels (XPLM200 to XPLM303) without XPLM_DEPRECATED: the
// deprecated declarations are gone, their modern replacements stay.
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

// Legacy 3-D drawing phases and drawing calls.
EXPECT_UNDECLARED(xplm_Phase_FirstScene);
EXPECT_UNDECLARED(xplm_Phase_Terrain);
EXPECT_UNDECLARED(xplm_Phase_Airports);
EXPECT_UNDECLARED(xplm_Phase_Vectors);
EXPECT_UNDECLARED(xplm_Phase_Objects);
EXPECT_UNDECLARED(xplm_Phase_Airplanes);
EXPECT_UNDECLARED(xplm_Phase_LastScene);
EXPECT_UNDECLARED(XPLMDrawObjects);
EXPECT_UNDECLARED(XPLMDrawAircraft);
EXPECT_UNDECLARED(XPLMPlaneDrawState_t);
EXPECT_UNDECLARED(XPLMReinitUsersPlane);
// Key and joystick-button simulation.
EXPECT_UNDECLARED(XPLMSimulateKeyPress);
EXPECT_UNDECLARED(XPLMCommandKeyStroke);
EXPECT_UNDECLARED(XPLMCommandButtonPress);
EXPECT_UNDECLARED(XPLMCommandButtonRelease);
EXPECT_UNDECLARED(XPLMCommandKeyID);
EXPECT_UNDECLARED(XPLMCommandButtonID);
EXPECT_UNDECLARED(xplm_key_chase);
EXPECT_UNDECLARED(xplm_joy_v_spo);
EXPECT_UNDECLARED(XPLMInitialized);
// Panel fonts and aircraft textures.
EXPECT_UNDECLARED(xplmFont_Menus);
EXPECT_UNDECLARED(xplmFont_RadiosGA);
EXPECT_UNDECLARED(xplmFont_Menus_Localized);
EXPECT_UNDECLARED(xplm_Tex_AircraftPaint);
EXPECT_UNDECLARED(xplm_Tex_AircraftLiteMap);
// The map phases are gone from XPLM300 on, deprecated or not.
EXPECT_UNDECLARED(xplm_Phase_LocalMap3D);

// What replaces them is there.
static_assert(xplm_Phase_Modern3D == 31 && xplm_Phase_FirstCockpit == 35 && xplm_Phase_Window == 50,
              "current drawing phases");
static_assert(xplmFont_Basic == 0 && xplmFont_Proportional == 18 && xplm_Tex_GeneralInterface == 0,
              "current fonts and textures");
static_assert(xplm_CommandBegin == 0 && XPLM_MSG_RELEASE_PLANES == 111, "commands and 3.03 messages");

std::size_t sdk_levels::currentCreateWindowSize() {
    return sizeof(XPLMCreateWindow_t);
}
