// Which plug-in's code is running right now.
//
// Every callback simhost dispatches into a plug-in runs under a CallingPlugin
// guard, so that API calls made from inside it (XPLMGetMyID, menus, datarefs,
// hot keys, windows...) are attributed to the right plug-in. Calls made outside
// any callback go to the host's "direct caller" (see Host::setDirectCaller).
#pragma once

namespace simhost::detail {

/// The plug-in whose code is running (0 = X-Plane itself).
int currentPluginId();

/// Marks a plug-in as running for the lifetime of the guard; nests.
class CallingPlugin {
public:
    explicit CallingPlugin(int pluginId);
    ~CallingPlugin();
    CallingPlugin(const CallingPlugin&) = delete;
    CallingPlugin& operator=(const CallingPlugin&) = delete;

private:
    int previous_;
};

} // namespace simhost::detail
