// Timed actions of a kalvora-sim run ("--at 2 --menu Plugins/Kalvora/Push straight back"),
// read from the command line in the order given.
#pragma once

#include <string>
#include <vector>

namespace simhost::cli {

/// One thing to do at a moment of sim time.
struct TimedAction {
    double atSeconds = 0; ///< sim seconds since start
    std::string kind;     ///< "menu", "set", "key", "command"
    std::string arg;      ///< menu path, "name=value", key name or command name
};

/// Pulls every "--at T" and the action options after it out of argv (which keeps the rest).
/// False with a reason on a malformed action.
bool extractActions(std::vector<std::string>& args, std::vector<TimedAction>& out, std::string* error);

/// A key name ("F8", "A", "ctrl+shift+SPACE") as a virtual key and modifier flags; false if unknown.
bool parseKey(const std::string& text, int& vk, int& flags);

/// "name=value" or "name[index]=value"; false when malformed.
bool parseAssignment(const std::string& text, std::string& name, int& index, double& value);

} // namespace simhost::cli
