// Comparing two models of the same generation, for the round-trip command.
#pragma once

#include "objects/ObjModel.h"

#include <string>

/// The first difference between two OBJ8 models (floats compared to six decimals); empty when none.
std::string FirstDifference(const XObj8& a, const XObj8& b);
/// The first difference between two OBJ7 models (floats compared exactly); empty when none.
std::string FirstDifference(const XObj& a, const XObj& b);
