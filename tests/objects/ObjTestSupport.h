// What the object tests share: temporary files, corpus listing and model comparison.
#pragma once

#include "objects/ObjModel.h"
#include "support/Corpus.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <dirent.h>
#include <vector>
#include <cstdio>
#include <fstream>
#include <string>
#include <unistd.h>

namespace objtest {

/// A file in the temporary folder, removed when the object goes away.
class TempFile {
public:
    explicit TempFile(const std::string& contents = std::string(), const char* suffix = ".obj") {
        char name[] = "/tmp/kalvora_obj_XXXXXX";
        const int fd = mkstemp(name);
        if (fd >= 0) close(fd);
        path_ = std::string(name) + suffix;
        std::rename(name, path_.c_str());
        if (!contents.empty()) std::ofstream(path_, std::ios::binary) << contents;
    }
    ~TempFile() { std::remove(path_.c_str()); }
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;
    const char* path() const { return path_.c_str(); }
    std::string read() const {
        std::ifstream in(path_, std::ios::binary);
        return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    }

private:
    std::string path_;
};

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
            for (int d = 0; d < 3; ++d)
                EXPECT_NEAR(a.animations[i].key[k].xyz[d], b.animations[i].key[k].xyz[d],
                            SixDecimals(a.animations[i].key[k].xyz[d]));
            EXPECT_NEAR(a.animations[i].key[k].value, b.animations[i].key[k].value,
                        SixDecimals(a.animations[i].key[k].value));
        }
    }
    ASSERT_EQ(a.lods.size(), b.lods.size());
    for (size_t l = 0; l < a.lods.size(); ++l) {
        EXPECT_NEAR(a.lods[l].lodNear, b.lods[l].lodNear, SixDecimals(a.lods[l].lodNear));
        EXPECT_NEAR(a.lods[l].lodFar, b.lods[l].lodFar, SixDecimals(a.lods[l].lodFar));
        ASSERT_EQ(a.lods[l].cmds.size(), b.lods[l].cmds.size()) << "level " << l;
        for (size_t c = 0; c < a.lods[l].cmds.size(); ++c) {
            const XObjCmd8& ca = a.lods[l].cmds[c];
            const XObjCmd8& cb = b.lods[l].cmds[c];
            ASSERT_EQ(ca.id, cb.id) << "level " << l << " command " << c;
            if (ca.id == obj8_Tris || ca.id == obj8_Lines || ca.id == obj8_Lights) {
                EXPECT_EQ(ca.idxOffset, cb.idxOffset);
                EXPECT_EQ(ca.idxCount, cb.idxCount);
            } else if (ca.id == anim_Rotate || ca.id == anim_Translate) {
                EXPECT_EQ(ca.idxOffset, cb.idxOffset);
            } else {
                const int row = FindIndexForCmd(ca.id);
                for (int i = 0; i < gCmds[row].count && i < 4; ++i)
                    EXPECT_NEAR(ca.params[i], cb.params[i], SixDecimals(ca.params[i]));
            }
        }
    }
}

/// The .obj files of a corpus folder ("obj8", "obj7"), sorted; empty when the corpus is absent.
inline std::vector<std::string> CorpusFiles(const std::string& folder) {
    std::vector<std::string> names;
    if (DIR* d = opendir(kalvora_test::corpusPath(folder).c_str())) {
        while (dirent* e = readdir(d)) {
            const std::string name = e->d_name;
            if (name.size() > 4 && name.compare(name.size() - 4, 4, ".obj") == 0)
                names.push_back(kalvora_test::corpusPath(folder + "/" + name));
        }
        closedir(d);
    }
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

} // namespace objtest
