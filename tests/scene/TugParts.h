// Kalvora's shipped tug models split into what moves and what does not: the
// static triangles, and each ANIM_begin..ANIM_end group with its animation steps
// and its triangles, in file order.
#pragma once

#include "objects/ObjModel.h"

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

} // namespace kalvora_scene_test
