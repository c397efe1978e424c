#include "utils/FileUtils.h"

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

TEST(WildcardMatch, StarsQuestionMarksAndCase) {
    EXPECT_TRUE(glob_match("truck.obj", "*.obj"));
    EXPECT_TRUE(glob_match("truck.obj", "tr?ck*"));
    EXPECT_FALSE(glob_match("truck.obj", "*.OBJ"));
    EXPECT_TRUE(glob_match("", ""));
    EXPECT_TRUE(glob_match("", "***"));
    EXPECT_FALSE(glob_match("", "?"));
    EXPECT_FALSE(glob_match("a", ""));
    EXPECT_TRUE(glob_match("anything", "*"));
    EXPECT_FALSE(glob_match("truck.obj", "truck.ob"));
    EXPECT_FALSE(glob_match("truck.ob", "truck.obj"));
    EXPECT_TRUE(Parsing_match("GPU.obj", "G?U.*"));
    EXPECT_FALSE(glob_match(nullptr, "*"));
    EXPECT_FALSE(glob_match("x", nullptr));
}

TEST(WildcardMatch, BacktracksPastEarlierOccurrences) {
    // The first "." after the star is not the one that lets the rest match.
    EXPECT_TRUE(glob_match("a.b.obj", "*.obj"));
    EXPECT_TRUE(glob_match("abcabcabd", "*abd"));
    EXPECT_TRUE(glob_match("xaaab", "*a?b"));
    EXPECT_TRUE(glob_match("mississippi", "m*iss*ppi"));
    EXPECT_FALSE(glob_match("mississippi", "m*iss*ppx"));
    EXPECT_TRUE(glob_match("ab", "*?"));
    EXPECT_TRUE(glob_match("a*b", "a\\*b") == false);
}

TEST(WildcardMatch, AgreesWithPlainBacktrackingOnRandomInputs) {
    std::mt19937 random(20261122);
    const std::string textAlphabet = "ab.";
    const std::string patternAlphabet = "ab.*?";
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

TEST(WildcardMatch, ManyStarsOnALongTextFinishQuickly) {
    // Plain backtracking would explore an exponential number of splits here.
    const std::string text(4000, 'a');
    EXPECT_FALSE(glob_match(text.c_str(), "*a*a*a*a*a*a*a*a*a*a*a*a*b"));
    EXPECT_TRUE(glob_match((text + "b").c_str(), "*a*a*a*a*a*a*a*a*a*a*a*a*b"));
}

TEST(TranslateXCodePath, VolumePathsBecomeSlashPaths) {
    EXPECT_STREQ(TranslateXCodePath("Disk:Folder:file.txt"), "/Volumes/Disk/Folder/file.txt");
    EXPECT_STREQ(TranslateXCodePath("/tmp/a:b"), "/tmp/a/b");
    EXPECT_STREQ(TranslateXCodePath("/home/user/X-Plane/"), "/home/user/X-Plane/");
    EXPECT_STREQ(TranslateXCodePath(""), "/Volumes/");
    EXPECT_STREQ(TranslateXCodePath(nullptr), "/Volumes/");
}

TEST(TranslateXCodePath, OwnBufferComesBackUnchangedAndLongPathsAreCut) {
    const char* converted = TranslateXCodePath("Disk:a");
    EXPECT_EQ(TranslateXCodePath(converted), converted);
    EXPECT_STREQ(converted, "/Volumes/Disk/a");
    EXPECT_STREQ(TranslateXCodePath(converted + 9), "/Volumes/Disk/a"); // "Disk/a" from inside the buffer
    const std::string huge = "/" + std::string(kPathBufferBytes * 3, 'p');
    EXPECT_EQ(std::string(TranslateXCodePath(huge.c_str())), huge.substr(0, kPathBufferBytes - 1));
}

TEST(FileAccess, AppendsAndTestsExistence) {
    TempFolder dir;
    const std::string path = dir.file("log.txt");
    EXPECT_FALSE(FileExisting(path.c_str()));
    EXPECT_TRUE(AddString2File(path.c_str(), "one\n"));
    EXPECT_TRUE(Add2File(path.c_str(), "two\nthree", 4));
    EXPECT_TRUE(FileExisting(path.c_str()));
    EXPECT_EQ(ReadFile(path), "one\ntwo\n");
    EXPECT_FALSE(Add2File("", "x", 1));
    EXPECT_FALSE(AddString2File(nullptr, "x"));
    EXPECT_FALSE(AddString2File(dir.file("missing/folder.txt").c_str(), "x"));
    EXPECT_FALSE(FileExisting(nullptr));
}

TEST(FileAccess, FileTypeTables) {
    EXPECT_STREQ(GetMacFileType(1), "TEXT");
    EXPECT_STREQ(GetMacFileType(0), "????");
    EXPECT_STREQ(GetWindowsFileType(1), "Text Files");
    EXPECT_STREQ(GetWindowsFileType(7), "All Files");
}

TEST(FolderListing, MatchingFilesSortedAndAppended) {
    TempFolder dir;
    for (const char* name : {"b.obj", "a.obj", "C.obj", "notes.txt", "x.OBJ"})
        dir.write(name, "");
    mkdir(dir.file("folder.obj").c_str(), 0755);
    std::vector<std::string> names{"kept"};
    globFiles(dir.path().c_str(), "*.obj", &names);
    EXPECT_EQ(names, (std::vector<std::string>{"kept", "C.obj", "a.obj", "b.obj"}));
    std::vector<std::string> withSlash;
    ParsingFolder((dir.path() + "/").c_str(), "?.*", &withSlash);
    EXPECT_EQ(withSlash, (std::vector<std::string>{"C.obj", "a.obj", "b.obj", "x.OBJ"}));
    std::vector<std::string> none;
    globFiles(dir.file("absent").c_str(), "*", &none);
    globFiles(nullptr, "*", &none);
    globFiles(dir.path().c_str(), "*", nullptr);
    EXPECT_TRUE(none.empty());
}
