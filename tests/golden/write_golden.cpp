// Writes the golden archives of records that have no file yet into the folder given. Files that are
// there stay as they are: they are the promise to read what was written once.
#include "tests/support/golden_archives.h"

#include <exception>
#include <fstream>
#include <iostream>

int main(int argumentCount, char** arguments)
try {
    if (argumentCount != 2) {
        std::cerr << "usage: write_golden FOLDER\n";
        return 2;
    }
    for (auto const& golden : qnTest::goldenArchives()) {
        std::string const path = std::string(arguments[1]) + '/' + golden.name + ".archive";
        if (std::ifstream(path)) {
            bool const same = qnTest::readFile(path) == golden.bytes;
            std::cout << path << (same ? ": there already\n" : ": DIFFERS, left as it is\n");
            continue;
        }
        qnTest::writeFile(path, golden.bytes);
        std::cout << path << ": written\n";
    }
    return 0;
} catch (std::exception const& error) {
    std::cerr << "write_golden: " << error.what() << '\n';
    return 1;
}
