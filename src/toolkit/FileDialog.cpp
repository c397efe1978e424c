#include "toolkit/FileDialog.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "XPStandardWidgets.h"
#include "toolkit/Controls.h"
#include "toolkit/CtrlArray.h"
#include "toolkit/Window.h"
#include "utils/FileUtils.h"
#include "utils/HV_LOGUtils.h"
#include "utils/Utf8Path.h"

namespace fs = std::filesystem;

namespace {

/// Window and layout, pixels.
constexpr int kWindowWidth = 420;
constexpr int kNameColumnWidth = 320;
constexpr int kKindColumnWidth = 70;
constexpr int kVisibleRows = 12;
constexpr int kButtonColumnWidth = 195;
/// Longest file name the name field takes, characters.
constexpr int kMaxNameCharacters = 255;
/// Bytes of the name read back from the field.
constexpr int kNameBytes = kMaxNameCharacters + 1;

/// Characters of the folder path that fit on the path line; longer paths show their end.
constexpr int kPathCharacters = 62;
constexpr const char* kCutMark = "...";

constexpr const char* kParentEntry = "..";
constexpr const char* kFolderKind = "Folder";
constexpr const char* kFileKind = "File";
constexpr const char* kTextFilePattern = "*.txt";

struct Entry {
    std::string name;
    bool folder;
};

/// The folder as shown: its last kPathCharacters characters, behind "..." when cut.
std::string ShownPath(const std::string& folder) {
    if (static_cast<int>(folder.size()) <= kPathCharacters) return folder;
    const size_t keep = static_cast<size_t>(kPathCharacters) - std::char_traits<char>::length(kCutMark);
    return kCutMark + folder.substr(folder.size() - keep);
}

std::string WithSeparator(std::string folder) {
    if (folder.empty()) folder = ".";
    if (folder.back() != '/') folder.push_back('/');
    return folder;
}

/// ".." (unless at the root), the sub-folders, then the matching files, each group sorted by name.
/// Hidden entries (starting with ".") are left out; an unreadable folder lists only "..".
std::vector<Entry> ListFolder(const std::string& folder, const std::string& pattern) {
    std::vector<Entry> folders, files;
    std::error_code error;
    for (fs::directory_iterator it(HV_FileUtils::PathFromUtf8(folder), error), end; !error && it != end;
         it.increment(error)) {
        const std::string name = HV_FileUtils::Utf8FromPath(it->path().filename());
        if (name.empty() || name[0] == '.') continue;
        std::error_code kindError;
        if (it->is_directory(kindError))
            folders.push_back({name, true});
        else if (HV_FileUtils::glob_match(name.c_str(), pattern.c_str()))
            files.push_back({name, false});
    }
    if (error)
        HV_LOGUtils::Add2Log(("file dialog: cannot list " + folder + ": " + error.message()).c_str(),
                             HV_LOGUtils::kHV_LOG_WARNING);
    auto byName = [](const Entry& a, const Entry& b) { return a.name < b.name; };
    std::sort(folders.begin(), folders.end(), byName);
    std::sort(files.begin(), files.end(), byName);
    std::vector<Entry> entries;
    if (fs::path(folder).lexically_normal() != fs::path("/")) entries.push_back({kParentEntry, true});
    entries.insert(entries.end(), folders.begin(), folders.end());
    entries.insert(entries.end(), files.begin(), files.end());
    return entries;
}

/// One open file dialog; it frees itself when it answers.
class FileDialog {
public:
    FileDialog(const char* title, const char* folder, const char* pattern, HV_OpenFileCallback_f callback,
               void* refcon)
        : folder_(WithSeparator(folder ? folder : ".")), pattern_(pattern && *pattern ? pattern : "*"),
          callback_(callback), refcon_(refcon) {
        HV_Window* window = new HV_Window(this, Handler, kWindowWidth, title ? title : "Open", true, true);

        HV_Panel* listPanel = new HV_Panel(nullptr, false, 0, nullptr, true, true);
        listPanel->SetMarge(10, 5);
        window->AddChild(listPanel);
        pathText_ = new HV_CtrlText(ShownPath(folder_).c_str(), kAlignLeft, true);
        listPanel->AddChild(pathText_, 0);
        table_ = new HV_CtrlArray(2, kVisibleRows, true, true);
        table_->SetColumn(0, "Name", kNameColumnWidth);
        table_->SetColumn(1, "Kind", kKindColumnWidth);
        listPanel->AddChild(table_, 0);
        nameBox_ = new HV_CtrlTextBox("File:", "", kMaxNameCharacters, false, "", true, true);
        listPanel->AddChild(nameBox_, 0);

        HV_Panel* buttonPanel = new HV_Panel(nullptr, false, 0, nullptr, true, true);
        buttonPanel->SetMarge(10, 5);
        buttonPanel->SetNumberOfColumn(2);
        buttonPanel->SetColumnWidth(0, kButtonColumnWidth);
        buttonPanel->SetColumnWidth(1, kButtonColumnWidth);
        window->AddChild(buttonPanel);
        okButton_ = new HV_CtrlButton("OK", kAlignStretch, true, true);
        buttonPanel->AddChild(okButton_, 0);
        cancelButton_ = new HV_CtrlButton("Cancel", kAlignStretch, true, true);
        buttonPanel->AddChild(cancelButton_, 1);

        Fill();
        window->Pack();
        window->Center();
    }

private:
    void Fill() {
        entries_ = ListFolder(folder_, pattern_);
        pathText_->SetText(ShownPath(folder_).c_str());
        table_->SetRowCount(0);
        table_->SetRowCount(static_cast<int>(entries_.size()));
        for (size_t i = 0; i < entries_.size(); ++i) {
            const int row = static_cast<int>(i);
            table_->SetCellText(row, 0, entries_[i].name.c_str());
            table_->SetCellText(row, 1, entries_[i].folder ? kFolderKind : kFileKind);
        }
        table_->ScrollToRow(0);
    }

