// Running a named scenario: the pilot's actions, the per-frame record and the summary.
#include "Scenarios.h"
#include "utils/Utf8Path.h"

#include "Report.h"
#include "simhost/Simhost.h"
#include "simhost/Widgets.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <ostream>
#include <set>
#include <sstream>

namespace simhost::cli {

namespace {

namespace fs = std::filesystem;

constexpr const char* kMenuPrefix = "Plugins/Kalvora/";
constexpr const char* kStopItem = "Stop PushBack!";
constexpr const char* kBrakeDataRef = "sim/flightmodel/controls/parkbrake";
constexpr const char* kBrakeQuestion = "confirm brake"; // the crew asks once hooked up
constexpr const char* kClearedToTaxi = "cleared to taxi";
constexpr double kMovingM = 1e-4;          // displacement per frame that counts as moving, metres
constexpr double kTurningDeg = 1e-4;       // heading change per frame that counts as turning, degrees
constexpr double kStraightLegDeg = 0.01;   // heading change that ends the straight leg, degrees
constexpr double kAfterClearedSeconds = 3; // kept running after the crew's last word
constexpr double kAfterStopSeconds = 5;    // kept running after "Stop PushBack!" or a refusal
constexpr int kProgressEveryFrames = 15;
constexpr int kMaxEngines = 8;
constexpr double kStillSeconds = 0.5; // the aircraft has stopped once it stood still this long
constexpr double kClockSlackSeconds =
    1e-9; // sim time sums frame times: a limit reached within this is reached

const std::vector<Scenario> kScenarios = [] {
    std::vector<Scenario> list;
    Scenario demo;
    demo.name = "demo";
    demo.description = "pushed back then turned tail left";
    demo.manoeuvre = "Automated tail left";
    list.push_back(demo);

    Scenario straight = demo;
    straight.name = "straight";
    straight.description = "pushed straight back";
    straight.manoeuvre = "Push straight back";
    list.push_back(straight);

    Scenario tailRight = demo;
    tailRight.name = "tail-right";
    tailRight.description = "pushed back then turned tail right";
    tailRight.headingDeg = 130; // the end heading 40 lies on the turn
    tailRight.manoeuvre = "Automated tail right";
    list.push_back(tailRight);

    Scenario turnLeft = demo;
    turnLeft.name = "turn-left";
    turnLeft.description = "turned tail left from the stand, no straight leg";
    turnLeft.manoeuvre = "Turn tail left";
    list.push_back(turnLeft);

    Scenario stop = straight;
    stop.name = "stop-midway";
    stop.description = "a straight push stopped from the menu 1 s after the aircraft starts moving";
    stop.stopAfterPushSeconds = 1; // a push of 13 m takes about 2 s at 60 frames per second
    list.push_back(stop);

    Scenario engines = straight;
    engines.name = "engines-running";
    engines.description = "a straight push asked for with the engines running: the crew refuses";
    engines.enginesRunning = true;
    engines.timeoutSeconds = 20;
    list.push_back(engines);
    return list;
}();

double NormalisedDelta(double from, double to) {
    double d = std::fmod(to - from, 360.0);
    if (d > 180) d -= 360;
    if (d < -180) d += 360;
    return d;
}

/// Nose (or tail) gear 0 in the local frame, from the aircraft's reference point and heading.
void GearInLocal(const Aircraft& a, double x, double z, double headingDeg, double* gx, double* gz) {
    const double bodyX = a.gear.empty() ? 0 : a.gear[0].x; // right, metres
    const double bodyZ = a.gear.empty() ? 0 : a.gear[0].z; // aft, metres
    const double h = headingDeg * M_PI / 180;
    *gx = x + bodyX * std::cos(h) - bodyZ * std::sin(h);
    *gz = z + bodyX * std::sin(h) + bodyZ * std::cos(h);
}

/// The text of a dialog window: its title and the captions inside it.
std::string DialogText(WidgetHandle root) {
    std::string text = widgetDescriptor(root);
    for (WidgetHandle w : findWidgets([](const WidgetInfo&) { return true; }, root)) {
        if (w == root) continue;
        const std::string d = widgetDescriptor(w);
        if (!d.empty()) text += " | " + d;
    }
    return text;
}

bool SpokenOrShown(const Host& host, size_t from, const char* needle, size_t* found) {
    const auto& t = host.transcript();
    for (size_t i = from; i < t.size(); ++i)
        if ((t[i].kind == "speech" || t[i].kind == "message") &&
            t[i].text.find(needle) != std::string::npos) {
            *found = i;
            return true;
        }
    return false;
}

/// The pilot, the recorder and the phase of the run, frame by frame.
class Run {
public:
    Run(const Scenario& s, const ScenarioOptions& o, std::ostream& progress)
        : s_(s), o_(o), progress_(progress) {}

