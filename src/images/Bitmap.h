// In-memory bitmaps: 8 bits per channel, 3 (RGB/BGR) or 4 (with alpha)
// channels, rows stored bottom row first. Every row is width x channels bytes
// followed by `pad` bytes. The byte order inside a pixel is the loader's:
// BMP data stays blue-green-red, PNG and TGA data is red-green-blue(-alpha).
//
// Functions report failure with a status number: 0 success, otherwise the C
// library's errno at the moment of failure (-1 when errno was 0); 12 (ENOMEM)
// from the functions that only allocate.
#pragma once

/// A bitmap in memory; `data` is owned by the user and released with DestroyBitmap.
struct ImageInfo {
    unsigned char* data; ///< pixels, rows bottom first; null after a failed load
    long width;          ///< pixels
    long height;         ///< pixels
    long pad;            ///< bytes after each row (BMP rows are multiples of 4 bytes)
    short channels;      ///< 3 or 4 bytes per pixel
};

/// Bytes of one stored row, padding included.
inline long BitmapRowBytes(const ImageInfo* info) {
    return info->width * info->channels + info->pad;
}

/// Fills the fields and allocates height x (width x channels + pad) uninitialised
/// bytes, rows padded to multiples of 4 bytes. 0, or 12 when the allocation fails.
int CreateNewBitmap(long width, long height, short channels, ImageInfo* info);
/// Sets width x height x channels bytes from the start of `data` to `value` (padding not counted).
void FillBitmap(const ImageInfo* info, char value);
/// Frees `data`; the pointer itself is left as it was.
void DestroyBitmap(const ImageInfo* info);
/// Rotates a quarter turn counter-clockwise; unchanged when the new buffer cannot be allocated.
void RotateBitmapCCW(ImageInfo* info);
/// Exchanges the first and third byte of every pixel of a 3-channel bitmap; 4 channels untouched.
void SwapRB(ImageInfo* info);
/// Magenta (255, 0, 255) colour key to alpha: 3 channels become 4, pad 0. 0 or 12.
int ConvertBitmapToAlpha(ImageInfo* info);
/// Alpha back to the magenta colour key: pixels not fully opaque become 255, 0, 255. 0 or 12.
int ConvertAlphaToBitmap(ImageInfo* info);
