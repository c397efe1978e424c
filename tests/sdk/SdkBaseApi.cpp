// The headers with no API level macro: only the 1.0 API is visible.
#include "XPLMCamera.h"
#include "XPLMDataAccess.h"
#include "XPLMDefs.h"
#include "XPLMDisplay.h"
#include "XPLMGraphics.h"
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

// 2.0 and later additions, one or two from each header.
EXPECT_UNDECLARED(XPLMCreateWindowEx);
EXPECT_UNDECLARED(XPLMFindSymbol);
EXPECT_UNDECLARED(XPLMCommandRef);
EXPECT_UNDECLARED(XPLMCreateFlightLoop);
EXPECT_UNDECLARED(XPLMRemoveMenuItem);
EXPECT_UNDECLARED(XPLMMeasureString);
EXPECT_UNDECLARED(xpMsg_MouseWheel);
EXPECT_UNDECLARED(XPLMObjectRef);
EXPECT_UNDECLARED(XPLMMapLayerID);
#ifdef XPLM_MSG_PLANE_UNLOADED
#error "XPLM_MSG_PLANE_UNLOADED belongs to XPLM200"
#endif
// Deprecated declarations need XPLM_DEPRECATED.
EXPECT_UNDECLARED(xplm_Phase_Airplanes);
EXPECT_UNDECLARED(XPLMCommandButtonPress);

static_assert(xplm_Phase_Window == 50 && xpMsg_PropertyChanged == 19 && xplmFont_Basic == 0,
              "the 1.0 API itself is there");
static_assert(sizeof(XPMouseState_t) == 12, "no wheel delta before XPLM200");
