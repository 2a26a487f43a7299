// Regions go to an archive and come back; what was shared is shared again.
#include <cntr/cntr.h>

#include <iostream>

int main()
{
    std::vector<qcVector<2>> const outline{{0, 0}, {9, 0}, {9, 9}, {0, 9}};
    std::vector<qcVector<2>> const opening{{3, 3}, {6, 3}, {6, 6}, {3, 6}};
    qcPtrHandle<qcRegion> const hole(new qcRegion(opening));
    qcPtrHandle<qcRegion> const left(new qcRegion(outline)), right(new qcRegion(outline));
    left->holes(std::vector<qcPtrHandle<qcRegion>>{hole});
    right->holes(std::vector<qcPtrHandle<qcRegion>>{hole});
    right->label(7);

    // A qcFileArchive does the same in a file, and replaces it only when it is complete.
    qcRegionSet parts(std::vector<qcPtrHandle<qcRegion>>{left, right});
    qcMemoryArchive storing;
    storing || parts;
    storing.close();
    std::cout << storing.bytes().size() << " bytes\n";  // 313

    qcRegionSet loaded;
    qcMemoryArchive loading(storing.bytes());
    loading || loaded;
    loading.close();
    auto const regions = loaded.regions();
    std::cout << (loaded == parts) << ' ' << loaded.area(true) << '\n';       // 1 144
    std::cout << regions[1]->label() << '\n';                                 // 7
    std::cout << (regions[0]->holes()[0] == regions[1]->holes()[0]) << '\n';  // 1: one object

    // Half an archive is an error, and what was read before it is not to be relied on.
    auto const middle = storing.bytes().begin() + 100;
    qcMemoryArchive broken(std::vector<unsigned char>(storing.bytes().begin(), middle));
    try {
        qcRegionSet part;
        broken || part;
    } catch (qcArchive::EndOfData const& error) {
        std::cout << error.what() << '\n';  // qcArchive::EndOfData: the data end before the value
    }
}
