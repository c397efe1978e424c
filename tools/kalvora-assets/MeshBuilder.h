// Low-poly geometry built into an XObj8: boxes, wheels, beams and lights, each
// face mapped to a rectangle of the texture atlas. Metres; +X right, +Y up, -Z
// forward (the OBJ frame).
//
// Wheel parts move on their own. A part's geometry is given around the part's
// own origin (its pivot), and the finished object draws it as
//
//     ANIM_begin
//     ANIM_trans   pivot, constant            (driven by the steering value)
//     ANIM_rotate  0 1 0, steering            (steered parts only)
//     ANIM_rotate  1 0 0, rolling
//     TRIS         the part's own index range
//     ANIM_end
//
// so a vertex v of the part lands at pivot + Ry(steer) Rx(roll) v: the wheel
// rolls about its own axle, and the axle turns with the steering.
#pragma once

#include "objects/ObjModel.h"

#include <string>
#include <vector>

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

/// The two values, by dataref name, that move a wheel part.
struct WheelDrive {
    std::string steering; ///< degrees, positive clockwise seen from above (a wheel facing -Z turns to +X)
    std::string rolling;  ///< degrees the wheel has rolled, growing while it rolls forward (to -Z)
};

/// Collects triangles and lights, then finishes one OBJ8 object with a single unranged level.
class MeshBuilder {
public:
    MeshBuilder();
    /// Starts a wheel part: geometry added until endPart() is given around the part's own origin,
    /// which the finished object puts at `pivot` (metres); it rolls about its X axis and, when
    /// `steers`, turns about +Y. Starting a part ends the one before. Lights never move.
    void beginWheelPart(V3 pivot, bool steers, const WheelDrive& drive);
    /// Ends the current part: geometry added after it is static again.
    void endPart();
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
    /// A wheel part: where it stands, how it moves and its own triangles.
    struct Part {
        V3 pivot;                     ///< metres, in the model
        bool steers;                  ///< turns about +Y by the steering value
        WheelDrive drive;             ///< the datarefs that move it
        std::vector<int32_t> indices; ///< its triangles, into the shared vertex pool
    };
    void tri(int a, int b, int c);
    int vertex(V3 p, V3 n, float s, float t);
    XObj8 obj_;                          ///< vertex pools and lights; indices stay empty until finish()
    std::vector<int32_t> staticIndices_; ///< triangles outside every part
    std::vector<Part> parts_;            ///< wheel parts in the order they were started
    bool inPart_ = false;                ///< new triangles go to parts_.back()
};

/// Pixel rectangle (x0, y0)-(x1, y1) of a square atlas `size` pixels wide, y down, as texture fractions.
UV AtlasRect(int x0, int y0, int x1, int y1, int size);

} // namespace assets
