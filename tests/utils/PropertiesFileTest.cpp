#include "utils/HV_Properties.h"
#include "utils/FileUtils.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <map>
#include <sstream>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using kalvora_test::ReadFile;
using kalvora_test::TempFolder;
using Map = std::map<std::string, std::string>;

TEST(PropertiesLoad, SplitsAtTheLastEqualsWhateverTheLineEndsAndMergesIntoWhatIsThere) {
    TempFolder dir;
    for (const char* text :
         {"a=b=c\n=x\nplain\nk=\nspeed=two words\nspeed=12\n", "a=b=c\r\n=x\r\nplain\r\nk=\r\nspeed=12\r\n",
          "a=b=c\r=x\rplain\rk=\rspeed=12"}) {
        SCOPED_TRACE(text);
        HV_Properties props(nullptr, nullptr);
        props["k"] = props["kept"] = "default";
        props.fileName = dir.write("p.prf", text);
        std::ostringstream errors;
        props.load(&errors);
        EXPECT_EQ(props.entries, (Map{{"a=b", "c"}, {"k", ""}, {"kept", "default"}, {"speed", "12"}}));
        EXPECT_EQ(errors.str(), "");
    }
    // A missing file keeps the map and says so.
    HV_Properties props(nullptr, nullptr);
    props["keep"] = "me";
    props.fileName = dir.file("absent.prf");
    std::ostringstream errors;
    props.load(&errors);
    EXPECT_EQ(props.entries, (Map{{"keep", "me"}}));
    EXPECT_EQ(errors.str(), "Error: can't open HV_Properties file '" + props.fileName +
                                "'\nWill create a new one from defaults'\n");
}

TEST(PropertiesLoad, LinesTheMapCannotHoldAreWrittenBackUnchangedInTheirPlace) {
    TempFolder dir;
    const std::string longest = "k=" + std::string(kPropertiesLineBytes - 1 - 2, 'v'); // 255 characters
    const std::string tooLong = "x=" + std::string(kPropertiesLineBytes - 2, 'w');     // 256
    const std::string path =
        dir.write("p.prf", "# top\n=no key\nz=2\n" + tooLong + "\na=1\nno equals\n" + longest + "\n");
    std::ostringstream errors;
    HV_Properties props(path.c_str(), &errors);
    EXPECT_EQ(props.entries, (Map{{"a", "1"}, {"k", longest.substr(2)}, {"z", "2"}}));
    EXPECT_NE(errors.str().find("too long"), std::string::npos);
    props["b"] = "new";
    props.save(nullptr);
    // In key order, each kept line after the property it followed.
    const std::string saved =
        "# top\n=no key\na=1\nno equals\nb=new\n" + longest + "\nz=2\n" + tooLong + "\n";
    EXPECT_EQ(ReadFile(path), saved);
    HV_Properties again(path.c_str(), nullptr); // a file in key order comes back byte for byte
    again.save(nullptr);
    EXPECT_EQ(ReadFile(path), saved);
}

TEST(PropertiesSave, ReplacesTheFileWithSortedPairsThatReadBackUnlessAValueHoldsAnEqualsSign) {
    TempFolder dir;
    HV_Properties props(nullptr, nullptr);
    props.fileName = dir.write("out.prf", "old=1\nother=2\n");
    chmod(props.fileName.c_str(), 0640);
    props["zeta"] = "last";
    props["Alpha"] = "with spaces ";
    props["key=with=equals"] = "v";
    props["empty"] = "";
    std::ostringstream errors;
    props.save(&errors);
    EXPECT_EQ(errors.str(), "");
    EXPECT_EQ(ReadFile(props.fileName), "Alpha=with spaces \nempty=\nkey=with=equals=v\nzeta=last\n");
    struct stat info {};
    ASSERT_EQ(stat(props.fileName.c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0640u);
    std::vector<std::string> left;
    HV_FileUtils::globFiles(dir.path().c_str(), "*", &left);
    EXPECT_EQ(left, std::vector<std::string>{"out.prf"}) << "no temporary is left behind";
    EXPECT_EQ(HV_Properties(props.fileName.c_str(), nullptr).entries, props.entries);
    props.entries = {{"a", "b=c"}};
    props.save(nullptr);
    EXPECT_EQ(HV_Properties(props.fileName.c_str(), nullptr).entries, (Map{{"a=b", "c"}}));
}

TEST(PropertiesSave, AKilledSaveKeepsTheFileAndTheNextLoadRemovesOnlyItsTemporary) {
    TempFolder dir;
    const std::string path = dir.write("p.prf", "old=1\n");
    dir.write("p.prf.backup", "mine");           // the user's
    dir.write("q.prf.saving-abc123", "another"); // another file's
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) { // killed by the file-size limit while it writes the temporary
        const rlimit noCore{0, 0}, tiny{8, 8};
        setrlimit(RLIMIT_CORE, &noCore);
        setrlimit(RLIMIT_FSIZE, &tiny);
        HV_Properties props(path.c_str(), nullptr);
        props["new"] = std::string(100, 'n');
        props.save(nullptr);
        _exit(0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGXFSZ) << "the save was not interrupted";
    std::vector<std::string> left;
    HV_FileUtils::globFiles(dir.path().c_str(), "*", &left);
    EXPECT_EQ(left.size(), 4u) << "an interrupted save leaves its temporary";
    EXPECT_EQ(ReadFile(path), "old=1\n");

    HV_Properties next(path.c_str(), nullptr);
    EXPECT_EQ(next.entries, (Map{{"old", "1"}}));
    left.clear();
    HV_FileUtils::globFiles(dir.path().c_str(), "*", &left);
    EXPECT_EQ(left, (std::vector<std::string>{"p.prf", "p.prf.backup", "q.prf.saving-abc123"}));
}

TEST(PropertiesSave, UnwritableTargetReportsAndKeepsTheOldFile) {
    TempFolder dir;
    HV_Properties props(nullptr, nullptr);
    props["a"] = "1";
    // A target the rename cannot replace (a folder where the file should be, as a read-only
    // preferences folder would refuse it): reported, the folder untouched, no temporary left.
    const std::string folder = dir.file("taken.prf");
    ASSERT_EQ(mkdir(folder.c_str(), 0755), 0);
    dir.write("taken.prf/keep", "mine");
    props.fileName = folder;
    std::ostringstream renameErrors;
    props.save(&renameErrors);
    EXPECT_EQ(renameErrors.str(), "Error: can't open HV_Properties file for writing'" + folder + "'\n");
    EXPECT_EQ(ReadFile(folder + "/keep"), "mine");
    std::vector<std::string> left;
    HV_FileUtils::globFiles(dir.path().c_str(), "*", &left);
    EXPECT_TRUE(left.empty()); // files only: no temporary beside the folder
}
