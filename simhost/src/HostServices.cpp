// The control API of the services beyond the user aircraft: AI aircraft,
// weather, maps and window sizing.
#include "HostInternal.h"

#include <algorithm>

namespace simhost {

using namespace detail;

void Host::setAiAircraftCount(int count) {
    HostCore& c = *core();
    c.planes.aiCount = std::max(0, std::min(count, kMaxAiAircraft));
    c.planes.activeCount = std::min(c.planes.activeCount, 1 + c.planes.aiCount);
    if (c.planes.holder < 0) c.planes.activeCount = 1 + c.planes.aiCount;
    if (c.planes.models.size() > static_cast<size_t>(1 + c.planes.aiCount))
        c.planes.models.resize(static_cast<size_t>(1 + c.planes.aiCount));
    else if (c.planes.holder >= 0)
        c.planes.models.resize(static_cast<size_t>(1 + c.planes.aiCount));
}

void Host::setWeather(const Weather& weather) {
    core()->weather = weather;
}

const Weather& Host::weather() const {
    return core()->weather;
}

void Host::showMap(const std::string& mapId) {
    detail::showMap(*core(), mapId);
}

void Host::hideMap(const std::string& mapId) {
    detail::hideMap(*core(), mapId);
}

const std::vector<MapMark>& Host::mapMarks() const {
    return core()->maps.marks;
}

bool Host::resizeWindow(int windowId, int width, int height) {
    return resizeWindowTo(windowId, width, height);
}

} // namespace simhost
