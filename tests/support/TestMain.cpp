// Test entry: settings go to a private folder so the user's own are never touched.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <unistd.h>

#include "app/Startup.h"
#include "core/framework/MixTables.h"

int main(int argc, char** argv) {
    std::string dir = (std::filesystem::temp_directory_path() / ("kelpwick-test-" + std::to_string(getpid()))).string();
    std::filesystem::create_directories(dir + "/config");
    setenv("HOME", dir.c_str(), 1);
    setenv("XDG_CONFIG_HOME", (dir + "/config").c_str(), 1);
    BuildMixTables(nullptr);
    Kelpwick::Compose();  // the same menus, keys, tools and hooks as the program
    ::testing::InitGoogleTest(&argc, argv);
    int rc = RUN_ALL_TESTS();
    std::error_code ec;
    std::filesystem::remove_all(dir, ec);
    return rc;
}
