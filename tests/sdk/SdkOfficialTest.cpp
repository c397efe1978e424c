// Our sdk/ against the official headers: every function has the same type; every
// constant and structure size, and the offsets listed, are equal. Without the
// official headers (../shared) the comparison is not built and this skips.
#include "sdk/SdkFacts.h"

#include <gtest/gtest.h>

#if SDK_OFFICIAL_AVAILABLE
TEST(SdkOfficial, FunctionTypesLayoutsAndConstantsMatchTheOfficialHeaders) {
    EXPECT_GT(sdk_official::kFunctions.size(), 280u);
    EXPECT_GT(sdk_official::kValues.size(), 450u);
    for (const auto* list : {&sdk_ours::kFunctions, &sdk_ours::kValues}) {
        const auto& official =
            list == &sdk_ours::kFunctions ? sdk_official::kFunctions : sdk_official::kValues;
        ASSERT_EQ(list->size(), official.size());
        for (size_t i = 0; i < official.size(); ++i)
            EXPECT_EQ((*list)[i].value, official[i].value) << official[i].name;
    }
}
#else
TEST(SdkOfficial, FunctionTypesLayoutsAndConstantsMatchTheOfficialHeaders) {
    GTEST_SKIP() << "official API headers not found beside the repository (../shared/xplane-sdk)";
}
#endif
