// Sets of regions, of 10, 100 and 1 000 members.
#include "support/ours.h"

namespace {

using namespace qnBench;

qcRegionSet regionSet(Work const& given)
{
    std::vector<qcPtrHandle_const<qcRegion>> regions;
    for (auto const& member : given.set)
        regions.emplace_back(new qcRegion(member));
    return qcRegionSet(regions);
}

/// A question to a set of fresh regions; making them is part of it.
template <class Ask>
bool firstOfSet(std::string const& question, Ask ask)
{
    return once(
        question, "cntr", [](Work const&) { return 0; },
        [ask](int, Work const& given) {
            auto set = regionSet(given);
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
