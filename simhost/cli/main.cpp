// kalvora-sim: runs plug-ins in a fresh simhost sandbox: Kalvora, other plug-ins
// beside it or instead of it, or every plug-in of an X-Plane folder, started as
// X-Plane starts them, with timed actions as a pilot would do them, a progress
// line, and the transcript. Or one of Kalvora's named push-back scenarios.
#include "Report.h"
#include "Scenarios.h"
#include "SimScript.h"
#include "simhost/Simhost.h"
#include "utils/Utf8Path.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <unistd.h>
#ifdef _WIN32
#include <windows.h>

#include <shellapi.h>
#endif

namespace fs = std::filesystem;
using HV_FileUtils::PathFromUtf8; // paths are UTF-8 text, as X-Plane hands them to plug-ins
using HV_FileUtils::Utf8FromPath;
using simhost::cli::TimedAction;

namespace {

constexpr double kDemoSeconds = 5;              ///< how long a run lasts when --seconds is not given
constexpr const char* kSpeechFolder = "speech"; ///< where --speak puts the crew without --report
constexpr const char* kInstalledShare = "../share/kalvora-sim"; ///< beside bin/ once installed

/// Where an installed kalvora-sim finds Kalvora and the aircraft profiles, else the build tree's.
struct Resources {
    std::string kalvora = KALVORA_PLUGIN_PATH;
    std::string kalvoraData = KALVORA_ASSETS_DIR; ///< for a Kalvora.xpl without a data folder beside it
    std::string aircraftDir;                      ///< empty: simhost's own
};

struct Options {
    std::string kalvora; ///< Kalvora's .xpl
    std::string dataDir; ///< Kalvora's data folder; empty: the folder beside it, else the source tree's
    std::vector<std::string> plugins; ///< other plug-ins: .xpl files or plug-in folders
    std::string xplaneDir;            ///< an X-Plane folder whose Resources/plugins are all loaded
    bool noKalvora = false;
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

/// The folder this program lives in (Linux: /proc/self/exe; elsewhere the path it was started by).
fs::path programDir(const std::string& argv0) {
    std::error_code ec;
    fs::path self = fs::read_symlink("/proc/self/exe", ec);
    if (ec) self = fs::absolute(PathFromUtf8(argv0), ec);
    return self.parent_path();
}

Resources findResources(const std::string& argv0) {
    Resources r;
    const fs::path share = programDir(argv0) / kInstalledShare;
    std::error_code ec;
    if (!fs::is_directory(share, ec)) return r;
    r.kalvora = Utf8FromPath((share / "plugins" / "Kalvora.xpl").lexically_normal());
    r.kalvoraData = Utf8FromPath((share / "plugins" / "Kalvora").lexically_normal());
    r.aircraftDir = Utf8FromPath((share / "aircraft").lexically_normal());
    return r;
}

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

/// Kalvora's data folder to install with it: --data, else (for a Kalvora.xpl without one beside it)
/// the source tree's or the installed one; empty: the host's default.
std::string dataFolder(const Options& o, const Resources& r) {
    const fs::path xpl = PathFromUtf8(o.kalvora);
    if (o.dataDir.empty() && !fs::is_directory(xpl.parent_path() / xpl.stem()) && xpl.stem() == "Kalvora" &&
        fs::is_directory(PathFromUtf8(r.kalvoraData)))
        return r.kalvoraData;
    return o.dataDir;
}

/// Where --speak puts the crew's WAV files.
std::string speechFolder(const Options& o) {
    if (!o.speak) return "";
    return o.reportDir.empty() ? Utf8FromPath(fs::absolute(kSpeechFolder)) : o.reportDir + "/audio";
}

/// Says where the crew's audio went, or why there is none.
void tellSpeech(const std::string& dir) {
    if (dir.empty()) return;
    if (!simhost::cli::SpeechSynthesisAvailable()) {
        std::cout << "speech: espeak-ng is not installed, so nothing was spoken\n";
        return;
    }
    int files = 0;
    std::error_code ec;
    for (const auto& f : fs::directory_iterator(dir, ec))
        files += f.path().extension() == ".wav";
    std::cout << "speech: " << files << " WAV file(s) in " << dir << "/\n";
}

/// Installs what the options name into the host's plug-ins folder: the installed files of Kalvora and the
/// --plugin ones. False (said on stderr) when one of them cannot be installed.
bool installPlugins(simhost::Host& host, const Options& o, const Resources& r,
                    std::vector<std::string>& named) {
    std::string error;
    auto install = [&](const std::string& path, const std::string& data) {
        named.push_back(host.installPlugin(path, data, simhost::PluginLayout::Flat, &error));
        if (named.back().empty())
            std::cerr << "kalvora-sim: cannot install " << path << ": " << error << "\n";
        return !named.back().empty();
    };
    if (!o.noKalvora && !install(o.kalvora, dataFolder(o, r))) return false;
    for (const std::string& p : o.plugins) {
        std::error_code ec;
        if (!o.noKalvora && fs::equivalent(PathFromUtf8(p), PathFromUtf8(o.kalvora), ec))
            continue; // Kalvora is in already
        if (!install(p, "")) return false;
    }
    if (!o.xplaneDir.empty() &&
        host.installPluginsFolder(Utf8FromPath(PathFromUtf8(o.xplaneDir) / "Resources" / "plugins"), &error) <
            0) {
        std::cerr << "kalvora-sim: " << o.xplaneDir << " is no X-Plane folder: " << error << "\n";
        return false;
    }
    return true;
}

int run(const Options& o, const Resources& r, const std::vector<TimedAction>& actions) {
    simhost::HostOptions ho;
    ho.aircraft = o.aircraft;
    ho.aircraftDir = r.aircraftDir;
    ho.startHeadingDeg = o.heading;
    ho.fps = o.fps;
    ho.xplaneVersion = o.xplaneVersion;
    ho.realTime = o.realTime;
    ho.render = !o.renderDir.empty();
    ho.drawWorld = !o.noWorld;
    ho.speechWavDir = speechFolder(o);
    if (!o.reportDir.empty()) fs::create_directories(o.reportDir);
    if (!ho.speechWavDir.empty()) fs::create_directories(ho.speechWavDir);
    if (!o.renderDir.empty()) fs::create_directories(o.renderDir);

    simhost::Host host(ho);
    std::vector<std::string> named;
    if (!installPlugins(host, o, r, named)) return 1;
    std::string errors;
    host.startInstalledPlugins(&errors);
    if (!errors.empty()) {
        // One of an X-Plane folder's plug-ins may fail (as on X-Plane); one named here may not.
        std::cerr << "kalvora-sim: plug-ins that did not start:\n" << errors;
        for (const std::string& path : named)
            if (errors.find(path + ": ") != std::string::npos) return 1;
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
        std::ofstream(PathFromUtf8(o.reportDir + "/transcript.txt")) << transcript.str();
        std::ofstream(PathFromUtf8(o.reportDir + "/Log.txt")) << host.logText();
        std::ofstream(PathFromUtf8(o.reportDir + "/menus.txt")) << host.menuTree();
        std::cout << "report written to " << o.reportDir << "/\n";
    }
    tellSpeech(ho.speechWavDir);
    return failures == 0 ? 0 : 2;
}

int runNamedScenario(const Options& o, const Resources& r) {
    const simhost::cli::Scenario* scenario = simhost::cli::findScenario(o.scenario);
    if (!scenario) {
        std::cerr << "kalvora-sim: unknown scenario '" << o.scenario << "'; known:\n";
        for (const auto& s : simhost::cli::scenarios())
            std::cerr << "  " << simhost::cli::describeScenario(s) << "\n";
        return 1;
    }
    simhost::cli::ScenarioOptions so;
    so.plugin = o.kalvora;
    so.dataDir = dataFolder(o, r);
    so.aircraft = o.aircraftGiven ? o.aircraft : "";
    so.aircraftDir = r.aircraftDir;
    if (o.headingGiven) so.headingDeg = o.heading;
    if (o.seconds >= 0) so.timeoutSeconds = o.seconds;
    so.fps = o.fps;
    so.xplaneVersion = o.xplaneVersion;
    so.reportDir = o.reportDir;
    so.progress = !o.quiet && isatty(STDERR_FILENO);
    so.realTime = o.realTime;
    so.drawWorld = !o.noWorld;
    so.renderDir = o.renderDir;
    if (o.reportDir.empty()) so.speechDir = speechFolder(o); // a report speaks into its audio/ anyway
    const simhost::cli::ScenarioSummary summary = simhost::cli::runScenario(*scenario, so, std::cerr);
    std::cout << simhost::cli::formatSummary(*scenario, summary);
    if (!o.reportDir.empty() && summary.loaded) std::cout << "report written to " << o.reportDir << "/\n";
    tellSpeech(o.reportDir.empty() ? so.speechDir : o.reportDir + "/audio");
    return summary.loaded && summary.error.empty() ? 0 : 1;
}

/// The command line in UTF-8, the program first (Windows hands main() the ANSI code page's text).
std::vector<std::string> arguments(int argc, char** argv) {
#ifdef _WIN32
    std::vector<std::string> args;
    int count = 0;
    if (wchar_t** wide = CommandLineToArgvW(GetCommandLineW(), &count)) {
        for (int i = 0; i < count; ++i)
            args.push_back(HV_FileUtils::Utf8FromWide(wide[i]));
        LocalFree(wide);
        return args;
    }
#endif
    return std::vector<std::string>(argv, argv + argc);
}

} // namespace

int main(int argc, char** argv) {
    std::vector<std::string> args = arguments(argc, argv);
    const std::string program = args.empty() ? std::string() : args.front();
    if (!args.empty()) args.erase(args.begin());
    std::vector<TimedAction> actions;
    std::string error;
    if (!simhost::cli::extractActions(args, actions, &error)) {
        std::cerr << "kalvora-sim: " << error << "\n";
        return 1;
    }

    const Resources resources = findResources(program);
    Options o;
    o.kalvora = resources.kalvora;
    CLI::App app{
        "Runs X-Plane plug-ins in simhost, the X-Plane stand-in: Kalvora, other plug-ins beside it or "
        "instead of it, a whole X-Plane plug-ins folder, or one of Kalvora's push-back scenarios.",
        "kalvora-sim"};
    app.add_option("--kalvora", o.kalvora, "Kalvora's .xpl")->capture_default_str();
    app.add_option("--data", o.dataDir, "Kalvora's data folder (default: beside it, or assets/Kalvora)");
    app.add_option("--plugin", o.plugins, "another plug-in to load (.xpl or plug-in folder); repeatable");
    app.add_option("--xplane-dir", o.xplaneDir,
                   "load every plug-in of this X-Plane folder's Resources/plugins");
    app.add_flag("--no-kalvora", o.noKalvora, "do not load Kalvora");
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
    app.add_option("--seconds", o.seconds, "sim seconds to run (default 5; a scenario's time limit)")
        ->check(CLI::NonNegativeNumber);
    app.add_option("--render", o.renderDir, "write every frame as a PNG into this folder");
    app.add_option("--scenario", o.scenario,
                   "named scenario: demo, straight, tail-right, turn-left, stop-midway, engines-running");
    app.add_option("--report", o.reportDir, "write transcript.txt, Log.txt and menus.txt here");
    app.add_flag("--real-time", o.realTime, "run at wall-clock speed");
    app.add_flag(
        "--speak", o.speak,
        "speak the crew into WAV files with espeak-ng: <report>/audio/, or ./speech/ without --report");
    app.add_flag("--quiet", o.quiet, "no progress line");
    app.add_flag("--no-world", o.noWorld,
                 "rendered frames show only what plug-ins draw (no apron, no aircraft)");
    app.footer("Timed actions, in any number: --at <seconds> followed by --menu <path>, --set "
               "<dataref[=index]>=<value>,\n"
               "--key <[ctrl+][shift+][alt+]NAME>, --command <name>. Examples:\n"
               "  kalvora-sim --at 2 --menu \"Plugins/Kalvora/Push straight back\" "
               "--at 12 --set sim/flightmodel/controls/parkbrake=0\n"
               "  kalvora-sim --no-kalvora --plugin build/MyPlugin.xpl --seconds 10 --report out");
    std::reverse(args.begin(), args.end()); // CLI11 takes the arguments back to front
    try {
        app.parse(args);
    } catch (const CLI::ParseError& e) {
        return app.exit(e);
    }
    // While it runs, the process works in the host's X-Plane folder: paths are taken from here first.
    for (std::string* path : {&o.kalvora, &o.dataDir, &o.xplaneDir, &o.reportDir, &o.renderDir})
        if (!path->empty()) *path = Utf8FromPath(fs::absolute(PathFromUtf8(*path)));
    for (std::string& p : o.plugins)
        p = Utf8FromPath(fs::absolute(PathFromUtf8(p)));
    o.aircraftGiven = aircraftOption->count() > 0;
    o.headingGiven = headingOption->count() > 0;
    if (!o.scenario.empty()) {
        // A scenario is Kalvora and a pilot; it runs its own actions until it is over.
        if (o.noKalvora || !o.plugins.empty() || !o.xplaneDir.empty()) {
            std::cerr << "kalvora-sim: a scenario runs Kalvora alone (--kalvora names its file): --plugin, "
                         "--xplane-dir and --no-kalvora do not go with --scenario\n";
            return 1;
        }
        if (!actions.empty()) std::cerr << "kalvora-sim: --at actions are ignored with --scenario\n";
        return runNamedScenario(o, resources);
    }
    if (o.noKalvora && o.plugins.empty() && o.xplaneDir.empty()) {
        std::cerr << "kalvora-sim: nothing to run: --no-kalvora needs --plugin or --xplane-dir\n";
        return 1;
    }
    try {
        return run(o, resources, actions);
    } catch (const std::exception& e) {
        std::cerr << "kalvora-sim: " << e.what() << "\n";
        return 1;
    }
}
