// The open-file dialog, used by clicks.
#include <filesystem>
#include <fstream>

#include "ToolkitFixture.h"
#include "toolkit/Controls.h"
#include "toolkit/CtrlArray.h"
#include "toolkit/FileDialog.h"
#include "toolkit/Panel.h"

using namespace toolkit_test;
namespace fs = std::filesystem;

namespace {

struct Answer {
    int calls = 0;
    bool cancelled = false;
    std::string path;
};

void Remember(const char* path, void* refcon) {
    auto* answer = static_cast<Answer*>(refcon);
    ++answer->calls;
    answer->cancelled = path == nullptr;
    if (path) answer->path = path;
}

class FileDialogTest : public ToolkitTest {
protected:
    void SetUp() override {
        ToolkitTest::SetUp();
        folder = fs::temp_directory_path() /
                 ("kalvora-filedialog-" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) +
                  "-" + ::testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::remove_all(folder);
        fs::create_directories(folder / "Trucks");
        Touch(folder / "b.txt");
        Touch(folder / "a.txt");
        Touch(folder / "notes.obj");
        Touch(folder / ".hidden.txt");
        Touch(folder / "Trucks" / "tug.txt");
    }
    void TearDown() override {
        fs::remove_all(folder);
        ToolkitTest::TearDown();
    }
    static void Touch(const fs::path& path) { std::ofstream(path) << "x\n"; }

    XPWidgetID Window() {
        const std::vector<XPWidgetID> windows = MainWindows();
        return windows.size() == 1 ? windows.front() : nullptr;
    }
    /// The table control of the open dialog.
    HV_CtrlArray* Table() {
        XPWidgetID window = Window();
        if (!window) return nullptr;
        for (XPWidgetID w : WidgetsUnder(window))
            if (auto* table = dynamic_cast<HV_CtrlArray*>(HV_Panel::FromWidget(w))) return table;
        return nullptr;
    }
    std::vector<std::string> Names() {
        std::vector<std::string> names;
        HV_CtrlArray* table = Table();
        if (!table) return names;
        for (int row = 0; row < table->GetRowCount(); ++row) {
            char name[256];
            table->GetCellText(row, 0, name, sizeof name);
            names.push_back(name);
        }
        return names;
    }
    /// Clicks the row holding `name`.
    void ClickEntry(const std::string& name) {
        const std::vector<std::string> names = Names();
        const auto it = std::find(names.begin(), names.end(), name);
        ASSERT_NE(it, names.end()) << name;
        int l = 0, t = 0, r = 0, b = 0;
        ASSERT_TRUE(Table()->GetRowGeometry(static_cast<int>(it - names.begin()), &l, &t, &r, &b));
        host().click((l + r) / 2, (t + b) / 2);
    }
    fs::path folder;
    Answer answer;
};

TEST_F(FileDialogTest, ListsParentFoldersThenMatchingFilesInOrder) {
    OpenFileDialog("Open", folder.string().c_str(), "*.txt", Remember, &answer);
    ASSERT_NE(Window(), nullptr);
    EXPECT_EQ(DescriptorOf(Window()), "Open");
    EXPECT_EQ(Names(), (std::vector<std::string>{"..", "Trucks", "a.txt", "b.txt"}));
    // The folder's path is shown, cut at the front when it is too long for the line.
    const std::string shown = folder.string() + "/";
    const std::string tail = shown.substr(shown.size() > 59 ? shown.size() - 59 : 0);
    const std::vector<XPWidgetID> captions = WidgetsOfClass(Window(), xpWidgetClass_Caption);
    EXPECT_NE(std::find_if(captions.begin(), captions.end(),
                           [&](XPWidgetID w) {
                               const std::string text = DescriptorOf(w);
                               return text.size() <= 62 && text.size() >= tail.size() &&
                                      text.compare(text.size() - tail.size(), tail.size(), tail) == 0;
                           }),
              captions.end());
    Click(FindByDescriptor(Window(), "Cancel"));
}

TEST_F(FileDialogTest, ClickingAFileThenOkAnswersItsPath) {
    OpenFileDialog("Open", folder.string().c_str(), kHV_FileKindText, Remember, &answer);
    ClickEntry("b.txt");
    Click(FindByDescriptor(Window(), "OK"));
    EXPECT_EQ(answer.calls, 1);
    EXPECT_EQ(answer.path, (folder / "b.txt").string());
    EXPECT_TRUE(MainWindows().empty());
}

TEST_F(FileDialogTest, ClickingAFolderOpensItAndDotDotGoesBack) {
    OpenFileDialog("Open", folder.string().c_str(), "*", Remember, &answer);
    EXPECT_EQ(Names(), (std::vector<std::string>{"..", "Trucks", "a.txt", "b.txt", "notes.obj"}));
    ClickEntry("Trucks");
    EXPECT_EQ(Names(), (std::vector<std::string>{"..", "tug.txt"}));
    ClickEntry("..");
    EXPECT_EQ(Names().size(), 5u);
    ClickEntry("Trucks");
    ClickEntry("tug.txt");
    Click(FindByDescriptor(Window(), "OK"));
    EXPECT_EQ(answer.path, (folder / "Trucks" / "tug.txt").string());
}

TEST_F(FileDialogTest, TypedNamesCountAndOkWithoutANameWaits) {
    OpenFileDialog("Open", folder.string().c_str(), "*", Remember, &answer);
    XPWidgetID ok = FindByDescriptor(Window(), "OK");
    Click(ok);
    EXPECT_EQ(answer.calls, 0);
    ASSERT_NE(Window(), nullptr);
    const std::vector<XPWidgetID> fields = WidgetsOfClass(Window(), xpWidgetClass_TextField);
    ASSERT_EQ(fields.size(), 1u);
    ASSERT_TRUE(simhost::typeInto(host(), fields[0], "new.txt"));
    Click(ok);
    EXPECT_EQ(answer.path, (folder / "new.txt").string());
}

TEST_F(FileDialogTest, CancelAndTheCloseBoxAnswerNothing) {
    OpenFileDialog("Open", folder.string().c_str(), "*", Remember, &answer);
    Click(FindByDescriptor(Window(), "Cancel"));
    EXPECT_EQ(answer.calls, 1);
    EXPECT_TRUE(answer.cancelled);
    EXPECT_TRUE(MainWindows().empty());

    OpenFileDialog("Open", folder.string().c_str(), "*", Remember, &answer);
    ASSERT_TRUE(simhost::clickCloseBox(host(), Window()));
    EXPECT_EQ(answer.calls, 2);
    EXPECT_TRUE(answer.cancelled);
    EXPECT_TRUE(MainWindows().empty());
}

TEST_F(FileDialogTest, AMissingFolderListsOnlyTheWayUp) {
    OpenFileDialog("Open", (folder / "nowhere").string().c_str(), "*", Remember, &answer);
    EXPECT_EQ(Names(), (std::vector<std::string>{".."}));
    ClickEntry("..");
    EXPECT_EQ(Names().size(), 5u);
    Click(FindByDescriptor(Window(), "Cancel"));
    EXPECT_TRUE(answer.cancelled);
}

} // namespace
