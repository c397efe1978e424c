// Scaled copies of a part of one bitmap into a rectangle of another. Both
// bitmaps must have the same number of channels. Each destination pixel is
// sampled bicubically inside the source and bilinearly at its border (the
// outermost pixel on the left/bottom and two on the right/top).
#pragma once

#include "images/Bitmap.h"

/// Copies source pixels [srcLeft, srcRight) x [srcBottom, srcTop) scaled onto the
/// destination pixels [dstLeft, dstRight) x [dstBottom, dstTop).
void CopyBitmapSection(const ImageInfo* src, const ImageInfo* dst, long srcLeft, long srcBottom,
                       long srcRight, long srcTop, long dstLeft, long dstBottom, long dstRight, long dstTop);

/// Copies a source quadrilateral onto the destination rectangle [dstLeft, dstRight) x
/// [dstBottom, dstTop). The quadrilateral's corners are given as (x, y) pairs in the
/// order bottom-left (x1, y1), bottom-right (x2, y2), top-right (x3, y3), top-left
/// (x4, y4). A destination pixel at fractions (u, v) of the rectangle (0 at the
/// left/bottom pixel, 1 at the right/top one) maps to the bilinear blend of the four
/// corners, and is sampled there as CopyBitmapSection samples. Corners are source pixel
/// positions: (l, b), (r - 1, b), (r - 1, t - 1), (l, t - 1) copy what
/// CopyBitmapSection(l, b, r, t) copies.
void CopyBitmapSectionWarped(const ImageInfo* src, const ImageInfo* dst, long x1, long y1, long x2, long y2,
                             long x3, long y3, long x4, long y4, long dstLeft, long dstBottom, long dstRight,
                             long dstTop);
