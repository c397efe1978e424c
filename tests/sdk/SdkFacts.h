// Facts about a set of API headers, gathered by SdkFacts.cpp.
#pragma once

#include <string>
#include <vector>

namespace sdk_facts {
struct Fact {
    std::string name, value; ///< a function's mangled type, or a size, offset or constant
};
} // namespace sdk_facts

namespace sdk_ours {
extern const std::vector<sdk_facts::Fact> kFunctions, kValues;
}
namespace sdk_official {
extern const std::vector<sdk_facts::Fact> kFunctions, kValues;
}
