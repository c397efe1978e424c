// The version-800 object reader. It scans the whole file in place, line by line,
// with the TXT_MAP_ scanners. Geometry lines beyond the counts that POINT_COUNTS
// declared end the reading early with a success result: everything read before
// the surplus line is kept, the rest of the file is ignored.
#include "objects/Obj8Reader.h"

#include "objects/ObjFileText.h"
#include "objects/TextScanners.h"

#include <algorithm>
#include <exception>
#include <vector>

namespace {

constexpr int kObj8Version = 800;
constexpr int kVertexFloats = 8;     // VT: x y z nx ny nz s t
constexpr int kColourFloats = 6;     // VLINE, VLIGHT: x y z r g b
constexpr int kIndicesPerIdx10 = 10; // IDX10 carries ten indices
constexpr int kRotateFloats = 7;     // ANIM_rotate: x y z angle1 angle2 value1 value2
constexpr int kTranslateFloats = 8;  // ANIM_trans: x1 y1 z1 x2 y2 z2 value1 value2
constexpr int kParamSlots = 4;       // XObjCmd8::params

void EmptyObject(XObj8& obj) {
    obj.texture.clear();
    obj.textureLit.clear();
    obj.indices.clear();
    obj.animations.clear();
    obj.lods.clear();
    obj.geoTris.clear(8);
    obj.geoLines.clear(6);
    obj.geoLights.clear(6);
}

/// A declared count, never negative and never more than the text could hold
/// (every point or index takes at least one byte of the file).
int DeclaredCount(float declared, size_t textBytes) {
    const int n = TruncToInt(declared);
    if (n < 0) return 0;
    return static_cast<size_t>(n) > textBytes ? static_cast<int>(std::min<size_t>(textBytes, 0x7fffffff)) : n;
}

/// Reads one point into the pool at its counter; false when the declared count is reached.
bool ReadPoint(unsigned char*& p, const unsigned char* end, ObjPointPool& pool, int& counter, int declared,
               int floats) {
    if (counter >= declared) return false;
    float point[kVertexFloats] = {};
    for (int i = 0; i < floats; ++i)
        point[i] = TXT_MAP_flt_scan(p, end, false);
    pool.set(counter++, point);
    return true;
}

/// Scans the text after the caller has emptied `obj`.
bool ParseObj8(std::vector<unsigned char>& text, XObj8& obj) {
    unsigned char* p = text.data();
    const unsigned char* end = text.data() + (text.size() - 1); // the last byte is the added zero

    if (!ReadObjHeader(p, end, kObj8Version)) return false;

    obj.lods.emplace_back();

    const size_t textBytes = text.size() - 1;
    int trisDeclared = 0, linesDeclared = 0, lightsDeclared = 0, indicesDeclared = 0;
    int trisRead = 0, linesRead = 0, lightsRead = 0, indicesRead = 0;
    XObjCmd8 cmd{};   // scratch command, reused for every line
    XObjAnim8 anim{}; // scratch animation record (a translation leaves its angles as they were)
    std::string word;

    while (p < end) {
        if (TXT_MAP_str_match_space(p, end, "TEXTURE", false)) {
            TXT_MAP_str_scan_space(p, end, &obj.texture);
        } else if (TXT_MAP_str_match_space(p, end, "TEXTURE_LIT", false)) {
            TXT_MAP_str_scan_space(p, end, &obj.textureLit);
        } else if (TXT_MAP_str_match_space(p, end, "POINT_COUNTS", false)) {
            trisDeclared = DeclaredCount(TXT_MAP_flt_scan(p, end, false), textBytes);
            linesDeclared = DeclaredCount(TXT_MAP_flt_scan(p, end, false), textBytes);
            lightsDeclared = DeclaredCount(TXT_MAP_flt_scan(p, end, false), textBytes);
            indicesDeclared = DeclaredCount(TXT_MAP_flt_scan(p, end, false), textBytes);
            obj.indices.resize(static_cast<size_t>(indicesDeclared), 0);
            obj.geoTris.clear(8);
            obj.geoTris.resize(trisDeclared);
            obj.geoLines.clear(6);
            obj.geoLines.resize(linesDeclared);
            obj.geoLights.clear(6);
            obj.geoLights.resize(lightsDeclared);
        } else if (TXT_MAP_str_match_space(p, end, "VT", false)) {
            if (!ReadPoint(p, end, obj.geoTris, trisRead, trisDeclared, kVertexFloats)) break;
        } else if (TXT_MAP_str_match_space(p, end, "VLINE", false)) {
            if (!ReadPoint(p, end, obj.geoLines, linesRead, linesDeclared, kColourFloats)) break;
        } else if (TXT_MAP_str_match_space(p, end, "VLIGHT", false)) {
            if (!ReadPoint(p, end, obj.geoLights, lightsRead, lightsDeclared, kColourFloats)) break;
        } else if (TXT_MAP_str_match_space(p, end, "IDX", false)) {
            if (indicesRead >= indicesDeclared) break;
            obj.indices[indicesRead++] = TruncToInt(TXT_MAP_flt_scan(p, end, false));
        } else if (TXT_MAP_str_match_space(p, end, "IDX10", false)) {
            if (indicesRead >= indicesDeclared) break;
            for (int i = 0; i < kIndicesPerIdx10; ++i) {
                const int value = TruncToInt(TXT_MAP_flt_scan(p, end, false));
                if (indicesRead < indicesDeclared) obj.indices[indicesRead++] = value; // never past the list
            }
        } else if (TXT_MAP_str_match_space(p, end, "TRIS", false)) {
            cmd.id = obj8_Tris;
            cmd.idxOffset = TXT_MAP_int_scan(p, end, false);
            cmd.idxCount = TXT_MAP_int_scan(p, end, false);
            obj.lods.back().cmds.push_back(cmd);
        } else if (TXT_MAP_str_match_space(p, end, "LINES", false)) {
            cmd.id = obj8_Lines;
            cmd.idxOffset = TXT_MAP_int_scan(p, end, false);
            cmd.idxCount = TXT_MAP_int_scan(p, end, false);
            obj.lods.back().cmds.push_back(cmd);
        } else if (TXT_MAP_str_match_space(p, end, "LIGHTS", false)) {
            cmd.id = obj8_Lights;
            cmd.idxOffset = TXT_MAP_int_scan(p, end, false);
            cmd.idxCount = TXT_MAP_int_scan(p, end, false);
            obj.lods.back().cmds.push_back(cmd);
        } else if (TXT_MAP_str_match_space(p, end, "ATTR_LOD", true)) {
            if (obj.lods.back().lodFar != 0.0f) obj.lods.emplace_back();
            obj.lods.back().lodNear = TXT_MAP_flt_scan(p, end, false);
            obj.lods.back().lodFar = TXT_MAP_flt_scan(p, end, false);
        } else if (TXT_MAP_str_match_space(p, end, "ANIM_rotate", false)) {
            float v[kRotateFloats];
            for (float& f : v)
                f = TXT_MAP_flt_scan(p, end, false);
            for (XObjAnimKey8& key : anim.key)
                std::copy(v, v + 3, key.xyz);
            anim.key[0].angle = v[3];
            anim.key[1].angle = v[4];
            anim.key[0].value = v[5];
            anim.key[1].value = v[6];
            TXT_MAP_str_scan_space(p, end, &anim.dataref);
            cmd.id = anim_Rotate;
            cmd.idxOffset = static_cast<int32_t>(obj.animations.size());
            obj.lods.back().cmds.push_back(cmd);
            obj.animations.push_back(anim);
        } else if (TXT_MAP_str_match_space(p, end, "ANIM_trans", false)) {
            float v[kTranslateFloats];
            for (float& f : v)
                f = TXT_MAP_flt_scan(p, end, false);
            std::copy(v, v + 3, anim.key[0].xyz);
            std::copy(v + 3, v + 6, anim.key[1].xyz);
            anim.key[0].value = v[6];
            anim.key[1].value = v[7];
            TXT_MAP_str_scan_space(p, end, &anim.dataref);
            cmd.id = anim_Translate;
            cmd.idxOffset = static_cast<int32_t>(obj.animations.size());
            obj.lods.back().cmds.push_back(cmd);
            obj.animations.push_back(anim);
        } else if (TXT_MAP_str_match_space(p, end, "ANIM_begin", false)) {
            cmd.id = anim_Begin;
            obj.lods.back().cmds.push_back(cmd);
        } else if (TXT_MAP_str_match_space(p, end, "ANIM_end", false)) {
            cmd.id = anim_End;
            obj.lods.back().cmds.push_back(cmd);
        } else {
            TXT_MAP_str_scan_space(p, end, &word);
            const int row = FindObjCmd(word.c_str(), true);
            if (row != gCmdCount) {
                cmd.id = gCmds[row].id;
                // Only rows reached here without their own branch above can have more
                // numbers than parameter slots; the surplus is read and dropped.
                for (int i = 0; i < gCmds[row].count; ++i) {
                    const float f = TXT_MAP_flt_scan(p, end, false);
                    if (i < kParamSlots) cmd.params[i] = f;
                }
                obj.lods.back().cmds.push_back(cmd);
            }
        }
        TXT_MAP_str_scan_eoln(p, end, nullptr);
    }
    return true;
}

bool ReadText(std::vector<unsigned char>& text, XObj8& obj) {
    try {
        return ParseObj8(text, obj);
    } catch (const std::exception&) {
        // Out of memory while storing the model: refuse the file rather than keep half of it.
        EmptyObject(obj);
        return false;
    }
}

} // namespace

bool XObj8Read(const char* path, XObj8& obj) {
    EmptyObject(obj);
    std::vector<unsigned char> text;
    if (!LoadObjText(path, text)) return false;
    return ReadText(text, obj);
}

bool XObj8ReadMemory(const void* data, size_t size, XObj8& obj) {
    EmptyObject(obj);
    std::vector<unsigned char> text;
    try {
        CopyObjText(data, size, text);
    } catch (const std::exception&) {
        return false;
    }
    return ReadText(text, obj);
}
