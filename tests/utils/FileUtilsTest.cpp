#include "utils/FileUtils.h"
#include "utils/PathKinds.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <sys/stat.h>
#include <vector>

using kalvora_test::ReadFile;
using kalvora_test::TempFolder;
using namespace HV_FileUtils;

namespace {

/// Plain backtracking definition of the matcher: the oracle for the fast one.
bool NaiveMatch(const char* text, const char* pattern) {
    if (*pattern == '\0') return *text == '\0';
    if (*pattern == '*') return NaiveMatch(text, pattern + 1) || (*text && NaiveMatch(text + 1, pattern));
    if (*text == '\0') return false;
    return (*pattern == '?' || *pattern == *text) && NaiveMatch(text + 1, pattern + 1);
}

} // namespace

TEST(WildcardMatch, CaseNullsAndLongTextsBeyondWhatTheRandomInputsReach) {
    EXPECT_FALSE(glob_match("truck.obj", "*.OBJ"));
    EXPECT_FALSE(glob_match("a*b", "a\\*b")) << "a backslash escapes nothing";
    EXPECT_FALSE(glob_match(nullptr, "*"));
    EXPECT_FALSE(glob_match("x", nullptr));
    // Plain backtracking would explore an exponential number of splits here.
    const std::string text(4000, 'a');
    EXPECT_FALSE(glob_match(text.c_str(), "*a*a*a*a*a*a*a*a*a*a*a*a*b"));
    EXPECT_TRUE(glob_match((text + "b").c_str(), "*a*a*a*a*a*a*a*a*a*a*a*a*b"));
}

TEST(WildcardMatch, AgreesWithPlainBacktrackingOnRandomInputs) {
    std::mt19937 random(20261122);
    const std::string textAlphabet = "ab.", patternAlphabet = "ab.*?";
    for (int round = 0; round < 20000; ++round) {
        std::string text, pattern;
        for (int n = random() % 9; n > 0; --n)
            text += textAlphabet[random() % textAlphabet.size()];
        for (int n = random() % 7; n > 0; --n)
            pattern += patternAlphabet[random() % patternAlphabet.size()];
        ASSERT_EQ(glob_match(text.c_str(), pattern.c_str()), NaiveMatch(text.c_str(), pattern.c_str()))
            << "text '" << text << "' pattern '" << pattern << "'";
    }
}

TEST(TranslateXCodePath, VolumePathsBecomeSlashPathsAndOthersStay) {
    const std::pair<const char*, const char*> cases[] = {
        {"Disk:Folder:file.txt", "/Volumes/Disk/Folder/file.txt"},
        {nullptr, "/Volumes/"},
        // What a Windows host reports opens as it is; a one-letter volume stays a volume.
        {"C:\\X-Plane 12\\Log.txt", "C:\\X-Plane 12\\Log.txt"},
        {"\\\\nas\\sim\\a.prf", "\\\\nas\\sim\\a.prf"},
        {"C:x", "/Volumes/C/x"},
    };
    for (const auto& c : cases)
        EXPECT_STREQ(TranslateXCodePath(c.first), c.second) << (c.first ? c.first : "null");
    // Long paths are cut.
    const std::string huge = "/" + std::string(kPathBufferBytes * 3, 'p');
    EXPECT_EQ(std::string(TranslateXCodePath(huge.c_str())), huge.substr(0, kPathBufferBytes - 1));
}

