// The library's answers about each part.
#include "report.h"

#include <algorithm>
#include <iomanip>
#include <limits>
#include <ostream>
#include <utility>

std::vector<qcPtrHandle<TypedRegion>> makeRegions(std::vector<Part> const& parts)
{
    std::vector<qcPtrHandle<TypedRegion>> regions;
    regions.reserve(parts.size());
    for (Part const& part : parts)
        regions.emplace_back(new TypedRegion(part.edge, regions.size() + 1));
    return regions;
}

namespace {

/// The smallest distance between two outlines that do not meet: it is always at a vertex of one.
double gap(TypedRegion const& a, TypedRegion const& b)
{
    double smallest = std::numeric_limits<double>::infinity();
    for (auto const& vertex : a.points())
        smallest = std::min(smallest, b.distToPoint(vertex, false));
    for (auto const& vertex : b.points())
        smallest = std::min(smallest, a.distToPoint(vertex, false));
    return smallest;
}

Measures measureOne(TypedRegion& region)
{
    Measures m;
    m.label = region.label();
    m.edgePoints = region.data().size();
    m.area = region.area(false);
    m.centroid = region.centerOfMass(false);
    m.equalMoments =
        qf_EllipseFromInertiaData(qc_InertiaData(m.area, m.centroid, region.inertiaMatrix(false)));
    m.farthestPair = region.diameter(qcContourDefs::eFarthestPair);
    m.fromFirstPoint = region.diameter(qcContourDefs::eFromFirstPoint);
    qcRegion hull;
    region.convexHull(hull);
    m.solidity = m.area / hull.area(false);
    qcEllipse fitted;
    qf_FitEllipse(region.data(), fitted, m.fitResidual);
    return m;
}

}  // namespace

std::vector<Measures> measure(std::vector<qcPtrHandle<TypedRegion>> const& regions,
                              std::vector<Part> const& parts)
{
    std::vector<Measures> all;
    for (std::size_t k = 0; k < regions.size(); ++k) {
        all.push_back(measureOne(*regions[k]));
        all[k].touchesBorder = parts[k].touchesBorder;
    }
    for (std::size_t i = 0; i < all.size(); ++i) {
        for (std::size_t k = 0; k < i; ++k) {
            double const distance = gap(*regions[i], *regions[k]);
            for (auto [one, other] : {std::pair{i, k}, std::pair{k, i}}) {
                if (all[one].nearest == 0 || distance < all[one].nearestDistance) {
                    all[one].nearest = all[other].label;
                    all[one].nearestDistance = distance;
                }
            }
        }
    }
    return all;
}

void printTable(std::ostream& out, std::vector<Measures> const& all)
{
    auto const column = [&](int width, auto const& value) -> std::ostream& {
        return out << std::setw(width) << value;
    };
    out << std::fixed << std::setprecision(2);
    out << "part points     area centroid x,y     ellipse of moments     diameter     hull    fit"
           "  nearest\n"
           "                                        half axes   turned  pair   first solid  resid"
           "  part   gap\n";
    for (Measures const& m : all) {
        column(4, m.label) << (m.touchesBorder ? '*' : ' ');
        column(6, m.edgePoints);
        column(9, m.area);
        column(8, m.centroid.x());
        column(8, m.centroid.y());
        column(8, m.equalMoments.radii().x());
        column(6, m.equalMoments.radii().y());
        column(8, qcDegree(m.equalMoments.rotation()).norm().toDouble());
        column(7, m.farthestPair);
        column(8, m.fromFirstPoint);
        out << std::setprecision(3);
        column(7, m.solidity);
        out << std::setprecision(2);
        column(6, m.fitResidual);
        column(6, m.nearest);
        column(7, m.nearestDistance) << '\n';
    }
    bool const any = std::any_of(all.begin(), all.end(), [](auto& m) { return m.touchesBorder; });
    out << (any ? "* reaches the border of the picture: what lies beyond is not measured\n"
                : "no part reaches the border of the picture\n");
}

void writeCsv(std::ostream& out, std::vector<Measures> const& all)
{
    out << "label,area,x,y,half_axis_1,half_axis_2,turned,farthest_pair,from_first_point,solidity,"
           "fit_residual,nearest,gap,touches_border\n"
        << std::setprecision(10) << std::defaultfloat;
    for (Measures const& m : all) {
        out << m.label << ',' << m.area << ',' << m.centroid.x() << ',' << m.centroid.y() << ','
            << m.equalMoments.radii().x() << ',' << m.equalMoments.radii().y() << ','
            << qcDegree(m.equalMoments.rotation()).norm().toDouble() << ',' << m.farthestPair << ','
            << m.fromFirstPoint << ',' << m.solidity << ',' << m.fitResidual << ',' << m.nearest
            << ',' << m.nearestDistance << ',' << m.touchesBorder << '\n';
    }
}