    ScenarioSummary Execute() {
        const auto wallStart = std::chrono::steady_clock::now();
        HostOptions ho;
        ho.aircraft = o_.aircraft.empty() ? s_.aircraft : o_.aircraft;
        ho.aircraftDir = o_.aircraftDir;
        ho.startHeadingDeg = std::isnan(o_.headingDeg) ? s_.headingDeg : o_.headingDeg;
        sum_.parkedHeadingDeg = ho.startHeadingDeg;
        ho.fps = o_.fps;
        ho.xplaneVersion = o_.xplaneVersion;
        ho.realTime = o_.realTime;
        ho.drawWorld = o_.drawWorld;
        if (!o_.renderDir.empty()) {
            fs::create_directories(HV_FileUtils::PathFromUtf8(o_.renderDir));
            ho.render = true;
        }
        if (!o_.reportDir.empty()) {
            fs::create_directories(HV_FileUtils::PathFromUtf8(o_.reportDir));
            // Frames for the report: before 11.50 the plug-in draws the truck and the GPU in
            // its draw callbacks, from 11.50 on simhost draws their object instances.
            ho.render = true;
            if (SpeechSynthesisAvailable()) ho.speechWavDir = o_.reportDir + "/audio";
        }
        if (ho.speechWavDir.empty()) ho.speechWavDir = o_.speechDir;
        if (!ho.speechWavDir.empty()) fs::create_directories(HV_FileUtils::PathFromUtf8(ho.speechWavDir));
        Host host(ho);
        sum_.aircraftType = host.aircraft().type;
        sum_.aircraftName = host.aircraft().name;
        std::string why;
        if (host.loadPlugin(o_.plugin, o_.dataDir, &why) < 0) {
            sum_.error = "cannot load " + o_.plugin + ": " + why;
            return sum_;
        }
        sum_.loaded = true;
        sum_.aircraftSizeZ = host.aircraft().sizeZ;
        for (WidgetHandle w : topLevelWidgets())
            seenWidgets_.insert(w);
        if (s_.enginesRunning)
            for (int i = 0; i < host.aircraft().engineCount && i < kMaxEngines; ++i)
                host.aircraft().engineRunning[i] = true;

        while (!Finished(host)) {
            Act(host);
            host.runFrames(1);
            WriteFrame(host);
            Record(host);
            ShowProgress(host);
        }
        if (o_.progress) progress_ << "\n";
        Summarise(host);
        sum_.realSeconds =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - wallStart).count();
        if (!o_.reportDir.empty()) WriteReport(o_.reportDir, s_, sum_, host, frames_);
        return sum_;
    }

private:
    bool Finished(const Host& host) {
        const double t = host.simTime();
        if (clearedAt_ >= 0 && t >= clearedAt_ + kAfterClearedSeconds) return true;
        if (stoppedAt_ >= 0 && t >= stoppedAt_ + kAfterStopSeconds) return true;
        if (refusedAt_ >= 0 && t >= refusedAt_ + kAfterStopSeconds) return true;
        const double limit = std::isnan(o_.timeoutSeconds) ? s_.timeoutSeconds : o_.timeoutSeconds;
        sum_.timedOut = t >= limit - kClockSlackSeconds;
        return sum_.timedOut;
    }

    void Act(Host& host) {
        const double t = host.simTime();
        if (!picked_ && t >= s_.pickAtSeconds) {
            picked_ = true;
            pickIndex_ = host.transcript().size();
            sum_.pilot.emplace_back(t, "picks " + s_.manoeuvre);
            if (!host.pickMenu(kMenuPrefix + s_.manoeuvre)) sum_.error = "no menu item " + s_.manoeuvre;
        }
        size_t at = 0;
        if (picked_ && askedAt_ < 0 && SpokenOrShown(host, pickIndex_, kBrakeQuestion, &at))
            askedAt_ = host.transcript()[at].simTime;
        if (askedAt_ >= 0 && !released_ && t >= askedAt_ + s_.brakeReactionSeconds) {
            sum_.pilot.emplace_back(t, "releases the parking brake");
            host.set(kBrakeDataRef, 0);
            released_ = true;
        }
        if (s_.stopAfterPushSeconds >= 0 && movedAt_ >= 0 && stoppedAt_ < 0 &&
            t >= movedAt_ + s_.stopAfterPushSeconds) {
            sum_.pilot.emplace_back(t, std::string("picks ") + kStopItem);
            host.pickMenu(std::string(kMenuPrefix) + kStopItem);
            stoppedAt_ = t;
        }
    }

