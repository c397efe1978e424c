// XPLMUtilities.h commands: find/create, begin/continue/end with before and
// after handlers, X-Plane's own commands (every one X-Plane 12.1 publishes, from
// XPlaneTables.h; the view, pause and brake ones act on the world, the others
// run their handlers and are recorded), and the legacy key stroke and joystick
// button calls mapped onto them.
#include "HostInternal.h"
#include "XPlaneTables.h"

#include "XPLMUtilities.h"

namespace simhost::detail {

namespace {

struct ViewCommand {
    const char* name;
    int viewType;  ///< sim/graphics/view/view_type
    bool external; ///< sim/graphics/view/view_is_external
};
/// X-Plane's view commands and the view each selects (view_type codes of X-Plane 7 to 12). X-Plane's
/// other view commands (glances, quick looks, ...) come from its table: they run their handlers and
/// change nothing.
const ViewCommand kViewCommands[] = {
    {"sim/view/default_view", 1000, false},
    {"sim/view/forward_with_2d_panel", 1000, false},
    {"sim/view/forward_with_hud", 1023, false},
    {"sim/view/forward_with_nothing", 1024, false},
    {"sim/view/3d_cockpit_cmnd_look", 1026, false},
    {"sim/view/3d_cockpit_toggle", 1026, false},
    {"sim/view/free_camera", 1028, true},
    {"sim/view/linear_spot", 1021, true},
    {"sim/view/still_spot", 1020, true},
    {"sim/view/runway", 1015, true},
    {"sim/view/circle", 1018, true},
    {"sim/view/tower", 1014, true},
    {"sim/view/ridealong", 1019, true},
    {"sim/view/track_weapon", 1027, true},
    {"sim/view/chase", 1017, true},
    {"sim/view/wingman", 1029, true},
    {"sim/view/left_45", 1004, false},
    {"sim/view/right_45", 1005, false},
    {"sim/view/left_90", 1006, false},
    {"sim/view/right_90", 1007, false},
    {"sim/view/left_135", 1008, false},
    {"sim/view/right_135", 1009, false},
    {"sim/view/back", 1010, false},
    {"sim/view/up_left", 1011, false},
    {"sim/view/up_right", 1012, false},
    {"sim/view/straight_down", 1025, false},
};

/// Legacy joystick buttons (XPLMCommandButtonID) that select a view, as commands.
struct LegacyMap {
    int id;
    const char* command;
};
const LegacyMap kButtons[] = {
    {38, "sim/view/forward_with_nothing"},
    {39, "sim/view/forward_with_hud"},
    {41, "sim/view/tower"},
    {42, "sim/view/runway"},
    {43, "sim/view/chase"},
    {44, "sim/view/free_camera"},
    {45, "sim/view/free_camera"},
    {46, "sim/view/still_spot"},
    {85, "sim/operation/pause_toggle"},
};
/// Legacy key strokes (XPLMCommandKeyID) with an effect simhost models.
const LegacyMap kKeyStrokes[] = {
    {0, "sim/operation/pause_toggle"},
    {73, "sim/view/forward_with_2d_panel"},
    {78, "sim/view/tower"},
    {79, "sim/view/runway"},
    {80, "sim/view/chase"},
    {81, "sim/view/free_camera"},
    {82, "sim/view/free_camera"},
    {83, "sim/view/still_spot"},
    {84, "sim/view/forward_with_hud"},
    {85, "sim/view/forward_with_nothing"},
};

CommandRec* validCommand(void* handle) {
    HostCore* c = core();
    if (!c || !handle || !c->commandHandles.count(handle)) return nullptr;
    return static_cast<CommandRec*>(handle);
}

CommandRec* addRecord(HostCore& c, const std::string& name, const std::string& description) {
    c.commands.emplace_back();
    CommandRec& r = c.commands.back();
    r.name = name;
    r.description = description;
    c.commandByName[name] = &r;
    c.commandHandles.insert(&r);
    return &r;
}

CommandRec* create(HostCore& c, const std::string& name, const std::string& description) {
    if (CommandRec* existing = commandRec(name)) return existing;
    return addRecord(c, name, description);
}

/// One of X-Plane's commands, with X-Plane's description.
CommandRec* simCommand(HostCore& c, const char* name) {
    return create(c, name, name);
}

void setPausedFlag(HostCore& c, bool paused) {
    c.paused = paused;
    c.datarefByName.at("sim/time/paused")->values[0] = paused ? 1 : 0;
}

} // namespace

CommandRec* commandRec(const std::string& name) {
    HostCore* c = core();
    if (!c) return nullptr;
    auto it = c->commandByName.find(name);
    if (it != c->commandByName.end()) return it->second;
    // One of X-Plane's own that no one asked for yet gets its record now.
    const XPlaneCommandRow* row = findXPlaneCommand(name.c_str());
    return row ? addRecord(*c, name, row->description) : nullptr;
}

void runCommandPhase(CommandRec* cmd, int phase) {
    HostCore* c = core();
    if (!c || !cmd) return;
    if (phase == xplm_CommandBegin) {
        c->commandsRun.push_back(cmd->name);
        record("command", cmd->name);
    } else if (phase == xplm_CommandEnd) {
        record("command", cmd->name + " end");
    }
    // Handlers registered during the dispatch wait for the next phase.
    const size_t n = cmd->handlers.size();
    auto runHandlers = [&](bool before) {
        for (size_t i = 0; i < n; ++i) {
            CommandHandler h = cmd->handlers[i];
            if (!h.alive || h.before != before || !pluginActive(h.owner)) continue;
            int goOn = 1;
            auto fn = reinterpret_cast<XPLMCommandCallback_f>(h.fn);
            callInto(h.owner, "command handler", [&] { goOn = fn(cmd, phase, h.refcon); });
            if (before && goOn == 0) return false;
        }
        return true;
    };
    if (!runHandlers(true)) return; // a "before" handler stopped the command
    if (cmd->simAction) cmd->simAction(phase);
    runHandlers(false);
}

void defineSimCommands(HostCore& c) {
    for (const ViewCommand& v : kViewCommands) {
        CommandRec* r = simCommand(c, v.name);
        const int type = v.viewType;
        const bool ext = v.external;
        r->simAction = [type, ext](int phase) {
            if (phase == xplm_CommandBegin) setViewType(type, ext);
        };
    }
    HostCore* pc = &c;
    simCommand(c, "sim/operation/pause_toggle")->simAction = [pc](int phase) {
        if (phase == xplm_CommandBegin) setPausedFlag(*pc, !pc->paused);
    };
    simCommand(c, "sim/operation/pause_on")->simAction = [pc](int phase) {
        if (phase == xplm_CommandBegin) setPausedFlag(*pc, true);
    };
    simCommand(c, "sim/operation/pause_off")->simAction = [pc](int phase) {
        if (phase == xplm_CommandBegin) setPausedFlag(*pc, false);
    };
    simCommand(c, "sim/flight_controls/brakes_toggle_max")->simAction = [pc](int phase) {
        if (phase != xplm_CommandBegin) return;
        double& b = pc->datarefByName.at("sim/flightmodel/controls/parkbrake")->values[0];
        b = b > 0.5 ? 0.0 : 1.0;
    };
}

} // namespace simhost::detail

