// In-memory bitmap operations: allocation, fill, rotation, channel swaps and
// the magenta colour key.
#include "images/Bitmap.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace {

constexpr int kStatusNoMemory = ENOMEM; // 12
constexpr long kRowAlignBytes = 4;      // BMP rows are multiples of 4 bytes
constexpr long kMaxSide = 1L << 24;     // pixels; keeps every byte count far inside a long

/// Bytes needed to bring `rowBytes` up to a multiple of 4.
long RowPadFor(long rowBytes) {
    return (rowBytes + kRowAlignBytes - 1) / kRowAlignBytes * kRowAlignBytes - rowBytes;
}

/// The colour key: pure magenta marks a transparent pixel.
constexpr unsigned char kKeyRed = 255, kKeyGreen = 0, kKeyBlue = 255;
constexpr unsigned char kOpaque = 255;

} // namespace

int CreateNewBitmap(long width, long height, short channels, ImageInfo* info) {
    info->width = width;
    info->height = height;
    info->channels = channels;
    info->data = nullptr;
    // Sizes whose byte count would not fit are refused like a failed allocation.
    if (width < 0 || height < 0 || channels <= 0 || width > kMaxSide || height > kMaxSide) {
        info->pad = 0;
        return kStatusNoMemory;
    }
    info->pad = RowPadFor(width * channels);
    size_t bytes = static_cast<size_t>(height) * static_cast<size_t>(width * channels + info->pad);
    info->data = static_cast<unsigned char*>(std::malloc(bytes ? bytes : 1));
    return info->data ? 0 : kStatusNoMemory;
}

void FillBitmap(const ImageInfo* info, char value) {
    if (info->data)
        std::memset(info->data, value, static_cast<size_t>(info->width * info->height * info->channels));
}

void DestroyBitmap(const ImageInfo* info) {
    std::free(info->data);
}

void RotateBitmapCCW(ImageInfo* info) {
    if (!info->data) return;
    const long ch = info->channels;
    const long oldRow = BitmapRowBytes(info);
    const long newRow = info->height * ch + RowPadFor(info->height * ch);
    auto* rotated = static_cast<unsigned char*>(std::malloc(static_cast<size_t>(newRow * info->width) + 1));
    if (!rotated) return;
    // Stored row y, column x goes to stored row x, column (height - 1 - y).
    for (long y = 0; y < info->height; ++y) {
        const unsigned char* src = info->data + y * oldRow;
        for (long x = 0; x < info->width; ++x)
            std::memcpy(rotated + x * newRow + (info->height - 1 - y) * ch, src + x * ch,
                        static_cast<size_t>(ch));
    }
    std::free(info->data);
    info->data = rotated;
    info->pad = newRow - info->height * ch;
    long w = info->width;
    info->width = info->height;
    info->height = w;
}

void SwapRB(ImageInfo* info) {
    if (info->channels != 3 || !info->data) return;
    for (long y = 0; y < info->height; ++y) {
        unsigned char* p = info->data + y * BitmapRowBytes(info);
        for (long x = 0; x < info->width; ++x, p += 3) {
            unsigned char t = p[0];
            p[0] = p[2];
            p[2] = t;
        }
    }
}

int ConvertBitmapToAlpha(ImageInfo* info) {
    if (info->channels == 4 || !info->data) return 0;
    auto* out =
        static_cast<unsigned char*>(std::malloc(static_cast<size_t>(info->width * info->height * 4) + 1));
    if (!out) return kStatusNoMemory;
    unsigned char* d = out;
    for (long y = 0; y < info->height; ++y) {
        const unsigned char* s = info->data + y * BitmapRowBytes(info);
        for (long x = 0; x < info->width; ++x, s += 3, d += 4) {
            if (s[0] == kKeyRed && s[1] == kKeyGreen && s[2] == kKeyBlue) {
                d[0] = d[1] = d[2] = d[3] = 0;
            } else {
                d[0] = s[0];
                d[1] = s[1];
                d[2] = s[2];
                d[3] = kOpaque;
            }
        }
    }
    std::free(info->data);
    info->data = out;
    info->pad = 0;
    info->channels = 4;
    return 0;
}

int ConvertAlphaToBitmap(ImageInfo* info) {
    if (info->channels == 3 || !info->data) return 0;
    const long pad = RowPadFor(info->width * 3);
    const long srcRow = BitmapRowBytes(info);
    const long dstRow = info->width * 3 + pad;
    auto* out = static_cast<unsigned char*>(std::calloc(static_cast<size_t>(dstRow * info->height) + 1, 1));
    if (!out) return kStatusNoMemory;
    for (long y = 0; y < info->height; ++y) {
        const unsigned char* s = info->data + y * srcRow;
        unsigned char* d = out + y * dstRow;
        for (long x = 0; x < info->width; ++x, s += 4, d += 3) {
            if (s[3] == kOpaque) {
                d[0] = s[0];
                d[1] = s[1];
                d[2] = s[2];
            } else {
                d[0] = kKeyRed;
                d[1] = kKeyGreen;
                d[2] = kKeyBlue;
            }
        }
    }
    std::free(info->data);
    info->data = out;
    info->pad = pad;
    info->channels = 3;
    return 0;
}
