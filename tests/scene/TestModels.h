// Small OBJ8 models built in code for the drawing tests: flat quads facing the
// camera, with the commands a test needs.
#pragma once

#include "objects/ObjModel.h"

namespace kalvora_scene_test {

/// Appends a quad facing +Z at depth z (metres) over [x0, x1] x [y0, y1], texture 0..1; returns its
/// first index position (six indices follow).
inline int AddQuad(XObj8& obj, float x0, float y0, float x1, float y1, float z) {
    const float v[4][8] = {{x0, y0, z, 0, 0, 1, 0, 0},
                           {x1, y0, z, 0, 0, 1, 1, 0},
                           {x1, y1, z, 0, 0, 1, 1, 1},
                           {x0, y1, z, 0, 0, 1, 0, 1}};
    int n[4];
    for (int i = 0; i < 4; ++i)
        n[i] = obj.geoTris.append(v[i]);
    const int first = static_cast<int>(obj.indices.size());
    for (int i : {0, 1, 2, 0, 2, 3})
        obj.indices.push_back(n[i]);
    return first;
}

/// A command with up to three numbers, or over `count` indices (records) from `offset`.
inline XObjCmd8 Cmd(int id, float p0 = 0, float p1 = 0, float p2 = 0) {
    XObjCmd8 c{};
    c.id = id;
    c.params[0] = p0;
    c.params[1] = p1;
    c.params[2] = p2;
    return c;
}
inline XObjCmd8 Range(int id, int offset, int count = 0) {
    XObjCmd8 c = Cmd(id);
    c.idxOffset = offset;
    c.idxCount = count;
    return c;
}
/// A TRIS command over the six indices of a quad from `offset`.
inline XObjCmd8 Tris(int offset) {
    return Range(obj8_Tris, offset, 6);
}

/// A quad right of centre, 10 m ahead, inside ANIM_begin/ANIM_end with one animation step.
inline XObj8 AnimatedQuad(int animId, const XObjAnim8& record) {
    XObj8 obj;
    const int q = AddQuad(obj, 1, -0.5f, 3, 0.5f, -10.0f);
    obj.animations = {record};
    obj.lods.emplace_back();
    obj.lods[0].cmds = {Cmd(anim_Begin), Range(animId, 0), Tris(q), Cmd(anim_End)};
    return obj;
}

} // namespace kalvora_scene_test
