// Fuzz target: one image reader (KALVORA_FUZZ_READER, chosen by the build) on arbitrary bytes. A bitmap
// it returns is touched byte by byte, so that a short buffer shows up under the sanitizer; a failed read
// must leave nothing behind.
#include "FuzzInputFile.h"
#include "images/ImageFiles.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const kalvora_fuzz::InputFile file(data, size);
    ImageInfo info{nullptr, 0, 0, 0, 0};
    if (KALVORA_FUZZ_READER(file.path(), &info) != 0) {
        if (info.data != nullptr) std::abort();
        return 0;
    }
    unsigned sum = 0;
    for (long i = 0; i < BitmapRowBytes(&info) * info.height; ++i)
        sum += info.data[i];
    if (info.width <= 0 || info.height <= 0 || (info.channels != 3 && info.channels != 4) || sum == ~0u)
        std::abort();
    DestroyBitmap(&info);
    return 0;
}
