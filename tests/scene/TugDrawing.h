// Kalvora's shipped tug models split into what moves and what does not, drawn by
// ObjDraw8 and read back corner by corner through OpenGL feedback, in the model's
// own frame (metres): the body's triangles and each wheel's, so tests can see how
// far and which way every part moved.
#pragma once

#include "SceneFixture.h"

#include "objects/Obj8Reader.h"
#include "objects/Obj8Validate.h"
#include "objects/ObjDraw8.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>
#include <vector>

namespace kalvora_scene_test {

/// The folder of the plug-in's data as shipped in the source tree.
const std::string kShippedAssets = std::string(KALVORA_SOURCE_DIR) + "/assets/Kalvora/";
/// The tug models that carry wheel animations.
const char* const kTugModels[] = {"KLVdefault", "KLVtowbarless"};
/// The published datarefs that drive them.
constexpr const char* kSteeringRef = "halvern/kalvora/truck/steering_deg";
constexpr const char* kRollingRef = "halvern/kalvora/truck/wheel_rotation_deg";

/// One animated group of a level: its steps (animation commands) and its TRIS commands, in order.
struct AnimatedGroup {
    std::vector<XObjCmd8> steps;
    std::vector<XObjCmd8> tris;
};

/// The commands of one level sorted into static TRIS and animated groups (nested groups are
/// flattened into the outermost one); false when ANIM_begin and ANIM_end do not pair up.
inline bool SplitLevel(const XObjLOD8& lod, std::vector<XObjCmd8>& staticTris,
                       std::vector<AnimatedGroup>& groups) {
    int depth = 0;
    for (const XObjCmd8& c : lod.cmds) {
        switch (c.id) {
        case anim_Begin:
            if (depth++ == 0) groups.emplace_back();
            break;
        case anim_End:
            if (--depth < 0) return false;
            break;
        case anim_Rotate:
        case anim_Translate:
            if (depth == 0) return false; // an animation outside a group would move everything after it
            groups.back().steps.push_back(c);
            break;
        case obj8_Tris:
            (depth == 0 ? staticTris : groups.back().tris).push_back(c);
            break;
        default:
            break;
        }
    }
    return depth == 0;
}

constexpr float kBoxM = 20.0f;  ///< half size of the orthographic box the tug is drawn in, metres
constexpr double kSameM = 2e-3; ///< two drawn corners closer than this are the same, metres
using kalvora_test::kRadPerDeg;

/// A drawn point, metres in the model frame.
struct P3 {
    double x, y, z;
};
/// The triangle corners of a part as drawn, in index order.
using Corners = std::vector<P3>;

/// What one draw put where: the body, then each wheel in file order.
struct Drawn {
    Corners body;
    std::vector<Corners> wheels;
};

/// The values a drawer is given, by dataref name.
struct Drive {
    float steeringDeg = 0;
    float rollingDeg = 0;
};

/// A GetAnimParam that answers each of the tug's datarefs with its own value from the Drive at `ref`.
inline float DriveByName(const char* dataref, float, float, void* ref) {
    const Drive& d = *static_cast<const Drive*>(ref);
    if (std::strcmp(dataref, kSteeringRef) == 0) return d.steeringDeg;
    if (std::strcmp(dataref, kRollingRef) == 0) return d.rollingDeg;
    ADD_FAILURE() << "animated by " << dataref;
    return 0;
}

inline P3 Centre(const Corners& c) {
    P3 m{0, 0, 0};
    for (const P3& p : c) {
        m.x += p.x / c.size();
        m.y += p.y / c.size();
        m.z += p.z / c.size();
    }
    return m;
}

inline double Distance(const P3& a, const P3& b) {
    return std::sqrt((a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y) + (a.z - b.z) * (a.z - b.z));
}

/// Largest distance between corresponding corners (huge when the counts differ).
inline double Moved(const Corners& a, const Corners& b) {
    if (a.size() != b.size()) return 1e9;
    double m = 0;
    for (size_t i = 0; i < a.size(); ++i)
        m = std::max(m, Distance(a[i], b[i]));
    return m;
}

/// `p` turned by `deg` about the line through `c` along X (`aboutX`) or Y, right-hand rule (about X: Y turns
/// to Z; about Y: Z turns to X).
inline P3 TurnAbout(const P3& p, const P3& c, bool aboutX, double deg) {
    const double s = std::sin(deg * kRadPerDeg), k = std::cos(deg * kRadPerDeg);
    if (aboutX)
        return {p.x, c.y + (p.y - c.y) * k - (p.z - c.z) * s, c.z + (p.y - c.y) * s + (p.z - c.z) * k};
    return {c.x + (p.x - c.x) * k + (p.z - c.z) * s, p.y, c.z - (p.x - c.x) * s + (p.z - c.z) * k};
}

/// A wheel's corners turned by `deg` about the axis through its centre.
inline Corners Turned(const Corners& wheel, bool aboutX, double deg) {
    const P3 c = Centre(wheel);
    Corners out;
    for (const P3& p : wheel)
        out.push_back(TurnAbout(p, c, aboutX, deg));
    return out;
}

class TugDrawTest : public SceneTest {
protected:
    /// Reads and validates assets/Kalvora/<name>.obj and notes which of its wheels steer.
    void LoadTug(const std::string& name) {
        const std::string path = kShippedAssets + name + ".obj";
        obj_ = XObj8();
        steers_.clear();
        ASSERT_TRUE(XObj8Read(path.c_str(), obj_)) << path;
        ASSERT_TRUE(XObj8Validate(obj_, nullptr)) << path;
        std::vector<XObjCmd8> body;
        std::vector<AnimatedGroup> groups;
        ASSERT_TRUE(SplitLevel(obj_.lods.at(0), body, groups)) << path;
        for (const AnimatedGroup& g : groups) {
            bool steers = false;
            for (const XObjCmd8& s : g.steps)
                steers =
                    steers || (s.id == anim_Rotate && obj_.animations.at(s.idxOffset).key[0].xyz[1] != 0);
            steers_.push_back(steers);
        }
    }

