// An ordered string-to-string map bound to one text file of "key=value" lines.
//
// File format: one property per line, "key=value", no quoting, escapes or comments.
// The split point is the LAST "=" of a line (a key may contain "=", a value never
// does); lines without "=" or with an empty key are skipped; "\n", "\r" and end of
// file end a line, so CR LF files read like LF files. Lines the map cannot hold
// (longer than kPropertiesLineBytes - 1 bytes, without "=" or with an empty key)
// are kept as they stand and written back unchanged after the property that
// preceded them, so that a save loses nothing of the user's file.
//
// Saving writes a temporary file beside the target (<name>.saving-XXXXXX) and
// renames it over the target; a save killed half-way leaves the old file whole
// and that temporary behind, which the next load removes.
#pragma once

#include <map>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

/// Longest properties line, in bytes including the terminating zero.
constexpr int kPropertiesLineBytes = 256;

/// Preferences-style container: loaded from its file at construction, saved on demand.
class HV_Properties {
public:
    /// Empty map bound to fileName (null or "" = unbound); loads the file when bound.
    HV_Properties(const char* fileName, std::ostream* errors);
    ~HV_Properties() = default;

    /// Merges the file's pairs into the map (later lines win, absent keys keep their values), keeps the
    /// lines it cannot hold, and removes temporaries of this file that an interrupted save left behind.
    void load(std::ostream* errors);
    /// Rewrites the whole file from the map, atomically (temporary file + rename).
    void save(std::ostream* errors);

    /// Find-or-insert access to one property, as the map's own index operator.
    std::string& operator[](const std::string& key) { return entries[key]; }

    std::map<std::string, std::string> entries; ///< the properties, byte-wise key order
    std::string fileName;                       ///< backing file; empty = not bound
    /// Lines of the file the map cannot hold, in file order, each with the key of the property line
    /// before it ("" at the top of the file); rewritten by save after that property.
    std::vector<std::pair<std::string, std::string>> keptLines;
};

/// Readable dump of every property, one "key=value" per line.
std::ostream& operator<<(std::ostream& out, HV_Properties& properties);
