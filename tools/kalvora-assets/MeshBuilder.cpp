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
    obj_.indices.push_back(a);
    obj_.indices.push_back(b);
    obj_.indices.push_back(c);
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
    XObjLOD8 lod; // one level without a range: drawn at every distance
    XObjCmd8 reset{};
    reset.id = attr_Reset;
    lod.cmds.push_back(reset);
    XObjCmd8 tris{};
    tris.id = obj8_Tris;
    tris.idxOffset = 0;
    tris.idxCount = static_cast<int32_t>(out.indices.size());
    lod.cmds.push_back(tris);
    if (out.geoLights.count() > 0) {
        XObjCmd8 lights{};
        lights.id = obj8_Lights;
        lights.idxOffset = 0;
        lights.idxCount = out.geoLights.count();
        lod.cmds.push_back(lights);
    }
    out.lods.push_back(lod);
    return out;
}

} // namespace assets
