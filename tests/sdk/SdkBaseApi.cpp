// The headers with no API level macro: only the 1.0 API is visible.
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
#include "XPLMMap.h"
#include "XPWidgetDefs.h"
#include "XPWidgets.h"
#include "XPStandardWidgets.h"
#include "XPUIGraphics.h"
#include "XPWidgetUtils.h"

#include "sdk/SdkLevels.h"

// 2.0 and later additions.
EXPECT_UNDECLARED(XPLMCreateWindowEx);
EXPECT_UNDECLARED(XPLMCreateWindow_t);
EXPECT_UNDECLARED(XPLMHandleCursor_f);
EXPECT_UNDECLARED(XPLMFindSymbol);
EXPECT_UNDECLARED(XPLMCommandRef);
EXPECT_UNDECLARED(XPLMFindCommand);
EXPECT_UNDECLARED(XPLMEnableFeature);
EXPECT_UNDECLARED(XPLMCreateFlightLoop);
EXPECT_UNDECLARED(XPLMFlightLoopID);
EXPECT_UNDECLARED(XPLMRemoveMenuItem);
EXPECT_UNDECLARED(XPLMMeasureString);
EXPECT_UNDECLARED(xplmFont_Proportional);
EXPECT_UNDECLARED(xplm_CursorDefault);
EXPECT_UNDECLARED(xpMsg_MouseWheel);
EXPECT_UNDECLARED(XPLMObjectRef);
EXPECT_UNDECLARED(XPLMProbeTerrainXYZ);
EXPECT_UNDECLARED(XPLMMapLayerID);
#ifdef XPLM_MSG_PLANE_UNLOADED
#error "XPLM_MSG_PLANE_UNLOADED belongs to XPLM200"
#endif

// Deprecated declarations need XPLM_DEPRECATED.
EXPECT_UNDECLARED(xplm_Phase_Airplanes);
EXPECT_UNDECLARED(XPLMCommandButtonPress);

// The 1.0 API itself is there.
static_assert(xplm_Phase_Window == 50 && xpMsg_PropertyChanged == 19 && xplmFont_Basic == 0,
              "1.0 values stay visible");

std::size_t sdk_levels::baseMouseStateSize() {
    return sizeof(XPMouseState_t);
}
