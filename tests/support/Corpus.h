// Finding the real-world test files that live beside the repository
// (../shared/corpus). A user's clone does not have them: tests that need them
// skip with a clear message instead of failing.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <sys/stat.h>

namespace kalvora_test {

/// Path of a file or folder inside the corpus (which may not exist), e.g. corpusPath("obj8/x.obj").
inline std::string corpusPath(const std::string& relative) {
    return KALVORA_CORPUS_DIR "/" + relative;
}

inline bool corpusAvailable() {
    struct stat st {};
    return stat(KALVORA_CORPUS_DIR, &st) == 0 && S_ISDIR(st.st_mode);
}

} // namespace kalvora_test

/// Use at the top of a test that reads the corpus.
#define KALVORA_REQUIRE_CORPUS()                                                                             \
    do {                                                                                                     \
        if (!kalvora_test::corpusAvailable())                                                                \
            GTEST_SKIP() << "test corpus not found at " << KALVORA_CORPUS_DIR                                \
                         << " (it lives beside the repository, in shared/corpus)";                           \
    } while (0)
