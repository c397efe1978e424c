// The open-file dialog, used by clicks.
#include "ToolkitFixture.h"
#include "support/TempFolder.h"
#include "toolkit/CtrlArray.h"
#include "toolkit/FileDialog.h"

using namespace toolkit_test;

namespace {

using Names = std::vector<std::string>;

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
        std::filesystem::create_directories(folder / "Trucks");
        for (const char* name : {"b.txt", "a.txt", "notes.obj", ".hidden.txt", "Trucks/tug.txt"})
            folder.write(name, "x\n");
    }
    void Open(const std::string& where, const char* pattern) {
        OpenFileDialog("Open", where.c_str(), pattern, Remember, &answer);
    }
    static XPWidgetID Window() {
        const std::vector<XPWidgetID> windows = MainWindows();
        return windows.size() == 1 ? windows.front() : nullptr;
    }
    /// The table control of the open dialog (the window itself holds no control).
    static HV_CtrlArray* Table() {
        XPWidgetID window = Window();
        if (!window) return nullptr;
        const auto controls = simhost::findWidgets([](const simhost::WidgetInfo&) { return true; }, window);
        for (XPWidgetID w : controls)
            if (w != window)
                if (auto* table = dynamic_cast<HV_CtrlArray*>(HV_Panel::FromWidget(w))) return table;
        return nullptr;
    }
    static Names Listed() {
        Names names;
        HV_CtrlArray* table = Table();
        for (int row = 0; table && row < table->GetRowCount(); ++row) {
            char name[256];
            table->GetCellText(row, 0, name, sizeof name);
            names.push_back(name);
        }
        return names;
    }
    void ClickEntry(const std::string& name) {
        const Names names = Listed();
        const auto it = std::find(names.begin(), names.end(), name);
        ASSERT_NE(it, names.end()) << name;
        int l = 0, t = 0, r = 0, b = 0;
        ASSERT_TRUE(Table()->GetRowGeometry(static_cast<int>(it - names.begin()), &l, &t, &r, &b));
        host().click((l + r) / 2, (t + b) / 2);
    }
    void ClickButton(const char* label) { Click(simhost::findWidget(label, Window())); }

    kalvora_test::TempFolder folder{"kalvora-filedialog"};
    Answer answer;
};

TEST_F(FileDialogTest, ListsFoldersThenMatchingFilesAndAnswersTheChosenPathOrNothing) {
    Open(folder.path(), "*.txt");
    ASSERT_NE(Window(), nullptr);
    EXPECT_EQ(DescriptorOf(Window()), "Open");
    EXPECT_EQ(Listed(), (Names{"..", "Trucks", "a.txt", "b.txt"}));
    ClickEntry("Trucks");
    EXPECT_EQ(Listed(), (Names{"..", "tug.txt"}));
    ClickEntry("..");
    EXPECT_EQ(Listed().size(), 4u);
    ClickEntry("b.txt");
    ClickButton("OK");
    EXPECT_EQ(answer.calls, 1);
    EXPECT_EQ(answer.path, (folder / "b.txt").string());
    EXPECT_TRUE(MainWindows().empty());

    // OK without a name waits; a typed name counts.
    OpenFileDialog("Open", folder.path().c_str(), kHV_FileKindText, Remember, &answer);
    ClickButton("OK");
    EXPECT_EQ(answer.calls, 1);
    ASSERT_TRUE(
        simhost::typeInto(host(), simhost::findWidgetByClass(xpWidgetClass_TextField, Window()), "new.txt"));
    ClickButton("OK");
    EXPECT_EQ(answer.path, (folder / "new.txt").string());

    Open(folder.path(), "*");
    ClickButton("Cancel");
    EXPECT_EQ(answer.calls, 3);
    EXPECT_TRUE(answer.cancelled);
    EXPECT_TRUE(MainWindows().empty());

    // A missing folder lists only the way up; the close box answers nothing too.
    Open((folder / "nowhere").string(), "*");
    EXPECT_EQ(Listed(), (Names{".."}));
    ClickEntry("..");
    EXPECT_EQ(Listed(), (Names{"..", "Trucks", "a.txt", "b.txt", "notes.obj"}));
    ASSERT_TRUE(simhost::clickCloseBox(host(), Window()));
    EXPECT_EQ(answer.calls, 4);
    EXPECT_TRUE(answer.cancelled);
    EXPECT_TRUE(MainWindows().empty());
}

} // namespace
