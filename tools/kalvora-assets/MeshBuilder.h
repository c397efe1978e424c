// Low-poly geometry built into an XObj8: boxes, wheels, beams and lights, each
// face mapped to a rectangle of the texture atlas. Metres; +Y up.
#pragma once

#include "objects/ObjModel.h"

#include <string>

namespace assets {

/// A point or direction, metres.
struct V3 {
    float x, y, z;
};

/// A rectangle of the texture atlas in texture fractions (t = 0 at the picture's bottom row).
struct UV {
    float s0, t0, s1, t1;
};

/// The atlas rectangles of a box: its four sides, its top (and bottom) and its two ends (±Z).
struct BoxSkin {
    UV side, top, ends;
};

/// Collects triangles and lights, then finishes one OBJ8 object with a single unranged level.
class MeshBuilder {
public:
    MeshBuilder();
    /// A quad p0..p3 (in order around its edge) facing `normal`; texture corners in the same order.
    void quad(V3 p0, V3 p1, V3 p2, V3 p3, V3 normal, UV uv);
    /// An axis-aligned box between two corners.
    void box(V3 lo, V3 hi, const BoxSkin& skin);
    /// A wheel turning about the X axis: `segments` flat tread faces and two flat side disks.
    void wheel(V3 centre, float radius, float width, int segments, UV tread, UV hub);
    /// A straight beam of square section `thickness` from a to b (a cable, a bar).
    void beam(V3 a, V3 b, float thickness, UV uv);
    /// A light point with its colour (0..1).
    void light(V3 p, float r, float g, float b);
    /// The finished object naming its day and night textures.
    XObj8 finish(const std::string& texture, const std::string& textureLit);

private:
    void tri(int a, int b, int c);
    int vertex(V3 p, V3 n, float s, float t);
    XObj8 obj_;
};

/// Pixel rectangle (x0, y0)-(x1, y1) of a square atlas `size` pixels wide, y down, as texture fractions.
UV AtlasRect(int x0, int y0, int x1, int y1, int size);

} // namespace assets
