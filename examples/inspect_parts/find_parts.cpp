// From the seeds' hulls to edge points with sub-pixel positions.
#include "find_parts.h"

#include "seeds.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace {

constexpr double kMargin = 1;    // nearer to the picture's border no gradient is known
constexpr long kNeighbours = 6;  // on either side, of an edge point

struct Sample {
    qcVector<2> place;   // on the hull
    qcVector<2> inward;  // unit
};

struct Hit {
    double offset;  // inwards of the hull
    qcEdgelet edgelet;
};

std::size_t around(std::size_t size, std::size_t k, long by)
{
    long const count = static_cast<long>(size);
    return static_cast<std::size_t>(((static_cast<long>(k) + by) % count + count) % count);
}

/// Places about a pixel apart along the hull.
std::vector<Sample> samplesAlong(qcContour const& hull)
{
    std::vector<Sample> samples;
    auto const& points = hull.points();
    for (std::size_t k = 0; k < points.size(); ++k) {
        auto const from = points[k];
        auto const step = points[around(points.size(), k, 1)] - from;
        int const count = std::max(1, static_cast<int>(std::lround(step.len())));
        // The hull runs counter-clockwise seen with y up, so the inside is on its left.
        auto const inward = qcVector<2>(-step.y(), step.x()).unit();
        for (int i = 0; i < count; ++i)
            samples.push_back({from + step * (double(i) / count), inward});
    }
    // The direction jumps at the hull's corners: take the mean over a few pixels.
    std::vector<Sample> result = samples;
    for (std::size_t k = 0; k < samples.size(); ++k) {
        qcVector<2> sum;
        for (long by = -3; by <= 3; ++by)
            sum += samples[around(samples.size(), k, by)].inward;
        result[k].inward = sum.unit();
    }
    return result;
}

/// The strongest rise of the grey level towards the inside, along the sample's normal.
std::optional<Hit> strongestEdge(Gradient const& gradient, Sample const& sample,
                                 PartSettings const& settings)
{
    constexpr double kStep = 0.25;
    int const steps = static_cast<int>(settings.reach / kStep);
    auto const rise = [&](int k) {
        auto const g = gradient.at(sample.place + sample.inward * (k * kStep));
        return g.x() * sample.inward.x() + g.y() * sample.inward.y();
    };
    int best = -steps;
    for (int k = -steps + 1; k <= steps; ++k) {
        if (rise(k) > rise(best))
            best = k;
    }
    if (best == -steps || best == steps || rise(best) < settings.leastContrast)
        return std::nullopt;
    // The vertex of the parabola through three places a pixel apart.
    int const apart = static_cast<int>(1 / kStep);
    double const before = rise(best - apart), peak = rise(best), after = rise(best + apart);
    double const bend = before - 2 * peak + after;
    double const shift = bend < 0 ? std::clamp((before - after) / (2 * bend), -0.5, 0.5) : 0.0;
    double const offset = best * kStep + shift;

    auto const place = sample.place + sample.inward * offset;
    if (!gradient.x.within(place, kMargin))
        return std::nullopt;
    auto const g = gradient.at(place);
    long const code = std::lround(std::atan2(g.y(), g.x()) * (128 / qnAngle::kPi));
    double const magnitude = std::min(65535.0, std::round(16 * g.len()));
    return Hit{offset, qcEdgelet(place, static_cast<unsigned short>(magnitude),
                                 qcAngle8(static_cast<unsigned char>(code & 255)))};
}

/// Drops the hits that stand apart from their neighbours: edges of the relief, of specks and of
/// chips.
std::vector<qcEdgelet> consistent(std::vector<Hit> const& hits)
{
    constexpr double kApart = 1.0;
    std::vector<qcEdgelet> kept;
    for (std::size_t k = 0; k < hits.size(); ++k) {
        std::vector<double> offsets;
        for (long by = -kNeighbours; by <= kNeighbours; ++by)
            offsets.push_back(hits[around(hits.size(), k, by)].offset);
        std::nth_element(offsets.begin(), offsets.begin() + kNeighbours, offsets.end());
        if (std::abs(hits[k].offset - offsets[kNeighbours]) <= kApart)
            kept.push_back(hits[k].edgelet);
    }
    return kept;
}

/// Whether the outline comes so close to the picture's border that no gradient is known beside it.
bool reachesBorder(Image const& image, qcContour const& hull)
{
    auto const& corners = hull.points();
    return !std::all_of(corners.begin(), corners.end(),
                        [&](auto const& corner) { return image.within(corner, kMargin); });
}

}  // namespace

std::vector<Part> findParts(Image const& photograph, PartSettings const& settings)
{
    Image const smooth = smoothed(photograph, settings.smoothing);
    Gradient const gradient(smooth);
    std::vector<Part> parts;
    for (auto const& seed : findSeeds(smooth, settings)) {
        qcRegion hull;
        qcContour(seed).convexHull(hull);
        std::vector<Hit> hits;
        for (Sample const& sample : samplesAlong(hull)) {
            if (auto const hit = strongestEdge(gradient, sample, settings))
                hits.push_back(*hit);
        }
        auto edge = consistent(hits);
        if (edge.size() >= kNeighbours)
            parts.push_back({std::move(edge), reachesBorder(photograph, hull)});
    }
    return parts;
}
