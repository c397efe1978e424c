// kalvora-sim: loads a plug-in into a fresh simhost sandbox and runs it, with
// timed actions as a pilot would do them, a progress line, and the transcript.
#include "Scenarios.h"
#include "SimScript.h"
#include "simhost/Simhost.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <unistd.h>

namespace fs = std::filesystem;
using simhost::cli::TimedAction;

namespace {

constexpr double kDemoSeconds = 5; ///< how long the demo runs when --seconds is not given

struct Options {
    std::string plugin = KALVORA_PLUGIN_PATH;
    std::string dataDir; ///< empty: the folder beside the plug-in, else the source tree's assets
    std::string aircraft = "A320";
    double heading = 0;
    double fps = 60;
    int xplaneVersion = 12100;
    double seconds = -1;
    std::string renderDir;
    std::string scenario;
    std::string reportDir;
    bool realTime = false;
    bool speak = false;
    bool quiet = false;
    bool noWorld = false;       ///< rendered frames without the apron and the aircraft
    bool aircraftGiven = false; ///< --aircraft was given (a scenario keeps its own otherwise)
    bool headingGiven = false;  ///< --heading was given
};

std::string formatEntry(const simhost::TranscriptEntry& e) {
    char t[32];
    std::snprintf(t, sizeof t, "%8.2f", e.simTime);
    return std::string(t) + "  " + e.kind + "  " + e.text;
}

bool apply(simhost::Host& host, const TimedAction& a, std::string& why) {
    if (a.kind == "menu") {
        if (!host.pickMenu(a.arg)) why = "no enabled menu item " + a.arg;
    } else if (a.kind == "command") {
        if (!host.runCommand(a.arg)) why = "no command " + a.arg;
    } else if (a.kind == "key") {
        int vk = 0, flags = 0;
        if (simhost::cli::parseKey(a.arg, vk, flags))
            host.pressKey(vk, flags);
        else
            why = "unknown key " + a.arg;
    } else if (a.kind == "set") {
        std::string name;
        int index = -1;
        double value = 0;
        if (!simhost::cli::parseAssignment(a.arg, name, index, value))
            why = "expected name=value, not " + a.arg;
        else if (!host.exists(name))
            why = "no dataref " + name;
        else
            host.set(name, value, index);
    }
    return why.empty();
}

/// The data folder to install with the plug-in: --data, else (for a Kalvora.xpl without one
/// beside it) the source tree's, where it lives until it is installed; empty: the host's default.
std::string dataFolder(const Options& o) {
    const fs::path xpl(o.plugin);
    if (o.dataDir.empty() && !fs::is_directory(xpl.parent_path() / xpl.stem()) && xpl.stem() == "Kalvora" &&
        fs::is_directory(KALVORA_ASSETS_DIR))
        return KALVORA_ASSETS_DIR;
    return o.dataDir;
}

int run(const Options& o, const std::vector<TimedAction>& actions) {
    simhost::HostOptions ho;
    ho.aircraft = o.aircraft;
    ho.startHeadingDeg = o.heading;
    ho.fps = o.fps;
    ho.xplaneVersion = o.xplaneVersion;
    ho.realTime = o.realTime;
    ho.render = !o.renderDir.empty();
    ho.drawWorld = !o.noWorld;
    if (o.speak && !o.reportDir.empty()) ho.speechWavDir = o.reportDir + "/audio";
    if (!o.reportDir.empty()) fs::create_directories(o.reportDir);
    if (!ho.speechWavDir.empty()) fs::create_directories(ho.speechWavDir);
    if (!o.renderDir.empty()) fs::create_directories(o.renderDir);

    simhost::Host host(ho);
    std::string error;
    const std::string data = dataFolder(o);
    const int id = data.empty() ? host.loadPlugin(o.plugin, &error) : host.loadPlugin(o.plugin, data, &error);
    if (id < 0) {
        std::cerr << "kalvora-sim: cannot load " << o.plugin << ": " << error << "\n";
        return 1;
    }
    if (!o.renderDir.empty() && !host.renderingAvailable())
        std::cerr << "kalvora-sim: rendering is not available; no frames will be written\n";

    const double seconds = o.seconds >= 0 ? o.seconds : kDemoSeconds;
    const bool tty = isatty(STDERR_FILENO) && !o.quiet;
    size_t next = 0;
    int failures = 0;
    const int framesPerSecond = static_cast<int>(o.fps + 0.5);
    while (host.simTime() < seconds - 1e-9) {
        while (next < actions.size() && actions[next].atSeconds <= host.simTime() + 1e-9) {
            std::string why;
            if (!apply(host, actions[next], why)) {
                std::cerr << "kalvora-sim: at " << actions[next].atSeconds << " s: " << why << "\n";
                ++failures;
            }
            ++next;
        }
        host.runFrames(1);
        if (!o.renderDir.empty() && host.renderingAvailable()) {
            char name[32];
            std::snprintf(name, sizeof name, "/frame-%05d.png", host.frameCount());
            host.screenshot(o.renderDir + name);
        }
        if (tty && host.frameCount() % std::max(1, framesPerSecond / 4) == 0)
            std::fprintf(stderr, "\r[%6.2f s / %.2f s] frame %d", host.simTime(), seconds, host.frameCount());
    }
    if (tty) std::fprintf(stderr, "\n");

    std::ostringstream transcript;
    for (const auto& e : host.transcript())
        transcript << formatEntry(e) << "\n";
    std::cout << "--- transcript (" << host.transcript().size() << " entries, " << host.simTime() << " s, "
              << host.frameCount() << " frames) ---\n"
              << transcript.str();
    if (!o.reportDir.empty()) {
        std::ofstream(o.reportDir + "/transcript.txt") << transcript.str();
        std::ofstream(o.reportDir + "/Log.txt") << host.logText();
        std::ofstream(o.reportDir + "/menus.txt") << host.menuTree();
        std::cout << "report written to " << o.reportDir << "/\n";
    }
    return failures == 0 ? 0 : 2;
}

int runNamedScenario(const Options& o) {
    const simhost::cli::Scenario* scenario = simhost::cli::findScenario(o.scenario);
    if (!scenario) {
        std::cerr << "kalvora-sim: unknown scenario '" << o.scenario << "'; known:\n";
        for (const auto& s : simhost::cli::scenarios())
            std::cerr << "  " << s.name << ": " << s.description << "\n";
        return 1;
    }
    simhost::cli::ScenarioOptions so;
    so.plugin = o.plugin;
    so.dataDir = dataFolder(o);
    so.aircraft = o.aircraftGiven ? o.aircraft : "";
    if (o.headingGiven) so.headingDeg = o.heading;
    so.fps = o.fps;
    so.xplaneVersion = o.xplaneVersion;
    so.reportDir = o.reportDir;
    so.progress = !o.quiet && isatty(STDERR_FILENO);
    so.realTime = o.realTime;
    so.drawWorld = !o.noWorld;
    so.renderDir = o.renderDir;
    const simhost::cli::ScenarioSummary summary = simhost::cli::runScenario(*scenario, so, std::cerr);
    std::cout << simhost::cli::formatSummary(*scenario, summary);
    if (!o.reportDir.empty() && summary.loaded) std::cout << "report written to " << o.reportDir << "/\n";
    return summary.loaded && summary.error.empty() ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    std::vector<TimedAction> actions;
    std::string error;
    if (!simhost::cli::extractActions(args, actions, &error)) {
        std::cerr << "kalvora-sim: " << error << "\n";
        return 1;
    }

    Options o;
    CLI::App app{"kalvora-sim: run a plug-in in simhost, the X-Plane stand-in"};
    app.add_option("--plugin", o.plugin, "the .xpl to load")->capture_default_str();
    app.add_option("--data", o.dataDir, "the plug-in's data folder (default: beside it, or assets/Kalvora)");
    auto* aircraftOption =
        app.add_option("--aircraft", o.aircraft, "aircraft profile (A320, B738, B744, C172, DC3) or file")
            ->capture_default_str();
    auto* headingOption =
        app.add_option("--heading", o.heading, "true heading at start, degrees")->capture_default_str();
    app.add_option("--fps", o.fps, "frames per simulated second")
        ->check(CLI::Range(1.0, 1000.0))
        ->capture_default_str();
    app.add_option("--xplane-version", o.xplaneVersion,
                   "version X-Plane reports (12100 = 12.1.0, 740 = 7.40)")
        ->capture_default_str();
    auto* secondsOption = app.add_option("--seconds", o.seconds, "sim seconds to run (default 5)");
    app.add_option("--render", o.renderDir, "write every frame as a PNG into this folder");
    app.add_option("--scenario", o.scenario,
                   "named scenario: demo, straight, tail-right, turn-left, stop-midway, engines-running");
    app.add_option("--report", o.reportDir, "write transcript.txt, Log.txt and menus.txt here");
    app.add_flag("--real-time", o.realTime, "run at wall-clock speed");
    app.add_flag("--speak", o.speak, "speak the crew into <report>/audio/*.wav with espeak-ng");
    app.add_flag("--quiet", o.quiet, "no progress line");
    app.add_flag("--no-world", o.noWorld,
                 "rendered frames show only what plug-ins draw (no apron, no aircraft)");
    app.footer("Timed actions, in any number: --at <seconds> followed by --menu <path>, --set "
               "<dataref[=index]>=<value>,\n"
               "--key <[ctrl+][shift+][alt+]NAME>, --command <name>. Example:\n"
               "  kalvora-sim --at 2 --menu \"Plugins/Kalvora/Push straight back\" "
               "--at 12 --set sim/flightmodel/controls/parkbrake=0");
    std::reverse(args.begin(), args.end()); // CLI11 takes the arguments back to front
    try {
        app.parse(args);
    } catch (const CLI::ParseError& e) {
        return app.exit(e);
    }
    // The process works in the host's X-Plane folder while it runs: paths are taken from here first.
    for (std::string* path : {&o.reportDir, &o.renderDir})
        if (!path->empty()) *path = fs::absolute(*path).string();
    o.aircraftGiven = aircraftOption->count() > 0;
    o.headingGiven = headingOption->count() > 0;
    if (!o.scenario.empty()) {
        // A scenario runs its own actions until it is over.
        if (!actions.empty() || secondsOption->count() > 0)
            std::cerr << "kalvora-sim: --at actions and --seconds are ignored with --scenario\n";
        return runNamedScenario(o);
    }
    try {
        return run(o, actions);
    } catch (const std::exception& e) {
        std::cerr << "kalvora-sim: " << e.what() << "\n";
        return 1;
    }
}
