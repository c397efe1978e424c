// Our sdk/ against the official headers: every function has the same
// parameter and return types; struct sizes, offsets and constants are equal. Without the
// official headers (../shared) the comparison is not built and this skips.
#include "sdk/SdkFacts.h"

#include <gtest/gtest.h>

#if SDK_OFFICIAL_AVAILABLE
namespace {
void expectSame(const std::vector<sdk_facts::Fact>& ours, const std::vector<sdk_facts::Fact>& official) {
    ASSERT_EQ(ours.size(), official.size());
    for (size_t i = 0; i < ours.size(); ++i)
        EXPECT_EQ(ours[i].value, official[i].value) << ours[i].name;
}
} // namespace

TEST(SdkOfficial, FunctionTypesLayoutsAndConstantsMatchTheOfficialHeaders) {
    EXPECT_GT(sdk_official::kFunctions.size(), 280u);
    expectSame(sdk_ours::kFunctions, sdk_official::kFunctions);
    expectSame(sdk_ours::kValues, sdk_official::kValues);
}
#else
TEST(SdkOfficial, FunctionTypesLayoutsAndConstantsMatchTheOfficialHeaders) {
    GTEST_SKIP() << "official API headers not found beside the repository (../shared/xplane-sdk)";
}
#endif
