// Two outlines joined into one, seen through the sets that do it.
#include "tests/support/regions.h"

#include <cntr/regionst.h>

#include <gtest/gtest.h>

using namespace qnTest;

namespace {

std::vector<Points> merged(std::vector<Points> const& outlines, bool outerHull)
{
    std::vector<Hole> regions;
    for (auto const& outline : outlines)
        regions.push_back(holeOf(outline));
    qcRegionSet set(regions, outerHull ? qcContourDefs::eOuterHull : qcContourDefs::eRegularize);
    std::vector<Points> result;
    for (auto const& region : set.regions())
        result.push_back(region->points());
    return result;
}

Points cleaned(Points const& outline, bool outerHull)
{
    if (!regionOf(outline).isSelfIntersecting())
        return outline;
    return outerHull ? qnPlain::outerHull(outline) : qnPlain::boundaryWalk(outline);
}

}  // namespace

TEST(RegionSplice, StartsAtTheFirstCrossingOfTheFirstOutline)
{
    Points const spliced{{10, 5}, {10, 10}, {0, 10},  {0, 0},  {10, 0},
                         {10, 5}, {15, 5},  {15, 15}, {5, 15}, {5, 5}};
    EXPECT_EQ(qnPlain::splice(square(0, 0, 10), square(5, 5, 10)), spliced);
    for (bool const outerHull : {false, true})
        EXPECT_EQ(merged({square(0, 0, 10), square(5, 5, 10)}, outerHull),
                  std::vector<Points>{cleaned(spliced, outerHull)});
}

TEST(RegionSplice, JoinsWhatThePlainStepsJoin)
{
    Points const pinched{{2, 2}, {2, 2}, {14, 3}, {2, 4}};  // begins with an edge of no length
    struct {
        char const* name;
        Points first, second;
    } const cases[] = {
        {"squares", square(0, 0, 10), square(3, -4, 9)},
        {"second inside, vertex on an edge", square(0, 0, 10), {{5, 0}, {6, 4}, {4, 4}}},
        {"an edge of no length", pinched, square(0, 0, 10)},
        {"a cross of bars", {{0, 4}, {10, 4}, {10, 6}, {0, 6}}, {{4, 0}, {6, 0}, {6, 10}, {4, 10}}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        for (bool const outerHull : {false, true}) {
            auto const both = [&] {
                return cleaned(qnPlain::splice(c.first, c.second), outerHull);
            };
            Points plain;
            try {
                plain = both();
            } catch (qcContourDefs::Errors const&) {
                EXPECT_THROW(merged({c.first, c.second}, outerHull), qcContourDefs::Errors);
                continue;
            }
            EXPECT_EQ(merged({c.first, c.second}, outerHull), std::vector<Points>{plain});
        }
    }
    EXPECT_THROW(qnPlain::splice(square(0, 0, 10), square(2, 2, 2)), qcContourDefs::BadParams);
    EXPECT_EQ(merged({square(0, 0, 10), square(2, 2, 2)}, false).size(), 2u);
}
