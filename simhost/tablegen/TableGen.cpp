// simhost-tablegen: turns X-Plane's own lists of datarefs and commands
// (DataRefs.txt, Commands.txt, as X-Plane ships them in Resources/plugins) into
// simhost's table of X-Plane's datarefs and commands.
//
//   simhost-tablegen compact DataRefs.txt Commands.txt datarefs.tsv commands.tsv
//       writes the compact copy kept in the repository (simhost/data/): for datarefs
//       name, type and writability; for commands name and description.
//   simhost-tablegen check DataRefs.txt Commands.txt datarefs.tsv commands.tsv
//       exits 1, naming the first difference, when the compact copy is not what the lists give.
//   simhost-tablegen emit (--xplane DataRefs.txt Commands.txt | --compact datarefs.tsv commands.tsv) out.cpp
//       writes the C++ table (rows sorted by name, for a binary search).
//
// Types as DataRefs.txt writes them: int, float, double, int[N], float[N], byte[N],
// byte[] (a string of varying length), and arrays of several dimensions
// (float[56][2][2][721]), which X-Plane serves as one flat array.
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr long long kMaxElements =
    1 << 24; ///< bound on one array's flattened size (X-Plane's largest: 161,504)

struct DataRefRow {
    std::string name, type; ///< type as X-Plane writes it
    bool writable = false;
    std::string typeBits; ///< C++ expression of the XPLMDataTypeID bits
    long long size = 1;   ///< elements for arrays, bytes for byte data, 1 for scalars
};

struct CommandRow {
    std::string name, description;
};

struct Lists {
    std::vector<DataRefRow> datarefs;
    std::vector<CommandRow> commands;
};

[[noreturn]] void fail(const std::string& file, size_t line, const std::string& why) {
    throw std::runtime_error(file + ":" + std::to_string(line) + ": " + why);
}

std::vector<std::string> readLines(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw std::runtime_error(path + ": cannot open");
    std::vector<std::string> lines;
    std::string line;
    while (std::getline(in, line)) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> splitTabs(const std::string& line) {
    std::vector<std::string> fields;
    std::string field;
    std::istringstream s(line);
    while (std::getline(s, field, '\t'))
        fields.push_back(field);
    return fields;
}

/// Fills the type bits and size from the type text; false when it is not a type X-Plane writes.
bool parseType(DataRefRow& r) {
    const std::string& t = r.type;
    const size_t bracket = t.find('[');
    const std::string base = t.substr(0, bracket);
    long long size = 1;
    bool openSize = false; // "byte[]": the length varies
    for (size_t at = bracket; at != std::string::npos && at < t.size();) {
        const size_t close = t.find(']', at);
        if (t[at] != '[' || close == std::string::npos) return false;
        const std::string digits = t.substr(at + 1, close - at - 1);
        if (digits.empty()) {
            openSize = true;
        } else {
            if (digits.find_first_not_of("0123456789") != std::string::npos || digits.size() > 9)
                return false;
            size *= std::stoll(digits);
            if (size <= 0 || size > kMaxElements) return false;
        }
        at = close + 1;
    }
    const bool array = bracket != std::string::npos;
    if (openSize && (base != "byte" || t != "byte[]")) return false;
    if (base == "int" && !array) {
        r.typeBits = "xplmType_Int";
    } else if (base == "float" && !array) {
        r.typeBits = "xplmType_Float";
    } else if (base == "double" && !array) {
        r.typeBits = "xplmType_Float | xplmType_Double"; // X-Plane serves its doubles as floats too
    } else if (base == "int" && array) {
        r.typeBits = "xplmType_IntArray";
    } else if (base == "float" && array) {
        r.typeBits = "xplmType_FloatArray";
    } else if (base == "byte" && array) {
        r.typeBits = "xplmType_Data";
    } else {
        return false;
    }
    r.size = openSize ? 0 : size;
    return true;
}

DataRefRow dataRefRow(const std::string& file, size_t line, const std::vector<std::string>& f) {
    if (f.size() < 3) fail(file, line, "expected name, type and writability separated by tabs");
    DataRefRow r;
    r.name = f[0];
    r.type = f[1];
    if (r.name.empty() || r.name.find(' ') != std::string::npos) fail(file, line, "bad dataref name");
    if (f[2] != "y" && f[2] != "n") fail(file, line, "writability is neither y nor n: '" + f[2] + "'");
    r.writable = f[2] == "y";
    if (!parseType(r)) fail(file, line, "unknown dataref type '" + r.type + "'");
    return r;
}

/// DataRefs.txt: a version line, then name, type, writable, units, description, tab-separated.
std::vector<DataRefRow> readXPlaneDataRefs(const std::string& path) {
    const std::vector<std::string> lines = readLines(path);
    std::vector<DataRefRow> rows;
    for (size_t i = 1; i < lines.size(); ++i) // line 1: "<format> <build> <date>"
        if (!lines[i].empty()) rows.push_back(dataRefRow(path, i + 1, splitTabs(lines[i])));
    return rows;
}

/// Commands.txt: the name, then its description after spaces.
std::vector<CommandRow> readXPlaneCommands(const std::string& path) {
    const std::vector<std::string> lines = readLines(path);
    std::vector<CommandRow> rows;
    for (size_t i = 0; i < lines.size(); ++i) {
        const std::string& l = lines[i];
        if (l.find_first_not_of(" \t") == std::string::npos) continue;
        const size_t end = l.find_first_of(" \t");
        CommandRow r;
        r.name = l.substr(0, end);
        if (r.name.empty()) fail(path, i + 1, "a command line starts with spaces");
        const size_t text = end == std::string::npos ? end : l.find_first_not_of(" \t", end);
        if (text != std::string::npos) r.description = l.substr(text);
        std::replace(r.description.begin(), r.description.end(), '\t', ' ');
        rows.push_back(r);
    }
    return rows;
}

/// The compact copy: '#' comment lines, then one row per line, tab-separated.
std::vector<std::vector<std::string>> readCompact(const std::string& path, std::vector<size_t>& lineNumbers) {
    std::vector<std::vector<std::string>> rows;
    const std::vector<std::string> lines = readLines(path);
    for (size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].empty() || lines[i][0] == '#') continue;
        rows.push_back(splitTabs(lines[i]));
        lineNumbers.push_back(i + 1);
    }
    return rows;
}

