// Writing an XObj8 as a version-800 object text file.
#pragma once

#include "objects/ObjModel.h"

/// Writes `obj` to `path` (CR line ends, "%f" numbers); false only when the file cannot be opened.
bool XObj8Write(const char* path, const XObj8& obj);
/// Writes `obj` like XObj8Write to a temporary file beside `path`, then renames it over `path`.
bool XObj8WriteReplacing(const char* path, const XObj8& obj);
