// Model comparison for "kalvora-obj roundtrip".
#include "ObjCompare.h"

#include <cmath>
#include <sstream>

namespace {

/// A value printed with six decimals and read back through a single-precision mantissa.
bool NearSixDecimals(float a, float b) {
    return std::fabs(double(a) - b) <= 1e-6 + std::fabs(double(a)) * 2.5e-7;
}

template <typename T> std::string Differ(const std::string& what, const T& a, const T& b) {
    std::ostringstream s;
    s << what << ": " << a << " then " << b;
    return s.str();
}

std::string ComparePool(const char* name, const ObjPointPool& a, const ObjPointPool& b) {
    if (a.count() != b.count()) return Differ(std::string(name) + " point count", a.count(), b.count());
    for (size_t i = 0; i < a.data.size() && i < b.data.size(); ++i)
        if (!NearSixDecimals(a.data[i], b.data[i])) {
            std::ostringstream what;
            what << name << " point " << i / a.depth << " value " << i % a.depth;
            return Differ(what.str(), a.data[i], b.data[i]);
        }
    return std::string();
}

std::string CompareCommand(const XObjCmd8& a, const XObjCmd8& b) {
    if (a.id != b.id) return Differ("identifier", a.id, b.id);
    if (a.id == obj8_Tris || a.id == obj8_Lines || a.id == obj8_Lights || a.id == anim_Rotate ||
        a.id == anim_Translate) {
        if (a.idxOffset != b.idxOffset) return Differ("offset", a.idxOffset, b.idxOffset);
        if (a.id != anim_Rotate && a.id != anim_Translate && a.idxCount != b.idxCount)
            return Differ("count", a.idxCount, b.idxCount);
        return std::string();
    }
    const int row = FindIndexForCmd(a.id);
    for (int i = 0; row < gCmdCount && i < gCmds[row].count && i < 4; ++i)
        if (!NearSixDecimals(a.params[i], b.params[i])) return Differ("parameter", a.params[i], b.params[i]);
    return std::string();
}

/// Compares two animation steps; the angles only when the step is a rotation (a translation has none).
std::string CompareAnimation(const XObjAnim8& a, const XObjAnim8& b, bool rotation) {
    if (a.dataref != b.dataref) return Differ("dataref", a.dataref, b.dataref);
    for (int k = 0; k < 2; ++k) {
        const float va[5] = {a.key[k].xyz[0], a.key[k].xyz[1], a.key[k].xyz[2], a.key[k].value,
                             a.key[k].angle};
        const float vb[5] = {b.key[k].xyz[0], b.key[k].xyz[1], b.key[k].xyz[2], b.key[k].value,
                             b.key[k].angle};
        for (int i = 0; i < (rotation ? 5 : 4); ++i)
            if (!NearSixDecimals(va[i], vb[i])) return Differ("key value", va[i], vb[i]);
    }
    return std::string();
}

} // namespace

std::string FirstDifference(const XObj8& a, const XObj8& b) {
    if (a.texture != b.texture) return Differ("texture", a.texture, b.texture);
    if (a.textureLit != b.textureLit) return Differ("lit texture", a.textureLit, b.textureLit);
    if (a.indices != b.indices) return "index list differs";
    for (const auto& pools : {std::make_pair("triangle", std::make_pair(&a.geoTris, &b.geoTris)),
                              std::make_pair("line", std::make_pair(&a.geoLines, &b.geoLines)),
                              std::make_pair("light", std::make_pair(&a.geoLights, &b.geoLights))}) {
        const std::string d = ComparePool(pools.first, *pools.second.first, *pools.second.second);
        if (!d.empty()) return d;
    }
    if (a.animations.size() != b.animations.size())
        return Differ("animation count", a.animations.size(), b.animations.size());
    std::vector<bool> rotation(a.animations.size(), false);
    for (const XObjLOD8& lod : a.lods)
        for (const XObjCmd8& c : lod.cmds)
            if (c.id == anim_Rotate && c.idxOffset >= 0 && static_cast<size_t>(c.idxOffset) < rotation.size())
                rotation[c.idxOffset] = true;
    for (size_t i = 0; i < a.animations.size(); ++i) {
        const std::string d = CompareAnimation(a.animations[i], b.animations[i], rotation[i]);
        if (!d.empty()) return "animation " + std::to_string(i) + " " + d;
    }
    if (a.lods.size() != b.lods.size()) return Differ("level count", a.lods.size(), b.lods.size());
    for (size_t l = 0; l < a.lods.size(); ++l) {
        const std::string where = "level " + std::to_string(l);
        if (!NearSixDecimals(a.lods[l].lodNear, b.lods[l].lodNear) ||
            !NearSixDecimals(a.lods[l].lodFar, b.lods[l].lodFar))
            return where + " range differs";
        if (a.lods[l].cmds.size() != b.lods[l].cmds.size())
            return Differ(where + " command count", a.lods[l].cmds.size(), b.lods[l].cmds.size());
        for (size_t c = 0; c < a.lods[l].cmds.size(); ++c) {
            const std::string d = CompareCommand(a.lods[l].cmds[c], b.lods[l].cmds[c]);
            if (!d.empty()) return where + " command " + std::to_string(c) + " " + d;
        }
    }
    return std::string();
}

std::string FirstDifference(const XObj& a, const XObj& b) {
    if (a.texture != b.texture) return Differ("texture", a.texture, b.texture);
    if (a.cmds.size() != b.cmds.size()) return Differ("command count", a.cmds.size(), b.cmds.size());
    for (size_t i = 0; i < a.cmds.size(); ++i) {
        const XObjCmd& x = a.cmds[i];
        const XObjCmd& y = b.cmds[i];
        const std::string where = "command " + std::to_string(i);
        if (x.kind != y.kind || x.id != y.id) return Differ(where + " identifier", x.id, y.id);
        if (x.values != y.values) return where + " numbers differ";
        if (x.texVerts.size() != y.texVerts.size() || x.rgbVerts.size() != y.rgbVerts.size())
            return where + " vertex count differs";
        for (size_t v = 0; v < x.texVerts.size(); ++v)
            for (int k = 0; k < 5; ++k) {
                const float fx = k < 3 ? x.texVerts[v].v[k] : x.texVerts[v].st[k - 3];
                const float fy = k < 3 ? y.texVerts[v].v[k] : y.texVerts[v].st[k - 3];
                if (fx != fy) return Differ(where + " vertex " + std::to_string(v), fx, fy);
            }
        for (size_t v = 0; v < x.rgbVerts.size(); ++v)
            for (int k = 0; k < 6; ++k) {
                const float fx = k < 3 ? x.rgbVerts[v].v[k] : x.rgbVerts[v].rgb[k - 3];
                const float fy = k < 3 ? y.rgbVerts[v].v[k] : y.rgbVerts[v].rgb[k - 3];
                if (fx != fy) return Differ(where + " vertex " + std::to_string(v), fx, fy);
            }
    }
    return std::string();
}
