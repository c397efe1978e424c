// The toolkit's process-wide leveled logger.
//
// Each line reads "[<plug-in name>]-<tag> <message>\n". With a log file set, lines are
// appended to it (opened and closed per line); otherwise they go to the simulator's
// debug output. Every written line is also printed to standard output, where "%%" in the
// line prints as "%" (the callers' doubling convention); other "%" sequences print as they
// stand. Lines longer than kLogLineBytes - 1 bytes are cut. Needs the host (kalvora_utils_host).
#pragma once

namespace HV_LOGUtils {

/// Levels; any other value is written with the INFO tag.
constexpr char kHV_LOG_TRACE = 0;
constexpr char kHV_LOG_INFO = 1;
constexpr char kHV_LOG_WARNING = 2;
constexpr char kHV_LOG_ALERT = 3;
constexpr char kHV_LOG_FATAL = 4;

/// Bytes of the plug-in name buffer (incl. the zero); longer names are cut.
constexpr int kPlugInNameBytes = 31;
/// Bytes of one formatted line (incl. the zero); longer lines are cut.
constexpr int kLogLineBytes = 300;

extern signed char gLogLevel;              ///< lowest level written, initially INFO
extern char gPlugInName[kPlugInNameBytes]; ///< tag in front of every line, initially ""
extern char* gFileNamePtr;                 ///< heap copy of the log path, or null for debug output

/// Stores the filter level.
void SetLogLevel(char level);
/// Copies the name (cut to kPlugInNameBytes - 1 characters; null = "").
void SetPlugInName(const char* name);
/// Sets the level and the log path (null = debug output); with eraseOld deletes the file at once.
/// Returns the result of remove() (0 = deleted), or 0 when nothing was to be deleted.
int SetLogFilePath(const char* path, char level, bool eraseOld);
/// Writes one line when level >= gLogLevel.
void Add2Log(const char* message, char level);

} // namespace HV_LOGUtils
