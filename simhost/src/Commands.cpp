// XPLMUtilities.h commands: find/create, begin/continue/end with before and
// after handlers, X-Plane's own view and pause commands, and the legacy key
// stroke and joystick button calls mapped onto them.
#include "HostInternal.h"

#include "XPLMUtilities.h"

namespace simhost::detail {

namespace {

struct ViewCommand {
    const char* name;
    const char* description;
    int viewType;  ///< sim/graphics/view/view_type
    bool external; ///< sim/graphics/view/view_is_external
};
/// X-Plane's view commands and the view each selects (view_type codes of X-Plane 7 to 12).
const ViewCommand kViewCommands[] = {
    {"sim/view/default_view", "Default view", 1000, false},
    {"sim/view/forward_with_2d_panel", "Forward with 2-D panel", 1000, false},
    {"sim/view/forward_with_hud", "Forward with HUD", 1023, false},
    {"sim/view/forward_with_nothing", "Forward with nothing", 1024, false},
    {"sim/view/3d_cockpit_cmnd_look", "3-D cockpit", 1026, false},
    {"sim/view/3d_cockpit_toggle", "Toggle 2-D / 3-D cockpit", 1026, false},
    {"sim/view/free_camera", "Free camera", 1028, true},
    {"sim/view/linear_spot", "Linear spot", 1021, true},
    {"sim/view/still_spot", "Still spot", 1020, true},
    {"sim/view/runway", "Runway", 1015, true},
    {"sim/view/circle", "Circle", 1018, true},
    {"sim/view/tower", "Tower", 1014, true},
    {"sim/view/ridealong", "Ride-along", 1019, true},
    {"sim/view/track_weapon", "Track weapon", 1027, true},
    {"sim/view/chase", "Chase", 1017, true},
    {"sim/view/wingman", "Wingman", 1029, true},
    {"sim/view/left_45", "Left 45", 1004, false},
    {"sim/view/right_45", "Right 45", 1005, false},
    {"sim/view/left_90", "Left 90", 1006, false},
    {"sim/view/right_90", "Right 90", 1007, false},
    {"sim/view/left_135", "Left 135", 1008, false},
    {"sim/view/right_135", "Right 135", 1009, false},
    {"sim/view/back", "Backward", 1010, false},
    {"sim/view/up_left", "Left and up", 1011, false},
    {"sim/view/up_right", "Right and up", 1012, false},
    {"sim/view/straight_down", "Straight down", 1025, false},
};

/// View commands X-Plane has that simhost knows by name only: they run their handlers and change nothing.
const char* const kOtherViewCommands[] = {
    "sim/view/glance_left",       "sim/view/glance_right",    "sim/view/straight_up",
    "sim/view/ai_controls_views", "sim/view/lock_geo",        "sim/view/g_loaded_camera",
    "sim/view/cinema_verite",     "sim/view/track-ir_toggle",
};
constexpr int kQuickLooks = 20; ///< sim/view/quick_look_0 ... _19 and their _mem variants

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

CommandRec* create(HostCore& c, const std::string& name, const std::string& description) {
    if (CommandRec* existing = commandRec(name)) return existing;
    c.commands.emplace_back();
    CommandRec& r = c.commands.back();
    r.name = name;
    r.description = description;
    c.commandByName[name] = &r;
    c.commandHandles.insert(&r);
    return &r;
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
    return it == c->commandByName.end() ? nullptr : it->second;
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
        CommandRec* r = create(c, v.name, v.description);
        const int type = v.viewType;
        const bool ext = v.external;
        r->simAction = [type, ext](int phase) {
            if (phase == xplm_CommandBegin) setViewType(type, ext);
        };
    }
    for (const char* name : kOtherViewCommands)
        create(c, name, name);
    for (int i = 0; i < kQuickLooks; ++i) {
        create(c, "sim/view/quick_look_" + std::to_string(i), "Quick look " + std::to_string(i));
        create(c, "sim/view/quick_look_" + std::to_string(i) + "_mem",
               "Memorize quick look " + std::to_string(i));
    }
    HostCore* pc = &c;
    create(c, "sim/operation/pause_toggle", "Toggle pause")->simAction = [pc](int phase) {
        if (phase == xplm_CommandBegin) setPausedFlag(*pc, !pc->paused);
    };
    create(c, "sim/operation/pause_on", "Pause on")->simAction = [pc](int phase) {
        if (phase == xplm_CommandBegin) setPausedFlag(*pc, true);
    };
    create(c, "sim/operation/pause_off", "Pause off")->simAction = [pc](int phase) {
        if (phase == xplm_CommandBegin) setPausedFlag(*pc, false);
    };
    create(c, "sim/flight_controls/brakes_toggle_max", "Toggle maximum brakes")->simAction = [pc](int phase) {
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
