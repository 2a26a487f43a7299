// inspect_parts PHOTO.png FOLDER: finds the bright parts in a photograph, measures them, and leaves
// a picture, a table and an archive of them in a folder.
#include "report.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>

namespace {

namespace fs = std::filesystem;

template <class Write>
void writeFile(fs::path const& path, Write write)
{
    std::ofstream out(path);
    write(out);
    if (!out.flush())
        throw std::runtime_error("cannot write " + path.string());
}

void inspect(fs::path const& photo, fs::path const& folder)
{
    Image const photograph = readPng(photo.string());
    auto const parts = findParts(photograph, PartSettings());
    auto const regions = makeRegions(parts);
    TypedSet const set(regions);
    auto const measures = measure(regions, parts);
    printTable(std::cout, measures);
    if (regions.empty()) {
        std::cout << "no part found in " << photo.filename().string() << '\n';
        return;
    }
    qcVector<2> const center = set.centerOfMass(false);
    std::cout << "all " << regions.size() << " parts: area " << set.area(false) << ", centroid "
              << center.x() << ' ' << center.y() << ", outlines "
              << (set.isSelfIntersecting() ? "cross\n" : "do not cross\n");

    fs::create_directories(folder);
    // The picture shows the photograph from beside it, so that the folder can be moved.
    fs::path const copy = folder / photo.filename();
    if (!fs::exists(copy) || !fs::equivalent(photo, copy))
        fs::copy_file(photo, copy, fs::copy_options::overwrite_existing);
    writeFile(folder / "parts.svg", [&](std::ostream& out) {
        writePicture(out, photo.filename().string(), photograph, set, measures);
    });
    writeFile(folder / "parts.csv", [&](std::ostream& out) { writeCsv(out, measures); });
    std::string const archive = (folder / "parts.archive").string();
    save(archive, set);
    if (!same(set, load(archive)))
        throw std::runtime_error(archive + ": what was loaded differs from what was saved");
    std::cout << "saved and loaded back: outlines, labels and edge points are the same\n";
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::cerr << "usage: inspect_parts PHOTO.png FOLDER\n";
        return 2;
    }
    try {
        inspect(argv[1], argv[2]);
    } catch (std::exception const& error) {
        std::cerr << "inspect_parts: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