Lists readXPlaneLists(const std::string& datarefs, const std::string& commands) {
    return Lists{readXPlaneDataRefs(datarefs), readXPlaneCommands(commands)};
}

Lists readCompactLists(const std::string& datarefs, const std::string& commands) {
    Lists l;
    std::vector<size_t> at;
    const auto d = readCompact(datarefs, at);
    for (size_t i = 0; i < d.size(); ++i)
        l.datarefs.push_back(dataRefRow(datarefs, at[i], d[i]));
    at.clear();
    const auto c = readCompact(commands, at);
    for (size_t i = 0; i < c.size(); ++i) {
        if (c[i].empty() || c[i][0].empty()) fail(commands, at[i], "expected a command name");
        l.commands.push_back(CommandRow{c[i][0], c[i].size() > 1 ? c[i][1] : ""});
    }
    return l;
}

const char* const kDataRefsHeader =
    "# X-Plane's datarefs: name, type, writable (y/n). Made from DataRefs.txt by "
    "simhost-tablegen; do not edit.\n";
const char* const kCommandsHeader =
    "# X-Plane's commands: name, description. Made from Commands.txt by simhost-tablegen; do not edit.\n";

std::string compactDataRefs(const Lists& l) {
    std::string out = kDataRefsHeader;
    for (const DataRefRow& r : l.datarefs)
        out += r.name + "\t" + r.type + "\t" + (r.writable ? "y" : "n") + "\n";
    return out;
}

std::string compactCommands(const Lists& l) {
    std::string out = kCommandsHeader;
    for (const CommandRow& r : l.commands)
        out += r.name + "\t" + r.description + "\n";
    return out;
}

std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return "";
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

void writeFile(const std::string& path, const std::string& text) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << text;
    if (!out) throw std::runtime_error(path + ": cannot write");
}

