// Writing an XObj as a version-700 object text file.
#pragma once

#include "objects/ObjModel.h"

#include <string>

/// Writes `obj` to `path` through a temporary file renamed over it (an empty texture is written as "none");
/// false when anything fails.
bool XObjWrite(const char* path, const XObj& obj);

/// The shortest decimal text (no exponent) that the object readers read back as exactly `f`.
std::string FormatObjNumber(float f);
