// The demo's push-back with the real Kalvora.xpl in simhost, for the benchmark
// programs: an A320 parked at 40 degrees on X-Plane 12.1 (no rendering),
// "Automated tail left" picked at 2 s and the parking brake released 2 s after
// the crew asks, as kalvora-sim's demo does. The push runs from that release
// until the truck has left (PBstatus back to 0): 1,274 frames (push_instructions prints the count).
#pragma once

#include "XPLMDataAccess.h"
#include "simhost/Simhost.h"

namespace kalvora_bench {

/// The demo's host: A320 at 40 degrees, X-Plane 12.1, 60 frames per second, no rendering.
simhost::HostOptions DemoHostOptions();

class DemoPush {
public:
    DemoPush() : host_(DemoHostOptions()) {}
    /// Loads, starts and enables Kalvora.xpl; false when it does not load.
    bool Load();
    /// Runs the frames before the push: the pick, the truck arriving, the crew's question, the release.
    void RunToBrakeRelease();
    /// Runs one frame of the push; false once the push is over (after that frame).
    bool PushFrame() {
        host_.runFrames(1);
        return XPLMGetDatai(status_) != 0;
    }
    simhost::Host& host() { return host_; }

private:
    simhost::Host host_;
    XPLMDataRef status_ = nullptr; ///< halvern/kalvora/PBstatus
};

} // namespace kalvora_bench
