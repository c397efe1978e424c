// Parameter types and order of the API functions and callbacks, as X-Plane
// calls and exports them. A swapped or mistyped parameter would still compile
// in the plug-in and break only at run time inside the sim, so each signature
// is pinned here.
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
#include "XPWidgets.h"
#include "XPUIGraphics.h"
#include "XPWidgetUtils.h"

#include <cstdint>
#include <type_traits>

#define EXPECT_SIGNATURE(function, ...)                                                                      \
    static_assert(std::is_same<decltype(&function), __VA_ARGS__>::value, #function " signature")
#define EXPECT_CALLBACK(typedefName, ...)                                                                    \
    static_assert(std::is_same<typedefName, __VA_ARGS__>::value, #typedefName " signature")

// ---- Datarefs: 17 accessor parameters, refcons last; array setters take non-const pointers ----
EXPECT_SIGNATURE(XPLMRegisterDataAccessor,
                 XPLMDataRef (*)(const char*, XPLMDataTypeID, int, XPLMGetDatai_f, XPLMSetDatai_f,
                                 XPLMGetDataf_f, XPLMSetDataf_f, XPLMGetDatad_f, XPLMSetDatad_f,
                                 XPLMGetDatavi_f, XPLMSetDatavi_f, XPLMGetDatavf_f, XPLMSetDatavf_f,
                                 XPLMGetDatab_f, XPLMSetDatab_f, void*, void*));
EXPECT_SIGNATURE(XPLMUnregisterDataAccessor, void (*)(XPLMDataRef));
EXPECT_SIGNATURE(XPLMGetDatavi, int (*)(XPLMDataRef, int*, int, int));
EXPECT_SIGNATURE(XPLMSetDatavi, void (*)(XPLMDataRef, int*, int, int));
EXPECT_SIGNATURE(XPLMSetDatavf, void (*)(XPLMDataRef, float*, int, int));
EXPECT_SIGNATURE(XPLMGetDatab, int (*)(XPLMDataRef, void*, int, int));
EXPECT_SIGNATURE(XPLMSetDatab, void (*)(XPLMDataRef, void*, int, int));
EXPECT_SIGNATURE(XPLMGetDatad, double (*)(XPLMDataRef));
EXPECT_SIGNATURE(XPLMShareData, int (*)(const char*, XPLMDataTypeID, XPLMDataChanged_f, void*));
EXPECT_CALLBACK(XPLMGetDatavf_f, int (*)(void*, float*, int, int));
EXPECT_CALLBACK(XPLMSetDatab_f, void (*)(void*, void*, int, int));

// ---- Flight loops ----
EXPECT_CALLBACK(XPLMFlightLoop_f, float (*)(float, float, int, void*));
EXPECT_SIGNATURE(XPLMRegisterFlightLoopCallback, void (*)(XPLMFlightLoop_f, float, void*));
EXPECT_SIGNATURE(XPLMSetFlightLoopCallbackInterval, void (*)(XPLMFlightLoop_f, float, int, void*));
EXPECT_SIGNATURE(XPLMScheduleFlightLoop, void (*)(XPLMFlightLoopID, float, int));
EXPECT_SIGNATURE(XPLMCreateFlightLoop, XPLMFlightLoopID (*)(XPLMCreateFlightLoop_t*));

// ---- Utilities, commands, plug-ins ----
EXPECT_SIGNATURE(XPLMGetVersions, void (*)(int*, int*, XPLMHostApplicationID*));
EXPECT_SIGNATURE(XPLMGetSystemPath, void (*)(char*));
EXPECT_SIGNATURE(XPLMExtractFileAndPath, char* (*)(char*));
EXPECT_SIGNATURE(XPLMGetVirtualKeyDescription, const char* (*)(char));
EXPECT_SIGNATURE(XPLMFindSymbol, void* (*)(const char*));
EXPECT_CALLBACK(XPLMCommandCallback_f, int (*)(XPLMCommandRef, XPLMCommandPhase, void*));
EXPECT_SIGNATURE(XPLMRegisterCommandHandler, void (*)(XPLMCommandRef, XPLMCommandCallback_f, int, void*));
EXPECT_SIGNATURE(XPLMCommandButtonPress, void (*)(XPLMCommandButtonID));
EXPECT_SIGNATURE(XPLMSimulateKeyPress, void (*)(int, int));
EXPECT_SIGNATURE(XPLMSendMessageToPlugin, void (*)(XPLMPluginID, int, void*));
EXPECT_SIGNATURE(XPLMGetPluginInfo, void (*)(XPLMPluginID, char*, char*, char*, char*));
EXPECT_SIGNATURE(XPLMEnableFeature, void (*)(const char*, int));

// ---- Menus ----
EXPECT_CALLBACK(XPLMMenuHandler_f, void (*)(void*, void*));
EXPECT_SIGNATURE(XPLMCreateMenu, XPLMMenuID (*)(const char*, XPLMMenuID, int, XPLMMenuHandler_f, void*));
EXPECT_SIGNATURE(XPLMAppendMenuItem, int (*)(XPLMMenuID, const char*, void*, int));
EXPECT_SIGNATURE(XPLMAppendMenuSeparator, void (*)(XPLMMenuID));
EXPECT_SIGNATURE(XPLMCheckMenuItemState, void (*)(XPLMMenuID, int, XPLMMenuCheck*));
EXPECT_SIGNATURE(XPLMAppendMenuItemWithCommand, int (*)(XPLMMenuID, const char*, XPLMCommandRef));

// ---- Drawing, windows, keys ----
EXPECT_CALLBACK(XPLMDrawCallback_f, int (*)(XPLMDrawingPhase, int, void*));
EXPECT_SIGNATURE(XPLMRegisterDrawCallback, int (*)(XPLMDrawCallback_f, XPLMDrawingPhase, int, void*));
EXPECT_CALLBACK(XPLMHandleKey_f, void (*)(XPLMWindowID, char, XPLMKeyFlags, char, void*, int));
EXPECT_CALLBACK(XPLMHandleMouseClick_f, int (*)(XPLMWindowID, int, int, XPLMMouseStatus, void*));
EXPECT_CALLBACK(XPLMHandleMouseWheel_f, int (*)(XPLMWindowID, int, int, int, int, void*));
EXPECT_SIGNATURE(XPLMCreateWindow, XPLMWindowID (*)(int, int, int, int, int, XPLMDrawWindow_f,
                                                    XPLMHandleKey_f, XPLMHandleMouseClick_f, void*));
EXPECT_SIGNATURE(XPLMGetWindowGeometry, void (*)(XPLMWindowID, int*, int*, int*, int*));
EXPECT_CALLBACK(XPLMKeySniffer_f, int (*)(char, XPLMKeyFlags, char, void*));
EXPECT_SIGNATURE(XPLMRegisterHotKey, XPLMHotKeyID (*)(char, XPLMKeyFlags, const char*, XPLMHotKey_f, void*));
EXPECT_SIGNATURE(XPLMGetHotKeyInfo, void (*)(XPLMHotKeyID, char*, XPLMKeyFlags*, char*, XPLMPluginID*));

// ---- Graphics: XPLMDrawString returns nothing and takes the text as const ----
EXPECT_SIGNATURE(XPLMDrawString, void (*)(float*, int, int, const char*, int*, XPLMFontID));
EXPECT_SIGNATURE(XPLMDrawNumber, void (*)(float*, int, int, double, int, int, int, XPLMFontID));
EXPECT_SIGNATURE(XPLMSetGraphicsState, void (*)(int, int, int, int, int, int, int));
EXPECT_SIGNATURE(XPLMWorldToLocal, void (*)(double, double, double, double*, double*, double*));
EXPECT_SIGNATURE(XPLMMeasureString, float (*)(XPLMFontID, const char*, int));

// ---- Camera, aircraft ----
EXPECT_CALLBACK(XPLMCameraControl_f, int (*)(XPLMCameraPosition_t*, int, void*));
EXPECT_SIGNATURE(XPLMControlCamera, void (*)(XPLMCameraControlDuration, XPLMCameraControl_f, void*));
EXPECT_SIGNATURE(XPLMIsCameraBeingControlled, int (*)(XPLMCameraControlDuration*));
EXPECT_SIGNATURE(XPLMGetNthAircraftModel, void (*)(int, char*, char*));
EXPECT_SIGNATURE(XPLMPlaceUserAtLocation, void (*)(double, double, float, float, float));

// ---- Scenery and instances ----
EXPECT_SIGNATURE(XPLMProbeTerrainXYZ,
                 XPLMProbeResult (*)(XPLMProbeRef, float, float, float, XPLMProbeInfo_t*));
EXPECT_SIGNATURE(XPLMLoadObjectAsync, void (*)(const char*, XPLMObjectLoaded_f, void*));
EXPECT_SIGNATURE(XPLMLookupObjects, int (*)(const char*, float, float, XPLMLibraryEnumerator_f, void*));
EXPECT_SIGNATURE(XPLMDrawObjects, void (*)(XPLMObjectRef, int, XPLMDrawInfo_t*, int, int));
EXPECT_SIGNATURE(XPLMGetMagneticVariation, float (*)(double, double));
EXPECT_SIGNATURE(XPLMCreateInstance, XPLMInstanceRef (*)(XPLMObjectRef, const char**));
EXPECT_SIGNATURE(XPLMInstanceSetPosition, void (*)(XPLMInstanceRef, const XPLMDrawInfo_t*, const float*));

// ---- Widgets: parameters and property values are pointer-sized ----
EXPECT_CALLBACK(XPWidgetFunc_t, int (*)(XPWidgetMessage, XPWidgetID, intptr_t, intptr_t));
EXPECT_SIGNATURE(XPCreateWidget,
                 XPWidgetID (*)(int, int, int, int, int, const char*, int, XPWidgetID, XPWidgetClass));
EXPECT_SIGNATURE(XPCreateCustomWidget,
                 XPWidgetID (*)(int, int, int, int, int, const char*, int, XPWidgetID, XPWidgetFunc_t));
EXPECT_SIGNATURE(XPSendMessageToWidget,
                 int (*)(XPWidgetID, XPWidgetMessage, XPDispatchMode, intptr_t, intptr_t));
EXPECT_SIGNATURE(XPGetWidgetProperty, intptr_t (*)(XPWidgetID, XPWidgetPropertyID, int*));
EXPECT_SIGNATURE(XPSetWidgetProperty, void (*)(XPWidgetID, XPWidgetPropertyID, intptr_t));
EXPECT_SIGNATURE(XPGetWidgetDescriptor, int (*)(XPWidgetID, char*, int));
EXPECT_SIGNATURE(XPGetWidgetUnderlyingWindow, XPLMWindowID (*)(XPWidgetID));
EXPECT_SIGNATURE(XPDrawTrack, void (*)(int, int, int, int, int, int, int, XPTrackStyle, int));
EXPECT_SIGNATURE(XPGetTrackMetrics, void (*)(int, int, int, int, int, int, int, XPTrackStyle, int*, int*,
                                             int*, int*, int*, int*));
EXPECT_SIGNATURE(XPUCreateWidgets, void (*)(const XPWidgetCreate_t*, int, XPWidgetID, XPWidgetID*));
EXPECT_SIGNATURE(XPUDragWidget, int (*)(XPWidgetMessage, XPWidgetID, intptr_t, intptr_t, int, int, int, int));
