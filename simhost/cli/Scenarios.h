// Named push-back scenarios of kalvora-sim: a pilot at a parked aircraft who
// picks a manoeuvre from the Kalvora menu and releases the parking brake when
// the ground crew asks, run in simhost with the real plug-in, recorded frame by
// frame and summed up.
#pragma once

#include <iosfwd>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace simhost::cli {

/// What the pilot does, and when the run is over.
struct Scenario {
    std::string name;
    std::string description;          ///< what the pilot does (the aircraft and heading are said apart)
    std::string aircraft = "A320";    ///< profile name or file
    double headingDeg = 40;           ///< true heading when parked, degrees
    std::string manoeuvre;            ///< item of the Kalvora menu the pilot picks
    double pickAtSeconds = 2;         ///< sim time of the pick
    double brakeReactionSeconds = 2;  ///< from the crew's brake question to the release
    bool enginesRunning = false;      ///< the engines run when the pilot picks the manoeuvre
    double stopAfterPushSeconds = -1; ///< >= 0: "Stop PushBack!" that long after the aircraft starts moving
    double timeoutSeconds = 300;      ///< sim seconds at most
};

/// Every named scenario, "demo" first.
const std::vector<Scenario>& scenarios();
/// The scenario of that name, or nullptr.
const Scenario* findScenario(const std::string& name);

/// How to run a scenario.
struct ScenarioOptions {
    std::string plugin;      ///< the .xpl to load
    std::string dataDir;     ///< the plug-in's data folder to install with it; empty: the one beside the .xpl
    std::string aircraft;    ///< overrides the scenario's profile when not empty
    std::string aircraftDir; ///< where profile names are looked up; empty: simhost's own
    double headingDeg = std::numeric_limits<double>::quiet_NaN();     ///< overrides when not NaN
    double timeoutSeconds = std::numeric_limits<double>::quiet_NaN(); ///< sim seconds at most, when not NaN
    double fps = 60;
    int xplaneVersion = 12100;
    std::string reportDir; ///< where the report goes; empty: no report
    bool progress = false; ///< a live progress line on the given stream
    bool realTime = false;
    bool drawWorld = true; ///< report frames show the apron and the aircraft
    std::string renderDir; ///< non-empty: every frame is also written here as frame-NNNNN.png
    std::string
        speechDir; ///< non-empty: the crew is spoken into WAV files here (a report has its own audio/)
};

/// One frame of the run (metres in the host's local frame, degrees).
struct TraceRow {
    double simTime = 0;
    double aircraftX = 0, aircraftZ = 0;
    double aircraftHeading = 0;
    double noseGearX = 0, noseGearZ = 0;
    double truckX = 0, truckZ = 0;
    double truckHeading = 0;
    /// parked, truck arriving, waiting for brake, pushing, turning, truck leaving, ...: a text of the
    /// program's own (static), so that a row costs no allocation
    std::string_view phase;
};

/// What the run did.
struct ScenarioSummary {
    bool loaded = false;         ///< the plug-in loaded
    std::string error;           ///< why the run could not be done, when it could not
    std::string aircraftType;    ///< the profile the run used ("A320")
    std::string aircraftName;    ///< its descriptive name
    double parkedHeadingDeg = 0; ///< true heading the aircraft was parked at, degrees
    bool timedOut = false;       ///< the run hit its time limit before the scenario was over
    double straightLegM = 0;     ///< distance pushed before the heading began to change, metres
    double pathLengthM = 0;      ///< distance the aircraft's reference point travelled, metres
    double startHeadingDeg = 0;  ///< degrees
    double finalHeadingDeg = 0;  ///< degrees
    double headingChangeDeg = 0; ///< signed, -180..180 (positive: heading went up, i.e. tail left)
    double simSeconds = 0;
    double realSeconds = 0;    ///< the whole run, start-up included, without writing the report
    double startUpSeconds = 0; ///< of which making the host and loading, starting and enabling the plug-in
    int frames = 0;
    bool cleared = false;                              ///< the crew cleared the aircraft to taxi
    double aircraftSizeZ = 0;                          ///< acf_size_z, metres
    std::vector<std::string> dialogs;                  ///< titles and texts of the dialogs the plug-in opened
    std::vector<std::pair<double, std::string>> pilot; ///< what the pilot did, at sim seconds
    std::vector<TraceRow> trace;
};

/// Runs a scenario; writes the report folder when asked. Never throws.
ScenarioSummary runScenario(const Scenario& scenario, const ScenarioOptions& options, std::ostream& progress);

/// The summary as the lines printed at the end of a run.
std::string formatSummary(const Scenario& scenario, const ScenarioSummary& summary);

/// One line naming a scenario, its aircraft and heading and what the pilot does (for lists of them).
std::string describeScenario(const Scenario& scenario);

} // namespace simhost::cli
