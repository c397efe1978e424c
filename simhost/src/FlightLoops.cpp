// XPLMProcessing.h: flight loops and the wall clock.
//
// Interval encoding (registration, rescheduling and return values alike):
// > 0 seconds until the next call, < 0 frames until the next call (-1 = next
// frame), 0 = registered but not called. A loop runs at the first frame at or
// after its deadline, never before.
#include "HostInternal.h"

#include "XPLMProcessing.h"

#include <algorithm>
#include <cmath>

namespace simhost::detail {

namespace {

/// Slack for deadlines in seconds, so that six steps of 1/60 s reach 0.1 s.
constexpr double kDeadlineSlackS = 1e-6;

FlightLoopRec* validLoop(void* handle) {
    HostCore* c = core();
    if (!c || !handle || !c->flightLoopHandles.count(handle)) return nullptr;
    auto* r = static_cast<FlightLoopRec*>(handle);
    return r->alive ? r : nullptr;
}

void schedule(HostCore& c, FlightLoopRec& r, float interval, bool relativeToNow) {
    if (!std::isfinite(interval) || interval == 0.0f) {
        r.scheduled = false;
        return;
    }
    r.scheduled = true;
    if (interval > 0) {
        r.byFrames = false;
        r.dueTime = (relativeToNow ? c.wallTime : r.lastRunTime) + interval;
    } else {
        r.byFrames = true;
        // A fraction of a frame still waits one frame.
        long long frames = static_cast<long long>(std::ceil(-static_cast<double>(interval)));
        if (frames < 1) frames = 1;
        r.dueFrame = (relativeToNow ? c.cycle : r.lastRunFrame) + frames;
    }
}

FlightLoopRec* findLegacy(HostCore& c, void* fn, void* refcon, int owner) {
    for (FlightLoopRec* r : c.loopOrder)
        if (r->alive && r->legacy && r->fn == fn && r->refcon == refcon && r->owner == owner) return r;
    return nullptr;
}

FlightLoopRec& newLoop(HostCore& c) {
    c.flightLoops.emplace_back();
    FlightLoopRec& r = c.flightLoops.back();
    c.flightLoopHandles.insert(&r);
    c.loopOrder.push_back(&r);
    r.owner = caller();
    r.lastRunTime = c.wallTime;
    r.lastRunFrame = c.cycle;
    return r;
}

bool due(const HostCore& c, const FlightLoopRec& r) {
    if (!r.alive || !r.scheduled) return false;
    return r.byFrames ? c.cycle >= r.dueFrame : c.wallTime + kDeadlineSlackS >= r.dueTime;
}

} // namespace

void runFlightLoops(HostCore& c, int phase) {
    // Unregistered loops leave the dispatch list here, outside any callback, so that a plug-in that
    // registers and unregisters all the time does not slow every frame down.
    c.loopOrder.erase(std::remove_if(c.loopOrder.begin(), c.loopOrder.end(),
                                     [](const FlightLoopRec* r) { return !r->alive; }),
                      c.loopOrder.end());
    // Loops added during the dispatch wait for the next frame; removed ones are skipped.
    const size_t count = c.loopOrder.size();
    const float sinceAnyLoop = static_cast<float>(c.wallTime - c.lastFlightLoopDispatch);
    for (size_t i = 0; i < count; ++i) {
        FlightLoopRec& r = *c.loopOrder[i]; // the list may grow (and move) during the calls
        if (r.phase != phase || !due(c, r) || !pluginActive(r.owner)) continue;
        const float sinceLast = static_cast<float>(c.wallTime - r.lastRunTime);
        float next = 0;
        auto fn = reinterpret_cast<XPLMFlightLoop_f>(r.fn);
        callInto(r.owner, "flight loop",
                 [&] { next = fn(sinceLast, sinceAnyLoop, c.flightLoopCounter, r.refcon); });
        if (!r.alive) continue; // unregistered itself
        r.lastRunTime = c.wallTime;
        r.lastRunFrame = c.cycle;
        schedule(c, r, next, true);
    }
}

} // namespace simhost::detail

using namespace simhost::detail;

extern "C" {

float XPLMGetElapsedTime(void) {
    HostCore* c = core();
    return c ? static_cast<float>(c->wallTime) : 0.0f;
}

int XPLMGetCycleNumber(void) {
    HostCore* c = core();
    return c ? static_cast<int>(c->cycle) : 0;
}

void XPLMRegisterFlightLoopCallback(XPLMFlightLoop_f inFlightLoop, float inInterval, void* inRefcon) {
    HostCore* c = core();
    if (!c || !inFlightLoop) return;
    FlightLoopRec& r = newLoop(*c);
    r.fn = reinterpret_cast<void*>(inFlightLoop);
    r.refcon = inRefcon;
    r.legacy = true;
    r.phase = 0;
    schedule(*c, r, inInterval, true);
}

void XPLMUnregisterFlightLoopCallback(XPLMFlightLoop_f inFlightLoop, void* inRefcon) {
    HostCore* c = core();
    if (!c) return;
    if (FlightLoopRec* r = findLegacy(*c, reinterpret_cast<void*>(inFlightLoop), inRefcon, caller()))
        r->alive = false;
}

void XPLMSetFlightLoopCallbackInterval(XPLMFlightLoop_f inFlightLoop, float inInterval, int inRelativeToNow,
                                       void* inRefcon) {
    HostCore* c = core();
    if (!c) return;
    if (FlightLoopRec* r = findLegacy(*c, reinterpret_cast<void*>(inFlightLoop), inRefcon, caller()))
        schedule(*c, *r, inInterval, inRelativeToNow != 0);
}

XPLMFlightLoopID XPLMCreateFlightLoop(XPLMCreateFlightLoop_t* inParams) {
    HostCore* c = core();
    if (!c || !inParams || !inParams->callbackFunc) {
        apiError("XPLMCreateFlightLoop: missing parameters or callback");
        return nullptr;
    }
    FlightLoopRec& r = newLoop(*c);
    r.fn = reinterpret_cast<void*>(inParams->callbackFunc);
    r.refcon = inParams->refcon;
    r.phase = inParams->phase == 1 ? 1 : 0;
    r.legacy = false;
    r.scheduled = false;
    return &r;
}

void XPLMDestroyFlightLoop(XPLMFlightLoopID inFlightLoopID) {
    if (FlightLoopRec* r = validLoop(inFlightLoopID)) r->alive = false;
}

void XPLMScheduleFlightLoop(XPLMFlightLoopID inFlightLoopID, float inInterval, int inRelativeToNow) {
    HostCore* c = core();
    if (FlightLoopRec* r = validLoop(inFlightLoopID)) schedule(*c, *r, inInterval, inRelativeToNow != 0);
}

} // extern "C"
