// The headers at the 2.1 API level (XPLM200 and XPLM210).
#include "XPLMDefs.h"
#include "XPLMDisplay.h"
#include "XPLMMenus.h"
#include "XPLMPlugin.h"
#include "XPLMScenery.h"
#include "XPLMInstance.h"
#include "XPWidgetDefs.h"

#include "sdk/SdkLevels.h"

// 3.x additions.
EXPECT_UNDECLARED(XPLMFindAircraftMenu);
EXPECT_UNDECLARED(XPLMAppendMenuItemWithCommand);
EXPECT_UNDECLARED(XPLMWindowLayer);
EXPECT_UNDECLARED(XPLMSetWindowTitle);
EXPECT_UNDECLARED(xplm_Phase_Modern3D);
EXPECT_UNDECLARED(XPLMGetMagneticVariation);
#ifdef XPLM_MSG_ENTERED_VR
#error "XPLM_MSG_ENTERED_VR belongs to XPLM301"
#endif

static_assert(XPLM_MSG_PLANE_UNLOADED == 106 && XPLM_MSG_WILL_WRITE_PREFS == 107 &&
                  XPLM_MSG_LIVERY_LOADED == 108,
              "2.x messages");

std::size_t sdk_levels::api21MouseStateSize() {
    return sizeof(XPMouseState_t);
}
std::size_t sdk_levels::api21CreateWindowSize() {
    return sizeof(XPLMCreateWindow_t);
}
std::vector<int> sdk_levels::api21MapPhases() {
    return {xplm_Phase_LocalMap3D, xplm_Phase_LocalMap2D, xplm_Phase_LocalMapProfile};
}
