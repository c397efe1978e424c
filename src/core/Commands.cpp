#include "core/Commands.h"

#include "XPLMUtilities.h"
#include "core/CallbackGuard.h"
#include "core/PluginMenu.h"
#include "core/PluginServices.h"
#include "truck/FreeMove.h"

#include <cstdint>
#include <string>

namespace {

constexpr int kRunBefore = 1;       // handlers run before the host's own processing
constexpr int kHandledHere = 0;     // handler result: the command is Kalvora's, stop processing
constexpr int kNotAMenuItem = -100; // menu reference of the actions that have no Kalvora menu item

enum Extra { kTruckView = 0, kFreeMovePanel = 1 };

struct CommandSpec {
    const char* name; ///< full name
    const char* description;
    int menuItem; ///< reference handed to KLVMenuHandlerCallback, or kNotAMenuItem
    int extra;    ///< Extra action when menuItem is kNotAMenuItem
};

const CommandSpec kCommands[kKLVCommandCount] = {
    {"halvern/kalvora/push_straight", "Kalvora: push straight back", kMenuStraight, 0},
    {"halvern/kalvora/turn_tail_left", "Kalvora: push back turning the tail left", kMenuTurnTailLeft, 0},
    {"halvern/kalvora/turn_tail_right", "Kalvora: push back turning the tail right", kMenuTurnTailRight, 0},
    {"halvern/kalvora/auto_tail_left", "Kalvora: automated push back, tail left", kMenuAutoTailLeft, 0},
    {"halvern/kalvora/auto_tail_right", "Kalvora: automated push back, tail right", kMenuAutoTailRight, 0},
    {"halvern/kalvora/stop", "Kalvora: stop the push back", kMenuStop, 0},
    {"halvern/kalvora/gpu_toggle", "Kalvora: bring or remove the ground power unit", kMenuGPU, 0},
    {"halvern/kalvora/truck_view_toggle", "Kalvora: toggle the view from the push-back truck", kNotAMenuItem,
     kTruckView},
    {"halvern/kalvora/preferences", "Kalvora: open the preferences", kMenuPreferences, 0},
    {"halvern/kalvora/free_move_panel", "Kalvora: open the free-move panel", kNotAMenuItem, kFreeMovePanel},
};

XPLMCommandRef gCommandRefs[kKLVCommandCount] = {};

void* RefOf(int value) {
    return reinterpret_cast<void*>(static_cast<intptr_t>(value));
}

void Run(const CommandSpec& command) {
    if (command.menuItem != kNotAMenuItem) {
        KLVMenuHandlerCallback(nullptr, RefOf(command.menuItem));
        return;
    }
    if (command.extra == kTruckView)
        TruckViewHotKeyCallBack(nullptr);
    else
        OpenFreeMovePanel();
}

int KLVCommandCallBack(XPLMCommandRef /*command*/, XPLMCommandPhase phase, void* refcon) {
    return GuardCallback("command", kHandledHere, [phase, refcon] {
        const auto index = static_cast<int>(reinterpret_cast<intptr_t>(refcon));
        if (phase == xplm_CommandBegin && index >= 0 && index < kKLVCommandCount) Run(kCommands[index]);
        return kHandledHere;
    });
}

} // namespace

const char* KLVCommandName(int index) {
    return index >= 0 && index < kKLVCommandCount ? kCommands[index].name : nullptr;
}

const char* KLVCommandDescription(int index) {
    return index >= 0 && index < kKLVCommandCount ? kCommands[index].description : nullptr;
}

void CreateKLVCommands() {
    for (int i = 0; i < kKLVCommandCount; ++i) {
        gCommandRefs[i] = XPLMCreateCommand(kCommands[i].name, kCommands[i].description);
        if (gCommandRefs[i]) {
            XPLMRegisterCommandHandler(gCommandRefs[i], KLVCommandCallBack, kRunBefore, RefOf(i));
        } else {
            XPLMDebugString(
                (std::string("Kalvora: cannot create command ") + kCommands[i].name + "\n").c_str());
        }
    }
}

void RemoveKLVCommandHandlers() {
    for (int i = 0; i < kKLVCommandCount; ++i) {
        if (gCommandRefs[i])
            XPLMUnregisterCommandHandler(gCommandRefs[i], KLVCommandCallBack, kRunBefore, RefOf(i));
        gCommandRefs[i] = nullptr;
    }
}
