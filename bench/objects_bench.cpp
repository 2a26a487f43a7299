// Contours as objects: saved, loaded, copied fresh and with filled caches, mapped.
#include "support/ours.h"

namespace {

using namespace qnBench;

/// What `use` makes of the bytes that the contour is stored in.
template <class Use>
auto stored(qcContour& contour, Use use)
{
    qcMemoryArchive archive;
    archive || contour;
    archive.close();
    return use(archive.bytes());
}

std::size_t loadedSize(std::vector<unsigned char> const& bytes)
{
    qcMemoryArchive archive(bytes.data(), bytes.size());
    qcContour contour;
    archive || contour;
    return contour.points().size();
}

std::vector<unsigned char> storedContour(Work const& given)
{
    qcContour contour(given.outline);
    return stored(contour, [](auto const& bytes) { return bytes; });
}

/// A contour that has answered one question of each kind.
qcContour queried(Work const& given)
{
    qcContour contour(given.outline);
    for (auto const& point : given.queries)
        benchmark::DoNotOptimize(contour.distToPoint(point, false));
    benchmark::DoNotOptimize(contour.intersections(segment(given.longSegments[0]), true));
    benchmark::DoNotOptimize(contour.encloseRect(qcXform<2>::I));
    benchmark::DoNotOptimize(contour.length());
    return contour;
}

auto const copied = [](qcContour const& contour, Work const&) {
    return qcContour(contour).points().size();
};

bool const registered[] = {
    once("save", "cntr", prepared<qcContour>,
         [](qcContour& contour, Work const&) {
             return stored(contour, [](auto const& bytes) { return bytes.size(); });
         }),
    once("load", "cntr", storedContour,
         [](auto const& bytes, Work const&) { return loadedSize(bytes); }),
    once("save_load", "cntr", prepared<qcContour>,
         [](qcContour& contour, Work const&) { return stored(contour, loadedSize); }),
    once("copy", "cntr", prepared<qcContour>, copied),
    once("copy_queried", "cntr", queried, copied),
    once("map", "cntr", prepared<qcContour>,
         [](qcContour const& contour, Work const&) {
             qcContour result;
             contour.map(qcXform<2>(qcMatrix<2>(0.8, -0.6, 0.6, 0.8), qcVector<2>(10, 20)), result);
             return result.points().front().x();
         }),
};

}  // namespace
