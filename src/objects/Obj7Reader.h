// Reading object files of format version 700 into an XObj.
#pragma once

#include "objects/ObjModel.h"

#include <cstddef>

/// Reads a version-700 object file; false on an unreadable file or a bad header.
bool XObjRead(const char* path, XObj& obj);
/// The same reading from `size` bytes in memory (the bytes are copied).
bool XObjReadMemory(const void* data, size_t size, XObj& obj);