    void Open(const Entry& entry) {
        if (entry.name == kParentEntry) {
            std::string current = folder_;
            while (current.size() > 1 && current.back() == '/')
                current.pop_back();
            folder_ =
                WithSeparator(HV_FileUtils::Utf8FromPath(HV_FileUtils::PathFromUtf8(current).parent_path()));
        } else {
            folder_ = WithSeparator(folder_ + entry.name);
        }
        nameBox_->SetText("");
        Fill();
    }

    /// Answers and frees the dialog; the caller returns kHV_CloseWindow.
    int Answer(const char* path) {
        const HV_OpenFileCallback_f callback = callback_;
        void* refcon = refcon_;
        delete this;
        if (callback) {
            try {
                callback(path, refcon);
            } catch (...) {
                HV_LOGUtils::Add2Log("file dialog: the answer callback failed", HV_LOGUtils::kHV_LOG_ALERT);
            }
        }
        return kHV_CloseWindow;
    }

    static int Handler(void* self, long message, HV_Panel* source, long, long param2) {
        auto* dialog = static_cast<FileDialog*>(self);
        if (!dialog) return 0;
        if (message == kHV_MsgArrayRowSelected && source == dialog->table_) {
            const int row = static_cast<int>(param2);
            if (row < 0 || row >= static_cast<int>(dialog->entries_.size())) return 1;
            const Entry entry = dialog->entries_[row];
            if (entry.folder)
                dialog->Open(entry);
            else
                dialog->nameBox_->SetText(entry.name.c_str());
            return 1;
        }
        if (message == xpMessage_CloseButtonPushed) return dialog->Answer(nullptr);
        if (message != xpMsg_PushButtonPressed) return 0;
        if (source == dialog->cancelButton_) return dialog->Answer(nullptr);
        if (source != dialog->okButton_) return 0;
        char name[kNameBytes];
        dialog->nameBox_->GetText(name, sizeof name);
        if (name[0] == '\0') return 1; // nothing chosen yet: the dialog stays
        const std::string path = name[0] == '/' ? std::string(name) : dialog->folder_ + name;
        return dialog->Answer(path.c_str());
    }

    std::string folder_;  ///< shown folder, with a trailing "/"
    std::string pattern_; ///< wildcard the files must match
    HV_OpenFileCallback_f callback_;
    void* refcon_;
    std::vector<Entry> entries_; ///< rows of the table
    HV_CtrlText* pathText_ = nullptr;
    HV_CtrlArray* table_ = nullptr;
    HV_CtrlTextBox* nameBox_ = nullptr;
    HV_CtrlButton* okButton_ = nullptr;
    HV_CtrlButton* cancelButton_ = nullptr;
};

} // namespace

void OpenFileDialog(const char* title, const char* folder, const char* pattern,
                    HV_OpenFileCallback_f callback, void* refcon) {
    new FileDialog(title, folder, pattern, callback, refcon); // frees itself when it answers
}

void OpenFileDialog(const char* title, const char* folder, int fileKind, HV_OpenFileCallback_f callback,
                    void* refcon) {
    OpenFileDialog(title, folder, fileKind == kHV_FileKindText ? kTextFilePattern : "*", callback, refcon);
}
