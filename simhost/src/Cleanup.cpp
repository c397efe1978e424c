// What a plug-in has registered, and dropping all of it when it unloads, as
// X-Plane does: datarefs become orphans (handles stay valid and read 0), every
// callback, window, widget, menu and hot key disappears. Commands stay: X-Plane never
// destroys a command, only its handlers go.
#include "HostInternal.h"
#include "widgets/WidgetTree.h"

#include <sstream>

namespace simhost::detail {

std::vector<std::string> listRegistrations(const HostCore& c, int pluginId) {
    std::vector<std::string> out;
    for (const DataRefRec& d : c.datarefs)
        if (d.owner == pluginId && !d.orphaned) out.push_back("dataref " + d.name);
    for (const DataRefRec& d : c.datarefs)
        for (const DataRefRec::Sharer& s : d.sharers)
            if (s.plugin == pluginId) out.push_back("shared dataref " + d.name);
    for (const FlightLoopRec& f : c.flightLoops) {
        if (!f.alive || f.owner != pluginId) continue;
        std::ostringstream s;
        s << (f.legacy ? "flight loop " : "created flight loop ") << f.fn;
        out.push_back(s.str());
    }
    listDisplay(c, pluginId, out);
    widgets::listWidgets(pluginId, out);
    listMenus(c, pluginId, out);
    listScenery(c, pluginId, out);
    listMaps(c, pluginId, out);
    listAvionics(c, pluginId, out);
    if (c.planes.holder == pluginId) out.push_back("AI aircraft");
    for (const CommandRec& cmd : c.commands)
        for (const CommandHandler& h : cmd.handlers)
            if (h.alive && h.owner == pluginId) out.push_back("command handler " + cmd.name);
    if (c.camera.controlled && c.camera.owner == pluginId) out.push_back("camera control");
    return out;
}

void dropRegistrations(HostCore& c, int pluginId) {
    for (DataRefRec& d : c.datarefs) {
        if (d.owner == pluginId) {
            d.orphaned = true;
            d.acc = Accessors{};
        }
        for (size_t i = d.sharers.size(); i-- > 0;)
            if (d.sharers[i].plugin == pluginId) d.sharers.erase(d.sharers.begin() + static_cast<long>(i));
    }
    for (FlightLoopRec& f : c.flightLoops)
        if (f.owner == pluginId) f.alive = false;
    dropDisplay(c, pluginId);
    dropMenus(c, pluginId);
    dropScenery(c, pluginId);
    dropMaps(c, pluginId);
    dropAvionics(c, pluginId);
    dropSounds(c, pluginId);
    dropPlanes(c, pluginId);
    for (size_t i = c.weatherReports.size(); i-- > 0;)
        if (c.weatherReports[i].owner == pluginId)
            c.weatherReports.erase(c.weatherReports.begin() + static_cast<long>(i));
    for (CommandRec& cmd : c.commands)
        for (CommandHandler& h : cmd.handlers)
            if (h.owner == pluginId) h.alive = false;
    dropCamera(c, pluginId);
}

} // namespace simhost::detail
