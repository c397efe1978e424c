// The version-700 object reader. Layout of the format:
//
//   A | I | D          first line, not looked at (conventionally the line-end style)
//   700                version
//   OBJ
//   texture_name       the texture, written without its extension
//   <commands>         keyword [numbers], then for primitives their vertex lines
//   end                everything after it is ignored
//
// Attributes carry their numbers on the keyword's line. Primitives are followed by
// their vertices, which may be spread over lines freely (quad strips are commonly
// written two vertices to a line; a short primitive may stand on one line): x y z s t for polygons, x y z r g
// b for lights and lines. "//" starts a comment that runs to the end of the line.
#include "objects/Obj7Reader.h"

#include "objects/ObjFileText.h"
#include "objects/TextScanners.h"

#include <exception>
#include <string>
#include <vector>

namespace {

constexpr int kObj7Version = 700;

bool AtComment(const unsigned char* p, const unsigned char* end) {
    return end - p >= 2 && p[0] == '/' && p[1] == '/';
}

/// Reads the next number wherever it stands: across line ends and past comments.
float NextNumber(unsigned char*& p, const unsigned char* end) {
    for (;;) {
        TXT_MAP_finish_line(p, end);
        if (!AtComment(p, end)) break;
        TXT_MAP_str_scan_eoln(p, end, nullptr);
    }
    return TXT_MAP_flt_scan(p, end, false);
}

void ReadFloats(unsigned char*& p, const unsigned char* end, float* out, int n) {
    for (int i = 0; i < n; ++i)
        out[i] = NextNumber(p, end);
}

/// The number of vertices a primitive has: fixed by the table or given on its line.
int VertexCount(unsigned char*& p, const unsigned char* end, const ObjCmdInfo& row) {
    if (row.count > 0) return row.count;
    const int n = TXT_MAP_int_scan(p, end, false);
    return n > 0 ? n : 0;
}

bool ParseObj7(std::vector<unsigned char>& text, XObj& obj) {
    unsigned char* p = text.data();
    const unsigned char* end = text.data() + (text.size() - 1); // the last byte is the added zero

    if (!ReadObjHeader(p, end, kObj7Version)) return false;

    TXT_MAP_str_scan_space(p, end, &obj.texture);
    TXT_MAP_str_scan_eoln(p, end, nullptr);

    std::string word;
    while (p < end) {
        if (AtComment(p, end)) {
            TXT_MAP_str_scan_eoln(p, end, nullptr);
            continue;
        }
        TXT_MAP_str_scan_space(p, end, &word);
        const int row = FindObjCmd(word.c_str(), false);
        if (row == gCmdCount) { // unknown word: the line is passed over
            TXT_MAP_str_scan_eoln(p, end, nullptr);
            continue;
        }
        const ObjCmdInfo& info = gCmds[row];
        if (info.kind == obj_End) break;

        XObjCmd cmd;
        cmd.kind = info.kind;
        cmd.id = info.id;
        if (info.kind == obj_Attr) {
            for (int i = 0; i < info.count; ++i)
                cmd.values.push_back(TXT_MAP_flt_scan(p, end, false));
            TXT_MAP_str_scan_eoln(p, end, nullptr);
        } else {
            // The vertices may start on the keyword's own line; a comment there is skipped.
            // A truncated file ends the vertex list where the text ends.
            const int n = VertexCount(p, end, info);
            for (int i = 0; i < n && p < end; ++i) {
                // x y z then s t (polygons) or r g b (lights and lines)
                if (info.kind == obj_Poly) {
                    cmd.texVerts.emplace_back();
                    ReadFloats(p, end, cmd.texVerts.back().v, 3);
                    ReadFloats(p, end, cmd.texVerts.back().st, 2);
                } else {
                    cmd.rgbVerts.emplace_back();
                    ReadFloats(p, end, cmd.rgbVerts.back().v, 3);
                    ReadFloats(p, end, cmd.rgbVerts.back().rgb, 3);
                }
            }
            TXT_MAP_str_scan_eoln(p, end, nullptr);
        }
        obj.cmds.push_back(std::move(cmd));
    }
    return true;
}

bool ReadText(std::vector<unsigned char>& text, XObj& obj) {
    try {
        return ParseObj7(text, obj);
    } catch (const std::exception&) {
        obj.texture.clear();
        obj.cmds.clear();
        return false;
    }
}

} // namespace

bool XObjRead(const char* path, XObj& obj) {
    obj.texture.clear();
    obj.cmds.clear();
    std::vector<unsigned char> text;
    if (!LoadObjText(path, text)) return false;
    return ReadText(text, obj);
}

bool XObjReadMemory(const void* data, size_t size, XObj& obj) {
    obj.texture.clear();
    obj.cmds.clear();
    std::vector<unsigned char> text;
    try {
        CopyObjText(data, size, text);
    } catch (const std::exception&) {
        return false;
    }
    return ReadText(text, obj);
}
