// The version-800 object writer. Lines end with a single CR; numbers are printed
// with "%f" (six decimals), which the reader reads back to the same model.
// XObj8Write writes the file in place; XObj8WriteReplacing never leaves a
// half-written model behind.
#include "objects/Obj8Writer.h"

#include "objects/ReplaceFile.h"
#include "utils/Utf8Path.h"

#include <cstdio>

namespace {

constexpr int kIndicesPerIdx10 = 10; // IDX10 carries ten indices

void WritePool(std::FILE* f, const char* keyword, const ObjPointPool& pool, int floats) {
    const int n = pool.count();
    for (int i = 0; i < n; ++i) {
        const float* pt = pool.get(i);
        std::fputs(keyword, f);
        for (int k = 0; k < floats && k < pool.depth; ++k)
            std::fprintf(f, " %f", pt[k]);
        std::fputc('\r', f);
    }
}

void WriteCommand(std::FILE* f, const XObj8& obj, const XObjCmd8& cmd) {
    switch (cmd.id) {
    case obj8_Tris:
        std::fprintf(f, "TRIS %d %d\r", cmd.idxOffset, cmd.idxCount);
        return;
    case obj8_Lines:
        std::fprintf(f, "LINES %d %d\r", cmd.idxOffset, cmd.idxCount);
        return;
    case obj8_Lights:
        std::fprintf(f, "LIGHTS %d %d\r", cmd.idxOffset, cmd.idxCount);
        return;
    case anim_Rotate:
    case anim_Translate: {
        // A command pointing at no record has nothing to write.
        if (cmd.idxOffset < 0 || static_cast<size_t>(cmd.idxOffset) >= obj.animations.size()) return;
        const XObjAnim8& a = obj.animations[cmd.idxOffset];
        if (cmd.id == anim_Rotate)
            std::fprintf(f, "ANIM_rotate %f %f %f %f %f %f %f %s\r", a.key[0].xyz[0], a.key[0].xyz[1],
                         a.key[0].xyz[2], a.key[0].angle, a.key[1].angle, a.key[0].value, a.key[1].value,
                         a.dataref.c_str());
        else
            std::fprintf(f, "ANIM_trans %f %f %f %f %f %f %f %f %s\r", a.key[0].xyz[0], a.key[0].xyz[1],
                         a.key[0].xyz[2], a.key[1].xyz[0], a.key[1].xyz[1], a.key[1].xyz[2], a.key[0].value,
                         a.key[1].value, a.dataref.c_str());
        return;
    }
    default: {
        const int row = FindIndexForCmd(cmd.id);
        if (row == gCmdCount) return;
        std::fputs(gCmds[row].keyword, f);
        for (int i = 0; i < gCmds[row].count && i < 4; ++i)
            std::fprintf(f, " %f", cmd.params[i]);
        std::fputc('\r', f);
    }
    }
}

} // namespace

bool XObj8Write(const char* path, const XObj8& obj) {
    if (path == nullptr) return false;
    std::FILE* f = HV_FileUtils::OpenFile(path, "w");
    if (!f) return false;

    std::fprintf(f, "%c\r800\rOBJ\r\r", 'A');
    std::fprintf(f, "TEXTURE %s\r", obj.texture.c_str());
    if (!obj.textureLit.empty()) std::fprintf(f, "TEXTURE_LIT %s\r", obj.textureLit.c_str());
    std::fprintf(f, "POINT_COUNTS %d %d %d %d\r", obj.geoTris.count(), obj.geoLines.count(),
                 obj.geoLights.count(), static_cast<int>(obj.indices.size()));

    WritePool(f, "VT", obj.geoTris, 8);
    WritePool(f, "VLINE", obj.geoLines, 6);
    WritePool(f, "VLIGHT", obj.geoLights, 6);

    const size_t n = obj.indices.size();
    const size_t full = n - n % kIndicesPerIdx10;
    for (size_t i = 0; i < full; i += kIndicesPerIdx10) {
        std::fputs("IDX10", f);
        for (size_t k = 0; k < kIndicesPerIdx10; ++k)
            std::fprintf(f, " %d", obj.indices[i + k]);
        std::fputc('\r', f);
    }
    for (size_t i = full; i < n; ++i)
        std::fprintf(f, "IDX %d\r", obj.indices[i]);

    for (const XObjLOD8& lod : obj.lods) {
        if (lod.lodFar != 0.0f) std::fprintf(f, "ATTR_LOD %f %f\r", lod.lodNear, lod.lodFar);
        for (const XObjCmd8& cmd : lod.cmds)
            WriteCommand(f, obj, cmd);
    }
    std::fclose(f);
    return true;
}

bool XObj8WriteReplacing(const char* path, const XObj8& obj) {
    return ReplaceFile(path, [&obj](const char* temp) { return XObj8Write(temp, obj); });
}
