// Loading an object file whole into memory for the scanners, shared by the
// OBJ7 and OBJ8 readers.
#pragma once

#include <cstddef>
#include <vector>

/// Reads the whole file into `text` followed by one zero byte (which reads as a line end); false on any
/// failure.
bool LoadObjText(const char* path, std::vector<unsigned char>& text);
/// Copies `size` bytes into `text` followed by one zero byte.
void CopyObjText(const void* data, size_t size, std::vector<unsigned char>& text);
/// Reads the three header lines (a line not looked at, the version, "OBJ"); true when "OBJ" is there and the
/// version is `expectedVersion`. The cursor ends at the first line after the header.
bool ReadObjHeader(unsigned char*& p, const unsigned char* end, int expectedVersion);
/// A float truncated toward zero to an int; NaN gives 0 and values beyond the int range clamp to it.
int TruncToInt(float f);
