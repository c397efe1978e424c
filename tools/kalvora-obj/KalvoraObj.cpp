// kalvora-obj: inspect, validate, convert and round-trip the simulator's object
// files (OBJ7, version 700, and OBJ8, version 800).
//
//   kalvora-obj info FILE
//   kalvora-obj validate FILE...
//   kalvora-obj convert IN OUT [--to obj8|obj7] [--force]
//   kalvora-obj roundtrip FILE
//
// Exit status: 0 on success, 1 when a file cannot be read, fails validation or
// does not round-trip, 2 on a usage error.
#include "ObjCompare.h"
#include "ObjFiles.h"
#include "ObjInfo.h"

#include "objects/Obj7Reader.h"
#include "objects/Obj7ToObj8.h"
#include "objects/Obj7Writer.h"
#include "objects/Obj8Reader.h"
#include "objects/Obj8ToObj7.h"
#include "objects/Obj8Validate.h"
#include "objects/Obj8Writer.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <iostream>
#include <unistd.h>

namespace {

constexpr int kExitOk = 0;
constexpr int kExitFailed = 1;
constexpr int kExitUsage = 2;

int Fail(const std::string& path, const std::string& message) {
    std::cerr << "kalvora-obj: " << path << ": " << message << "\n";
    return kExitFailed;
}

const char* const kUnreadable =
    "cannot be read as an OBJ7 or OBJ8 object (missing, unreadable or bad header)";

int Info(const std::string& path) {
    LoadedObject obj;
    if (!LoadObject(path, obj)) return Fail(path, kUnreadable);
    PrintInfo(std::cout, path, obj);
    const std::string note = FirstLineNote(path);
    if (!note.empty()) std::cout << "note: " << note << "\n";
    return kExitOk;
}

int Validate(const std::vector<std::string>& paths) {
    int status = kExitOk;
    for (const std::string& path : paths) {
        LoadedObject obj;
        if (!LoadObject(path, obj)) {
            status = Fail(path, kUnreadable);
            continue;
        }
        std::string why;
        const std::string note = FirstLineNote(path);
        if (!note.empty()) std::cerr << "kalvora-obj: " << path << ": note: " << note << "\n";
        if (ValidateLoaded(obj, &why))
            std::cout << path << ": ok (" << FormatName(obj.format) << ")\n";
        else
            status = Fail(path, std::string("invalid ") + FormatName(obj.format) + ": " + why);
    }
    return status;
}

int Convert(const std::string& in, const std::string& out, const std::string& to, bool force) {
    if (!force && (in == out || SameFile(in, out)))
        return Fail(out, "is the input file; use --force to replace it");
    LoadedObject obj;
    if (!LoadObject(in, obj)) return Fail(in, kUnreadable);

    if (to == "obj7") {
        XObj old = obj.obj7;
        if (obj.format == ObjFormat::Obj8) {
            for (const std::string& lost : Obj8ToObj7(obj.obj8, old))
                std::cout << in << ": dropped: " << lost << "\n";
        }
        if (!XObjWrite(out.c_str(), old)) return Fail(out, "cannot be written");
        std::cout << in << " (" << FormatName(obj.format) << ") -> " << out << " (OBJ7)\n";
        return kExitOk;
    }

    XObj8 model = obj.obj8;
    if (obj.format == ObjFormat::Obj7) Obj7ToObj8(obj.obj7, model);
    std::string why;
    if (!XObj8Validate(model, &why)) return Fail(in, "not written: the model is invalid: " + why);
    if (!XObj8WriteReplacing(out.c_str(), model)) return Fail(out, "cannot be written");
    std::cout << in << " (" << FormatName(obj.format) << ") -> " << out << " (OBJ8)\n";
    return kExitOk;
}

int RoundTrip(const std::string& path) {
    LoadedObject obj;
    if (!LoadObject(path, obj)) return Fail(path, kUnreadable);
    char temp[] = "/tmp/kalvora-obj-XXXXXX";
    const int fd = mkstemp(temp);
    if (fd < 0) return Fail(path, "no temporary file for the round trip");
    close(fd);
    std::string difference;
    bool ok;
    if (obj.format == ObjFormat::Obj8) {
        XObj8 back;
        ok = XObj8Write(temp, obj.obj8) && XObj8Read(temp, back);
        if (ok) difference = FirstDifference(obj.obj8, back);
    } else {
        XObj back;
        ok = XObjWrite(temp, obj.obj7) && XObjRead(temp, back);
        if (ok) difference = FirstDifference(obj.obj7, back);
    }
    std::remove(temp);
    if (!ok) return Fail(path, "written copy could not be read back");
    if (!difference.empty()) return Fail(path, "round trip differs: " + difference);
    std::cout << path << ": round trip ok (" << FormatName(obj.format) << ")\n";
    return kExitOk;
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app{"Inspect, validate and convert OBJ7/OBJ8 object files"};
    app.require_subcommand(1);

    std::string infoFile;
    CLI::App* info =
        app.add_subcommand("info", "Show the format, textures, counts, levels and validity of a file");
    info->add_option("FILE", infoFile, "Object file")->required();

    std::vector<std::string> validateFiles;
    CLI::App* validate = app.add_subcommand("validate", "Check that files read and are safe to draw");
    validate->add_option("FILE", validateFiles, "Object files")->required();

    std::string in, out, to = "obj8";
    bool force = false;
    CLI::App* convert =
        app.add_subcommand("convert", "Convert an OBJ7 or OBJ8 file to OBJ8 (or OBJ7 with --to obj7)");
    convert->add_option("IN", in, "Input object file")->required();
    convert->add_option("OUT", out, "Output object file")->required();
    convert->add_option("--to", to, "Output format")->check(CLI::IsMember({"obj8", "obj7"}));
    convert->add_flag("--force", force, "Allow OUT to be the input file");

    std::string roundFile;
    CLI::App* round = app.add_subcommand("roundtrip", "Read, write, read again and compare");
    round->add_option("FILE", roundFile, "Object file")->required();

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        return app.exit(e) == 0 ? kExitOk : kExitUsage; // --help is not an error
    }
    try {
        if (info->parsed()) return Info(infoFile);
        if (validate->parsed()) return Validate(validateFiles);
        if (convert->parsed()) return Convert(in, out, to, force);
        if (round->parsed()) return RoundTrip(roundFile);
    } catch (const std::exception& e) {
        std::cerr << "kalvora-obj: " << e.what() << "\n";
        return kExitFailed;
    }
    return kExitFailed;
}
