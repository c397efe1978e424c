// The in-memory models of the two generations of the simulator's object format
// (version 700, "OBJ7", and version 800, "OBJ8"), the point pool that holds OBJ8
// geometry, and the one table of command keywords that every reader, writer and
// converter consults. Host-free: no X-Plane header, no OpenGL.
//
// Coordinates are metres in the object's own frame; texture coordinates s, t are
// fractions of the texture (0..1); level-of-detail distances are metres from the
// viewer; animation angles are degrees.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

// ---------------------------------------------------------------------------
// OBJ7

/// A textured vertex: position and texture coordinates.
struct vec_tex {
    float v[3];  ///< x, y, z (metres)
    float st[2]; ///< s, t (texture fractions)
};

/// A coloured vertex: position and colour as written in the file.
struct vec_rgb {
    float v[3];   ///< x, y, z (metres)
    float rgb[3]; ///< red, green, blue (OBJ7 files use 0..10)
};

/// One OBJ7 command: an attribute with numbers, or a primitive with its vertices.
struct XObjCmd {
    int32_t kind = 0;              ///< kind of the command (see the kinds below)
    int32_t id = 0;                ///< command identifier (column "id" of gCmds)
    std::vector<float> values;     ///< numeric arguments of an attribute
    std::vector<vec_tex> texVerts; ///< vertices of a polygon-kind command
    std::vector<vec_rgb> rgbVerts; ///< vertices of a light or line command
};

/// One OBJ7 object: its texture name and its commands in file order.
struct XObj {
    std::string texture;       ///< texture name as written in the file
    std::vector<XObjCmd> cmds; ///< commands in file order (the closing "end" is not stored)
};

// ---------------------------------------------------------------------------
// OBJ8

/// One OBJ8 command (a plain 28-byte record).
struct XObjCmd8 {
    int32_t id;        ///< command identifier
    float params[4];   ///< numbers of an attribute command; unused slots undefined
    int32_t idxOffset; ///< first index (TRIS, LINES), first light (LIGHTS) or animation record
                       ///< (ANIM_rotate/trans)
    int32_t idxCount;  ///< number of indices (TRIS, LINES) or lights (LIGHTS)
};
static_assert(sizeof(XObjCmd8) == 28, "XObjCmd8 is a 28-byte record");

/// One level of detail: a distance range and its commands.
struct XObjLOD8 {
    float lodNear = 0.0f;       ///< nearest distance drawn (metres)
    float lodFar = 0.0f;        ///< farthest distance drawn (metres); 0 with lodNear 0 = no range given
    std::vector<XObjCmd8> cmds; ///< commands in file order
};

/// One key of an animation step.
struct XObjAnimKey8 {
    float xyz[3]; ///< rotation axis, or translation offset (metres)
    float angle;  ///< rotation angle (degrees); unused for translations
    float value;  ///< driving value at which this key applies
};

/// One animation step driven by a simulator value.
struct XObjAnim8 {
    std::string dataref; ///< name of the driving simulator value
    XObjAnimKey8 key[2]; ///< the two keys
};

/// Lexicographic order of two float sequences by the floats' own <.
template <typename T> struct lex_compare_vector {
    bool operator()(const std::vector<T>& a, const std::vector<T>& b) const {
        size_t n = a.size() < b.size() ? a.size() : b.size();
        for (size_t i = 0; i < n; ++i) {
            if (a[i] < b[i]) return true;
            if (b[i] < a[i]) return false;
        }
        return a.size() < b.size();
    }
};

/// A flat pool of fixed-width points with an exact-match index of whole points.
class ObjPointPool {
public:
    std::vector<float> data;                                                ///< all points, depth floats each
    std::map<std::vector<float>, int32_t, lex_compare_vector<float>> index; ///< exact point -> position
    int32_t depth = 8;                                                      ///< floats per point

    /// Empty pool of depth 8.
    ObjPointPool() = default;
    /// Empties data and index and sets the depth (floats per point).
    void clear(int newDepth);
    /// Resizes to `points` points (new floats 0) and empties the index.
    void resize(int points);
    /// Number of points held.
    int count() const;
    /// First float of point n (no bounds check).
    float* get(int n) { return data.data() + static_cast<size_t>(n) * depth; }
    /// First float of point n (no bounds check).
    const float* get(int n) const { return data.data() + static_cast<size_t>(n) * depth; }
    /// Copies p over point n and indexes it unless that exact point is indexed already.
    void set(int n, const float* p);
    /// Appends p (never deduplicates), indexes it unless already indexed; returns its position.
    int append(const float* p);
    /// Returns the indexed position of p, appending it when it is not indexed yet.
    int accumulate(const float* p);
};

