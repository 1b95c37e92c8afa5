// The application record and the program folder.
#include "core/framework/AppState.h"

#include <filesystem>

AppState App;

std::string ProgramFile(const std::string& name) {
    if (name.empty() || name.front() == '/' || App.StartDirectory.empty()) return name;
    return (std::filesystem::path(App.StartDirectory) / name).string();
}
