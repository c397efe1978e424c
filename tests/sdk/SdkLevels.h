// Facts measured in translation units built at other API levels than the
// plug-in's (each level is its own object library with its own definitions).
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

/// Declares a name of the same spelling as an API declaration that must be
/// absent at this level: if the headers declare it, the build fails with a
/// redeclaration error.
#define EXPECT_UNDECLARED(name) [[maybe_unused]] static const int name = 0

namespace sdk_levels {

/// sizeof(XPMouseState_t) with only the 1.0 API (no level macro).
std::size_t baseMouseStateSize();
/// sizeof(XPMouseState_t) with XPLM200 and XPLM210.
std::size_t api21MouseStateSize();
/// sizeof(XPLMCreateWindow_t) with XPLM200 and XPLM210.
std::size_t api21CreateWindowSize();
/// The map drawing phases 100 to 102, which exist from XPLM200 until XPLM300.
std::vector<int> api21MapPhases();
/// sizeof(XPLMCreateWindow_t) with XPLM200 to XPLM303 and no deprecated part.
std::size_t currentCreateWindowSize();
/// Sizes and offsets, keyed by the C expression, with every level up to XPLM440 in C++.
std::vector<std::pair<std::string, std::size_t>> newestLayout();

} // namespace sdk_levels
