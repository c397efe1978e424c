// The open-file dialog: a window showing a folder's path, its entries in a
// table (sub-folders, then the files matching a wildcard pattern), a file name
// field, and OK and Cancel. A click on a folder entry (or "..") opens it; a
// click on a file puts its name in the field. OK answers the folder plus the
// name in the field; Cancel or the close box answer null. The dialog frees
// itself after answering.
#pragma once

/// Receives the chosen file's full path, or null when the dialog was cancelled.
typedef void (*HV_OpenFileCallback_f)(const char* path, void* refcon);

/// Title of the kind-1 (text files) listing and its pattern; any other kind lists every file.
constexpr int kHV_FileKindText = 1;

/// Opens the dialog on `folder` listing the files that match `pattern` ("*" or null: every file).
void OpenFileDialog(const char* title, const char* folder, const char* pattern,
                    HV_OpenFileCallback_f callback, void* refcon);
/// Same, with the file kind of the file-type tables: kHV_FileKindText lists "*.txt", other kinds every file.
void OpenFileDialog(const char* title, const char* folder, int fileKind, HV_OpenFileCallback_f callback,
                    void* refcon);
