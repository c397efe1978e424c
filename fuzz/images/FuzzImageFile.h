// Shared body of the image-reader fuzz targets: the readers take paths, so the
// input is written to a private temporary file first.
#pragma once

#include "images/Bitmap.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>

/// Writes the input to a temporary file, runs `read` on it, checks and frees the result.
template <typename Reader> int FuzzImageFile(const uint8_t* data, size_t size, Reader read) {
    static const std::string path = "/tmp/kalvora_fuzz_image_" + std::to_string(getpid());
    std::FILE* f = std::fopen(path.c_str(), "wb");
    if (!f) return 0;
    if (size) std::fwrite(data, 1, size, f);
    std::fclose(f);
    ImageInfo info{nullptr, 0, 0, 0, 0};
    const int status = read(path.c_str(), &info);
    std::remove(path.c_str()); // a timed run ends without exit handlers: leave nothing in /tmp
    if (status == 0) {
        // Touch every byte of the bitmap so that a short buffer shows up under the sanitizer.
        const long rowBytes = BitmapRowBytes(&info);
        unsigned sum = 0;
        for (long i = 0; i < rowBytes * info.height; ++i)
            sum += info.data[i];
        if (info.width <= 0 || info.height <= 0 || (info.channels != 3 && info.channels != 4) || sum == ~0u)
            std::abort();
        DestroyBitmap(&info);
    } else if (info.data != nullptr) {
        std::abort(); // a failed load must leave nothing behind
    }
    return 0;
}
