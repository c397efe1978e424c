#include "DemoPush.h"

#include <string>

namespace kalvora_bench {

namespace {

constexpr double kDemoHeadingDeg = 40;
constexpr double kPickAtSeconds = 2;        ///< sim time of the pilot's pick
constexpr double kBrakeReactionSeconds = 2; ///< between the crew's question and the release
constexpr double kTimeoutSeconds = 120;     ///< the approach takes about 12 s

bool CrewAsked(const simhost::Host& host, size_t from) {
    const auto& t = host.transcript();
    for (size_t i = from; i < t.size(); ++i)
        if ((t[i].kind == "speech" || t[i].kind == "message") &&
            t[i].text.find("confirm brake") != std::string::npos)
            return true;
    return false;
}

} // namespace

simhost::HostOptions DemoHostOptions() {
    simhost::HostOptions o;
    o.startHeadingDeg = kDemoHeadingDeg;
    return o;
}

bool DemoPush::Load() {
    if (host_.loadPlugin(KALVORA_BINARY_DIR "/plugin/Kalvora.xpl", KALVORA_SOURCE_DIR "/assets/Kalvora",
                         nullptr) < 0)
        return false;
    status_ = XPLMFindDataRef("halvern/kalvora/PBstatus");
    return status_ != nullptr;
}

void DemoPush::RunToBrakeRelease() {
    host_.runUntil([&] { return host_.simTime() >= kPickAtSeconds; }, kTimeoutSeconds);
    const size_t picked = host_.transcript().size();
    host_.pickMenu("Plugins/Kalvora/Automated tail left");
    host_.runUntil([&] { return CrewAsked(host_, picked); }, kTimeoutSeconds);
    host_.runFor(kBrakeReactionSeconds);
    host_.set("sim/flightmodel/controls/parkbrake", 0);
}

} // namespace kalvora_bench
