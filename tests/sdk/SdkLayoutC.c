/*
 * Every API header in one C translation unit, with every level simhost uses: a C plug-in sees the
 * layouts the C++ side (compared with the official headers) sees.
 */
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

#include <stddef.h>

_Static_assert(sizeof(XPLMCreateWindow_t) == 88 && offsetof(XPLMCreateWindow_t, handleRightClickFunc) == 80,
               "XPLMCreateWindow_t");
_Static_assert(sizeof(XPLMDataRefInfo_t) == 32 && sizeof(XPLMCameraPosition_t) == 28, "4.x and camera");
_Static_assert(sizeof(XPLMDrawInfo_t) == 28 && sizeof(XPLMDrawInfoDouble_t) == 56, "draw infos");
_Static_assert(sizeof(XPLMProbeInfo_t) == 44 && sizeof(XPKeyState_t) == 12, "probe and key state");
_Static_assert(sizeof(XPWidgetCreate_t) == 48 && offsetof(XPWidgetCreate_t, widgetClass) == 40,
               "widget table");
