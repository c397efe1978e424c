// Scaled and warped copies between bitmaps, sampled bicubically inside the
// source and bilinearly at its border.
#include "images/BitmapCopy.h"
#include "images/Interpolation.h"

#include <cmath>

namespace {

constexpr double kByteMax = 255.0;

/// Clamps a pixel index into 0..size-1 (coordinates inside the bitmap are unchanged).
long ClampIndex(long v, long size) {
    return v < 0 ? 0 : (v >= size ? size - 1 : v);
}

const unsigned char* PixelAt(const ImageInfo* img, long x, long y) {
    return img->data + ClampIndex(y, img->height) * BitmapRowBytes(img) +
           ClampIndex(x, img->width) * img->channels;
}

/// Samples channel values of `src` at the real position (sx, sy) into `out`.
void SamplePixel(const ImageInfo* src, double sx, double sy, unsigned char* out) {
    if (!std::isfinite(sx) || !std::isfinite(sy)) sx = sy = 0.0;
    const long ix = static_cast<long>(sx);
    const long iy = static_cast<long>(sy);
    const double fx = sx - static_cast<double>(ix);
    const double fy = sy - static_cast<double>(iy);
    const int ch = src->channels;
    if (sx >= 1.0 && sx < static_cast<double>(src->width - 2) && sy >= 1.0 &&
        sy < static_cast<double>(src->height - 2)) {
        for (int c = 0; c < ch; ++c) {
            double s[16];
            for (int r = 0; r < 4; ++r)
                for (int k = 0; k < 4; ++k)
                    s[4 * r + k] = PixelAt(src, ix - 1 + k, iy - 1 + r)[c];
            out[c] = static_cast<unsigned char>(clamp(BicubicInterpolate2d(s, fx, fy), 0.0, kByteMax));
        }
        return;
    }
    // Border: neighbours are used only when the position lies between pixels.
    const unsigned char* p00 = PixelAt(src, ix, iy);
    const unsigned char* p10 = fx > 0 ? PixelAt(src, ix + 1, iy) : nullptr;
    const unsigned char* p01 = fy > 0 ? PixelAt(src, ix, iy + 1) : nullptr;
    const unsigned char* p11 = fx > 0 && fy > 0 ? PixelAt(src, ix + 1, iy + 1) : nullptr;
    for (int c = 0; c < ch; ++c) {
        double v =
            BilinearInterpolate2d(p00[c], p10 ? p10[c] : 0.0, p01 ? p01[c] : 0.0, p11 ? p11[c] : 0.0, fx, fy);
        out[c] = static_cast<unsigned char>(clamp(v, 0.0, kByteMax));
    }
}

/// Destination steps between the first and the last pixel of a span (0 for a single pixel).
double SpanSteps(long first, long last) {
    return static_cast<double>(last - first - 1);
}

/// Position along a span: origin + length x offset / steps, in this order (0 offset when steps is 0).
double AlongSpan(double origin, double length, long offset, double steps) {
    return steps != 0.0 ? origin + length * static_cast<double>(offset) / steps : origin;
}

bool Usable(const ImageInfo* src, const ImageInfo* dst) {
    return src && dst && src->data && dst->data && src->width > 0 && src->height > 0 &&
           src->channels == dst->channels;
}

/// Calls sample(dx, dy, pixel), offsets from the rectangle's bottom left, for every destination pixel of the
/// rectangle that lies inside `dst`.
template <typename Sampler>
void ForEachDestinationPixel(const ImageInfo* dst, long dstLeft, long dstBottom, long dstRight, long dstTop,
                             Sampler sample) {
    for (long y = dstBottom; y < dstTop; ++y) {
        if (y < 0 || y >= dst->height) continue;
        for (long x = dstLeft; x < dstRight; ++x) {
            if (x < 0 || x >= dst->width) continue;
            sample(x - dstLeft, y - dstBottom, dst->data + y * BitmapRowBytes(dst) + x * dst->channels);
        }
    }
}

} // namespace

void CopyBitmapSection(const ImageInfo* src, const ImageInfo* dst, long srcLeft, long srcBottom,
                       long srcRight, long srcTop, long dstLeft, long dstBottom, long dstRight, long dstTop) {
    if (!Usable(src, dst)) return;
    const double lengthX = SpanSteps(srcLeft, srcRight), lengthY = SpanSteps(srcBottom, srcTop);
    const double stepsX = SpanSteps(dstLeft, dstRight), stepsY = SpanSteps(dstBottom, dstTop);
    ForEachDestinationPixel(
        dst, dstLeft, dstBottom, dstRight, dstTop, [&](long dx, long dy, unsigned char* out) {
            SamplePixel(src, AlongSpan(static_cast<double>(srcLeft), lengthX, dx, stepsX),
                        AlongSpan(static_cast<double>(srcBottom), lengthY, dy, stepsY), out);
        });
}

void CopyBitmapSectionWarped(const ImageInfo* src, const ImageInfo* dst, long x1, long y1, long x2, long y2,
                             long x3, long y3, long x4, long y4, long dstLeft, long dstBottom, long dstRight,
                             long dstTop) {
    if (!Usable(src, dst)) return;
    const double stepsX = SpanSteps(dstLeft, dstRight), stepsY = SpanSteps(dstBottom, dstTop);
    // Along the bottom edge (bottom-left to bottom-right) and the top edge (top-left to
    // top-right) by the column, then between the two by the row. For a rectangle this is
    // exactly CopyBitmapSection's arithmetic.
    auto blend = [&](double bl, double br, double tr, double tl, long dx, long dy) {
        const double bottom = AlongSpan(bl, br - bl, dx, stepsX);
        const double top = AlongSpan(tl, tr - tl, dx, stepsX);
        return AlongSpan(bottom, top - bottom, dy, stepsY);
    };
    ForEachDestinationPixel(dst, dstLeft, dstBottom, dstRight, dstTop,
                            [&](long dx, long dy, unsigned char* out) {
                                const double sx = blend(x1, x2, x3, x4, dx, dy);
                                const double sy = blend(y1, y2, y3, y4, dx, dy);
                                SamplePixel(src, sx, sy, out);
                            });
}
