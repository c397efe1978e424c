// PNG reader through libpng: RGB or RGBA, 8 bits per channel, bottom row first,
// corrected for a display gamma of 1.8.
#include "images/ImageFiles.h"
#include "images/ImageReading.h"
#include "utils/Utf8Path.h"

#include <png.h>

#include <csetjmp>
#include <cstdlib>
#include <cstring>

namespace {

constexpr double kScreenGamma = 1.8;
/// File gamma assumed when the file has no gAMA chunk: 1 / 1.8, so no correction.
constexpr double kDefaultFileGamma = 0.5555555555555556;
constexpr size_t kSignatureBytes = 8;

// The file being read, held in memory. Process-wide, so the reader is not reentrant.
const unsigned char* png_start_pos = nullptr;
const unsigned char* png_current_pos = nullptr;
const unsigned char* png_end_pos = nullptr;

void png_buffered_read_func(png_structp png, png_bytep out, png_size_t length) {
    if (length > static_cast<png_size_t>(png_end_pos - png_current_pos))
        png_error(png, "PNG Read Error, overran end of buffer!");
    std::memcpy(out, png_current_pos, length);
    png_current_pos += length;
}

/// Errors go straight back to the error return point, silently.
void SilentPngError(png_structp png, png_const_charp) {
    png_longjmp(png, 1);
}
/// Warnings are ignored.
void IgnorePngWarning(png_structp, png_const_charp) {}

/// Reads the whole file into a malloc'ed buffer; null on failure.
unsigned char* ReadWholeFile(const char* path, size_t* size) {
    std::FILE* f = HV_FileUtils::OpenFile(path, "rb");
    if (!f) return nullptr;
    long bytes = kalvora_images::BytesLeft(f);
    unsigned char* buf =
        bytes > 0 ? static_cast<unsigned char*>(std::malloc(static_cast<size_t>(bytes))) : nullptr;
    if (buf && std::fread(buf, 1, static_cast<size_t>(bytes), f) != static_cast<size_t>(bytes)) {
        std::free(buf);
        buf = nullptr;
    }
    std::fclose(f);
    *size = buf ? static_cast<size_t>(bytes) : 0;
    return buf;
}

/// Everything one read owns, released together whatever the outcome.
struct PngRead {
    png_structp png = nullptr;
    png_infop pngInfo = nullptr;
    unsigned char* file = nullptr;
    png_bytep* rows = nullptr;
};

void Release(PngRead& r) {
    std::free(r.rows);
    std::free(r.file);
    if (r.png) png_destroy_read_struct(&r.png, r.pngInfo ? &r.pngInfo : nullptr, nullptr);
    png_start_pos = png_current_pos = png_end_pos = nullptr;
    r = PngRead{};
}

/// Decodes r.file into `info`. Runs under libpng's error return point: it holds no
/// object with a destructor, and everything it allocates is reachable from `r` or `info`.
int Decode(PngRead& r, size_t fileSize, ImageInfo* info) {
    if (fileSize < kSignatureBytes || png_sig_cmp(r.file, 0, kSignatureBytes) != 0) return -1;
    png_set_interlace_handling(r.png);
    if (setjmp(png_jmpbuf(r.png))) return -1;
    png_set_read_fn(r.png, nullptr, png_buffered_read_func);
    png_set_sig_bytes(r.png, static_cast<int>(kSignatureBytes));
    png_current_pos += kSignatureBytes;
    png_read_info(r.png, r.pngInfo);

    png_uint_32 width = 0, height = 0;
    int bitDepth = 0, colorType = 0;
    png_get_IHDR(r.png, r.pngInfo, &width, &height, &bitDepth, &colorType, nullptr, nullptr, nullptr);
    if (width == 0 || height == 0 || width > kalvora_images::kMaxImageSide ||
        height > kalvora_images::kMaxImageSide)
        return -1;

    double fileGamma = kDefaultFileGamma;
    if (png_get_valid(r.png, r.pngInfo, PNG_INFO_gAMA)) png_get_gAMA(r.png, r.pngInfo, &fileGamma);
    png_set_gamma(r.png, kScreenGamma, fileGamma);

    if (colorType == PNG_COLOR_TYPE_PALETTE && bitDepth <= 8) png_set_expand(r.png);
    if (colorType == PNG_COLOR_TYPE_GRAY && bitDepth < 8) png_set_expand(r.png);
    if (png_get_valid(r.png, r.pngInfo, PNG_INFO_tRNS)) png_set_expand(r.png);
    if (bitDepth == 16) png_set_strip_16(r.png);
    if (bitDepth < 8) png_set_packing(r.png);
    if (colorType == PNG_COLOR_TYPE_GRAY || colorType == PNG_COLOR_TYPE_GRAY_ALPHA)
        png_set_gray_to_rgb(r.png);

    short channels = 0;
    switch (colorType) {
    case PNG_COLOR_TYPE_RGB:
    case PNG_COLOR_TYPE_GRAY:
        channels = 3;
        break;
    case PNG_COLOR_TYPE_RGB_ALPHA:
    case PNG_COLOR_TYPE_GRAY_ALPHA:
        channels = 4;
        break;
    default:
        return -1; // palette images are refused even though expansion was set up
    }
    png_read_update_info(r.png, r.pngInfo);
    // A transparency chunk on an RGB or grey image adds an alpha channel: take the
    // channel count libpng really delivers so that every row fits its buffer.
    const int delivered = png_get_channels(r.png, r.pngInfo);
    if (delivered == 4)
        channels = 4;
    else if (delivered != 3)
        return -1;
    if (png_get_rowbytes(r.png, r.pngInfo) != static_cast<size_t>(width) * channels) return -1;

    info->width = static_cast<long>(width);
    info->height = static_cast<long>(height);
    info->pad = 0;
    info->channels = channels;
    const size_t rowBytes = static_cast<size_t>(width) * channels;
    info->data = static_cast<unsigned char*>(std::malloc(rowBytes * height));
    r.rows = static_cast<png_bytep*>(std::malloc(sizeof(png_bytep) * height));
    if (!info->data || !r.rows) return -1;
    // libpng's row i (top first) is stored at row height - 1 - i: bottom row first.
    for (png_uint_32 i = 0; i < height; ++i)
        r.rows[i] = info->data + rowBytes * (height - 1 - i);
    png_read_image(r.png, r.rows);
    return 0;
}

} // namespace

int CreateBitmapFromPNG(const char* path, ImageInfo* info) {
    info->data = nullptr;
    PngRead r;
    r.png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, SilentPngError, IgnorePngWarning);
    if (r.png) r.pngInfo = png_create_info_struct(r.png);
    size_t fileSize = 0;
    if (r.pngInfo) r.file = ReadWholeFile(path, &fileSize);
    int status = -1;
    if (r.file) {
        png_start_pos = png_current_pos = r.file;
        png_end_pos = r.file + fileSize;
        status = Decode(r, fileSize, info);
    }
    Release(r);
    if (status != 0) {
        std::free(info->data);
        info->data = nullptr;
    }
    return status;
}
