// Flight loops: frame intervals, inactive loops, created loops by phase, and
// (un)registration from inside a loop.
#include "SimhostFixture.h"

#include "XPLMProcessing.h"

#include <vector>

namespace {

using FlightLoops = SimhostTest;

/// The frames one flight loop ran in.
struct Calls {
    std::vector<int> frames; ///< XPLMGetCycleNumber at each call
    float next = -1;         ///< what to return
};

float loop(float, float, int, void* refcon) {
    auto* c = static_cast<Calls*>(refcon);
    c->frames.push_back(XPLMGetCycleNumber());
    return c->next;
}

TEST_F(FlightLoops, NegativeIntervalsCountFramesZeroIsInactiveAndEachRefconIsALoop) {
    Calls every, third, once, gone;
    third.next = -3;
    once.next = 0; // runs once when scheduled, then stays registered and silent
    XPLMRegisterFlightLoopCallback(loop, -1, &every);
    XPLMRegisterFlightLoopCallback(loop, -3, &third);
    XPLMRegisterFlightLoopCallback(loop, 0, &once);
    XPLMRegisterFlightLoopCallback(loop, -1, &gone); // the same function: only this refcon goes
    XPLMUnregisterFlightLoopCallback(loop, &gone);
    host->runFrames(5);
    XPLMSetFlightLoopCallbackInterval(loop, -1, 1, &once);
    host->runFrames(4);
    EXPECT_EQ(every.frames, (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9}));
    EXPECT_EQ(third.frames, (std::vector<int>{3, 6, 9}));
    EXPECT_EQ(once.frames, (std::vector<int>{6}));
    EXPECT_TRUE(gone.frames.empty());
    EXPECT_EQ(host->registrations(me).size(), 3u);
}

TEST_F(FlightLoops, CreatedLoopsStartUnscheduledAndRunByPhase) {
    Calls before, after;
    after.next = -2;
    XPLMCreateFlightLoop_t params{sizeof(XPLMCreateFlightLoop_t), xplm_FlightLoop_Phase_AfterFlightModel,
                                  loop, &after};
    XPLMFlightLoopID idAfter = XPLMCreateFlightLoop(&params);
    params.phase = xplm_FlightLoop_Phase_BeforeFlightModel;
    params.refcon = &before;
    XPLMFlightLoopID idBefore = XPLMCreateFlightLoop(&params);
    host->runFrames(3);
    EXPECT_TRUE(before.frames.empty());
    XPLMScheduleFlightLoop(idBefore, -1, 1);
    XPLMScheduleFlightLoop(idAfter, -2, 1);
    host->runFrames(4);
    EXPECT_EQ(before.frames, (std::vector<int>{4, 5, 6, 7}));
    EXPECT_EQ(after.frames, (std::vector<int>{5, 7}));
    XPLMDestroyFlightLoop(idBefore);
    XPLMDestroyFlightLoop(idAfter);
    host->runFrames(3);
    EXPECT_EQ(before.frames.size(), 4u);
    EXPECT_TRUE(host->registrations(me).empty());
}

// A loop that unregisters itself and registers a newcomer from inside its callback.
struct SelfRemoving {
    Calls newcomer;
    int runs = 0;
};
float removeSelf(float, float, int, void* refcon) {
    auto* s = static_cast<SelfRemoving*>(refcon);
    ++s->runs;
    XPLMUnregisterFlightLoopCallback(removeSelf, refcon);
    XPLMRegisterFlightLoopCallback(loop, -1, &s->newcomer);
    return -1; // ignored: it is gone
}

TEST_F(FlightLoops, RegisteringAndUnregisteringFromInsideACallbackIsSafe) {
    SelfRemoving s;
    XPLMRegisterFlightLoopCallback(removeSelf, -1, &s);
    host->runFrames(3);
    EXPECT_EQ(s.runs, 1);
    EXPECT_EQ(s.newcomer.frames, (std::vector<int>{2, 3})); // from the next frame on
}

} // namespace
