// A whole text file held in memory and queried by raw text search.
//
// Queries are not anchored to line starts: the first byte position where the key
// occurs wins (so "Speed=" also matches inside "MaxSpeed="). The value runs from just
// after the key to the next "\r" or "\n". By convention plain keys include their "="
// ("Speed="); indexed keys are built as "name[i]=".
#pragma once

/// Key-value reader over one file loaded at construction.
class HV_ReadHalvernFile {
public:
    /// Reads the whole file at path; a missing or unreadable file gives a reader with no data.
    explicit HV_ReadHalvernFile(const char* path);
    ~HV_ReadHalvernFile();
    HV_ReadHalvernFile(const HV_ReadHalvernFile&) = delete;
    HV_ReadHalvernFile& operator=(const HV_ReadHalvernFile&) = delete;

    /// Value after the first occurrence of key, or defaultValue (may be null); valid until the next query.
    const char* GetValueString(const char* key, const char* defaultValue);
    /// atol of the value (0 when absent).
    long GetValueLong(const char* key);
    /// strtod of the value narrowed to float (0 when absent).
    float GetValueFloat(const char* key);
    /// atol of the value of "name[i]=".
    long GetValueIndexLong(const char* name, int i);
    /// strtod of the value of "name[i]=".
    float GetValueIndexFloat(const char* name, int i);
    /// Value of "name[i]=", or defaultValue.
    const char* GetValueIndexString(const char* name, int i, const char* defaultValue);
    /// Number of consecutive indexed keys name[0]=, name[1]=, ... present (at most 1001).
    int GetCountValueOf(const char* name);

    /// True when the file was read.
    bool HasData() const { return data != nullptr; }

private:
    char* data = nullptr;   ///< whole file, not zero-terminated; null when unread
    char* result = nullptr; ///< buffer of the last value found
    int dataSize = 0;       ///< bytes of data
    int resultCapacity = 0; ///< bytes of result
};
