// The command table shared by every reader, writer and converter of object files.
// The order of the rows is part of the contract: FindObjCmd returns positions in
// it, and FindIndexForCmd's "first spelling" of an identifier is the earliest row.
#include "objects/ObjModel.h"

#include <cstring>

// clang-format off
const ObjCmdInfo gCmds[] = {
    // id                 kind            keyword               count OBJ7 OBJ8
    { obj_EndId,          obj_End,        "end",                 0,   1,   0 },
    { obj_Light,          obj_PtLine,     "light",               1,   1,   0 },
    { obj_Line,           obj_PtLine,     "line",                2,   1,   0 },
    { obj_Tri,            obj_Poly,       "tri",                 3,   1,   0 },
    { obj_Quad,           obj_Poly,       "quad",                4,   1,   0 },
    { obj_Quad_Cockpit,   obj_Poly,       "quad_cockpit",        4,   1,   0 },
    { obj_Quad_Hard,      obj_Poly,       "quad_hard",           4,   1,   0 },
    { obj_Smoke_Black,    obj_Attr,       "smoke_black",         4,   1,   1 },
    { obj_Smoke_White,    obj_Attr,       "smoke_white",         4,   1,   1 },
    { obj_Movie,          obj_Poly,       "quad_movie",          4,   1,   0 },
    { obj_Polygon,        obj_Poly,       "polygon",             0,   1,   0 },
    { obj_Quad_Strip,     obj_Poly,       "quad_strip",          0,   1,   0 },
    { obj_Tri_Strip,      obj_Poly,       "tri_strip",           0,   1,   0 },
    { obj_Tri_Fan,        obj_Poly,       "tri_fan",             0,   1,   0 },
    { attr_Shade_Flat,    obj_Attr,       "ATTR_shade_flat",     0,   1,   1 },
    { attr_Shade_Smooth,  obj_Attr,       "ATTR_shade_smooth",   0,   1,   1 },
    { attr_Shade_Flat,    obj_Attr,       "shade_flat",          0,   1,   0 },
    { attr_Shade_Smooth,  obj_Attr,       "shade_smooth",        0,   1,   0 },
    { attr_Ambient_RGB,   obj_Attr,       "ATTR_ambient_rgb",    3,   1,   1 },
    { attr_Diffuse_RGB,   obj_Attr,       "ATTR_diffuse_rgb",    3,   1,   1 },
    { attr_Diffuse_RGB,   obj_Attr,       "ATTR_difuse_rgb",     3,   1,   1 }, // misspelt, found in real files
    { attr_Emission_RGB,  obj_Attr,       "ATTR_emission_rgb",   3,   1,   1 },
    { attr_Specular_RGB,  obj_Attr,       "ATTR_specular_rgb",   3,   1,   1 },
    { attr_Shiny_Rat,     obj_Attr,       "ATTR_shiny_rat",      1,   1,   1 },
    { attr_No_Depth,      obj_Attr,       "ATTR_no_depth",       0,   1,   1 },
    { attr_Depth,         obj_Attr,       "ATTR_depth",          0,   1,   1 },
    { attr_LOD,           obj_Attr,       "ATTR_LOD",            2,   1,   1 },
    { attr_Reset,         obj_Attr,       "ATTR_reset",          0,   1,   1 },
    { attr_Cull,          obj_Attr,       "ATTR_cull",           0,   1,   1 },
    { attr_NoCull,        obj_Attr,       "ATTR_no_cull",        0,   1,   1 },
    { attr_Offset,        obj_Attr,       "ATTR_poly_os",        1,   1,   1 },
    { obj8_Tris,          obj8_Indexed,   "TRIS",                2,   0,   1 },
    { obj8_Lines,         obj8_Indexed,   "LINES",               2,   0,   1 },
    { obj8_Lights,        obj8_Indexed,   "LIGHTS",              2,   0,   1 },
    { attr_No_Cockpit,    obj_Attr,       "ATTR_no_cockpit",     0,   0,   1 },
    { attr_Cockpit,       obj_Attr,       "ATTR_cockpit",        0,   0,   1 },
    { attr_No_Blend,      obj_Attr,       "ATTR_no_blend",       0,   0,   1 },
    { attr_Blend,         obj_Attr,       "ATTR_blend",          0,   0,   1 },
    { attr_No_Hard,       obj_Attr,       "ATTR_no_hard",        0,   0,   1 },
    { attr_Hard,          obj_Attr,       "ATTR_hard",           0,   0,   1 },
    { anim_Begin,         obj8_Animation, "ANIM_begin",          0,   0,   1 },
    { anim_End,           obj8_Animation, "ANIM_end",            0,   0,   1 },
    { anim_Rotate,        obj8_Animation, "ANIM_rotate",         7,   0,   1 },
    { anim_Translate,     obj8_Animation, "ANIM_trans",          8,   0,   1 },
    { attr_Max,           obj_End,        nullptr,               0,   0,   0 },
};
// clang-format on

const int32_t gCmdCount = sizeof(gCmds) / sizeof(gCmds[0]);
static_assert(sizeof(gCmds) / sizeof(gCmds[0]) == 45, "the command table has 45 rows");

int FindObjCmd(const char* keyword, bool obj8) {
    if (keyword == nullptr) return gCmdCount;
    for (int n = 0; gCmds[n].keyword != nullptr; ++n) {
        const bool valid = obj8 ? gCmds[n].inObj8 != 0 : gCmds[n].inObj7 != 0;
        if (valid && std::strcmp(gCmds[n].keyword, keyword) == 0) return n;
    }
    return gCmdCount;
}

int FindIndexForCmd(int id) {
    for (int n = 0; gCmds[n].keyword != nullptr; ++n)
        if (gCmds[n].id == id) return n;
    return gCmdCount;
}
