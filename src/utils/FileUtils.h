// File-system helpers of the toolkit: well-known folders, colon-path conversion,
// existence tests, appending to files, the wildcard matcher and folder listings.
//
// Everything here is host-free except GetPath, which asks the simulator for its
// folders and is defined in kalvora_utils_host.
#pragma once

#include <string>
#include <vector>

namespace HV_FileUtils {

/// Size in bytes of the path buffers returned by GetPath and TranslateXCodePath.
constexpr int kPathBufferBytes = 1024;

/// File-type table entries for the host's open-file dialog.
extern const char* const kHV_FILETYPES_MAC_TXT; ///< "TEXT"
extern const char* const kHV_FILETYPES_MAC_ALL; ///< "????"
extern const char* const kHV_FILETYPES_WIN_TXT; ///< "Text Files"
extern const char* const kHV_FILETYPES_WIN_ALL; ///< "All Files"

/// Folder of the given kind (0..9), ending with the simulator's separator, in one static buffer
/// reused by every call (kind out of range: the buffer unchanged). Needs the host.
///  0 system folder, 1 folder of the plug-in file, 2 plug-in path cut at its third separator
///  from the end (the simulator root), 3 preferences folder, 4 root + "Resources/Earth nav data/",
///  5 root + "Custom Scenery/", 6 user aircraft's folder, 7 plug-in path minus its last four
///  characters + separator, 8 root + "HVFlight Plans/", 9 root + "HV FMS Flight Plans/".
///  A plug-in file in a platform folder (fat layout) counts as its plug-in folder's path plus
///  ".xpl" for kinds 2, 4, 5 and 7 to 9 (utils/PathKinds.h).
char* GetPath(char kind);

/// Colon-separated volume path to a slash path ("Disk:a:b" -> "/Volumes/Disk/a/b"), in a static
/// buffer; called with that very buffer it returns it unchanged. Null gives "". A Windows path
/// ("C:\a", "C:/a", "\\server\a") is already one the system opens and is copied unchanged.
const char* TranslateXCodePath(const char* path);

/// True when the file opens for reading.
bool FileExisting(const char* path);

/// Appends count bytes to the file; false for an empty path or when it cannot be opened.
bool Add2File(const char* path, const char* bytes, long count);
/// Appends a zero-terminated text to the file; false for an empty path or when it cannot be opened.
bool AddString2File(const char* path, const char* text);

/// kind 1: the text-file type, any other: all files (Mac type codes).
const char* GetMacFileType(char kind);
/// kind 1: the text-file type, any other: all files (Windows descriptions).
const char* GetWindowsFileType(char kind);

/// Case-sensitive wildcard match of the whole text: "*" any run, "?" any one character.
bool glob_match(const char* text, const char* pattern);
/// Same matcher as glob_match.
bool Parsing_match(const char* text, const char* pattern);

/// Appends to names the entries of folder whose names glob_match pattern, sorted by name.
/// folder may end with a separator or not; "." and ".." are never listed.
void globFiles(const char* folder, const char* pattern, std::vector<std::string>* names);
/// True when path names a folder that can be listed.
bool FolderExisting(const char* path);
/// Same listing as globFiles.
void ParsingFolder(const char* folder, const char* pattern, std::vector<std::string>* names);

} // namespace HV_FileUtils
