// Finding the real-world test files that live beside the repository
// (../shared/corpus). A user's clone does not have them: tests that need them
// skip with a clear message instead of failing.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <sys/stat.h>

namespace kalvora_test {

/// Absolute path of the corpus folder (may not exist).
inline std::string corpusDir() {
    return KALVORA_CORPUS_DIR;
}

/// Path of a file or folder inside the corpus, e.g. corpusPath("obj8/x.obj").
inline std::string corpusPath(const std::string& relative) {
    return corpusDir() + "/" + relative;
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
            GTEST_SKIP() << "test corpus not found at " << kalvora_test::corpusDir()                         \
                         << " (it lives beside the repository, in shared/corpus)";                           \
    } while (0)
