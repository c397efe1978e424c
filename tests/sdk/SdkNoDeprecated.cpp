// The plug-in's API levels (XPLM200 to XPLM303) without XPLM_DEPRECATED: the
// deprecated declarations are gone, their modern replacements stay.
#include "XPLMCamera.h"
#include "XPLMDataAccess.h"
#include "XPLMDefs.h"
#include "XPLMDisplay.h"
#include "XPLMGraphics.h"
#include "XPLMInstance.h"
#include "XPLMMap.h"
#include "XPLMMenus.h"
#include "XPLMPlanes.h"
#include "XPLMPlugin.h"
#include "XPLMProcessing.h"
#include "XPLMScenery.h"
#include "XPLMUtilities.h"
#include "XPStandardWidgets.h"
#include "XPUIGraphics.h"
#include "XPWidgetDefs.h"
#include "XPWidgetUtils.h"
#include "XPWidgets.h"

#include "SdkUndeclared.h"

// Legacy 3-D drawing, key and joystick-button simulation, panel fonts and aircraft textures.
EXPECT_UNDECLARED(xplm_Phase_FirstScene);
EXPECT_UNDECLARED(xplm_Phase_Airplanes);
EXPECT_UNDECLARED(XPLMDrawObjects);
EXPECT_UNDECLARED(XPLMDrawAircraft);
EXPECT_UNDECLARED(XPLMSimulateKeyPress);
EXPECT_UNDECLARED(XPLMCommandButtonPress);
EXPECT_UNDECLARED(xplm_joy_v_spo);
EXPECT_UNDECLARED(xplmFont_Menus);
EXPECT_UNDECLARED(xplm_Tex_AircraftPaint);
// The map phases are gone from XPLM300 on, deprecated or not.
EXPECT_UNDECLARED(xplm_Phase_LocalMap3D);

static_assert(xplm_Phase_Modern3D == 31 && xplmFont_Proportional == 18 && XPLM_MSG_RELEASE_PLANES == 111,
              "what replaces them is there");
static_assert(sizeof(XPLMCreateWindow_t) == 88, "the 3.x window fields");
