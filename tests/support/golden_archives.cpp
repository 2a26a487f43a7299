// The golden objects, and the old records composed by hand.
#include "tests/support/golden_archives.h"

#include "tests/support/regions.h"

#include <cntr/cntrtmpl.h>

#include <cstring>

namespace qnTest {
namespace {

using Plain = qcRegion;
using Typed = qcRegionT<qcEdgelet>;
using TypedContour = qcContourT<qcEdgelet>;

Root contour(Points const& points, bool closed, unsigned long label, long size)
{
    Root root = rootOf(new qcContour(points, closed, label));
    dynamic_cast<qcContour&>(*root.object).cachedVectorSize(size);
    return root;
}

/// An island in one hole; the other hole stands in the list twice.
Root regionWithHoles()
{
    auto* const region = new Plain(square(-10, -10, 20));
    Root const root = rootOf(region);
    qcPtrHandle<Plain> const pond(new Plain(square(-7, -3, 6)));
    pond->holes({holeOf(square(-5, -1, 2))});
    Hole const twice = holeOf(square(3.5, 3.5, 3));
    region->holes({pond, twice, twice});
    region->label(4294967295UL);
    return root;
}

/// A shared region, a null entry, a hole that is a member as well, and a region with edge points.
Root mixedSet()
{
    Hole const shared = holeOf(square(-1, -1, 2));
    qcPtrHandle<Plain> const holder(new Plain(square(-5, -5, 10)));
    holder->holes({shared});
    qcPtrHandle<Typed> const typed(new Typed);
    static_cast<Plain&>(*typed) = Plain(square(18, -2, 4));
    Root root = rootOf(new qcRegionSet({shared, Hole(), holder, shared, typed}));
    dynamic_cast<qcRegionSet&>(*root.object).cachedVectorSize(0);
    return root;
}

Root typedContour()
{
    qcPtrHandle_const<qc2XformBase> const xform(
        new qc2XformLinear(qcMatrix<2>(2, 0, 0, 4), {1, -1}));
    std::vector<qcEdgelet> const edgelets{
        {{1, 2}, 0, qcAngle8(0)}, {{5, -2}, 65535, qcAngle8(255)}, {{3, 7}, 300, qcAngle8(64)}};
    auto* const made = new TypedContour(edgelets, xform);
    made->label(3);
    return rootOf(made);
}

/// The record keeps no data: outline, label and holes come back.
Root typedRegion()
{
    auto* const made = new Typed;
    static_cast<Plain&>(*made) = dynamic_cast<Plain&>(*regionWithHoles().object);
    made->label(12);
    return rootOf(made);
}

Root typedSet()
{
    qcPtrHandle<Typed> const typed(new Typed);
    static_cast<Plain&>(*typed) = Plain(square(0, 0, 2));
    return rootOf(new qcRegionSetT<qcEdgelet>({typed, qcPtrHandle_const<Typed>(), typed}));
}

Root versionZeroRegion(Points const& points)
{
    auto* const made = new Plain;
    static_cast<qcContour&>(*made) = qcContour(points, false, 0);
    made->cachedVectorSize(9);
    return rootOf(made);
}

Bytes setOfVersionZero()
{
    Composer c;
    c.newObject("qcRegionSet").byte(0, 0, 0).number(4);
    c.newObject("qcRegion").byte(0, 0, 0);  // with the base of old, once an archive
    c.pointList({{0, 0}, {1, 0}, {0, 1}}).byte(77).number(9);
    c.null().reference(2);
    return c.newObject("qcRegion").byte(0).pointList({{5, 5}}).byte(1).number(9).bytes();
}

Root setOfVersionZeroExpected()
{
    Root const roots[] = {versionZeroRegion({{0, 0}, {1, 0}, {0, 1}}), versionZeroRegion({{5, 5}})};
    Hole const first(dynamic_cast<Plain*>(roots[0].object));
    Hole const last(dynamic_cast<Plain*>(roots[1].object));
    return rootOf(new qcRegionSet({first, Hole(), first, last}));
}

std::vector<Golden> oldRecords()
{
    Composer contourV0, regionV0, typedV0;
    contourV0.newObject("qcContour").byte(0, 0, 0);
    contourV0.pointList({{1.5, -2}, {3, 4}}).byte(200).number(6).byte(0);
    regionV0.newObject("qcRegion").byte(0, 0, 0);
    regionV0.pointList({{0, 0}, {4, 0}, {4, 4}}).byte(1).number(9);
    typedV0.newObject("qcContourT<qcEdgelet>").byte(0).contour(8, {{1, 2}}).byte(0).number(0);
    auto const contourMade = [] { return contour({{1.5, -2}, {3, 4}}, false, 0, 6); };
    auto const regionMade = [] { return versionZeroRegion({{0, 0}, {4, 0}, {4, 4}}); };
    auto const typedMade = [] {
        auto* const made = new TypedContour;
        static_cast<qcContour&>(*made) = qcContour(Points{{1, 2}}, true, 8);
        return rootOf(made);
    };
    return {{"contour_v0", false, contourMade, contourV0.bytes()},
            {"region_v0", false, regionMade, regionV0.bytes()},
            {"region_set_v0", false, setOfVersionZeroExpected, setOfVersionZero()},
            {"typed_contour_v0", false, typedMade, typedV0.bytes()}};
}

}  // namespace

std::vector<Golden> goldenArchives()
{
    std::vector<Golden> all = oldRecords();
    auto const add = [&](char const* name, std::function<Root()> make) {
        Bytes const bytes = store(*make().object);
        all.push_back({name, true, std::move(make), bytes});
    };
    add("contour_v1", [] { return contour({{0.1, -0.0}, {1e308, 5e-324}, {3, 4}}, false, 7, 5); });
    add("contour_v1_empty", [] { return contour({}, true, 0, 0); });
    add("empty_contour_v0", [] { return rootOf(new qcContourDefs::EmptyContour); });
    add("empty_region_set_v0",
        [] { return rootOf(new qcContourDefs::EmptyRegionSet(L"no regions")); });
    add("bad_params_v0",
        [] { return rootOf(new qcContourDefs::BadParams(L"Fl\u00e4che \u2264 0 \U0001F4D0")); });
    add("region_cannot_be_set_open_v0",
        [] { return rootOf(new qcContourDefs::RegionCannotBeSetOpen(std::wstring(1, L'\0'))); });
    add("region_v1", regionWithHoles);
    add("region_v1_empty", [] { return rootOf(new Plain); });
    add("region_set_v1", mixedSet);
    add("region_set_v1_empty", [] { return rootOf(new qcRegionSet); });
    add("typed_contour_v1", typedContour);
    add("typed_contour_v1_no_transform", [] { return rootOf(new TypedContour); });
    add("typed_region_v0", typedRegion);
    add("typed_region_set_v0", typedSet);
    return all;
}

Composer& Composer::byte(int value)
{
    bytes_.push_back(static_cast<unsigned char>(value));
    return *this;
}

Composer& Composer::number(unsigned long value)
{
    for (int i = 0; i < 4; ++i)
        byte(static_cast<int>((value >> (8 * i)) & 0xFF));
    return *this;
}

Composer& Composer::real(double value)
{
    unsigned long long bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return number(bits & 0xFFFFFFFFUL).number(bits >> 32);
}

Composer& Composer::text(std::string const& characters)
{
    number(characters.size());
    bytes_.insert(bytes_.end(), characters.begin(), characters.end());
    return *this;
}

Composer& Composer::pointList(std::vector<std::pair<double, double>> const& points)
{
    byte(0).number(points.size());
    for (auto const& p : points)
        real(p.first).real(p.second);
    return *this;
}

Composer& Composer::contour(unsigned long label,
                            std::vector<std::pair<double, double>> const& points)
{
    return byte(1, 0).number(label).byte(1).pointList(points).number(3);
}

Composer& Composer::newContour(int closed, std::vector<std::pair<double, double>> const& points,
                               unsigned long bound)
{
    newObject("qcContour").byte(1, 0).number(0).byte(closed);
    return pointList(points).number(bound);
}

Composer& Composer::newRegion(unsigned long holes,
                              std::vector<std::pair<double, double>> const& points)
{
    return newObject("qcRegion").byte(1).contour(0, points).byte(0).number(holes);
}

}  // namespace qnTest
