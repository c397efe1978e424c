// What the object tests share: reading from text, corpus listing and model comparison.
#pragma once

#include "objects/Obj7Reader.h"
#include "objects/Obj7ToObj8.h"
#include "objects/Obj8Reader.h"
#include "objects/ObjModel.h"
#include "support/Corpus.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace objtest {

inline bool Read8(const std::string& text, XObj8& obj) {
    return XObj8ReadMemory(text.data(), text.size(), obj);
}

inline bool Read7(const std::string& text, XObj& obj) {
    return XObjReadMemory(text.data(), text.size(), obj);
}

/// Tolerance of a value printed with six decimals and read back through a single-precision mantissa.
inline double SixDecimals(double v) {
    return 1e-6 + std::fabs(v) * 2.5e-7;
}

/// Expects two OBJ8 models to hold the same values, floats to six decimals.
inline void ExpectSameObj8(const XObj8& a, const XObj8& b, const std::string& what) {
    SCOPED_TRACE(what);
    EXPECT_EQ(a.texture, b.texture);
    EXPECT_EQ(a.textureLit, b.textureLit);
    EXPECT_EQ(a.indices, b.indices);
    const ObjPointPool* pa[] = {&a.geoTris, &a.geoLines, &a.geoLights};
    const ObjPointPool* pb[] = {&b.geoTris, &b.geoLines, &b.geoLights};
    for (int k = 0; k < 3; ++k) {
        ASSERT_EQ(pa[k]->count(), pb[k]->count()) << "pool " << k;
        for (size_t i = 0; i < pa[k]->data.size(); ++i)
            ASSERT_NEAR(pa[k]->data[i], pb[k]->data[i], SixDecimals(pa[k]->data[i]))
                << "pool " << k << " float " << i;
    }
    ASSERT_EQ(a.animations.size(), b.animations.size());
    for (size_t i = 0; i < a.animations.size(); ++i) {
        EXPECT_EQ(a.animations[i].dataref, b.animations[i].dataref);
        for (int k = 0; k < 2; ++k) {
            const XObjAnimKey8 &ka = a.animations[i].key[k], &kb = b.animations[i].key[k];
            for (int d = 0; d < 3; ++d)
                EXPECT_NEAR(ka.xyz[d], kb.xyz[d], SixDecimals(ka.xyz[d]));
            EXPECT_NEAR(ka.value, kb.value, SixDecimals(ka.value));
        }
    }
    ASSERT_EQ(a.lods.size(), b.lods.size());
    for (size_t l = 0; l < a.lods.size(); ++l) {
        EXPECT_NEAR(a.lods[l].lodNear, b.lods[l].lodNear, SixDecimals(a.lods[l].lodNear));
        EXPECT_NEAR(a.lods[l].lodFar, b.lods[l].lodFar, SixDecimals(a.lods[l].lodFar));
        ASSERT_EQ(a.lods[l].cmds.size(), b.lods[l].cmds.size()) << "level " << l;
        for (size_t c = 0; c < a.lods[l].cmds.size(); ++c) {
            const XObjCmd8 &ca = a.lods[l].cmds[c], &cb = b.lods[l].cmds[c];
            ASSERT_EQ(ca.id, cb.id) << "level " << l << " command " << c;
            if (ca.id == obj8_Tris || ca.id == obj8_Lines || ca.id == obj8_Lights) {
                EXPECT_EQ(ca.idxOffset, cb.idxOffset);
                EXPECT_EQ(ca.idxCount, cb.idxCount);
            } else if (ca.id == anim_Rotate || ca.id == anim_Translate) {
                EXPECT_EQ(ca.idxOffset, cb.idxOffset);
            } else {
                for (int i = 0; i < gCmds[FindIndexForCmd(ca.id)].count && i < 4; ++i)
                    EXPECT_NEAR(ca.params[i], cb.params[i], SixDecimals(ca.params[i]));
            }
        }
    }
}

