// Pictures written for tests: one colour or any pattern, as BMP, TGA or PNG,
// and PNG files of any libpng format.
#pragma once

#include "support/Files.h"

#include <png.h>

#include <csetjmp>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace kalvora_test {

/// One pixel's colour, 0..255 a channel.
struct Rgb {
    int r, g, b;
};

/// Writes a PNG with libpng's writer: rows top first, optional gAMA and tRNS chunks.
inline bool WritePng(const std::string& path, int width, int height, int colorType, int bitDepth,
                     const std::vector<unsigned char>& rowsTopFirst, double gamma,
                     const png_color_16* trns = nullptr) {
    std::FILE* f = std::fopen(path.c_str(), "wb");
    if (!f) return false;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    if (setjmp(png_jmpbuf(png))) {
        png_destroy_write_struct(&png, &info);
        std::fclose(f);
        return false;
    }
    png_init_io(png, f);
    png_set_IHDR(png, info, width, height, bitDepth, colorType, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (gamma > 0) png_set_gAMA(png, info, gamma);
    if (trns) png_set_tRNS(png, info, nullptr, 0, const_cast<png_color_16*>(trns));
    png_write_info(png, info);
    const size_t rowBytes = png_get_rowbytes(png, info);
    for (int y = 0; y < height; ++y)
        png_write_row(png, const_cast<unsigned char*>(rowsTopFirst.data() + rowBytes * y));
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    return std::fclose(f) == 0;
}

enum class PictureFormat {
    Bmp, ///< 24-bit, uncompressed, rows bottom first
    Tga, ///< 24-bit true colour, uncompressed, rows bottom first
    Png, ///< 8-bit RGB, no gamma chunk (the pixels load unchanged)
};

/// Writes a width x height picture whose pixel at (x, y counted from the bottom) is color(x, y); false
/// when the file cannot be written.
inline bool WritePicture(const std::string& path, PictureFormat format, int width, int height,
                         const std::function<Rgb(int x, int yFromBottom)>& color) {
    auto le = [](std::string& out, unsigned value, int bytes) { // little-endian field
        for (int i = 0; i < bytes; ++i)
            out += static_cast<char>((value >> (8 * i)) & 0xFF);
    };
    if (format == PictureFormat::Png) {
        std::vector<unsigned char> rows;
        for (int y = height - 1; y >= 0; --y)
            for (int x = 0; x < width; ++x) {
                const Rgb c = color(x, y);
                rows.insert(rows.end(), {static_cast<unsigned char>(c.r), static_cast<unsigned char>(c.g),
                                         static_cast<unsigned char>(c.b)});
            }
        return WritePng(path, width, height, PNG_COLOR_TYPE_RGB, 8, rows, 0);
    }
    const int rowBytes =
        format == PictureFormat::Bmp ? (width * 3 + 3) / 4 * 4 : width * 3; // BMP rows: 4-byte multiples
    std::string bytes;
    if (format == PictureFormat::Bmp) {
        constexpr unsigned kHeaderBytes = 54, kInfoBytes = 40;
        bytes = "BM";
        le(bytes, kHeaderBytes + rowBytes * height, 4);
        le(bytes, 0, 4);
        le(bytes, kHeaderBytes, 4);
        le(bytes, kInfoBytes, 4);
        le(bytes, width, 4);
        le(bytes, height, 4);
        le(bytes, 1, 2);  // planes
        le(bytes, 24, 2); // bits per pixel
        le(bytes, 0, 4);  // no compression
        le(bytes, rowBytes * height, 4);
        bytes.append(16, '\0'); // resolution and palette: none
    } else {
        bytes.assign(18, '\0');
        bytes[2] = 2; // uncompressed true colour
        bytes.resize(12);
        le(bytes, width, 2);
        le(bytes, height, 2);
        bytes += static_cast<char>(24); // bits per pixel
        bytes += '\0';                  // origin at the bottom left
    }
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const Rgb c = color(x, y);
            bytes += {static_cast<char>(c.b), static_cast<char>(c.g), static_cast<char>(c.r)};
        }
        bytes.append(rowBytes - width * 3, '\0');
    }
    return WriteFile(path, bytes);
}

/// Writes a side x side picture of one colour.
inline bool WritePicture(const std::string& path, PictureFormat format, int side, Rgb color) {
    return WritePicture(path, format, side, side, [color](int, int) { return color; });
}

} // namespace kalvora_test
