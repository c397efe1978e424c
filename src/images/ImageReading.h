// Status numbers and file reading shared by the image readers (internal to images/).
#pragma once

#include "images/Bitmap.h"
#include "utils/Utf8Path.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace kalvora_images {

/// Largest side, in pixels, the readers accept; larger sizes are refused before allocating.
constexpr long kMaxImageSide = 32768;

/// The status of a failure: errno when the C library set one, else -1.
inline int FailureStatus() {
    return errno != 0 ? errno : -1;
}

/// Bytes in an open file from the current position to the end, or -1. The position is kept.
inline long BytesLeft(std::FILE* f) {
    long here = std::ftell(f);
    if (here < 0 || std::fseek(f, 0, SEEK_END) != 0) return -1;
    long end = std::ftell(f);
    if (std::fseek(f, here, SEEK_SET) != 0 || end < here) return -1;
    return end - here;
}

/// Sets the bitmap's fields and reads its height x (width x channels + pad) bytes in one
/// piece from the current position. Refused before allocating when the file is too short.
inline int ReadPixels(std::FILE* f, ImageInfo* info, long width, long height, long pad, short channels) {
    const long total = height * (width * channels + pad);
    if (BytesLeft(f) < total) return FailureStatus();
    info->width = width;
    info->height = height;
    info->pad = pad;
    info->channels = channels;
    info->data = static_cast<unsigned char*>(std::malloc(static_cast<size_t>(total)));
    if (!info->data) return ENOMEM;
    if (std::fread(info->data, 1, static_cast<size_t>(total), f) != static_cast<size_t>(total))
        return FailureStatus();
    return 0;
}

/// Opens `path`, runs `read(file, info)` and closes; on failure frees and nulls `data`.
template <typename Reader> int ReadImageFile(const char* path, ImageInfo* info, Reader read) {
    errno = 0;
    info->data = nullptr;
    std::FILE* f = HV_FileUtils::OpenFile(path, "rb");
    if (!f) return FailureStatus();
    const int status = read(f, info);
    std::fclose(f);
    if (status != 0) {
        std::free(info->data);
        info->data = nullptr;
    }
    return status;
}

} // namespace kalvora_images
