// Lengths, areas, centres, moments, boxes and fits: each computed once for an outline.
#include "support/ours.h"

namespace {

using namespace qnBench;

bool const registered[] = {
    firstTime<qcContour>("perimeter",
                         [](qcContour const& contour, Work const&) { return contour.length(); }),
    once("area", "cntr", points,
         [](Points const& outline, Work const&) { return std::abs(qf_Area(outline)); }),
    once("centre", "cntr", points,
         [](Points const& outline, Work const&) {
             auto const center = qf_CenterOfMass(outline);
             return center.x() + 3 * center.y();
         }),
    once("second_moments", "cntr", points,
         [](Points const& outline, Work const&) {
             auto const matrix = qf_InertiaDataPolygon(outline).inertiaMatrix();
             return matrix.element(0, 0) + matrix.element(1, 1);
         }),
    firstTime<qcContour>("box",
                         [](qcContour const& contour, Work const&) {
                             auto const size = contour.encloseRect(qcXform<2>::I).size();
                             return size.x() * size.y();
                         }),
    firstTime<qcContour>("mean_position", [](qcContour const& contour,
                                             Work const&) { return contour.meanPosition().x(); }),
    once("ellipse_fit", "cntr", points,
         [](Points const& outline, Work const&) {
             qcEllipse ellipse;
             double residual = 0;
             qf_FitEllipse(outline, ellipse, residual);
             auto const radii = ellipse.radii();
             return radii.x() * radii.y();
         }),
};

}  // namespace
