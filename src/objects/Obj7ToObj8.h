// Converting an OBJ7 model into an OBJ8 one.
#pragma once

#include "objects/ObjModel.h"

/// Colour scale from OBJ7 (0..10) to OBJ8 (0..1) for light and line colours.
constexpr float kObj7ToObj8ColourScale = 0.1f;

/// Turns `in` into an equivalent OBJ8 model: triangulated, shared vertices, smooth normals.
void Obj7ToObj8(const XObj& in, XObj8& out);

/// The triangles of one OBJ7 polygon-kind command, three vertices each, in drawing order.
std::vector<vec_tex> Obj7Triangles(const XObjCmd& cmd);
