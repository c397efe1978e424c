// The headers at the 2.1 API level (XPLM200 and XPLM210).
#include "XPLMDefs.h"
#include "XPLMDisplay.h"
#include "XPLMInstance.h"
#include "XPLMMenus.h"
#include "XPLMPlugin.h"
#include "XPLMScenery.h"
#include "XPWidgetDefs.h"

#include "SdkUndeclared.h"

// 3.x additions.
EXPECT_UNDECLARED(XPLMFindAircraftMenu);
EXPECT_UNDECLARED(XPLMWindowLayer);
EXPECT_UNDECLARED(XPLMSetWindowTitle);
EXPECT_UNDECLARED(xplm_Phase_Modern3D);
EXPECT_UNDECLARED(XPLMGetMagneticVariation);
#ifdef XPLM_MSG_ENTERED_VR
#error "XPLM_MSG_ENTERED_VR belongs to XPLM301"
#endif

static_assert(XPLM_MSG_PLANE_UNLOADED == 106 && XPLM_MSG_LIVERY_LOADED == 108, "2.x messages");
static_assert(sizeof(XPMouseState_t) == 16 && sizeof(XPLMCreateWindow_t) == 72, "2.x layouts");
static_assert(xplm_Phase_LocalMap3D == 100 && xplm_Phase_LocalMapProfile == 102,
              "the map phases, from XPLM200 until XPLM300");
