// 24-bit uncompressed BMP: reader and writer.
#include "images/ImageFiles.h"
#include "images/ImageReading.h"
#include "utils/Utf8Path.h"

#include <cstdint>
#include <cstdlib>

using kalvora_images::FailureStatus;

namespace {

constexpr uint16_t kBmpMagic = 19778; // "BM" read as a little-endian 16-bit number
constexpr uint32_t kFileHeaderBytes = 14;
constexpr uint32_t kInfoHeaderBytes = 40;
constexpr uint32_t kHeaderBytes = kFileHeaderBytes + kInfoHeaderBytes; // 54
constexpr uint16_t kBitsPerPixel = 24;

uint32_t Le32(const unsigned char* p) {
    return p[0] | p[1] << 8 | p[2] << 16 | static_cast<uint32_t>(p[3]) << 24;
}
uint16_t Le16(const unsigned char* p) {
    return static_cast<uint16_t>(p[0] | p[1] << 8);
}
void PutLe32(unsigned char* p, uint32_t v) {
    for (int i = 0; i < 4; ++i)
        p[i] = static_cast<unsigned char>(v >> (8 * i));
}
void PutLe16(unsigned char* p, uint16_t v) {
    p[0] = static_cast<unsigned char>(v);
    p[1] = static_cast<unsigned char>(v >> 8);
}

/// Reads the bitmap after the headers; returns the status. `f` stays open.
int ReadBmp(std::FILE* f, ImageInfo* info) {
    unsigned char h[kHeaderBytes];
    if (std::fread(h, 1, kHeaderBytes, f) != kHeaderBytes) return FailureStatus();
    const uint16_t magic = Le16(h);
    const uint32_t fileSize = Le32(h + 2);
    const uint32_t dataOffset = Le32(h + 10);
    const int32_t width = static_cast<int32_t>(Le32(h + 18));
    const int32_t height = static_cast<int32_t>(Le32(h + 22)); // negative = top-down, refused
    const uint16_t bits = Le16(h + 28);
    if (magic != kBmpMagic || bits != kBitsPerPixel || width <= 0 || height <= 0) return FailureStatus();
    // Sides bounded first: their product times 3 then fits 64 bits (2^15 * 2^15 * 3 < 2^32).
    if (width > kalvora_images::kMaxImageSide || height > kalvora_images::kMaxImageSide)
        return FailureStatus();
    // The header's own sizes must leave room for the pixels.
    const int64_t pixelBytes = int64_t{height} * width * 3;
    if (int64_t{fileSize} - int64_t{dataOffset} < pixelBytes) return FailureStatus();
    const long pad = (width * 3L + 3) / 4 * 4 - width * 3L;
    // Pixels follow the 54 header bytes directly: the header's data offset is not used to seek.
    return kalvora_images::ReadPixels(f, info, width, height, pad, 3);
}

} // namespace

int CreateBitmapFromFile(const char* path, ImageInfo* info) {
    return kalvora_images::ReadImageFile(path, info, ReadBmp);
}

int WriteBitmapToFile(const ImageInfo* info, const char* path) {
    errno = 0;
    std::FILE* f = HV_FileUtils::OpenFile(path, "wb");
    if (!f) return FailureStatus();
    const uint32_t rowBytes = static_cast<uint32_t>(info->width * 3 + info->pad);
    const uint32_t dataBytes = rowBytes * static_cast<uint32_t>(info->height);
    unsigned char h[kHeaderBytes] = {};
    PutLe16(h, kBmpMagic);
    PutLe32(h + 2, dataBytes + kHeaderBytes);
    PutLe32(h + 10, kHeaderBytes);
    PutLe32(h + 14, kInfoHeaderBytes);
    PutLe32(h + 18, static_cast<uint32_t>(info->width));
    PutLe32(h + 22, static_cast<uint32_t>(info->height));
    PutLe16(h + 26, 1); // planes
    PutLe16(h + 28, kBitsPerPixel);
    PutLe32(h + 34, static_cast<uint32_t>(info->width * info->height * 3)); // image size, padding not counted
    bool ok = std::fwrite(h, 1, kHeaderBytes, f) == kHeaderBytes &&
              std::fwrite(info->data, 1, dataBytes, f) == dataBytes;
    int status = ok ? 0 : FailureStatus();
    if (std::fclose(f) != 0 && status == 0) status = FailureStatus();
    return status;
}
