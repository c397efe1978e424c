// File handling shared by the kalvora-obj commands.
#include "ObjFiles.h"

#include "objects/Obj7Reader.h"
#include "objects/Obj8Reader.h"

#include <fstream>
#include <sys/stat.h>

namespace {
constexpr size_t kMaxShownLine = 40; // characters of an odd first line quoted in the note
} // namespace

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

std::string FirstLineNote(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::string line;
    char c;
    while (in.get(c) && c != '\r' && c != '\n' && line.size() < kMaxShownLine)
        line += c;
    // "A", "I" and "D" conventionally name the line-end style the file was written with.
    if (line == "A" || line == "I" || line == "D") return std::string();
    return "first line is \"" + line + "\", not A, I or D (not checked when reading)";
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
