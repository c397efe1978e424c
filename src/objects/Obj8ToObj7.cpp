// OBJ8 -> OBJ7. Every level becomes an ATTR_LOD range; triangles become "tri",
// or "quad" where two consecutive triangles (a, b, c), (a, c, d) form a flat
// convex quad; hard and cockpit ranges become quad_hard and quad_cockpit where
// the triangles pair into quads. LINES become "line", LIGHTS "light", with
// colours back on OBJ7's 0..10 scale. What OBJ7 cannot hold (animation, the
// night texture, blending, hard or cockpit single triangles, stored normals) is
// dropped and listed.
#include "objects/Obj8ToObj7.h"

#include "objects/Obj7ToObj8.h"

#include <cmath>
#include <cstdint>
#include <map>
#include <sstream>

namespace {

constexpr double kFlatCosine =
    0.9999; // two triangles are one flat quad when their normals agree this closely

/// First row with this identifier valid in OBJ7 files; gCmdCount when none.
int Obj7RowFor(int id) {
    for (int n = 0; gCmds[n].keyword != nullptr; ++n)
        if (gCmds[n].id == id && gCmds[n].inObj7) return n;
    return gCmdCount;
}

vec_tex TexVertex(const XObj8& o, int index) {
    const float* p = o.geoTris.get(index);
    return vec_tex{{p[0], p[1], p[2]}, {p[6], p[7]}};
}

bool SameVertex(const vec_tex& a, const vec_tex& b) {
    return a.v[0] == b.v[0] && a.v[1] == b.v[1] && a.v[2] == b.v[2] && a.st[0] == b.st[0] &&
           a.st[1] == b.st[1];
}

/// Normal of (a, b, c) by the format's clockwise winding, not normalised.
void Normal(const vec_tex& a, const vec_tex& b, const vec_tex& c, double n[3]) {
    const double u[3] = {double(c.v[0]) - a.v[0], double(c.v[1]) - a.v[1], double(c.v[2]) - a.v[2]};
    const double w[3] = {double(b.v[0]) - a.v[0], double(b.v[1]) - a.v[1], double(b.v[2]) - a.v[2]};
    n[0] = u[1] * w[2] - u[2] * w[1];
    n[1] = u[2] * w[0] - u[0] * w[2];
    n[2] = u[0] * w[1] - u[1] * w[0];
}

bool SameFacing(const double n[3], const double m[3]) {
    const double ln = std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]);
    const double lm = std::sqrt(m[0] * m[0] + m[1] * m[1] + m[2] * m[2]);
    if (!(ln > 0.0) || !(lm > 0.0)) return false;
    return (n[0] * m[0] + n[1] * m[1] + n[2] * m[2]) / (ln * lm) > kFlatCosine;
}

/// True when (a, b, c) then (a, c, d) is a flat convex quad a b c d.
bool IsQuad(const vec_tex* t, const vec_tex* u) {
    if (!SameVertex(t[0], u[0]) || !SameVertex(t[2], u[1])) return false;
    const vec_tex &a = t[0], &b = t[1], &c = t[2], &d = u[2];
    double n1[3], n2[3], n3[3], n4[3];
    Normal(a, b, c, n1);
    Normal(a, c, d, n2);
    Normal(b, c, d, n3);
    Normal(b, d, a, n4);
    return SameFacing(n1, n2) && SameFacing(n1, n3) && SameFacing(n1, n4);
}

vec_rgb RgbVertex(const float* p) {
    const float back = 1.0f / kObj7ToObj8ColourScale;
    return vec_rgb{{p[0], p[1], p[2]}, {p[3] * back, p[4] * back, p[5] * back}};
}

/// A half-open range of positions.
struct Range {
    int64_t begin, end;
};

/// Counts of what could not be carried over, by description.
using Losses = std::map<std::string, int64_t>;

class Converter {
public:
    Converter(const XObj8& i, XObj& o, Losses& l) : in(i), out(o), lost(l) {}

    void Level(const XObjLOD8& lod, bool writeRange) {
        if (writeRange) Attribute(attr_LOD, {lod.lodNear, lod.lodFar});
        hard = cockpit = false; // a range starts from the default state
        for (const XObjCmd8& c : lod.cmds)
            Command(c);
    }

private:
    void Command(const XObjCmd8& c) {
        switch (c.id) {
        case obj8_Tris:
            Triangles(c);
            return;
        case obj8_Lines: {
            const Range r = Clamp(c, in.indices.size(), "line vertices pointing outside the index list");
            for (int64_t i = r.begin; i + 1 < r.end; i += 2) {
                if (!IndexInside(i, in.geoLines) || !IndexInside(i + 1, in.geoLines)) {
                    ++lost["lines pointing outside the line pool"];
                    continue;
                }
                XObjCmd cmd = Make(obj_PtLine, obj_Line);
                cmd.rgbVerts = {RgbVertex(in.geoLines.get(in.indices[i])),
                                RgbVertex(in.geoLines.get(in.indices[i + 1]))};
                out.cmds.push_back(cmd);
            }
            return;
        }
        case obj8_Lights: {
            const Range r =
                Clamp(c, static_cast<size_t>(in.geoLights.count()), "lights outside the light pool");
            for (int64_t i = r.begin; i < r.end; ++i) {
                XObjCmd cmd = Make(obj_PtLine, obj_Light);
                cmd.rgbVerts = {RgbVertex(in.geoLights.get(static_cast<int>(i)))};
                out.cmds.push_back(cmd);
            }
            return;
        }
        case attr_Hard:
        case attr_No_Hard:
            hard = c.id == attr_Hard;
            return;
        case attr_Cockpit:
        case attr_No_Cockpit:
            cockpit = c.id == attr_Cockpit;
            return;
        case anim_Begin:
        case anim_End:
        case anim_Rotate:
        case anim_Translate:
            ++lost["animation commands (the geometry stays in its rest position)"];
            return;
        default:
            break;
        }
        const int row = Obj7RowFor(c.id);
        if (row == gCmdCount || gCmds[row].kind != obj_Attr) {
            const int any = FindIndexForCmd(c.id);
            ++lost[std::string(any == gCmdCount ? "unknown" : gCmds[any].keyword) + " commands"];
            return;
        }
        std::vector<float> values(c.params, c.params + (gCmds[row].count < 4 ? gCmds[row].count : 4));
        Attribute(c.id, values);
    }

