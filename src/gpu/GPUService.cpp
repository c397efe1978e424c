#include "gpu/GPUService.h"

// TODO(GPU): bringing, warming up, charging and removing the GPU are not in place yet;
// until then nothing sets this flag except a caller that writes it directly.
bool gKLVisGPUpresent = false;
