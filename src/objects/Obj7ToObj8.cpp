// OBJ7 -> OBJ8. Every polygon kind becomes triangles (quads as two, strips and
// fans as their triangles, polygons as fans), gathered into the triangle pool with
// ObjPointPool::accumulate so identical vertices are shared. Consecutive geometry
// of one kind becomes one TRIS, LINES or LIGHTS command. quad_hard and
// quad_cockpit become their triangles between ATTR_hard/ATTR_no_hard and
// ATTR_cockpit/ATTR_no_cockpit. Normals are computed last, from the triangles.
//
// Winding: the format's front faces are clockwise seen from the front, so for a
// triangle (a, b, c) the outward normal is (c - a) x (b - a).
#include "objects/Obj7ToObj8.h"

#include <cmath>

namespace {

enum class Wrap { None, Hard, Cockpit };

struct Vec3 {
    double v[3];
};

Vec3 Sub(const double* a, const double* b) {
    return {{a[0] - b[0], a[1] - b[1], a[2] - b[2]}};
}

Vec3 Cross(const Vec3& a, const Vec3& b) {
    return {{a.v[1] * b.v[2] - a.v[2] * b.v[1], a.v[2] * b.v[0] - a.v[0] * b.v[2],
             a.v[0] * b.v[1] - a.v[1] * b.v[0]}};
}

double Length(const Vec3& a) {
    return std::sqrt(a.v[0] * a.v[0] + a.v[1] * a.v[1] + a.v[2] * a.v[2]);
}

/// Angle between two vectors (radians); 0 when either is null.
double Angle(const Vec3& a, const Vec3& b) {
    const double la = Length(a), lb = Length(b);
    if (!(la > 0.0) || !(lb > 0.0)) return 0.0;
    double c = (a.v[0] * b.v[0] + a.v[1] * b.v[1] + a.v[2] * b.v[2]) / (la * lb);
    c = c < -1.0 ? -1.0 : (c > 1.0 ? 1.0 : c);
    return std::acos(c);
}

XObjCmd8 MakeCmd(int id) {
    XObjCmd8 c{};
    c.id = id;
    return c;
}

/// Appends commands to the last level, closing a hard or cockpit range before anything else is added.
class Builder {
public:
    explicit Builder(XObj8& o) : obj(o) {}

    void Attribute(const XObjCmd& cmd) {
        if (cmd.id == attr_LOD) {
            Close();
            if (Level().lodFar != 0.0f) obj.lods.emplace_back();
            Level().lodNear = cmd.values.size() > 0 ? cmd.values[0] : 0.0f;
            Level().lodFar = cmd.values.size() > 1 ? cmd.values[1] : 0.0f;
            return;
        }
        XObjCmd8 c = MakeCmd(cmd.id);
        for (size_t i = 0; i < cmd.values.size() && i < 4; ++i)
            c.params[i] = cmd.values[i];
        Push(c);
    }

    void Triangles(const std::vector<vec_tex>& verts, Wrap wrap) {
        if (verts.empty()) return;
        if (wrap != open) {
            Close();
            if (wrap != Wrap::None)
                Level().cmds.push_back(MakeCmd(wrap == Wrap::Hard ? attr_Hard : attr_Cockpit));
            open = wrap;
        }
        const int start = static_cast<int>(obj.indices.size());
        for (const vec_tex& v : verts) {
            const float pt[8] = {v.v[0], v.v[1], v.v[2], 0.0f, 0.0f, 0.0f, v.st[0], v.st[1]};
            obj.indices.push_back(obj.geoTris.accumulate(pt));
        }
        Extend(obj8_Tris, start, static_cast<int>(verts.size()));
    }

    void Line(const XObjCmd& cmd) {
        if (cmd.rgbVerts.size() < 2) return;
        Close();
        const int start = static_cast<int>(obj.indices.size());
        for (size_t i = 0; i < 2; ++i)
            obj.indices.push_back(append_rgb(&obj.geoLines, Scaled(cmd.rgbVerts[i])));
        Extend(obj8_Lines, start, 2);
    }

    void Light(const XObjCmd& cmd) {
        if (cmd.rgbVerts.empty()) return;
        Close();
        Extend(obj8_Lights, append_rgb(&obj.geoLights, Scaled(cmd.rgbVerts[0])), 1);
    }

    void Close() {
        if (open == Wrap::None) return;
        Level().cmds.push_back(MakeCmd(open == Wrap::Hard ? attr_No_Hard : attr_No_Cockpit));
        open = Wrap::None;
    }

private:
    XObjLOD8& Level() { return obj.lods.back(); }

    void Push(const XObjCmd8& c) {
        Close();
        Level().cmds.push_back(c);
    }

    /// Grows the last command when it is of this kind and ends where the new range starts.
    void Extend(int id, int start, int count) {
        std::vector<XObjCmd8>& cmds = Level().cmds;
        if (!cmds.empty() && cmds.back().id == id && cmds.back().idxOffset + cmds.back().idxCount == start) {
            cmds.back().idxCount += count;
            return;
        }
        XObjCmd8 c = MakeCmd(id);
        c.idxOffset = start;
        c.idxCount = count;
        cmds.push_back(c);
    }

    static vec_rgb Scaled(const vec_rgb& v) {
        vec_rgb s = v;
        for (float& c : s.rgb)
            c *= kObj7ToObj8ColourScale;
        return s;
    }

