// Every function the official API headers declare (XPLM_API, WIDGET_API) is
// exported by libsimhost, so a plug-in built against them loads whatever it
// links. The headers are read from ../shared; without them the test skips.
#include <gtest/gtest.h>

#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

namespace fs = std::filesystem;

namespace {

/// Names of the functions a header declares with the API's export macros.
std::vector<std::string> declaredFunctions(const fs::path& header) {
    std::ifstream in(header);
    std::stringstream text;
    text << in.rdbuf();
    // Comments and preprocessor lines (the macros' own definitions) out, then "XPLM_API <type> <name>("
    // with any type, pointers included.
    const std::string code =
        std::regex_replace(text.str(), std::regex(R"(/\*[\s\S]*?\*/|//[^\n]*|\n\s*#[^\n]*)"), "\n");
    static const std::regex decl(R"((?:XPLM_API|WIDGET_API)\s+[^;(]*?\b(\w+)\s*\()");
    std::vector<std::string> names;
    for (std::sregex_iterator it(code.begin(), code.end(), decl), end; it != end; ++it)
        names.push_back((*it)[1]);
    return names;
}

/// True when the running process (libsimhost linked in) exports the symbol.
bool exported(const std::string& name) {
    return dlsym(RTLD_DEFAULT, name.c_str()) != nullptr;
}

} // namespace

TEST(ApiCoverage, EveryFunctionOfTheOfficialHeadersIsExported) {
    const fs::path root = SIMHOST_OFFICIAL_HEADERS;
    if (!fs::is_directory(root)) GTEST_SKIP() << "official API headers not found at " << root;
    size_t declared = 0;
    std::vector<std::string> missing;
    for (const char* folder : {"XPLM", "Widgets"})
        for (const auto& entry : fs::directory_iterator(root / folder)) {
            if (entry.path().extension() != ".h") continue;
            for (const std::string& name : declaredFunctions(entry.path())) {
                ++declared;
                if (!exported(name)) missing.push_back(entry.path().filename().string() + ": " + name);
            }
        }
    EXPECT_GT(declared, 280u) << "the header parser lost declarations";
    EXPECT_TRUE(missing.empty()) << ::testing::PrintToString(missing);
}