    /// Draws the tug with the given values by name.
    Drawn DrawTug(Drive d) {
        ObjDrawFuncs_t f{Default_SetupPoly,  Default_SetupLine, Default_SetupLight,      Default_SetupMovie,
                         Default_SetupPanel, Default_TexCoord,  Default_TexCoordPointer, DriveByName};
        return DrawTug(&f, &d);
    }

    /// Draws the tug through `funcs` (null: the defaults) and reads back where every corner landed.
    Drawn DrawTug(ObjDrawFuncs_t* funcs, void* ref) {
        constexpr int kFloatsPerCorner = 3; // GL_3D feedback: window x, y, depth
        std::vector<GLfloat> feedback(obj_.indices.size() * 4 + obj_.geoLights.count() * 4 + 64);
        GLint viewport[4] = {};
        GLint floats = -1;
        Render([&] {
            glMatrixMode(GL_PROJECTION);
            glPushMatrix();
            glLoadIdentity();
            glOrtho(-kBoxM, kBoxM, -kBoxM, kBoxM, -kBoxM, kBoxM);
            glMatrixMode(GL_MODELVIEW);
            glPushMatrix();
            glLoadIdentity();
            glDisable(GL_CULL_FACE); // every triangle comes back, whichever way it faces
            glGetIntegerv(GL_VIEWPORT, viewport);
            glFeedbackBuffer(static_cast<GLsizei>(feedback.size()), GL_3D, feedback.data());
            glRenderMode(GL_FEEDBACK);
            ObjDraw8(obj_, 0, funcs, ref);
            floats = glRenderMode(GL_RENDER);
            glMatrixMode(GL_PROJECTION);
            glPopMatrix();
            glMatrixMode(GL_MODELVIEW);
            glPopMatrix();
        });
        // Window coordinates back to model metres: the inverse of the box's projection and the viewport.
        Corners all;
        for (GLint i = 0; i < floats;) {
            const bool polygon = static_cast<int>(feedback[i]) == GL_POLYGON_TOKEN;
            const int corners = polygon ? static_cast<int>(feedback[i + 1]) : 0;
            i += polygon ? 2 : 1 + kFloatsPerCorner; // points (the lights) are skipped
            for (int k = 0; k < corners; ++k, i += kFloatsPerCorner)
                all.push_back({((feedback[i] - viewport[0]) / viewport[2] * 2 - 1) * kBoxM,
                               ((feedback[i + 1] - viewport[1]) / viewport[3] * 2 - 1) * kBoxM,
                               -(feedback[i + 2] * 2 - 1) * kBoxM});
        }
        EXPECT_GT(floats, 0) << "feedback buffer large enough";
        EXPECT_EQ(all.size(), obj_.indices.size()) << "every triangle drawn whole";
        // Triangles come back in drawing order: the body's TRIS, then each wheel's.
        Drawn out;
        std::vector<XObjCmd8> body;
        std::vector<AnimatedGroup> groups;
        SplitLevel(obj_.lods.at(0), body, groups);
        size_t next = 0;
        auto take = [&](const std::vector<XObjCmd8>& tris, Corners& into) {
            for (const XObjCmd8& t : tris)
                for (int k = 0; k < t.idxCount && next < all.size(); ++k)
                    into.push_back(all[next++]);
        };
        take(body, out.body);
        for (const AnimatedGroup& g : groups) {
            out.wheels.emplace_back();
            take(g.tris, out.wheels.back());
        }
        return out;
    }

    XObj8 obj_;
    std::vector<bool> steers_; ///< per wheel, in file order
};

} // namespace kalvora_scene_test
