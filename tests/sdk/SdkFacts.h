// Facts about a set of API headers, gathered by SdkFacts.cpp.
#pragma once

#include <string>
#include <vector>

namespace sdk_facts {
struct Fact {
    std::string name, value; ///< function: its mangled type; struct: its size in bytes
};
} // namespace sdk_facts

namespace sdk_ours {
extern const std::vector<sdk_facts::Fact> kFunctions, kStructs;
}
namespace sdk_official {
extern const std::vector<sdk_facts::Fact> kFunctions, kStructs;
}
