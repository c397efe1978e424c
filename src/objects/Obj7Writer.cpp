// The version-700 object writer. Lines end with a single CR, as the "A" on the
// first line announces (the same style as the OBJ8 writer). Numbers are written
// in the shortest form that the readers' scanner turns back into the very same
// float, so a written file reads back to an identical XObj. The text goes to a
// temporary file beside the target, renamed over it once complete, so a failed
// write never leaves a half-written model.
#include "objects/Obj7Writer.h"

#include "objects/ReplaceFile.h"
#include "objects/TextScanners.h"
#include "utils/Utf8Path.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

constexpr const char* kNoTexture = "none";
constexpr int kMaxDecimals = 9;        // beyond this a float has no more digits to give
constexpr int kMaxNearbyDecimals = 12; // files written by other tools carry up to ten
constexpr int kNearbySteps = 64;       // units in the last place tried on either side
constexpr double kMaxScaled = 9.0e17;  // digits that still fit a long long

/// First row of the table with this identifier that is valid in OBJ7 files; null when none.
const ObjCmdInfo* Obj7Row(int id) {
    for (int n = 0; gCmds[n].keyword != nullptr; ++n)
        if (gCmds[n].id == id && gCmds[n].inObj7) return &gCmds[n];
    return nullptr;
}

/// True when the scanner reads `text` as exactly `f`.
bool ScansTo(const char* text, float f) {
    std::vector<unsigned char> bytes(text, text + std::strlen(text));
    unsigned char* p = bytes.data();
    return TXT_MAP_flt_scan(p, p + bytes.size(), false) == f;
}

/// `digits` written with `decimals` digits after the point, e.g. (false, 5, 2) gives "0.05".
std::string FixedPoint(bool negative, long long digits, int decimals) {
    std::string s = std::to_string(digits);
    if (s.size() <= static_cast<size_t>(decimals))
        s.insert(0, static_cast<size_t>(decimals) + 1 - s.size(), '0');
    if (decimals > 0) s.insert(s.size() - static_cast<size_t>(decimals), 1, '.');
    return negative ? "-" + s : s;
}

void WriteNumbers(std::string& out, const float* v, int n) {
    for (int i = 0; i < n; ++i) {
        out += i == 0 ? '\t' : ' ';
        out += FormatObjNumber(v[i]);
    }
}

void WriteCommand(std::string& out, const XObjCmd& cmd) {
    const ObjCmdInfo* row = Obj7Row(cmd.id);
    if (row == nullptr || row->kind == obj_End) return; // "end" is written once, last
    out += row->keyword;
    if (row->kind == obj_Attr) {
        std::vector<float> values(cmd.values);
        values.resize(static_cast<size_t>(row->count), 0.0f);
        for (float v : values)
            out += " " + FormatObjNumber(v);
        out += '\r';
        return;
    }
    if (row->kind == obj_Poly) {
        // Fixed-size primitives always get their exact number of vertices; open ones say theirs.
        std::vector<vec_tex> verts(cmd.texVerts);
        if (row->count > 0)
            verts.resize(static_cast<size_t>(row->count), vec_tex{});
        else
            out += " " + std::to_string(verts.size());
        out += '\r';
        for (const vec_tex& v : verts) {
            WriteNumbers(out, v.v, 3);
            WriteNumbers(out, v.st, 2);
            out += '\r';
        }
        return;
    }
    std::vector<vec_rgb> verts(cmd.rgbVerts);
    verts.resize(static_cast<size_t>(row->count), vec_rgb{});
    out += '\r';
    for (const vec_rgb& v : verts) {
        WriteNumbers(out, v.v, 3);
        WriteNumbers(out, v.rgb, 3);
        out += '\r';
    }
}

} // namespace

std::string FormatObjNumber(float f) {
    char buf[64];
    if (!std::isfinite(f)) return "0";
    for (int decimals = 0; decimals <= kMaxDecimals; ++decimals) {
        const int n = std::snprintf(buf, sizeof(buf), "%.*f", decimals, static_cast<double>(f));
        if (n <= 0 || n >= static_cast<int>(sizeof(buf))) break;
        if (ScansTo(buf, f)) return buf;
    }
    // The scanner rounds its mantissa to single precision digit by digit, so some floats are
    // only reached from a decimal a few units away from the correctly rounded one: look nearby.
    for (int decimals = 1; decimals <= kMaxNearbyDecimals; ++decimals) {
        const double scaled = std::fabs(static_cast<double>(f)) * std::pow(10.0, decimals);
        if (scaled > kMaxScaled) break;
        const long long base = std::llround(scaled);
        for (int step = 0; step <= kNearbySteps; ++step)
            for (int sign : {1, -1}) {
                const long long digits = base + sign * step;
                if (digits < 0) continue;
                const std::string text = FixedPoint(f < 0.0f, digits, decimals);
                if (ScansTo(text.c_str(), f)) return text;
            }
    }
    std::snprintf(buf, sizeof(buf), "%f", static_cast<double>(f));
    return buf;
}

bool XObjWrite(const char* path, const XObj& obj) {
    if (path == nullptr) return false;
    std::string text = "A\r700\rOBJ\r\r";
    // The texture line cannot be empty (the reader would take the next word for it);
    // "none" is the name OBJ7 files conventionally give to no texture.
    text += (obj.texture.empty() ? std::string(kNoTexture) : obj.texture) + "\r\r";
    for (const XObjCmd& cmd : obj.cmds)
        WriteCommand(text, cmd);
    text += "end\r";

    return ReplaceFile(path, [&text](const char* temp) {
        std::FILE* f = HV_FileUtils::OpenFile(temp, "wb");
        if (!f) return false;
        const bool written = std::fwrite(text.data(), 1, text.size(), f) == text.size();
        return std::fclose(f) == 0 && written;
    });
}