/// One OBJ8 object: textures, shared index list, three geometry pools, animations and levels.
struct XObj8 {
    std::string texture;               ///< day texture name
    std::string textureLit;            ///< night texture name; empty when none
    std::vector<int32_t> indices;      ///< shared index list into the pools
    ObjPointPool geoTris;              ///< depth 8: x y z nx ny nz s t
    ObjPointPool geoLines;             ///< depth 6: x y z r g b
    ObjPointPool geoLights;            ///< depth 6: x y z r g b
    std::vector<XObjAnim8> animations; ///< animation records
    std::vector<XObjLOD8> lods;        ///< levels of detail (at least one after reading)
};

/// Appends x y z r g b to the pool (no deduplication); returns the new position.
int append_rgb(ObjPointPool* pool, const vec_rgb& v);
/// Appends x y z 0 0 0 s t to the pool (no deduplication); returns the new position.
int append_st(ObjPointPool* pool, const vec_tex& v);

// ---------------------------------------------------------------------------
// The command table

/// Kinds of commands.
enum {
    obj_End = 0,       ///< end of object (and the closing record)
    obj_PtLine = 1,    ///< light or line: vertices with colour
    obj_Poly = 2,      ///< polygon: vertices with texture coordinates
    obj_Attr = 3,      ///< attribute: state change with numbers
    obj8_Indexed = 4,  ///< indexed OBJ8 geometry
    obj8_Animation = 5 ///< animation
};

/// Command identifiers.
enum {
    obj_EndId = 0,
    obj_Light = 1,
    obj_Line = 2,
    obj_Tri = 3,
    obj_Quad = 4,
    obj_Quad_Hard = 5,
    obj_Quad_Cockpit = 6,
    obj_Movie = 7,
    obj_Polygon = 8,
    obj_Quad_Strip = 9,
    obj_Tri_Strip = 10,
    obj_Tri_Fan = 11,
    attr_Shade_Flat = 12,
    attr_Shade_Smooth = 13,
    attr_Ambient_RGB = 14,
    attr_Diffuse_RGB = 15,
    attr_Emission_RGB = 16,
    attr_Specular_RGB = 17,
    attr_Shiny_Rat = 18,
    attr_No_Depth = 19,
    attr_Depth = 20,
    attr_LOD = 21,
    attr_Reset = 22,
    attr_Cull = 23,
    attr_NoCull = 24,
    attr_Offset = 25,
    obj_Smoke_Black = 26,
    obj_Smoke_White = 27,
    obj8_Tris = 28,
    obj8_Lines = 29,
    obj8_Lights = 30,
    attr_No_Cockpit = 31,
    attr_Cockpit = 32,
    attr_No_Blend = 33,
    attr_Blend = 34,
    attr_Hard = 35,
    attr_No_Hard = 36,
    anim_Begin = 37,
    anim_End = 38,
    anim_Rotate = 39,
    anim_Translate = 40,
    attr_Max = 41 ///< one past the last command: "no command"
};

/// One row of the command table.
struct ObjCmdInfo {
    int32_t id;          ///< command identifier
    int32_t kind;        ///< kind of command
    const char* keyword; ///< keyword as written; null for the closing record
    int32_t count;       ///< numbers (or OBJ7 vertex lines) after the keyword; 0 = open or none
    int32_t inObj7;      ///< valid in OBJ7 files
    int32_t inObj8;      ///< valid in OBJ8 files
};

/// The command table, closing record included.
extern const ObjCmdInfo gCmds[];
/// Number of rows of gCmds including the closing record (45).
extern const int32_t gCmdCount;

/// Position in gCmds of the first row with this exact keyword valid in the given generation; gCmdCount if
/// none.
int FindObjCmd(const char* keyword, bool obj8);
/// Position in gCmds of the first row with this identifier (its first spelling); gCmdCount if none.
int FindIndexForCmd(int id);