/// True when the files hold `expected`; otherwise says where they differ first.
bool sameText(const std::string& path, const std::string& expected) {
    const std::string actual = readFile(path);
    if (actual == expected) return true;
    std::istringstream a(actual), e(expected);
    std::string la, le;
    for (size_t line = 1;; ++line) {
        const bool moreA = static_cast<bool>(std::getline(a, la));
        const bool moreE = static_cast<bool>(std::getline(e, le));
        if (moreA && moreE && la == le) continue;
        std::cerr << path << ":" << line << ": the checked-in copy has\n  " << (moreA ? la : "(end of file)")
                  << "\nwhere X-Plane's lists give\n  " << (moreE ? le : "(end of file)") << "\n";
        return false;
    }
}

std::string cString(const std::string& s) {
    std::string out = "\"";
    for (unsigned char ch : s) {
        if (ch == '"' || ch == '\\') {
            out += '\\';
            out += static_cast<char>(ch);
        } else if (ch < 0x20 || ch == 0x7f) {
            char oct[8];
            std::snprintf(oct, sizeof oct, "\\%03o", ch);
            out += oct;
        } else {
            out += static_cast<char>(ch);
        }
    }
    return out + "\"";
}

template <class Row> void sortUnique(std::vector<Row>& rows, const char* what) {
    std::sort(rows.begin(), rows.end(), [](const Row& a, const Row& b) { return a.name < b.name; });
    for (size_t i = 1; i < rows.size(); ++i)
        if (rows[i].name == rows[i - 1].name)
            throw std::runtime_error(std::string("the ") + what + " " + rows[i].name + " is listed twice");
}

std::string emit(Lists l) {
    sortUnique(l.datarefs, "dataref");
    sortUnique(l.commands, "command");
    std::ostringstream out;
    out << "// X-Plane's datarefs and commands, generated by simhost-tablegen. Do not edit.\n"
           "#include \"XPlaneTables.h\"\n\n#include \"XPLMDataAccess.h\"\n\n"
           "namespace simhost::detail {\n\n"
           "const XPlaneDataRefRow kXPlaneDataRefs[] = {\n";
    for (const DataRefRow& r : l.datarefs)
        out << "    {" << cString(r.name) << ", " << r.typeBits << ", " << r.size << ", "
            << (r.writable ? "true" : "false") << "},\n";
    out << "};\nconst int kXPlaneDataRefCount = " << l.datarefs.size() << ";\n\n"
        << "const XPlaneCommandRow kXPlaneCommands[] = {\n";
    for (const CommandRow& r : l.commands)
        out << "    {" << cString(r.name) << ", " << cString(r.description) << "},\n";
    out << "};\nconst int kXPlaneCommandCount = " << l.commands.size() << ";\n\n"
        << "} // namespace simhost::detail\n";
    return out.str();
}

int usage() {
    std::cerr << "usage: simhost-tablegen compact|check DataRefs.txt Commands.txt datarefs.tsv commands.tsv\n"
                 "       simhost-tablegen emit --xplane DataRefs.txt Commands.txt out.cpp\n"
                 "       simhost-tablegen emit --compact datarefs.tsv commands.tsv out.cpp\n";
    return 2;
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> a(argv + 1, argv + argc);
    try {
        if (a.size() == 5 && (a[0] == "compact" || a[0] == "check")) {
            const Lists l = readXPlaneLists(a[1], a[2]);
            const std::string datarefs = compactDataRefs(l), commands = compactCommands(l);
            if (a[0] == "compact") {
                writeFile(a[3], datarefs);
                writeFile(a[4], commands);
                return 0;
            }
            const bool same = sameText(a[3], datarefs) & sameText(a[4], commands); // both files said
            if (!same)
                std::cerr << "simhost-tablegen: the copy in simhost/data/ is out of date; refresh it with "
                             "`cmake --build <build> --target simhost-update-tables`\n";
            return same ? 0 : 1;
        }
        if (a.size() == 5 && a[0] == "emit" && (a[1] == "--xplane" || a[1] == "--compact")) {
            writeFile(a[4],
                      emit(a[1] == "--xplane" ? readXPlaneLists(a[2], a[3]) : readCompactLists(a[2], a[3])));
            return 0;
        }
    } catch (const std::exception& e) {
        std::cerr << "simhost-tablegen: " << e.what() << "\n";
        return 1;
    }
    return usage();
}
