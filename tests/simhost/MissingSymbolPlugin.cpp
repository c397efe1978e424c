// A plug-in that calls an X-Plane function no host defines: loading it must fail loudly.
#include "XPLMDefs.h"

extern "C" void XPLMFunctionNoHostHas(void);

PLUGIN_API int XPluginStart(char*, char*, char*) {
    XPLMFunctionNoHostHas();
    return 1;
}
PLUGIN_API void XPluginStop(void) {}
PLUGIN_API int XPluginEnable(void) {
    return 1;
}
PLUGIN_API void XPluginDisable(void) {}
PLUGIN_API void XPluginReceiveMessage(XPLMPluginID, int, void*) {}
