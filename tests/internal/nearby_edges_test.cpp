// The edges around a stretch of an outline meet a query exactly as all edges do, or are not asked.
#include "cntr/internal/nearby_edges.h"
#include "tests/support/outlines.h"
#include "tests/support/plain_contour.h"
#include "tests/support/rounds.h"

#include <gtest/gtest.h>

using namespace qnInternal;
using qnOutlines::uniform;

namespace {

std::vector<EdgeHit> hitsOfAll(HitQuery const& query, Outline const& outline)
{
    std::vector<EdgeHit> all;
    forEachEdge(outline.points, outline.closed,
                [&](std::size_t edge, qcVector<2> const& p, qcVector<2> const& q) {
                    if (auto const point = query.meets(p, q))
                        all.push_back({*point, static_cast<int>(edge)});
                });
    query.sortAlong(all);
    return all;
}

}  // namespace

TEST(NearbyEdges, HitsAreThoseOfAllEdgesOrNotTold)
{
    std::mt19937 random(12);
    int told = 0, meetings = 0, untold = 0;
    for (auto const& outline : qnOutlines::randomised(41, qnTest::rounds(600))) {
        if (outline.points.size() <= 8 * BoxGroup::kSize)
            continue;
        SCOPED_TRACE(outline.name);
        EdgeIndex const index(outline.points, outline.closed);
        if (!index.regular())
            continue;
        NearbyEdges nearby({outline.points, outline.closed}, &index, 0.01);
        for (std::size_t i = 0; i < 300; ++i) {
            auto const k = (i / 3 * 7) % edgeCount(outline.points.size(), outline.closed);
            auto const& from = edgeStart(outline.points, outline.closed, k);
            auto const& to = edgeEnd(outline.points, outline.closed, k);
            // Along the edge, across it, and now and then far beyond.
            double const length = i % 5 == 4 ? 40 : 0.7;
            qcVector<2> const across(from.y() - to.y(), to.x() - from.x());
            qcVector<2> const way = i % 2 ? across * (0.01 * length) : (to - from) * length;
            qcVector<2> const a = from + (to - from) * uniform(random, 0, 0.3);
            HitQuery const query(a, random() % 2 ? a + way : a - way, random() % 2);
            std::vector<EdgeHit> found{{{7, 7}, 7}};
            if (!nearby.findHits(query, k, found)) {
                EXPECT_TRUE(found.size() == 1 && found[0].edge == 7) << "left as it was";
                ++untold;
                continue;
            }
            auto const all = hitsOfAll(query, {outline.points, outline.closed});
            ++told;
            meetings += !all.empty();
            ASSERT_EQ(found.size(), all.size());
            for (std::size_t n = 0; n < all.size(); ++n)
                EXPECT_TRUE(found[n].edge == all[n].edge && found[n].point == all[n].point);
        }
    }
    EXPECT_GT(told, 300);
    EXPECT_GT(meetings, 100);
    EXPECT_GT(untold, 100);
}
