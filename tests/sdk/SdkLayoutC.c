/*
 * Every API header in one C translation unit. The sizes and offsets below are
 * what a C plug-in sees; the C++ tests compare them with the C++ view, so both
 * languages agree on the ABI.
 */
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

#include "SdkLayoutC.h"

#include <stddef.h>

_Static_assert(sizeof(XPLMCreateWindow_t) == 88, "XPLMCreateWindow_t with XPLM300 and XPLM301");
_Static_assert(offsetof(XPLMCreateWindow_t, handleRightClickFunc) == 80, "right-click handler offset");
_Static_assert(sizeof(XPLMDrawInfo_t) == 28, "XPLMDrawInfo_t");
_Static_assert(sizeof(XPWidgetCreate_t) == 48, "XPWidgetCreate_t");

#define LAYOUT_ENTRY(expr)                                                                                   \
    { #expr, expr }

static const SdkCLayoutEntry kEntries[] = {
#include "SdkLayoutEntries.inc"
};

const SdkCLayoutEntry* sdkCLayout(size_t* outCount) {
    *outCount = sizeof(kEntries) / sizeof(kEntries[0]);
    return kEntries;
}
