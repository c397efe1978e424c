// Reading object files of format version 800 into an XObj8.
#pragma once

#include "objects/ObjModel.h"

#include <cstddef>

/// Reads a version-800 object file; true when it was read whole and has a version-800 header.
bool XObj8Read(const char* path, XObj8& obj);
/// The same reading from `size` bytes in memory (the bytes are copied).
bool XObj8ReadMemory(const void* data, size_t size, XObj8& obj);
