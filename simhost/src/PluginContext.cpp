// Attribution of API calls to the plug-in whose code is running.
#include "PluginContext.h"

namespace simhost::detail {

namespace {
/// -1: no callback is running; API calls then go to the host's direct caller.
int gRunning = -1;
} // namespace

int currentPluginId() {
    return gRunning;
}

CallingPlugin::CallingPlugin(int pluginId) : previous_(gRunning) {
    gRunning = pluginId;
}
CallingPlugin::~CallingPlugin() {
    gRunning = previous_;
}

} // namespace simhost::detail
