#include "objects/HV_Mesh.h"

#include "objects/Obj7Reader.h"
#include "objects/Obj7ToObj8.h"
#include "objects/Obj8Reader.h"
#include "objects/Obj8Validate.h"
#include "objects/Obj8Writer.h"
#include "objects/ObjDraw8.h"

#include "XPLMGraphics.h"
#include "XPLMUtilities.h"
#include "utils/Utf8Path.h"

#include <GL/gl.h>

#include <cstdio>
#include <fstream>
#include <string>

namespace {

constexpr float kMeshLodDistanceM = 500.0f; ///< scene objects always draw their 500 m level

void Log(const std::string& line) {
    XPLMDebugString(("Kalvora: " + line + "\n").c_str());
}

bool FileExists(const std::string& path) {
    std::FILE* f = HV_FileUtils::OpenFile(path.c_str(), "rb");
    if (!f) return false;
    std::fclose(f);
    return true;
}

/// Copies `from` to `to` byte for byte; false when either file cannot be used.
bool CopyFile(const std::string& from, const std::string& to) {
    std::ifstream in(HV_FileUtils::PathFromUtf8(from), std::ios::binary);
    if (!in) return false;
    std::ofstream out(HV_FileUtils::PathFromUtf8(to), std::ios::binary | std::ios::trunc);
    if (!out) return false;
    out << in.rdbuf();
    out.flush();
    return static_cast<bool>(out);
}

/// Reads an OBJ7 file into `model` and rewrites the file as OBJ8, keeping the user's original as
/// "<path>7.bak" (".obj" becomes ".obj7.bak") unless a backup is there already.
bool UpgradeObj7(const char* path, XObj8& model) {
    XObj obj7;
    if (!XObjRead(path, obj7)) return false;
    Obj7ToObj8(obj7, model);
    std::string why;
    if (!XObj8Validate(model, &why)) return true; // refused by the caller; the file stays as it is
    const std::string backup = std::string(path) + "7.bak";
    if (!FileExists(backup) && !CopyFile(path, backup)) {
        Log(std::string("cannot keep a backup of ") + path + "; the OBJ7 model is used but not upgraded");
        return true;
    }
    if (!XObj8WriteReplacing(path, model))
        Log(std::string("cannot upgrade ") + path + " to OBJ8; it stays OBJ7 on disk");
    else
        Log(std::string("upgraded ") + path + " from OBJ7 to OBJ8 (original kept as " + backup + ")");
    return true;
}

} // namespace

bool HV_Mesh::LoadMesh(const char* path, int& displayListOut) {
    if (!path) return false;
    XObj8 loaded;
    if (!XObj8Read(path, loaded) && !UpgradeObj7(path, loaded)) return false;
    std::string why;
    if (!XObj8Validate(loaded, &why)) {
        Log(std::string("refusing model ") + path + ": " + why);
        return false;
    }
    model = std::move(loaded);

    // An empty display list, kept for hosts that expect one per model.
    if (displayList != 0) glDeleteLists(displayList, 1);
    displayList = glGenLists(1);
    glNewList(displayList, GL_COMPILE);
    glEndList();
    displayListOut = static_cast<int>(displayList);
    return true;
}

void HV_Mesh::DisplayMesh(bool draw, bool, int, int texture, bool lighting, float alpha, float sx, float sy,
                          float sz) {
    XPLMSetGraphicsState(0 /*fog*/, 1 /*texture units*/, lighting ? 1 : 0, 1 /*alpha test*/,
                         1 /*alpha blend*/, 1 /*depth test*/, 1 /*depth write*/);
    if (!draw) return;
    XPLMBindTexture2d(texture, 0);
    glColor4f(1.0f, 1.0f, 1.0f, alpha);
    glScalef(sx, sy, sz);
    ObjDraw8(model, kMeshLodDistanceM, nullptr, nullptr);
}
