// Shared helpers of the image tests: an owning bitmap with pixel access, reference pictures.
#pragma once

#include "images/Bitmap.h"
#include "support/Pictures.h"

#include <png.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace kalvora_test {

/// An ImageInfo that frees its pixels when it goes out of scope.
struct OwnedBitmap {
    ImageInfo info{nullptr, 0, 0, 0, 0};
    OwnedBitmap() = default;
    /// A new width x height bitmap whose channel c at (x, y) is pattern(x, y, c), its padding zero.
    template <typename Pattern> OwnedBitmap(long width, long height, short channels, Pattern pattern) {
        if (CreateNewBitmap(width, height, channels, &info) != 0) return;
        std::fill(info.data, info.data + BitmapRowBytes(&info) * height, 0); // the row padding too
        for (long y = 0; y < height; ++y)
            for (long x = 0; x < width; ++x)
                for (int c = 0; c < channels; ++c)
                    pixel(x, y)[c] = static_cast<unsigned char>(pattern(x, y, c));
    }
    OwnedBitmap(const OwnedBitmap&) = delete;
    OwnedBitmap& operator=(const OwnedBitmap&) = delete;
    ~OwnedBitmap() {
        if (info.data) DestroyBitmap(&info);
    }
    ImageInfo* operator->() { return &info; }
    ImageInfo* get() { return &info; }
    /// Channel `c` of the pixel in stored row y (0 = bottom), column x.
    int at(long x, long y, int c) const {
        return info.data[y * BitmapRowBytes(&info) + x * info.channels + c];
    }
    unsigned char* pixel(long x, long y) { return info.data + y * BitmapRowBytes(&info) + x * info.channels; }
};

/// Every integer of a JSON array file, in order (empty when the file cannot be read).
inline std::vector<long> ReadJsonIntegers(const std::string& path) {
    std::ifstream in(path);
    std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    for (char& c : text)
        if (c == '[' || c == ']' || c == ',') c = ' ';
    std::istringstream words(text);
    std::vector<long> out;
    for (long v; words >> v;)
        out.push_back(v);
    return out;
}

/// An independent decode of a PNG through libpng's simplified API: `channels` bytes per
/// pixel (3 RGB or 4 RGBA), top row first, no gamma correction of 8-bit sRGB data.
struct ReferencePng {
    long width = 0, height = 0;
    int channels = 0;
    std::vector<unsigned char> pixels;
    /// Channel c of the pixel at column x, row y counted from the top.
    int at(long x, long yFromTop, int c) const { return pixels[(yFromTop * width + x) * channels + c]; }
};

inline bool ReadReferencePng(const std::string& path, int channels, ReferencePng* out) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&image, path.c_str())) return false;
    image.format = channels == 4 ? PNG_FORMAT_RGBA : PNG_FORMAT_RGB;
    out->pixels.resize(PNG_IMAGE_SIZE(image));
    if (!png_image_finish_read(&image, nullptr, out->pixels.data(), 0, nullptr)) {
        png_image_free(&image);
        return false;
    }
    out->width = image.width;
    out->height = image.height;
    out->channels = channels;
    return true;
}

} // namespace kalvora_test
