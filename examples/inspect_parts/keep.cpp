// Saves the parts to an archive and loads them again.
#include "report.h"

void save(std::string const& path, TypedSet const& set)
{
    TypedSet stored = set;
    // Each object that an archive sees needs an address of its own until the archive closes.
    std::vector<qcContourT<qcEdgelet>> contours;
    for (auto const& region : set.regionsT())
        contours.emplace_back(*region);

    qcFileArchive archive(path, qcFileArchive::eStore);
    archive || stored;
    for (auto& contour : contours)
        archive || contour;
    archive.close();
}

TypedSet load(std::string const& path)
{
    qcFileArchive archive(path, qcFileArchive::eLoad);
    TypedSet plain;
    archive || plain;
    auto const outlines = plain.regionsT();
    std::vector<qcContourT<qcEdgelet>> contours(outlines.size());
    std::vector<qcPtrHandle<TypedRegion>> regions;
    for (std::size_t k = 0; k < outlines.size(); ++k) {
        archive || contours[k];
        regions.emplace_back(new TypedRegion(contours[k], outlines[k]->label()));
    }
    archive.close();
    return TypedSet(regions);
}

bool same(TypedSet const& a, TypedSet const& b)
{
    auto const left = a.regionsT(), right = b.regionsT();
    bool equal = a == b && left.size() == right.size();
    for (std::size_t k = 0; equal && k < left.size(); ++k)
        equal = left[k]->label() == right[k]->label() && left[k]->data() == right[k]->data();
    return equal;
}
