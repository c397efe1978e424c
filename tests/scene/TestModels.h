// Small OBJ8 models built in code for the drawing tests: flat quads facing the
// camera, with the commands a test needs.
#pragma once

#include "objects/ObjModel.h"

#include <string>

namespace kalvora_scene_test {

/// Appends a quad facing +Z at depth z (metres) over [x0, x1] x [y0, y1], texture 0..1; returns its
/// first index position (six indices follow).
inline int AddQuad(XObj8& obj, float x0, float y0, float x1, float y1, float z) {
    if (obj.geoTris.depth != 8) obj.geoTris.clear(8);
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

/// A command with up to four numbers.
inline XObjCmd8 Cmd(int id, float p0 = 0, float p1 = 0, float p2 = 0) {
    XObjCmd8 c{};
    c.id = id;
    c.params[0] = p0;
    c.params[1] = p1;
    c.params[2] = p2;
    return c;
}

/// A TRIS command over `count` indices from `offset`.
inline XObjCmd8 Tris(int offset, int count = 6) {
    XObjCmd8 c = Cmd(obj8_Tris);
    c.idxOffset = offset;
    c.idxCount = count;
    return c;
}

/// An animation command pointing at record `record`.
inline XObjCmd8 Anim(int id, int record) {
    XObjCmd8 c = Cmd(id);
    c.idxOffset = record;
    return c;
}

/// A level of detail over [near, far] metres.
inline XObjLOD8 Lod(float nearM, float farM) {
    XObjLOD8 l;
    l.lodNear = nearM;
    l.lodFar = farM;
    return l;
}

/// An animation record with two keys.
inline XObjAnim8 AnimRecord(const std::string& dataref, const float xyz0[3], const float xyz1[3],
                            float angle0, float angle1, float value0, float value1) {
    XObjAnim8 a;
    a.dataref = dataref;
    for (int i = 0; i < 3; ++i) {
        a.key[0].xyz[i] = xyz0[i];
        a.key[1].xyz[i] = xyz1[i];
    }
    a.key[0].angle = angle0;
    a.key[1].angle = angle1;
    a.key[0].value = value0;
    a.key[1].value = value1;
    return a;
}

} // namespace kalvora_scene_test
