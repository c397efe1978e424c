// The open-file dialog, used by clicks.
#include "ToolkitFixture.h"
#include "support/TempFolder.h"
#include "toolkit/CtrlArray.h"
#include "toolkit/FileDialog.h"

using namespace toolkit_test;

namespace {

using Names = std::vector<std::string>;

/// Keeps every answer of the dialog: the chosen path, or "cancelled" for none.
void Remember(const char* path, void* answers) {
    static_cast<Names*>(answers)->push_back(path ? path : "cancelled");
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
        OpenFileDialog("Open", where.c_str(), pattern, Remember, &answers);
    }
    static XPWidgetID Window() {
        const std::vector<XPWidgetID> windows = MainWindows();
        return windows.size() == 1 ? windows.front() : nullptr;
    }
    /// The names the open dialog lists, and the table that lists them.
    static Names Listed(HV_CtrlArray** listing = nullptr) {
        Names names;
        XPWidgetID window = Window();
        for (XPWidgetID w : simhost::findWidgets([](const simhost::WidgetInfo&) { return true; }, window)) {
            // The window's reference is no control.
            auto* table = w == window ? nullptr : dynamic_cast<HV_CtrlArray*>(HV_Panel::FromWidget(w));
            if (!table) continue;
            for (int row = 0; row < table->GetRowCount(); ++row) {
                char name[256];
                table->GetCellText(row, 0, name, sizeof name);
                names.push_back(name);
            }
            if (listing) *listing = table;
            break; // its scroll bar leads back to it too
        }
        return names;
    }
    void ClickEntry(const std::string& name) {
        HV_CtrlArray* table = nullptr;
        const Names names = Listed(&table);
        const auto it = std::find(names.begin(), names.end(), name);
        ASSERT_NE(it, names.end()) << name;
        int l = 0, t = 0, r = 0, b = 0;
        ASSERT_TRUE(table->GetRowGeometry(static_cast<int>(it - names.begin()), &l, &t, &r, &b));
        host().click((l + r) / 2, (t + b) / 2);
    }
    void ClickButton(const char* label) { Click(simhost::findWidget(label, Window())); }

    kalvora_test::TempFolder folder{"kalvora-filedialog"};
    Names answers;
};

TEST_F(FileDialogTest, ListsFoldersThenMatchingFilesAndAnswersTheChosenPathOrNothing) {
    Open(folder.path(), "*.txt");
    ASSERT_NE(Window(), nullptr);
    EXPECT_EQ(Listed(), (Names{"..", "Trucks", "a.txt", "b.txt"}));
    ClickEntry("Trucks");
    EXPECT_EQ(Listed(), (Names{"..", "tug.txt"}));
    ClickEntry("..");
    EXPECT_EQ(Listed().size(), 4u);
    ClickEntry("b.txt");
    ClickButton("OK");
    EXPECT_TRUE(MainWindows().empty());

    // OK without a name waits; a typed name counts.
    OpenFileDialog("Open", folder.path().c_str(), kHV_FileKindText, Remember, &answers);
    ClickButton("OK");
    EXPECT_EQ(answers.size(), 1u);
    ASSERT_TRUE(
        simhost::typeInto(host(), simhost::findWidgetByClass(xpWidgetClass_TextField, Window()), "new.txt"));
    ClickButton("OK");

    Open(folder.path(), "*");
    ClickButton("Cancel");
    EXPECT_TRUE(MainWindows().empty());

    // A missing folder lists only the way up; the close box answers nothing too.
    Open((folder / "nowhere").string(), "*");
    EXPECT_EQ(Listed(), (Names{".."}));
    ClickEntry("..");
    EXPECT_EQ(Listed(), (Names{"..", "Trucks", "a.txt", "b.txt", "notes.obj"}));
    ASSERT_TRUE(simhost::clickCloseBox(host(), Window()));
    EXPECT_TRUE(MainWindows().empty());
    EXPECT_EQ(answers,
              (Names{(folder / "b.txt").string(), (folder / "new.txt").string(), "cancelled", "cancelled"}));
}

} // namespace