using namespace simhost::detail;

extern "C" {

XPLMCommandRef XPLMFindCommand(const char* inName) {
    CommandRec* r = inName ? commandRec(inName) : nullptr;
    return r && !r->hidden ? r : nullptr;
}

XPLMCommandRef XPLMCreateCommand(const char* inName, const char* inDescription) {
    HostCore* c = core();
    if (!c || !inName || !*inName) return nullptr;
    return create(*c, inName, inDescription ? inDescription : "");
}

void XPLMCommandBegin(XPLMCommandRef inCommand) {
    HostCore* c = core();
    CommandRec* r = validCommand(inCommand);
    if (!c || !r) return;
    ++c->commandsHeld[r];
    runCommandPhase(r, xplm_CommandBegin);
}

void XPLMCommandEnd(XPLMCommandRef inCommand) {
    HostCore* c = core();
    CommandRec* r = validCommand(inCommand);
    if (!c || !r) return;
    auto it = c->commandsHeld.find(r);
    if (it == c->commandsHeld.end()) {
        apiError("XPLMCommandEnd without XPLMCommandBegin: " + r->name);
        return;
    }
    if (--it->second == 0) c->commandsHeld.erase(it);
    runCommandPhase(r, xplm_CommandEnd);
}

void XPLMCommandOnce(XPLMCommandRef inCommand) {
    CommandRec* r = validCommand(inCommand);
    if (!r) return;
    runCommandPhase(r, xplm_CommandBegin);
    runCommandPhase(r, xplm_CommandEnd);
}

void XPLMRegisterCommandHandler(XPLMCommandRef inComand, XPLMCommandCallback_f inHandler, int inBefore,
                                void* inRefcon) {
    CommandRec* r = validCommand(inComand);
    if (!r || !inHandler) return;
    r->handlers.push_back(
        CommandHandler{reinterpret_cast<void*>(inHandler), inBefore != 0, inRefcon, caller(), true});
}

void XPLMUnregisterCommandHandler(XPLMCommandRef inComand, XPLMCommandCallback_f inHandler, int inBefore,
                                  void* inRefcon) {
    CommandRec* r = validCommand(inComand);
    if (!r) return;
    const int me = caller();
    for (CommandHandler& h : r->handlers) {
        if (h.alive && h.fn == reinterpret_cast<void*>(inHandler) && h.before == (inBefore != 0) &&
            h.refcon == inRefcon && h.owner == me) {
            h.alive = false;
            return;
        }
    }
}

void XPLMCommandKeyStroke(XPLMCommandKeyID inKey) {
    record("key", "key stroke " + std::to_string(inKey));
    for (const LegacyMap& m : kKeyStrokes)
        if (m.id == inKey) XPLMCommandOnce(commandRec(m.command));
}

void XPLMCommandButtonPress(XPLMCommandButtonID inButton) {
    record("key", "button press " + std::to_string(inButton));
    for (const LegacyMap& m : kButtons)
        if (m.id == inButton) XPLMCommandBegin(commandRec(m.command));
}

void XPLMCommandButtonRelease(XPLMCommandButtonID inButton) {
    record("key", "button release " + std::to_string(inButton));
    for (const LegacyMap& m : kButtons)
        if (m.id == inButton) XPLMCommandEnd(commandRec(m.command));
}

} // extern "C"
