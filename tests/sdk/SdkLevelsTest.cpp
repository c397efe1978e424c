// Structures and enumerators whose shape depends on the API level, compared
// across translation units built at different levels, and the C view of the
// layouts compared with the C++ view.
#include "sdk/SdkLayoutC.h"
#include "sdk/SdkLevels.h"

#include <gtest/gtest.h>

#include <map>

TEST(SdkLevels, MouseStateGainsTheWheelDeltaWithXPLM200) {
    EXPECT_EQ(sdk_levels::baseMouseStateSize(), 12u);
    EXPECT_EQ(sdk_levels::api21MouseStateSize(), 16u);
}

TEST(SdkLevels, WindowParametersGrowFrom72To88BytesWithThe3xFields) {
    EXPECT_EQ(sdk_levels::api21CreateWindowSize(), 72u);
    EXPECT_EQ(sdk_levels::currentCreateWindowSize(), 88u);
}

TEST(SdkLevels, MapPhasesExistOnlyBetweenXPLM200AndXPLM300) {
    EXPECT_EQ(sdk_levels::api21MapPhases(), (std::vector<int>{100, 101, 102}));
}

TEST(SdkLevels, CAndCppSeeTheSameLayouts) {
    std::size_t count = 0;
    const SdkCLayoutEntry* cEntries = sdkCLayout(&count);
    std::map<std::string, std::size_t> cLayout;
    for (std::size_t i = 0; i < count; ++i)
        cLayout[cEntries[i].expression] = cEntries[i].value;

    const auto cppLayout = sdk_levels::newestLayout();
    ASSERT_EQ(cLayout.size(), cppLayout.size());
    for (const auto& [expression, cppValue] : cppLayout) {
        auto found = cLayout.find(expression);
        ASSERT_NE(found, cLayout.end()) << expression;
        EXPECT_EQ(found->second, cppValue) << expression;
    }
}
