// Loading an object file of either generation, and writing one safely.
#pragma once

#include "objects/ObjModel.h"

#include <string>

/// Generation of a loaded object file.
enum class ObjFormat { None, Obj7, Obj8 };

/// An object file as read: OBJ8 when it reads as OBJ8, else OBJ7.
struct LoadedObject {
    ObjFormat format = ObjFormat::None; ///< what the file turned out to be
    XObj obj7;                          ///< the model when format is Obj7
    XObj8 obj8;                         ///< the model when format is Obj8
};

/// Reads `path` as OBJ8, falling back to OBJ7; false (format None) when neither reads.
bool LoadObject(const std::string& path, LoadedObject& out);
/// A note when the file's first line is not one of the conventional line-end letters (the readers do not
/// check it); empty otherwise.
std::string FirstLineNote(const std::string& path);
/// True when both paths name the same existing file.
bool SameFile(const std::string& a, const std::string& b);
/// "OBJ7" or "OBJ8".
const char* FormatName(ObjFormat f);