    void Triangles(const XObjCmd8& c) {
        std::vector<vec_tex> tris;
        const Range r = Clamp(c, in.indices.size(), "triangle vertices pointing outside the index list");
        for (int64_t i = r.begin; i + 2 < r.end; i += 3) {
            if (!IndexInside(i, in.geoTris) || !IndexInside(i + 1, in.geoTris) ||
                !IndexInside(i + 2, in.geoTris)) {
                ++lost["triangles pointing outside the triangle pool"];
                continue;
            }
            for (int k = 0; k < 3; ++k)
                tris.push_back(TexVertex(in, in.indices[i + k]));
        }
        const int quadId = hard ? obj_Quad_Hard : cockpit ? obj_Quad_Cockpit : obj_Quad;
        for (size_t t = 0; t < tris.size(); t += 3) {
            if (t + 5 < tris.size() && IsQuad(&tris[t], &tris[t + 3])) {
                XObjCmd cmd = Make(obj_Poly, quadId);
                cmd.texVerts = {tris[t], tris[t + 1], tris[t + 2], tris[t + 5]};
                out.cmds.push_back(cmd);
                t += 3;
                continue;
            }
            if (hard) ++lost["hard triangles that form no quad (written as plain triangles)"];
            if (cockpit) ++lost["cockpit triangles that form no quad (written as plain triangles)"];
            XObjCmd cmd = Make(obj_Poly, obj_Tri);
            cmd.texVerts = {tris[t], tris[t + 1], tris[t + 2]};
            out.cmds.push_back(cmd);
        }
    }

    bool IndexInside(int64_t i, const ObjPointPool& pool) const {
        return i >= 0 && static_cast<size_t>(i) < in.indices.size() && in.indices[i] >= 0 &&
               in.indices[i] < pool.count();
    }

    /// A command's range cut to [0, size); whatever lay outside is counted as lost.
    Range Clamp(const XObjCmd8& c, size_t size, const char* what) {
        const int64_t begin = c.idxOffset, end = begin + (c.idxCount > 0 ? c.idxCount : 0);
        Range r{begin < 0 ? 0 : begin, end > static_cast<int64_t>(size) ? static_cast<int64_t>(size) : end};
        if (r.end < r.begin) r.end = r.begin;
        if (r.end - r.begin < end - begin) lost[what] += end - begin - (r.end - r.begin);
        return r;
    }

    void Attribute(int id, const std::vector<float>& values) {
        XObjCmd cmd = Make(obj_Attr, id);
        cmd.values = values;
        out.cmds.push_back(cmd);
    }

    static XObjCmd Make(int kind, int id) {
        XObjCmd cmd;
        cmd.kind = kind;
        cmd.id = id;
        return cmd;
    }

    const XObj8& in;
    XObj& out;
    Losses& lost;
    bool hard = false;
    bool cockpit = false;
};

bool HasNormals(const ObjPointPool& tris) {
    for (int i = 0; i < tris.count(); ++i) {
        const float* p = tris.get(i);
        if (p[3] != 0.0f || p[4] != 0.0f || p[5] != 0.0f) return true;
    }
    return false;
}

} // namespace

std::vector<std::string> Obj8ToObj7(const XObj8& in, XObj& out) {
    out.texture = in.texture;
    out.cmds.clear();
    Losses lost;
    if (in.geoTris.depth == 8 && in.geoLines.depth == 6 && in.geoLights.depth == 6) {
        Converter convert(in, out, lost);
        for (size_t l = 0; l < in.lods.size(); ++l)
            convert.Level(in.lods[l], l > 0 || in.lods[l].lodFar != 0.0f);
    } else {
        ++lost["all geometry (the pools have unexpected record sizes)"];
    }

    std::vector<std::string> report;
    if (!in.textureLit.empty()) report.push_back("night texture \"" + in.textureLit + "\" (TEXTURE_LIT)");
    if (in.geoTris.depth == 8 && HasNormals(in.geoTris))
        report.push_back("vertex normals (OBJ7 computes its own from the triangles)");
    for (const auto& entry : lost) {
        std::ostringstream line;
        line << entry.second << " " << entry.first;
        report.push_back(line.str());
    }
    return report;
}
