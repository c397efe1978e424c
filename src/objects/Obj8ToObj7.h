// Converting an OBJ8 model back into an OBJ7 one, for older tools and scenery.
#pragma once

#include "objects/ObjModel.h"

#include <string>
#include <vector>

/// Turns `in` into an OBJ7 model; returns one line per kind of content OBJ7 cannot express (empty: nothing
/// lost).
std::vector<std::string> Obj8ToObj7(const XObj8& in, XObj& out);
