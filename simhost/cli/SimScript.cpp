// Reading kalvora-sim's timed actions.
#include "SimScript.h"

#include "XPLMDefs.h"
#include "XPLMUtilities.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <sstream>

namespace simhost::cli {

namespace {

bool toNumber(const std::string& s, double& out) {
    std::istringstream in(s);
    in >> out;
    return in && std::isfinite(out) && (in >> std::ws).eof();
}

std::string upper(std::string s) {
    std::transform(s.begin(), s.end(), s.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return s;
}

} // namespace

bool extractActions(std::vector<std::string>& args, std::vector<TimedAction>& out, std::string* error) {
    std::vector<std::string> rest;
    bool haveTime = false;
    double at = 0;
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        const bool isAt = a == "--at";
        const bool isAction = a == "--menu" || a == "--set" || a == "--key" || a == "--command";
        if (!isAt && !isAction) {
            rest.push_back(a);
            continue;
        }
        if (i + 1 >= args.size()) {
            if (error) *error = a + " needs a value";
            return false;
        }
        const std::string& v = args[++i];
        if (isAt) {
            if (!toNumber(v, at) || at < 0) {
                if (error) *error = "--at needs a time in seconds, not '" + v + "'";
                return false;
            }
            haveTime = true;
            continue;
        }
        if (!haveTime) {
            if (error) *error = a + " must follow --at <seconds>";
            return false;
        }
        out.push_back(TimedAction{at, a.substr(2), v});
    }
    args = rest;
    std::stable_sort(out.begin(), out.end(),
                     [](const TimedAction& x, const TimedAction& y) { return x.atSeconds < y.atSeconds; });
    return true;
}

bool parseKey(const std::string& text, int& vk, int& flags) {
    flags = 0;
    std::string t = upper(text);
    while (true) {
        size_t plus = t.find('+');
        if (plus == std::string::npos || plus + 1 == t.size()) break;
        std::string mod = t.substr(0, plus);
        if (mod == "SHIFT")
            flags |= xplm_ShiftFlag;
        else if (mod == "CTRL" || mod == "CONTROL")
            flags |= xplm_ControlFlag;
        else if (mod == "ALT" || mod == "OPTION")
            flags |= xplm_OptionAltFlag;
        else
            return false;
        t = t.substr(plus + 1);
    }
    for (int code = 1; code < 256; ++code) {
        const char* name = XPLMGetVirtualKeyDescription(static_cast<char>(code));
        if (name && *name && t == name) {
            vk = code;
            return true;
        }
    }
    return false;
}

bool parseAssignment(const std::string& text, std::string& name, int& index, double& value) {
    size_t eq = text.find('=');
    if (eq == std::string::npos || eq == 0) return false;
    name = text.substr(0, eq);
    index = -1;
    size_t br = name.find('[');
    if (br != std::string::npos) {
        if (name.back() != ']') return false;
        double idx = 0;
        if (!toNumber(name.substr(br + 1, name.size() - br - 2), idx) || idx < 0 || idx != std::floor(idx))
            return false;
        index = static_cast<int>(idx);
        name.erase(br);
    }
    return toNumber(text.substr(eq + 1), value);
}

} // namespace simhost::cli
