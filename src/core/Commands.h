// X-Plane commands for every action of the Kalvora menus, so that joystick
// buttons, keys and cockpit panels can drive the push-back. A command does
// exactly what its menu item does (the start checks and the refusal dialog
// included); it acts when it begins, never while held or at its end.
#pragma once

/// Prefix of every command Kalvora creates.
constexpr const char* kKLVCommandPrefix = "halvern/kalvora/";

/// Number of commands Kalvora creates.
constexpr int kKLVCommandCount = 10;

/// Full name of command `index` (0 .. kKLVCommandCount-1), or nullptr.
const char* KLVCommandName(int index);
/// Description of command `index`, as shown in the host's binding screens, or nullptr.
const char* KLVCommandDescription(int index);

/// Creates the commands (the host keeps them for good) and registers their handlers.
void CreateKLVCommands();
/// Unregisters the handlers; the commands themselves stay with the host.
void RemoveKLVCommandHandlers();
