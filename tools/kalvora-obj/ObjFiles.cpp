// File handling shared by the kalvora-obj commands.
#include "ObjFiles.h"

#include "objects/Obj7Reader.h"
#include "objects/Obj8Reader.h"

#include <sys/stat.h>

bool LoadObject(const std::string& path, LoadedObject& out) {
    out.format = ObjFormat::None;
    if (XObj8Read(path.c_str(), out.obj8)) {
        out.format = ObjFormat::Obj8;
        return true;
    }
    if (XObjRead(path.c_str(), out.obj7)) {
        out.format = ObjFormat::Obj7;
        return true;
    }
    return false;
}

bool SameFile(const std::string& a, const std::string& b) {
    struct stat sa {
    }, sb{};
    if (stat(a.c_str(), &sa) != 0 || stat(b.c_str(), &sb) != 0) return false;
    return sa.st_dev == sb.st_dev && sa.st_ino == sb.st_ino;
}

const char* FormatName(ObjFormat f) {
    switch (f) {
    case ObjFormat::Obj7:
        return "OBJ7";
    case ObjFormat::Obj8:
        return "OBJ8";
    default:
        return "unknown";
    }
}
