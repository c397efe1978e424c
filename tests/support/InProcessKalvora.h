// The plug-in's code run in the process of a test or benchmark: its API calls
// belong to an in-process plug-in named as Kalvora is, and XPVersion is what
// the host reports.
#pragma once

#include "XPLMUtilities.h"
#include "core/SimulatorDataRefs.h"

#include <simhost/Simhost.h>

namespace kalvora_test {

/// Adds the in-process "Kalvora" to host, makes direct API calls its own and reads XPVersion; its ID.
inline int AddInProcessKalvora(simhost::Host& host) {
    simhost::InProcessPlugin plugin;
    plugin.name = "Kalvora";
    plugin.signature = "Halvern.Kalvora";
    plugin.description = "in-process";
    const int id = host.addPlugin(plugin);
    host.setDirectCaller(id);
    int xplm = 0;
    XPLMHostApplicationID hostId = 0;
    XPLMGetVersions(&XPVersion, &xplm, &hostId);
    return id;
}

} // namespace kalvora_test
