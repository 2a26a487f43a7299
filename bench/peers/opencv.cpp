// OpenCV, on one thread, with its 32-bit floats.
#include "support/questions.h"

#include <opencv2/imgproc.hpp>

namespace {

using namespace qnBench;
using Flat = std::vector<cv::Point2f>;

Flat flat(Work const& given)
{
    cv::setNumThreads(1);
    Flat made;
    for (auto const& at : given.outline)
        made.emplace_back(static_cast<float>(at.x()), static_cast<float>(at.y()));
    return made;
}

bool const registered[] = {
    once("second_moments", "OpenCV", flat,
         [](Flat const& points, Work const&) {
             auto const moments = cv::moments(points);
             return moments.mu20 + moments.mu02;
         }),
    once("ellipse_fit", "OpenCV", flat,
         [](Flat const& points, Work const&) {
             if (points.size() < 5)  // it refuses fewer
                 return 0.0;
             auto const box = cv::fitEllipse(points);
             return static_cast<double>(box.size.width * box.size.height) / 4;
         }),
};

}  // namespace
