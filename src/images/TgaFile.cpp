// Uncompressed true-colour TGA reader (24 or 32 bits, no identifier, no colour map).
#include "images/ImageFiles.h"
#include "images/ImageReading.h"

#include <cstdlib>
#include <cstring>

using kalvora_images::FailureStatus;

namespace {

/// The only accepted start: no identifier, no colour map, uncompressed true colour, origin 0, 0.
constexpr unsigned char kTgaHeaderStart[12] = {0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0};
constexpr size_t kTgaSizeBytes = 6; // width (2), height (2), bits per pixel, descriptor

int ReadTga(std::FILE* f, ImageInfo* info) {
    unsigned char start[sizeof kTgaHeaderStart];
    if (std::fread(start, 1, sizeof start, f) != sizeof start) return FailureStatus();
    if (std::memcmp(start, kTgaHeaderStart, sizeof start) != 0) return FailureStatus();
    unsigned char size[kTgaSizeBytes];
    if (std::fread(size, 1, kTgaSizeBytes, f) != kTgaSizeBytes) return FailureStatus();
    const long width = size[1] * 256L + size[0];
    const long height = size[3] * 256L + size[2];
    const int bits = size[4]; // the descriptor, size[5], is not looked at: rows keep the file's order
    if ((bits != 24 && bits != 32) || width < 1 || height < 1) return FailureStatus();
    const short channels = static_cast<short>(bits / 8);
    const int status = kalvora_images::ReadPixels(f, info, width, height, 0, channels);
    if (status != 0) return status;
    const long total = width * height * channels;
    // Blue-green-red(-alpha) in the file, red-green-blue(-alpha) in memory.
    for (unsigned char* p = info->data; p < info->data + total; p += channels) {
        unsigned char t = p[0];
        p[0] = p[2];
        p[2] = t;
    }
    return 0;
}

} // namespace

int CreateBitmapFromTGA(const char* path, ImageInfo* info) {
    return kalvora_images::ReadImageFile(path, info, ReadTga);
}
