/// Runs the command in a folder with some outlines.
#pragma once

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

struct Outcome {
    int status;
    std::string out, err;
};

inline std::string contentOf(std::filesystem::path const& file)
{
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// Runs in a folder of its own.
class Command : public testing::Test {
protected:
    void SetUp() override
    {
        namespace fs = std::filesystem;
        folder_ = fs::temp_directory_path() / ("cntr_command_test_" + std::to_string(::getpid()));
        fs::remove_all(folder_);
        fs::create_directory(folder_);
        write("square.wkt",
              "# sq\nPOLYGON ((0 0, 4 0, 4 4, 0 4, 0 0), (1 1, 2 1, 2 2, 1 2, 1 1))\n");
        write("moved.wkt", "POLYGON ((2 3, 6 3, 6 7, 2 7))\n");
        write("line.csv", "0,0\n3,4\n3,8\n");
        write("eight.csv", "0,0\n10,10\n10,0\n0,10\n");
        write("bad.wkt", "LINESTRING (0 0, 1 1)\nPOLYGON ((0 0, 1 x))\n");
        write("hole.wkt", "# h\nPOLYGON ((0 0, 9 0, 9 9), (5 1, 6 1, 6 2), (8 1, 11 1, 11 2))\n" +
                              contentOf(folder_ / "square.wkt"));
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    void write(char const* name, std::string const& text) const
    {
        std::ofstream(folder_ / name, std::ios::binary) << text;
    }

    /// `redirect` may send standard output elsewhere; `before` is run by the shell.
    Outcome run(std::string const& arguments, std::string const& redirect = ">.out",
                std::string const& before = "") const
    {
        std::string const line = "cd '" + folder_.string() + "' && rm -f .out && " + before +
                                 "'" CNTR_COMMAND "' " + arguments + " 2>.err " + redirect;
        int const status = std::system(line.c_str());
        EXPECT_TRUE(WIFEXITED(status)) << arguments;
        return {WEXITSTATUS(status), contentOf(folder_ / ".out"), contentOf(folder_ / ".err")};
    }

    std::string file(char const* name) const { return contentOf(folder_ / name); }
    std::filesystem::path folder_;
};

inline bool holds(std::string const& text, char const* part)
{
    return text.find(part) != std::string::npos;
}