TEST(PathKinds, EveryLayoutAndSeparator) {
    struct Layout {
        const char* pluginFile;
        char separator;
        const char* pluginFolder; // kind 7
        const char* root;         // kind 2
    };
    const Layout layouts[] = {
        {"/xp/Resources/plugins/Kalvora.xpl", '/', "/xp/Resources/plugins/Kalvora/", "/xp/"},
        {"/xp/Resources/plugins/Kalvora/lin_x64/Kalvora.xpl", '/', "/xp/Resources/plugins/Kalvora/", "/xp/"},
        {"C:\\XP\\Resources\\plugins\\Kalvora\\win_x64\\Kalvora.xpl", '\\',
         "C:\\XP\\Resources\\plugins\\Kalvora\\", "C:\\XP\\"},
        {"C:\\XP\\Resources\\plugins\\Kalvora.xpl", '\\', "C:\\XP\\Resources\\plugins\\Kalvora\\",
         "C:\\XP\\"},
        // Windows accepts "/" too, also mixed with "\\"; what is appended is the host's separator.
        {"C:/XP/Resources/plugins/Kalvora/win_x64/Kalvora.xpl", '\\', "C:/XP/Resources/plugins/Kalvora\\",
         "C:/XP/"},
        // A renamed plug-in folder names the data folder; a folder merely called like a platform
        // (no folder above it) or an unknown one is the flat layout.
        {"/xp/Resources/plugins/Tug/lin_x64/Kalvora.xpl", '/', "/xp/Resources/plugins/Tug/", "/xp/"},
        {"lin_x64/Kalvora.xpl", '/', "lin_x64/Kalvora/", "lin_x64/"},
        {"/xp/Resources/plugins/Kalvora/x86/Kalvora.xpl", '/', "/xp/Resources/plugins/Kalvora/x86/Kalvora/",
         "/xp/Resources/plugins/"},
        {"", '/', "/", ""},
    };
    for (const Layout& l : layouts) {
        HostPaths host;
        host.pluginFile = l.pluginFile;
        host.separator = l.separator;
        std::string folder;
        ASSERT_TRUE(PathOfKind(7, host, &folder));
        EXPECT_EQ(folder, l.pluginFolder) << l.pluginFile;
        ASSERT_TRUE(PathOfKind(2, host, &folder));
        EXPECT_EQ(folder, l.root) << l.pluginFile;
        const std::string sep(1, l.separator);
        ASSERT_TRUE(PathOfKind(5, host, &folder));
        EXPECT_EQ(folder, l.root + std::string("Custom Scenery") + sep) << l.pluginFile;
    }
}

TEST(PathKinds, HostFoldersAreCutAtTheirLastSeparator) {
    HostPaths host;
    host.separator = '\\';
    host.system = "C:\\XP\\";
    host.pluginFile = "C:\\XP\\Resources\\plugins\\Kalvora\\win_x64\\Kalvora.xpl";
    host.prefsFile = "C:\\XP\\Output\\preferences\\Set X-Plane.prf";
    host.aircraft = "C:/XP/Aircraft/A320/a320.acf";
    std::string folder;
    const std::pair<char, std::string> kinds[] = {
        {0, "C:\\XP\\"},
        {1, "C:\\XP\\Resources\\plugins\\Kalvora\\win_x64\\"},
        {3, "C:\\XP\\Output\\preferences\\"},
        {6, "C:/XP/Aircraft/A320/"},
        {9, "C:\\XP\\HV FMS Flight Plans\\"},
    };
    for (const auto& kind : kinds) {
        ASSERT_TRUE(PathOfKind(kind.first, host, &folder));
        EXPECT_EQ(folder, kind.second) << int(kind.first);
    }
    folder = "unchanged";
    EXPECT_FALSE(PathOfKind(10, host, &folder));
    EXPECT_EQ(folder, "unchanged");
}

TEST(FolderListing, MatchingFilesSortedAndAppended) {
    TempFolder dir;
    for (const char* name : {"b.obj", "a.obj", "C.obj", "notes.txt", "x.OBJ"})
        dir.write(name, "");
    mkdir(dir.file("folder.obj").c_str(), 0755);
    std::vector<std::string> names{"kept"};
    globFiles(dir.path().c_str(), "*.obj", &names);
    EXPECT_EQ(names, (std::vector<std::string>{"kept", "C.obj", "a.obj", "b.obj"}));
    std::vector<std::string> none;
    globFiles(dir.file("absent").c_str(), "*", &none);
    EXPECT_TRUE(none.empty());
}
