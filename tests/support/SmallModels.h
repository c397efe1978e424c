// OBJ8 models small enough to write in a line or two: no geometry at all, a
// box, a flat panel. Each face is a quad with its texture stretched once over
// it, so a one-colour texture paints the whole model in that colour.
#pragma once

#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace kalvora_test {

/// The smallest OBJ8 file: a header and no geometry.
constexpr const char* kEmptyObj8 = "I\n800\nOBJ\n\nPOINT_COUNTS 0 0 0 0\n";

/// A flat face of four corners (metres, counter-clockwise seen from the side it faces) and its normal.
struct Quad {
    float corner[4][3];
    float normal[3];
};

/// The panel at depth z over [x0, x1] x [y0, y1] (metres), facing +z.
inline Quad Panel(float x0, float y0, float x1, float y1, float z) {
    return {{{x0, y0, z}, {x1, y0, z}, {x1, y1, z}, {x0, y1, z}}, {0, 0, 1}};
}

/// The six faces of the box [x0, x1] x [y0, y1] x [z0, z1] (metres), facing out.
inline std::vector<Quad> Box(float x0, float y0, float z0, float x1, float y1, float z1) {
    return {{{{x0, y1, z0}, {x0, y1, z1}, {x1, y1, z1}, {x1, y1, z0}}, {0, 1, 0}},
            {{{x0, y0, z0}, {x1, y0, z0}, {x1, y0, z1}, {x0, y0, z1}}, {0, -1, 0}},
            {{{x1, y0, z0}, {x1, y1, z0}, {x1, y1, z1}, {x1, y0, z1}}, {1, 0, 0}},
            {{{x0, y0, z0}, {x0, y0, z1}, {x0, y1, z1}, {x0, y1, z0}}, {-1, 0, 0}},
            {{{x0, y0, z1}, {x1, y0, z1}, {x1, y1, z1}, {x0, y1, z1}}, {0, 0, 1}},
            {{{x0, y0, z0}, {x0, y1, z0}, {x1, y1, z0}, {x1, y0, z0}}, {0, 0, -1}}};
}

/// The OBJ8 text of a model made of `quads` with `texture` (a file name beside the model).
inline std::string Obj8Text(const std::string& texture, const std::vector<Quad>& quads) {
    constexpr float kCornerS[4] = {0, 1, 1, 0}, kCornerT[4] = {0, 0, 1, 1}; // texture coordinates
    constexpr int kOrder[] = {0, 1, 2, 0, 2, 3};                            // two triangles a quad
    const size_t indices = quads.size() * std::size(kOrder);
    std::ostringstream obj;
    obj << "I\n800\nOBJ\n\nTEXTURE " << texture << "\nPOINT_COUNTS " << quads.size() * 4 << " 0 0 " << indices
        << "\n";
    for (const Quad& q : quads)
        for (int c = 0; c < 4; ++c)
            obj << "VT " << q.corner[c][0] << " " << q.corner[c][1] << " " << q.corner[c][2] << " "
                << q.normal[0] << " " << q.normal[1] << " " << q.normal[2] << " " << kCornerS[c] << " "
                << kCornerT[c] << "\n";
    for (size_t q = 0; q < quads.size(); ++q)
        for (int corner : kOrder)
            obj << "IDX " << q * 4 + corner << "\n";
    obj << "\nTRIS 0 " << indices << "\n";
    return obj.str();
}

} // namespace kalvora_test
