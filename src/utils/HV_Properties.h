// An ordered string-to-string map bound to one text file of "key=value" lines.
//
// File format: one property per line, "key=value", no quoting, escapes or comments.
// The split point is the LAST "=" of a line (a key may contain "=", a value never
// does); lines without "=" or with an empty key are skipped; "\n", "\r" and end of
// file end a line, so CR LF files read like LF files. Lines longer than
// kPropertiesLineBytes - 1 bytes are rejected as a whole (reported, not split).
#pragma once

#include <map>
#include <ostream>
#include <string>

/// Longest properties line, in bytes including the terminating zero.
constexpr int kPropertiesLineBytes = 256;

/// Preferences-style container: loaded from its file at construction, saved on demand.
class HV_Properties {
public:
    /// Empty map bound to fileName (null or "" = unbound); loads the file when bound.
    HV_Properties(const char* fileName, std::ostream* errors);
    ~HV_Properties() = default;

    /// Merges the file's pairs into the map (later lines win, absent keys keep their values).
    void load(std::ostream* errors);
    /// Rewrites the whole file from the map, atomically (temporary file + rename).
    void save(std::ostream* errors);

    /// Find-or-insert access to one property, as the map's own index operator.
    std::string& operator[](const std::string& key) { return entries[key]; }

    std::map<std::string, std::string> entries; ///< the properties, byte-wise key order
    std::string fileName;                       ///< backing file; empty = not bound
};

/// Readable dump of every property, one "key=value" per line.
std::ostream& operator<<(std::ostream& out, HV_Properties& properties);
