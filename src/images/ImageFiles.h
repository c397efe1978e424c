// Readers and writer of image files (BMP, PNG, TGA) into ImageInfo bitmaps.
// All return a status number (0 success; errno, or -1). After a failure
// `data` is null and nothing needs to be freed.
#pragma once

#include "images/Bitmap.h"

/// Reads a 24-bit uncompressed bottom-up BMP; pixels stay blue-green-red, rows padded to 4 bytes.
int CreateBitmapFromFile(const char* path, ImageInfo* info);
/// Writes `info` as a 24-bit BMP (whatever `channels` says; convert 4-channel bitmaps first).
int WriteBitmapToFile(const ImageInfo* info, const char* path);
/// Reads a PNG (not palette-based) as RGB or RGBA, bottom row first, with gamma 1.8
/// correction. Not reentrant: uses process-wide read positions.
int CreateBitmapFromPNG(const char* path, ImageInfo* info);
/// Reads an uncompressed 24- or 32-bit true-colour TGA as RGB(A) in the file's row order.
int CreateBitmapFromTGA(const char* path, ImageInfo* info);
