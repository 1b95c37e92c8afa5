// What the program's command line asks for: start as usual, open a file after
// start-up, or print help or the version and leave.
#pragma once

#include <string>
#include <vector>

struct CommandLine {
    enum class Action { Start, Help, Version, Error };
    Action action = Action::Start;
    std::string file;   // opened after start-up when not empty
    std::string error;  // what was wrong, for Action::Error
};

// args are the arguments after the program name.
CommandLine ParseCommandLine(const std::vector<std::string>& args);

// Opens a file named on the command line: an animation by its "KWA1" mark, any
// other file as a picture.
void OpenFromCommandLine(const std::string& path);

std::string CommandLineUsage();
std::string VersionText();

// The folder of the default files: share/kelpwick beside an installed program's
// lib/kelpwick, else the program's own folder (the build tree keeps them there).
std::string DefaultFilesFolder(const std::string& programDir);
