// Validation of an OBJ8 model. Cost: one pass over the commands plus one look at
// every index a TRIS or LINES range covers. Animation blocks must pair up within
// each level: the drawer pushes a matrix at ANIM_begin and pops it at ANIM_end,
// so an unpaired one would leave the host's matrix stack changed.
#include "objects/Obj8Validate.h"

#include <cstdint>
#include <sstream>

namespace {

bool Fail(std::string* why, const std::string& reason) {
    if (why) *why = reason;
    return false;
}

std::string Where(size_t lod, size_t cmd, const char* what) {
    std::ostringstream s;
    s << "level " << lod << ", command " << cmd << " (" << what << ")";
    return s.str();
}

/// The pool's depth must match the record layout the drawer assumes, unless the pool is empty.
bool DepthIs(const ObjPointPool& pool, int depth) {
    return pool.data.empty() || (pool.depth == depth && pool.data.size() % static_cast<size_t>(depth) == 0);
}

/// Deepest ANIM_begin nesting accepted. Each level is a pushed modelview matrix, and OpenGL promises
/// only 32 of them, some taken by the host before the model is drawn.
constexpr int kMaxAnimationDepth = 16;

bool RangeInside(int32_t offset, int32_t count, int64_t size) {
    return offset >= 0 && count >= 0 && static_cast<int64_t>(offset) + count <= size;
}

} // namespace

bool XObj8Validate(const XObj8& obj, std::string* why) {
    if (obj.lods.empty()) return Fail(why, "no level of detail");
    if (!DepthIs(obj.geoTris, 8)) return Fail(why, "triangle pool is not 8 floats per point");
    if (!DepthIs(obj.geoLines, 6)) return Fail(why, "line pool is not 6 floats per point");
    if (!DepthIs(obj.geoLights, 6)) return Fail(why, "light pool is not 6 floats per point");

    const int64_t indexCount = static_cast<int64_t>(obj.indices.size());
    for (size_t l = 0; l < obj.lods.size(); ++l) {
        const std::vector<XObjCmd8>& cmds = obj.lods[l].cmds;
        int depth = 0; // open ANIM_begin blocks: each one is a matrix pushed by the drawer
        for (size_t c = 0; c < cmds.size(); ++c) {
            const XObjCmd8& cmd = cmds[c];
            switch (cmd.id) {
            case anim_Begin:
                if (++depth > kMaxAnimationDepth) {
                    std::ostringstream s;
                    s << Where(l, c, "ANIM_begin") << ": animations nested deeper than "
                      << kMaxAnimationDepth;
                    return Fail(why, s.str());
                }
                break;
            case anim_End:
                if (--depth < 0) return Fail(why, Where(l, c, "ANIM_end") + ": no ANIM_begin to close");
                break;
            case obj8_Tris:
            case obj8_Lines: {
                const char* what = cmd.id == obj8_Tris ? "TRIS" : "LINES";
                if (!RangeInside(cmd.idxOffset, cmd.idxCount, indexCount)) {
                    std::ostringstream s;
                    s << Where(l, c, what) << ": range " << cmd.idxOffset << "+" << cmd.idxCount
                      << " outside the index list of " << indexCount;
                    return Fail(why, s.str());
                }
                const int poolCount = cmd.id == obj8_Tris ? obj.geoTris.count() : obj.geoLines.count();
                for (int32_t i = cmd.idxOffset; i < cmd.idxOffset + cmd.idxCount; ++i) {
                    const int32_t v = obj.indices[i];
                    if (v < 0 || v >= poolCount) {
                        std::ostringstream s;
                        s << Where(l, c, what) << ": index " << i << " is " << v << ", outside the "
                          << (cmd.id == obj8_Tris ? "triangle" : "line") << " pool of " << poolCount;
                        return Fail(why, s.str());
                    }
                }
                break;
            }
            case obj8_Lights:
                if (!RangeInside(cmd.idxOffset, cmd.idxCount, obj.geoLights.count())) {
                    std::ostringstream s;
                    s << Where(l, c, "LIGHTS") << ": range " << cmd.idxOffset << "+" << cmd.idxCount
                      << " outside the light pool of " << obj.geoLights.count();
                    return Fail(why, s.str());
                }
                break;
            case anim_Rotate:
            case anim_Translate:
                if (cmd.idxOffset < 0 || static_cast<size_t>(cmd.idxOffset) >= obj.animations.size()) {
                    std::ostringstream s;
                    s << Where(l, c, cmd.id == anim_Rotate ? "ANIM_rotate" : "ANIM_trans") << ": animation "
                      << cmd.idxOffset << " does not exist (" << obj.animations.size() << " records)";
                    return Fail(why, s.str());
                }
                break;
            default:
                break;
            }
        }
        if (depth > 0) {
            std::ostringstream s;
            s << "level " << l << ": " << depth << " ANIM_begin without ANIM_end";
            return Fail(why, s.str());
        }
    }
    if (why) why->clear();
    return true;
}
