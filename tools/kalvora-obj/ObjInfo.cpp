// The report of "kalvora-obj info".
#include "ObjInfo.h"

#include "objects/Obj7ToObj8.h"
#include "objects/Obj8Validate.h"

#include <map>
#include <set>

namespace {

const char* KeywordOf(int id) {
    const int row = FindIndexForCmd(id);
    return row < gCmdCount ? gCmds[row].keyword : "(unknown)";
}

void PrintCounts(std::ostream& out, const std::map<std::string, int>& counts) {
    out << "commands by kind:\n";
    for (const auto& c : counts)
        out << "  " << c.first << ": " << c.second << "\n";
}

void PrintObj8(std::ostream& out, const XObj8& o) {
    out << "texture: " << (o.texture.empty() ? "(none)" : o.texture) << "\n";
    out << "lit texture: " << (o.textureLit.empty() ? "(none)" : o.textureLit) << "\n";
    out << "points: " << o.geoTris.count() << " triangle vertices, " << o.geoLines.count()
        << " line vertices, " << o.geoLights.count() << " lights; " << o.indices.size() << " indices\n";
    std::map<std::string, int> counts;
    size_t triangles = 0;
    out << "levels: " << o.lods.size() << "\n";
    for (size_t l = 0; l < o.lods.size(); ++l) {
        const XObjLOD8& lod = o.lods[l];
        out << "  " << l << ": ";
        if (lod.lodNear == 0.0f && lod.lodFar == 0.0f)
            out << "no range";
        else
            out << lod.lodNear << " m to " << lod.lodFar << " m";
        out << ", " << lod.cmds.size() << " commands\n";
        for (const XObjCmd8& c : lod.cmds) {
            ++counts[KeywordOf(c.id)];
            if (c.id == obj8_Tris && c.idxCount > 0) triangles += static_cast<size_t>(c.idxCount) / 3;
        }
    }
    out << "triangles drawn: " << triangles << "\n";
    PrintCounts(out, counts);
    std::set<std::string> datarefs;
    for (const XObjAnim8& a : o.animations)
        datarefs.insert(a.dataref);
    out << "animations: " << o.animations.size() << " steps driven by " << datarefs.size() << " datarefs\n";
    for (const std::string& d : datarefs)
        out << "  " << d << "\n";
}

void PrintObj7(std::ostream& out, const XObj& o) {
    out << "texture: " << o.texture << "\n";
    std::map<std::string, int> counts;
    size_t triangles = 0;
    int levels = 0;
    for (const XObjCmd& c : o.cmds) {
        ++counts[KeywordOf(c.id)];
        if (c.kind == obj_Poly) triangles += Obj7Triangles(c).size() / 3;
        if (c.id == attr_LOD && c.values.size() == 2) {
            out << "level " << levels++ << ": " << c.values[0] << " m to " << c.values[1] << " m\n";
        }
    }
    if (levels == 0) out << "levels: one, no range\n";
    out << "triangles: " << triangles << "\n";
    PrintCounts(out, counts);
}

} // namespace

bool ValidateLoaded(const LoadedObject& obj, std::string* why) {
    if (obj.format == ObjFormat::Obj8) return XObj8Validate(obj.obj8, why);
    XObj8 converted;
    Obj7ToObj8(obj.obj7, converted);
    return XObj8Validate(converted, why);
}

void PrintInfo(std::ostream& out, const std::string& path, const LoadedObject& obj) {
    out << path << "\n";
    out << "format: " << FormatName(obj.format)
        << (obj.format == ObjFormat::Obj8 ? " (version 800)" : " (version 700)") << "\n";
    if (obj.format == ObjFormat::Obj8)
        PrintObj8(out, obj.obj8);
    else
        PrintObj7(out, obj.obj7);
    std::string why;
    if (ValidateLoaded(obj, &why))
        out << "validation: ok\n";
    else
        out << "validation: FAILED: " << why << "\n";
}
