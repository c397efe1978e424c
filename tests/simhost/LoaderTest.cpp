// Loading real plug-in files: attribution inside a dlopen()ed plug-in, messages
// to it, what it leaves behind at unload, and a load that must fail.
#include "SimhostFixture.h"

#include "XPLMDataAccess.h"
#include "XPLMPlugin.h"

namespace {

using Loader = SimhostTest;

int readInt(const char* name) {
    return XPLMGetDatai(XPLMFindDataRef(name));
}

TEST_F(Loader, APluginSeesItsOwnIdFramesAndMessages) {
    std::string error;
    const int probe = host->loadPlugin(SIMHOST_PROBE_PLUGIN, &error);
    ASSERT_GT(probe, 0) << error;
    EXPECT_EQ(XPLMFindPluginBySignature("simhost.test.probe"), probe);
    EXPECT_EQ(readInt("simhost_test/my_id"), probe); // its accessor runs as the probe
    host->runFrames(5);
    EXPECT_EQ(readInt("simhost_test/frames"), 5);

    host->sendMessage(probe, 0x01000000);
    EXPECT_EQ(readInt("simhost_test/last_message"), 0x01000000);
    EXPECT_EQ(readInt("simhost_test/last_from"), 0);
    XPLMSendMessageToPlugin(XPLM_NO_PLUGIN_ID, 105, nullptr);
    EXPECT_EQ(readInt("simhost_test/last_message"), 105);
    EXPECT_EQ(readInt("simhost_test/last_from"), me);

    host->disablePlugin(probe);
    host->runFrames(3);
    EXPECT_EQ(readInt("simhost_test/frames"), 0); // a disabled owner's datarefs read 0
    host->enablePlugin(probe);
    EXPECT_EQ(readInt("simhost_test/frames"), 5); // and its loops did not run meanwhile
}

TEST_F(Loader, UnloadReportsWhatThePluginLeftAndDropsIt) {
    const int probe = host->loadPlugin(SIMHOST_PROBE_PLUGIN);
    ASSERT_GT(probe, 0);
    host->unloadPlugin(probe);
    const auto& left = host->leftoversAtLastUnload();
    ASSERT_EQ(left.size(), 2u);
    EXPECT_EQ(left[0], "dataref simhost_test/last_from");
    EXPECT_EQ(left[1].rfind("flight loop ", 0), 0u);
    EXPECT_EQ(readInt("simhost_test/last_from"), 0);
    EXPECT_NE(XPLMFindDataRef("simhost_test/last_from"), nullptr); // an orphan, still found
    host->runFrames(2);                                            // its loop is gone with its code

    // Loaded again, it adopts its orphaned datarefs.
    const int again = host->loadPlugin(SIMHOST_PROBE_PLUGIN);
    ASSERT_GT(again, probe);
    host->runFrames(1);
    EXPECT_EQ(readInt("simhost_test/my_id"), again);
}

TEST_F(Loader, AMissingApiFunctionFailsTheLoadLoudly) {
    std::string error;
    EXPECT_EQ(host->loadPlugin(SIMHOST_MISSING_SYMBOL_PLUGIN, &error), -1);
    EXPECT_NE(error.find("XPLMFunctionNoHostHas"), std::string::npos) << error;
    const std::string log = host->logText();
    EXPECT_NE(log.find("dlerror:"), std::string::npos);
    EXPECT_NE(log.find("XPLMFunctionNoHostHas"), std::string::npos);
    EXPECT_EQ(XPLMCountPlugins(), 1);
}

} // namespace
