// The command line: one optional file, --help and --version.
#include "app/CommandLine.h"

#include <filesystem>
#include <fstream>

#include "anim/AnimFile.h"
#include "file/FileMenu.h"


CommandLine ParseCommandLine(const std::vector<std::string>& args) {
    CommandLine line;
    bool optionsEnded = false;
    for (const std::string& a : args) {
        if (!optionsEnded && a == "--") {
            optionsEnded = true;
        } else if (!optionsEnded && (a == "-h" || a == "--help")) {
            return {CommandLine::Action::Help, {}, {}};
        } else if (!optionsEnded && (a == "-v" || a == "--version")) {
            return {CommandLine::Action::Version, {}, {}};
        } else if (!optionsEnded && a.size() > 1 && a.front() == '-') {
            return {CommandLine::Action::Error, {}, "unknown option '" + a + "'"};
        } else if (!line.file.empty()) {
            return {CommandLine::Action::Error, {}, "one file at a time ('" + line.file + "' and '" + a + "')"};
        } else {
            line.file = a;
        }
    }
    if (!line.file.empty()) {
        // Made absolute now: the program changes its working folder later.
        std::error_code ec;
        const auto absolute = std::filesystem::absolute(line.file, ec);
        if (!ec) line.file = absolute.lexically_normal().string();
    }
    return line;
}

void OpenFromCommandLine(const std::string& path) {
    char mark[4] = {};
    std::ifstream(path, std::ios::binary).read(mark, sizeof mark);
    if (std::string(mark, sizeof mark) == "KWA1")
        ReadAnimationFile(path);
    else
        OpenNamedFile(path);
}

std::string CommandLineUsage() {
    return "Usage: kelpwick [OPTION]... [FILE]\n"
           "Paint and animate on one picture. With FILE, open it after start-up: a Targa\n"
           "picture, any picture ImageMagick's convert reads, or a Kelpwick animation.\n"
           "\n"
           "  -h, --help     show this help and leave\n"
           "  -v, --version  show the version and leave\n";
}

std::string VersionText() { return std::string("kelpwick ") + KW_VERSION + "\n"; }

std::string DefaultFilesFolder(const std::string& programDir) {
    namespace fs = std::filesystem;
    const fs::path installed = fs::path(programDir) / ".." / ".." / "share" / "kelpwick";
    std::error_code ec;
    if (fs::is_regular_file(installed / "Def_Res.txt", ec)) return fs::weakly_canonical(installed, ec).string();
    return programDir;
}