    XObj8& obj;
    Wrap open = Wrap::None;
};

/// Smooth normals: each vertex gets the normalised sum of the unit normals of its triangles, each
/// weighted by the triangle's angle at that vertex (so splitting a face into more triangles
/// does not change the result).
void ComputeNormals(XObj8& obj) {
    const int n = obj.geoTris.count();
    std::vector<double> sum(static_cast<size_t>(n) * 3, 0.0);
    for (const XObjLOD8& lod : obj.lods)
        for (const XObjCmd8& cmd : lod.cmds) {
            if (cmd.id != obj8_Tris) continue;
            for (int i = cmd.idxOffset; i + 2 < cmd.idxOffset + cmd.idxCount; i += 3) {
                const int idx[3] = {obj.indices[i], obj.indices[i + 1], obj.indices[i + 2]};
                double p[3][3];
                for (int k = 0; k < 3; ++k)
                    for (int d = 0; d < 3; ++d)
                        p[k][d] = obj.geoTris.get(idx[k])[d];
                const Vec3 face = Cross(Sub(p[2], p[0]), Sub(p[1], p[0]));
                const double faceLen = Length(face);
                if (!(faceLen > 0.0)) continue; // degenerate: no direction to give
                for (int k = 0; k < 3; ++k) {
                    const double angle = Angle(Sub(p[(k + 1) % 3], p[k]), Sub(p[(k + 2) % 3], p[k]));
                    for (int d = 0; d < 3; ++d)
                        sum[static_cast<size_t>(idx[k]) * 3 + d] += angle * face.v[d] / faceLen;
                }
            }
        }
    // The pool's index was keyed on the zero normals; rebuild it with the finished points.
    std::vector<float> points = obj.geoTris.data;
    obj.geoTris.clear(8);
    for (int v = 0; v < n; ++v) {
        float* pt = points.data() + static_cast<size_t>(v) * 8;
        const double* s = sum.data() + static_cast<size_t>(v) * 3;
        const double len = std::sqrt(s[0] * s[0] + s[1] * s[1] + s[2] * s[2]);
        if (len > 0.0 && std::isfinite(len)) {
            for (int d = 0; d < 3; ++d)
                pt[3 + d] = static_cast<float>(s[d] / len);
        } else { // only degenerate triangles touch it: point the normal up
            pt[3] = 0.0f;
            pt[4] = 1.0f;
            pt[5] = 0.0f;
        }
        obj.geoTris.append(pt);
    }
}

void AddQuad(std::vector<vec_tex>& out, const vec_tex& q0, const vec_tex& q1, const vec_tex& q2,
             const vec_tex& q3) {
    out.insert(out.end(), {q0, q1, q2, q0, q2, q3});
}

} // namespace

std::vector<vec_tex> Obj7Triangles(const XObjCmd& cmd) {
    const std::vector<vec_tex>& v = cmd.texVerts;
    const size_t n = v.size();
    std::vector<vec_tex> out;
    switch (cmd.id) {
    case obj_Tri:
        if (n >= 3) out.insert(out.end(), {v[0], v[1], v[2]});
        break;
    case obj_Quad:
    case obj_Quad_Hard:
    case obj_Quad_Cockpit:
    case obj_Movie:
        if (n >= 4) AddQuad(out, v[0], v[1], v[2], v[3]);
        break;
    case obj_Polygon:
    case obj_Tri_Fan:
        for (size_t i = 1; i + 1 < n; ++i)
            out.insert(out.end(), {v[0], v[i], v[i + 1]});
        break;
    case obj_Tri_Strip:
        // Every other triangle is swapped so that all keep the strip's winding.
        for (size_t i = 0; i + 2 < n; ++i) {
            if (i % 2 == 0)
                out.insert(out.end(), {v[i], v[i + 1], v[i + 2]});
            else
                out.insert(out.end(), {v[i + 1], v[i], v[i + 2]});
        }
        break;
    case obj_Quad_Strip:
        // Vertices come in pairs across the strip: quad i is (a_i, b_i, b_i+1, a_i+1).
        for (size_t i = 0; i + 3 < n; i += 2)
            AddQuad(out, v[i], v[i + 1], v[i + 3], v[i + 2]);
        break;
    default:
        break;
    }
    return out;
}

void Obj7ToObj8(const XObj& in, XObj8& out) {
    out.texture = in.texture;
    out.textureLit.clear();
    out.indices.clear();
    out.animations.clear();
    out.lods.assign(1, XObjLOD8());
    out.geoTris.clear(8);
    out.geoLines.clear(6);
    out.geoLights.clear(6);

    Builder build(out);
    for (const XObjCmd& cmd : in.cmds) {
        switch (cmd.kind) {
        case obj_Attr:
            build.Attribute(cmd);
            break;
        case obj_Poly:
            build.Triangles(Obj7Triangles(cmd), cmd.id == obj_Quad_Hard      ? Wrap::Hard
                                                : cmd.id == obj_Quad_Cockpit ? Wrap::Cockpit
                                                                             : Wrap::None);
            break;
        case obj_PtLine:
            if (cmd.id == obj_Line)
                build.Line(cmd);
            else
                build.Light(cmd);
            break;
        default:
            break;
        }
    }
    build.Close();
    ComputeNormals(out);
}