/// The .obj files of a corpus folder ("obj8", "obj7"), sorted; empty when the corpus is absent.
inline std::vector<std::string> CorpusFiles(const std::string& folder) {
    std::vector<std::string> names;
    std::error_code absent;
    for (const auto& e : std::filesystem::directory_iterator(kalvora_test::corpusPath(folder), absent))
        if (e.path().extension() == ".obj") names.push_back(e.path().string());
    std::sort(names.begin(), names.end());
    return names;
}

/// One triangle as 15 numbers (three times x y z s t), rounded to 1e-4 and rotated to start at its
/// smallest vertex, so that the same triangle compares equal whichever vertex a file lists first.
using Triangle = std::array<long, 15>;

inline Triangle MakeTriangle(const float* const v[3], int stOffset) {
    std::array<std::array<long, 5>, 3> verts;
    for (int k = 0; k < 3; ++k) {
        for (int d = 0; d < 3; ++d)
            verts[k][d] = std::lround(v[k][d] * 1e4);
        for (int d = 0; d < 2; ++d)
            verts[k][3 + d] = std::lround(v[k][stOffset + d] * 1e4);
    }
    const int first = static_cast<int>(std::min_element(verts.begin(), verts.end()) - verts.begin());
    Triangle t;
    for (int k = 0; k < 3; ++k)
        std::copy(verts[(first + k) % 3].begin(), verts[(first + k) % 3].end(), t.begin() + 5 * k);
    return t;
}

/// The triangles of every level of an OBJ8 model, sorted, one list per level.
inline std::vector<std::vector<Triangle>> TrianglesByLevel(const XObj8& o) {
    std::vector<std::vector<Triangle>> levels;
    for (const XObjLOD8& lod : o.lods) {
        levels.emplace_back();
        for (const XObjCmd8& c : lod.cmds) {
            if (c.id != obj8_Tris) continue;
            for (int i = c.idxOffset; i + 2 < c.idxOffset + c.idxCount; i += 3) {
                const float* v[3] = {o.geoTris.get(o.indices[i]), o.geoTris.get(o.indices[i + 1]),
                                     o.geoTris.get(o.indices[i + 2])};
                levels.back().push_back(MakeTriangle(v, 6));
            }
        }
        std::sort(levels.back().begin(), levels.back().end());
    }
    return levels;
}

/// Points of a colour pool (lines or lights), rounded to 1e-4, sorted.
inline std::vector<std::array<long, 6>> ColourPoints(const ObjPointPool& pool) {
    std::vector<std::array<long, 6>> out;
    for (int i = 0; i < pool.count(); ++i) {
        std::array<long, 6> p;
        for (int d = 0; d < 6; ++d)
            p[d] = std::lround(pool.get(i)[d] * 1e4);
        out.push_back(p);
    }
    std::sort(out.begin(), out.end());
    return out;
}

/// OBJ7 triangles grouped by the ATTR_LOD range in force, independently of the converters.
inline std::map<std::pair<float, float>, std::vector<Triangle>> Obj7TrianglesByRange(const XObj& o) {
    std::map<std::pair<float, float>, std::vector<Triangle>> out;
    std::pair<float, float> range(0.0f, 0.0f);
    for (const XObjCmd& c : o.cmds) {
        if (c.id == attr_LOD && c.values.size() == 2) range = {c.values[0], c.values[1]};
        if (c.kind != obj_Poly) continue;
        const std::vector<vec_tex> tris = Obj7Triangles(c);
        for (size_t t = 0; t + 2 < tris.size(); t += 3) {
            const float* v[3] = {tris[t].v, tris[t + 1].v, tris[t + 2].v}; // x y z s t
            out[range].push_back(MakeTriangle(v, 3));
        }
    }
    for (auto& level : out)
        std::sort(level.second.begin(), level.second.end());
    return out;
}

} // namespace objtest