    void Record(Host& host) {
        TraceRow r;
        r.simTime = host.simTime();
        r.aircraftX = host.getf("sim/flightmodel/position/local_x");
        r.aircraftZ = host.getf("sim/flightmodel/position/local_z");
        r.aircraftHeading = host.getf("sim/flightmodel/position/psi");
        GearInLocal(host.aircraft(), r.aircraftX, r.aircraftZ, r.aircraftHeading, &r.noseGearX, &r.noseGearZ);
        r.truckX = host.getf("halvern/kalvora/truck/position_ogl_x");
        r.truckZ = host.getf("halvern/kalvora/truck/position_ogl_z");
        r.truckHeading = host.getf("halvern/kalvora/truck/position_hdg");

        for (WidgetHandle w : topLevelWidgets())
            if (seenWidgets_.insert(w).second) {
                sum_.dialogs.push_back(DialogText(w));
                if (picked_ && refusedAt_ < 0 && widgetDescriptor(w) == "Warning...") refusedAt_ = r.simTime;
            }
        size_t at = 0;
        if (picked_ && clearedAt_ < 0 && SpokenOrShown(host, pickIndex_, kClearedToTaxi, &at))
            clearedAt_ = r.simTime;

        bool moving = false, turning = false;
        if (!sum_.trace.empty()) {
            const TraceRow& p = sum_.trace.back();
            moving = std::hypot(r.aircraftX - p.aircraftX, r.aircraftZ - p.aircraftZ) > kMovingM;
            turning = std::fabs(NormalisedDelta(p.aircraftHeading, r.aircraftHeading)) > kTurningDeg;
        }
        if ((moving || turning) && movedAt_ < 0) movedAt_ = r.simTime;
        if (moving || turning) {
            lastMotionAt_ = r.simTime;
            lastMotionTurning_ = turning;
        } else if (lastMotionAt_ >= 0 && r.simTime - lastMotionAt_ < kStillSeconds) {
            // A frame without motion between the straight leg and the turn is not a stop.
            turning = lastMotionTurning_;
            moving = !turning;
        }
        r.phase = Phase(moving, turning);
        if (r.phase != lastPhase_) {
            phaseStart_ = r.simTime;
            lastPhase_ = r.phase;
        }
        CaptureFrame(host, r);
        sum_.trace.push_back(r);
    }

    std::string Phase(bool moving, bool turning) const {
        if (!picked_) return "parked";
        if (refusedAt_ >= 0) return "refused";
        if (stoppedAt_ >= 0) return "stopped";
        if (clearedAt_ >= 0) return "cleared";
        if (turning) return "turning";
        if (moving) return "pushing";
        if (movedAt_ >= 0) return "truck leaving";
        if (askedAt_ >= 0) return "waiting for brake";
        return "truck arriving";
    }

    /// Every frame into the render folder, when one was given.
    void WriteFrame(Host& host) {
        if (o_.renderDir.empty() || !host.renderingAvailable()) return;
        char name[32];
        std::snprintf(name, sizeof name, "/frame-%05d.png", host.frameCount());
        host.screenshot(o_.renderDir + name);
    }

    /// One rendered frame a little after the truck starts arriving, pushing and leaving.
    void CaptureFrame(Host& host, const TraceRow& r) {
        static const struct {
            const char* phase;
            double afterSeconds;
            const char* file;
        } kShots[] = {{"truck arriving", 2.0, "truck-arriving.png"},
                      {"pushing", 1.0, "pushing.png"},
                      {"turning", 5.0, "turning.png"},
                      {"truck leaving", 2.0, "truck-leaving.png"}};
        if (o_.reportDir.empty() || !host.renderingAvailable()) return;
        for (const auto& shot : kShots) {
            if (r.phase != shot.phase || r.simTime < phaseStart_ + shot.afterSeconds) continue;
            if (!shotsTaken_.insert(shot.file).second) continue;
            fs::create_directories(HV_FileUtils::PathFromUtf8(o_.reportDir + "/frames"));
            const std::string path = o_.reportDir + "/frames/" + shot.file;
            if (host.screenshot(path)) frames_.push_back(path);
        }
    }

    void ShowProgress(const Host& host) {
        if (!o_.progress || host.frameCount() % kProgressEveryFrames != 0 || sum_.trace.empty()) return;
        const TraceRow& r = sum_.trace.back();
        const TraceRow& first = sum_.trace.front();
        char line[160];
        std::snprintf(line, sizeof line, "\r[%7.2f s] %-18s pushed %6.1f m  heading %6.1f deg ", r.simTime,
                      r.phase.c_str(),
                      std::hypot(r.aircraftX - first.aircraftX, r.aircraftZ - first.aircraftZ),
                      r.aircraftHeading);
        progress_ << line << std::flush;
    }

