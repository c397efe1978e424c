// Our sdk/ against the official headers: every function has the same type; every
// constant and structure size, and the offsets listed, are equal; and libsimhost
// exports every function they declare. Without the official headers (../shared)
// the comparison is not built and this skips.
#include "XPLMDataAccess.h"
#include "sdk/SdkFacts.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

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

#define FUNCTION(fn) #fn,
const char* const kOfficialFunctions[] = {
#include "SdkFunctionList.inc"
};
#undef FUNCTION

TEST(SdkOfficial, SimhostExportsEveryFunctionTheOfficialHeadersDeclare) {
    EXPECT_EQ(dlsym(RTLD_DEFAULT, "XPLMFindDataRef"), reinterpret_cast<void*>(&XPLMFindDataRef));
    std::vector<std::string> missing;
    for (const char* name : kOfficialFunctions)
        if (!dlsym(RTLD_DEFAULT, name)) missing.push_back(name);
    EXPECT_TRUE(missing.empty()) << ::testing::PrintToString(missing);
}
#else
TEST(SdkOfficial, FunctionTypesLayoutsAndConstantsMatchTheOfficialHeaders) {
    GTEST_SKIP() << "official API headers not found beside the repository (../shared/xplane-sdk)";
}
#endif
