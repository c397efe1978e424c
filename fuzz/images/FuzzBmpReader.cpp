// Fuzz target: the BMP reader on arbitrary bytes.
#include "FuzzImageFile.h"
#include "images/ImageFiles.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    return FuzzImageFile(data, size, CreateBitmapFromFile);
}