    void Summarise(const Host& host) {
        sum_.simSeconds = host.simTime();
        sum_.frames = host.frameCount();
        sum_.cleared = clearedAt_ >= 0;
        if (sum_.trace.empty()) return;
        const TraceRow& first = sum_.trace.front();
        sum_.startHeadingDeg = first.aircraftHeading;
        sum_.finalHeadingDeg = sum_.trace.back().aircraftHeading;
        sum_.headingChangeDeg = NormalisedDelta(sum_.startHeadingDeg, sum_.finalHeadingDeg);
        bool straight = true;
        for (size_t i = 1; i < sum_.trace.size(); ++i) {
            const TraceRow& p = sum_.trace[i - 1];
            const TraceRow& r = sum_.trace[i];
            sum_.pathLengthM += std::hypot(r.aircraftX - p.aircraftX, r.aircraftZ - p.aircraftZ);
            if (std::fabs(NormalisedDelta(first.aircraftHeading, r.aircraftHeading)) > kStraightLegDeg)
                straight = false;
            if (straight)
                sum_.straightLegM = std::hypot(r.aircraftX - first.aircraftX, r.aircraftZ - first.aircraftZ);
        }
    }

    const Scenario& s_;
    const ScenarioOptions& o_;
    std::ostream& progress_;
    ScenarioSummary sum_;
    bool picked_ = false, released_ = false;
    size_t pickIndex_ = 0;
    double askedAt_ = -1, movedAt_ = -1, stoppedAt_ = -1, refusedAt_ = -1, clearedAt_ = -1;
    double lastMotionAt_ = -1;
    bool lastMotionTurning_ = false;
    std::string lastPhase_;
    double phaseStart_ = 0;
    std::set<WidgetHandle> seenWidgets_;
    std::set<std::string> shotsTaken_;
    std::vector<std::string> frames_;
};

} // namespace

const std::vector<Scenario>& scenarios() {
    return kScenarios;
}

const Scenario* findScenario(const std::string& name) {
    for (const Scenario& s : kScenarios)
        if (s.name == name) return &s;
    return nullptr;
}

ScenarioSummary runScenario(const Scenario& scenario, const ScenarioOptions& options,
                            std::ostream& progress) {
    try {
        // The report is written while the host lives, in whose X-Plane folder the process then works.
        ScenarioOptions o = options;
        for (std::string* path : {&o.reportDir, &o.renderDir, &o.speechDir})
            if (!path->empty())
                *path = HV_FileUtils::Utf8FromPath(fs::absolute(HV_FileUtils::PathFromUtf8(*path)));
        return Run(scenario, o, progress).Execute();
    } catch (const std::exception& e) {
        ScenarioSummary failed;
        failed.error = e.what();
        return failed;
    }
}

std::string describeScenario(const Scenario& scenario) {
    char line[200];
    std::snprintf(line, sizeof line, "%s: %s at %.0f degrees, %s", scenario.name.c_str(),
                  scenario.aircraft.c_str(), scenario.headingDeg, scenario.description.c_str());
    return line;
}

std::string formatSummary(const Scenario& scenario, const ScenarioSummary& s) {
    std::ostringstream out;
    char line[200];
    out << "--- " << scenario.name << ": " << scenario.description << " ---\n";
    if (!s.aircraftType.empty()) {
        std::snprintf(line, sizeof line, "aircraft %s (%s) parked at heading %.1f deg\n",
                      s.aircraftType.c_str(), s.aircraftName.c_str(), s.parkedHeadingDeg);
        out << line;
    }
    if (!s.error.empty()) out << "error: " << s.error << "\n";
    std::snprintf(line, sizeof line,
                  "push length (straight leg) %.1f m, path %.1f m (aircraft half length %.1f m)\n",
                  s.straightLegM, s.pathLengthM, s.aircraftSizeZ);
    out << line;
    std::snprintf(line, sizeof line, "heading %.1f -> %.1f deg (change %+.1f deg)\n", s.startHeadingDeg,
                  s.finalHeadingDeg, s.headingChangeDeg);
    out << line;
    std::snprintf(line, sizeof line, "sim time %.1f s%s, real time %.2f s, %d frames, %s\n", s.simSeconds,
                  s.timedOut ? " (the time limit)" : "", s.realSeconds, s.frames,
                  s.cleared ? "cleared to taxi" : "not cleared to taxi");
    out << line;
    for (const std::string& d : s.dialogs)
        out << "dialog: " << d << "\n";
    return out.str();
}

} // namespace simhost::cli
