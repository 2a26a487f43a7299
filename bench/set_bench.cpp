// Sets of regions, of 10, 100 and 1 000 members.
#include "support/ours.h"

namespace {

using namespace qnBench;

using Regions = std::vector<qcPtrHandle<qcRegion>>;

Regions regionsOf(Work const& given)
{
    Regions regions;
    for (auto const& member : given.set)
        regions.emplace_back(new qcRegion(member));
    return regions;
}

qcRegionSet regionSet(Work const& given)
{
    return qcRegionSet(regionsOf(given));
}

/// A question to a set of regions that keep nothing of former ones.
template <class Ask>
bool firstOfSet(std::string const& question, Ask ask)
{
    return once(question, "cntr", regionsOf, [ask](Regions& regions, Work const&) {
        for (auto const& region : regions)
            forget(*region);
        qcRegionSet const set(regions);
        return ask(set);
    });
}

std::vector<unsigned char> storedSet(Work const& given)
{
    auto set = regionSet(given);
    qcMemoryArchive archive;
    archive || set;
    archive.close();
    return archive.bytes();
}

bool const registered[] = {
    firstOfSet("set_crossing", [](qcRegionSet const& set) { return set.isSelfIntersecting(); }),
    firstOfSet("set_area", [](qcRegionSet const& set) { return std::abs(set.area(false)); }),
    firstOfSet("set_moments",
               [](qcRegionSet const& set) { return set.inertiaMatrix(false).element(0, 0); }),
    firstOfSet("set_regularise",
               [](qcRegionSet const& set) {
                   qcRegionSet result;
                   set.regularize(result);
                   return result.regions().size();
               }),
    repeated("set_inside", "cntr", regionSet,
             [](auto const& set, Work const& given, auto i) {
                 return set.inside(given.queries[i], false);
             }),
    repeated("set_distance", "cntr", regionSet,
             [](auto const& set, Work const& given, auto i) {
                 return set.distToPoint(given.queries[i], false, false, false);
             }),
    once("set_save", "cntr", regionSet,
         [](qcRegionSet& set, Work const&) {
             qcMemoryArchive archive;
             archive || set;
             archive.close();
             return archive.bytes().size();
         }),
    once("set_load", "cntr", storedSet,
         [](auto const& bytes, Work const&) {
             qcMemoryArchive archive(bytes.data(), bytes.size());
             qcRegionSet set;
             archive || set;
             return set.regions().size();
         }),
};

}  // namespace
