/* Sizes and offsets of the API's structures as a C translation unit sees them. */
#ifndef SdkLayoutC_h
#define SdkLayoutC_h

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/// One size or offset: the C expression that produced it, and its value in bytes.
typedef struct {
    const char* expression;
    size_t value;
} SdkCLayoutEntry;

/// The entries measured by the C translation unit (the API levels simhost uses).
const SdkCLayoutEntry* sdkCLayout(size_t* outCount);

#ifdef __cplusplus
}
#endif

#endif /* SdkLayoutC_h */
