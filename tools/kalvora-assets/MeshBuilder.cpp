#include "MeshBuilder.h"

#include <cmath>

namespace assets {

namespace {

V3 Sub(V3 a, V3 b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
V3 Cross(V3 a, V3 b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
float Dot(V3 a, V3 b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
V3 Norm(V3 a) {
    const float l = std::sqrt(Dot(a, a));
    return l > 0 ? V3{a.x / l, a.y / l, a.z / l} : V3{0, 1, 0};
}

constexpr float kTwoPi = 6.2831853f;
constexpr int kTrisDepth = 8;   ///< x y z nx ny nz s t
constexpr int kLightsDepth = 6; ///< x y z r g b

// Animation keys. Hosts interpolate linearly between the two keys and extrapolate beyond them, so
// the keys only fix the slope; they are put at the ends of each value's range to read plainly.
constexpr float kSteeringKeyDeg = 11.0f; ///< the plug-in keeps its steering within +-11 degrees
constexpr float kFullTurnDeg = 360.0f;   ///< the rolling value wraps at a full turn

/// An animation step of a part: a rotation about `axis` (angle0 at value0, angle1 at value1) or,
/// for a translation, the offset `axis` at both values.
XObjAnim8 Step(const std::string& dataref, V3 axis, float angle0, float angle1, float value0, float value1) {
    XObjAnim8 a;
    a.dataref = dataref;
    for (XObjAnimKey8& k : a.key) {
        k.xyz[0] = axis.x;
        k.xyz[1] = axis.y;
        k.xyz[2] = axis.z;
    }
    a.key[0].angle = angle0;
    a.key[1].angle = angle1;
    a.key[0].value = value0;
    a.key[1].value = value1;
    return a;
}

/// Appends the animation record `a` to `obj` and the command `id` that points at it to `cmds`.
void Animate(XObj8& obj, int id, const XObjAnim8& a, std::vector<XObjCmd8>& cmds) {
    XObjCmd8 c{};
    c.id = id;
    c.idxOffset = static_cast<int32_t>(obj.animations.size());
    obj.animations.push_back(a);
    cmds.push_back(c);
}

/// A command, with the index range (or light range) it draws.
XObjCmd8 Command(int id, int32_t offset = 0, int32_t count = 0) {
    XObjCmd8 c{};
    c.id = id;
    c.idxOffset = offset;
    c.idxCount = count;
    return c;
}

} // namespace

UV AtlasRect(int x0, int y0, int x1, int y1, int size) {
    const float s = static_cast<float>(size);
    // Half a pixel in from each edge, so that linear filtering never picks up the neighbour.
    return {(x0 + 0.5f) / s, 1.0f - (y1 - 0.5f) / s, (x1 - 0.5f) / s, 1.0f - (y0 + 0.5f) / s};
}

MeshBuilder::MeshBuilder() {
    obj_.geoTris.clear(kTrisDepth);
    obj_.geoLines.clear(kLightsDepth);
    obj_.geoLights.clear(kLightsDepth);
}

int MeshBuilder::vertex(V3 p, V3 n, float s, float t) {
    const float v[kTrisDepth] = {p.x, p.y, p.z, n.x, n.y, n.z, s, t};
    return obj_.geoTris.accumulate(v);
}

void MeshBuilder::tri(int a, int b, int c) {
    std::vector<int32_t>& to = inPart_ ? parts_.back().indices : staticIndices_;
    to.push_back(a);
    to.push_back(b);
    to.push_back(c);
}

void MeshBuilder::beginWheelPart(V3 pivot, bool steers, const WheelDrive& drive) {
    parts_.push_back({pivot, steers, drive, {}});
    inPart_ = true;
}

void MeshBuilder::endPart() {
    inPart_ = false;
}

void MeshBuilder::quad(V3 p0, V3 p1, V3 p2, V3 p3, V3 normal, UV uv) {
    const V3 n = Norm(normal);
    const int a = vertex(p0, n, uv.s0, uv.t0), b = vertex(p1, n, uv.s1, uv.t0),
              c = vertex(p2, n, uv.s1, uv.t1), d = vertex(p3, n, uv.s0, uv.t1);
    // Front faces wind counter-clockwise seen from outside (back faces are culled).
    if (Dot(Cross(Sub(p1, p0), Sub(p2, p0)), n) >= 0) {
        tri(a, b, c);
        tri(a, c, d);
    } else {
        tri(a, c, b);
        tri(a, d, c);
    }
}

void MeshBuilder::box(V3 lo, V3 hi, const BoxSkin& k) {
    // Sides (+X, -X), texture s along the box's length (Z), t up.
    quad({hi.x, lo.y, hi.z}, {hi.x, lo.y, lo.z}, {hi.x, hi.y, lo.z}, {hi.x, hi.y, hi.z}, {1, 0, 0}, k.side);
    quad({lo.x, lo.y, lo.z}, {lo.x, lo.y, hi.z}, {lo.x, hi.y, hi.z}, {lo.x, hi.y, lo.z}, {-1, 0, 0}, k.side);
    // Ends (+Z, -Z), s across (X), t up.
    quad({lo.x, lo.y, hi.z}, {hi.x, lo.y, hi.z}, {hi.x, hi.y, hi.z}, {lo.x, hi.y, hi.z}, {0, 0, 1}, k.ends);
    quad({hi.x, lo.y, lo.z}, {lo.x, lo.y, lo.z}, {lo.x, hi.y, lo.z}, {hi.x, hi.y, lo.z}, {0, 0, -1}, k.ends);
    // Top and bottom.
    quad({lo.x, hi.y, hi.z}, {hi.x, hi.y, hi.z}, {hi.x, hi.y, lo.z}, {lo.x, hi.y, lo.z}, {0, 1, 0}, k.top);
    quad({lo.x, lo.y, lo.z}, {hi.x, lo.y, lo.z}, {hi.x, lo.y, hi.z}, {lo.x, lo.y, hi.z}, {0, -1, 0}, k.side);
}

void MeshBuilder::wheel(V3 c, float r, float w, int segments, UV tread, UV hub) {
    const float hx = w / 2;
    const float hubS = (hub.s0 + hub.s1) / 2, hubT = (hub.t0 + hub.t1) / 2;
    const float hubRs = (hub.s1 - hub.s0) / 2, hubRt = (hub.t1 - hub.t0) / 2;
    for (int i = 0; i < segments; ++i) {
        const float a0 = kTwoPi * i / segments, a1 = kTwoPi * (i + 1) / segments;
        const V3 p0{c.x, c.y + r * std::cos(a0), c.z + r * std::sin(a0)};
        const V3 p1{c.x, c.y + r * std::cos(a1), c.z + r * std::sin(a1)};
        const float am = (a0 + a1) / 2;
        const V3 out{0, std::cos(am), std::sin(am)};
        // s runs across the tread, t around it.
        const float tA = tread.t0 + (tread.t1 - tread.t0) * i / segments;
        const float tB = tread.t0 + (tread.t1 - tread.t0) * (i + 1) / segments;
        quad({p0.x - hx, p0.y, p0.z}, {p0.x + hx, p0.y, p0.z}, {p1.x + hx, p1.y, p1.z},
             {p1.x - hx, p1.y, p1.z}, out, {tread.s0, tA, tread.s1, tB});
        // The two side disks as fans around the hub.
        for (int side = -1; side <= 1; side += 2) {
            const V3 n{static_cast<float>(side), 0, 0};
            const int centre = vertex({c.x + side * hx, c.y, c.z}, n, hubS, hubT);
            const int e0 = vertex({c.x + side * hx, p0.y, p0.z}, n, hubS + hubRs * std::sin(a0),
                                  hubT + hubRt * std::cos(a0));
            const int e1 = vertex({c.x + side * hx, p1.y, p1.z}, n, hubS + hubRs * std::sin(a1),
                                  hubT + hubRt * std::cos(a1));
            const V3 q0{c.x + side * hx, c.y, c.z};
            const V3 q1{c.x + side * hx, p0.y, p0.z};
            const V3 q2{c.x + side * hx, p1.y, p1.z};
            if (Dot(Cross(Sub(q1, q0), Sub(q2, q0)), n) >= 0)
                tri(centre, e0, e1);
            else
                tri(centre, e1, e0);
        }
    }
}

void MeshBuilder::beam(V3 a, V3 b, float t, UV uv) {
    const V3 dir = Norm(Sub(b, a));
    const V3 up = std::fabs(dir.y) > 0.9f ? V3{1, 0, 0} : V3{0, 1, 0};
    const V3 u = Norm(Cross(dir, up));
    const V3 v = Norm(Cross(u, dir));
    const float h = t / 2;
    auto at = [&](V3 p, float su, float sv) {
        return V3{p.x + (u.x * su + v.x * sv) * h, p.y + (u.y * su + v.y * sv) * h,
                  p.z + (u.z * su + v.z * sv) * h};
    };
    const float cs[4][2] = {{1, 1}, {-1, 1}, {-1, -1}, {1, -1}};
    for (int i = 0; i < 4; ++i) {
        const float* c0 = cs[i];
        const float* c1 = cs[(i + 1) % 4];
        const V3 n = {u.x * (c0[0] + c1[0]) + v.x * (c0[1] + c1[1]),
                      u.y * (c0[0] + c1[0]) + v.y * (c0[1] + c1[1]),
                      u.z * (c0[0] + c1[0]) + v.z * (c0[1] + c1[1])};
        quad(at(a, c0[0], c0[1]), at(a, c1[0], c1[1]), at(b, c1[0], c1[1]), at(b, c0[0], c0[1]), n, uv);
    }
}

void MeshBuilder::light(V3 p, float r, float g, float b) {
    const float v[kLightsDepth] = {p.x, p.y, p.z, r, g, b};
    obj_.geoLights.append(v);
}

XObj8 MeshBuilder::finish(const std::string& texture, const std::string& textureLit) {
    XObj8 out = obj_;
    out.texture = texture;
    out.textureLit = textureLit;
    out.indices = staticIndices_;
    XObjLOD8 lod; // one level without a range: drawn at every distance
    lod.cmds.push_back(Command(attr_Reset));
    if (!staticIndices_.empty())
        lod.cmds.push_back(Command(obj8_Tris, 0, static_cast<int32_t>(staticIndices_.size())));
    for (const Part& p : parts_) {
        if (p.indices.empty()) continue;
        const int32_t first = static_cast<int32_t>(out.indices.size());
        out.indices.insert(out.indices.end(), p.indices.begin(), p.indices.end());
        lod.cmds.push_back(Command(anim_Begin));
        // Every part opens with this constant step driven by the steering value, so the first
        // animation of the file names the steering dataref. Before X-Plane 11.50 the plug-in draws
        // the tug itself, and its default animation driver looks up one dataref, the first it meets,
        // and drives every animation of the model with it: led by steering (at most 11 degrees), the
        // wheels there at worst roll by a few degrees; led by the rolling value, the steered wheels
        // would spin about +Y by up to a full turn.
        Animate(out, anim_Translate, Step(p.drive.steering, p.pivot, 0, 0, 0, 1), lod.cmds);
        // Right-hand rule: a positive angle about +Y turns -Z towards -X, so steering clockwise seen
        // from above (to +X) is a negative angle; a positive angle about +X lifts -Z, so rolling
        // forward (the tyre's top to -Z) is a negative angle too.
        if (p.steers)
            Animate(out, anim_Rotate,
                    Step(p.drive.steering, {0, 1, 0}, kSteeringKeyDeg, -kSteeringKeyDeg, -kSteeringKeyDeg,
                         kSteeringKeyDeg),
                    lod.cmds);
        Animate(out, anim_Rotate, Step(p.drive.rolling, {1, 0, 0}, 0, -kFullTurnDeg, 0, kFullTurnDeg),
                lod.cmds);
        lod.cmds.push_back(Command(obj8_Tris, first, static_cast<int32_t>(p.indices.size())));
        lod.cmds.push_back(Command(anim_End));
    }
    if (out.geoLights.count() > 0) lod.cmds.push_back(Command(obj8_Lights, 0, out.geoLights.count()));
    out.lods.push_back(lod);
    return out;
}

} // namespace assets
