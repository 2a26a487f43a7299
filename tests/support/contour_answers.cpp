// Asking a contour everything.
#include "tests/support/contour_answers.h"

#include <sstream>

namespace qnOutlines {

namespace {

/// Collects answers of every shape as numbers.
struct Sheet {
    Answers list;

    void add(char const* name, double v) { list.emplace_back(name, v); }
    void add(char const* name, long v) { add(name, static_cast<double>(v)); }
    void add(char const* name, qcVector<2> const& v)
    {
        add(name, v.x());
        add(name, v.y());
    }
    void add(char const* name, qcRect const& v)
    {
        add(name, v.origin().position());
        add(name, v.lr().position());
    }
    void add(char const* name, qcCircle const& v)
    {
        add(name, v.center());
        add(name, v.radius());
    }
    template <class T>
    void add(char const* name, std::vector<T> const& values)
    {
        add(name, static_cast<double>(values.size()));
        for (auto const& v : values)
            add(name, v);
    }
    void add(char const* name, int v) { add(name, static_cast<double>(v)); }
};

/// Of the library's contour or the plain one.
template <class Contour>
Answers answersOf(Contour const& c, Questions const& questions)
{
    Sheet sheet;
    sheet.add("length", c.length());
    sheet.add("farthest pair", c.encloseCircle(qcContourDefs::eFarthestPair));
    sheet.add("first point", c.encloseCircle(qcContourDefs::eFromFirstPoint));
    sheet.add("crosses itself", c.isSelfIntersecting() ? 1.0 : 0.0);
    if (c.points().size() < 2)
        return sheet.list;
    sheet.add("mean position", c.meanPosition());
    sheet.add("median edge", c.medianFeatureSize());
    for (auto const& place : questions.places) {
        sheet.add("closest vertex", c.closestVertexIndex(place));
        sheet.add("closest point", c.closestPoint(place, false));
        sheet.add("closest vertex position", c.closestPoint(place, true));
        sheet.add("distance", c.distToPoint(place, false));
        for (double const tolerance : questions.tolerances)
            sheet.add("vertices near", c.vertexIndex(place, tolerance));
    }
    for (auto const& segment : questions.segments)
        for (bool const touchingEnds : {false, true}) {
            std::vector<int> edges{7};
            sheet.add("crossings", c.intersections(segment, edges, touchingEnds));
            sheet.add("edges crossed", edges);
        }
    for (double const angle : questions.angles)
        sheet.add("extremal vertex", c.extremalVertexIndex(qcRadian(angle)));
    for (auto const& xform : questions.xforms)
        sheet.add("rectangle", c.encloseRect(xform));
    return sheet.list;
}

}  // namespace

Questions questionsAbout(Outline const& outline, std::mt19937& random)
{
    auto const& points = outline.points;
    Questions questions;
    questions.places = {{0.5, 0.25}, {-2, 1}};
    double size = 1;
    if (!points.empty()) {
        auto const vertex = [&] { return points[random() % points.size()]; };
        size = points[0].distance(vertex()) + 1e-3 * points[0].len();
        for (int i = 0; i < 3; ++i)
            questions.places.push_back(vertex());
        questions.places.push_back((vertex() + vertex()) * 0.5);
        questions.places.push_back(vertex() * 2 - vertex());
        questions.places.push_back(vertex() + qcVector<2>(0.9e-6, -2e-7));
        questions.places.push_back(vertex() + qcVector<2>(size, uniform(random, 0, size)));
    }
    auto const& places = questions.places;
    for (int i = 0; i < 10; ++i)
        questions.segments.emplace_back(places[random() % places.size()],
                                        places[random() % places.size()]);
    for (auto const& edge : qnPlain::edges(points, outline.closed))
        if (random() % 4 == 0)
            questions.segments.emplace_back(edge.p2() * 2 - edge.p1(), edge.p1());
    questions.tolerances = {1, 0.5, 1.4142135623730951, size * 0.3, 1e-6, 1, 0, -1};
    double const quarter = 1.5707963267948966;
    questions.angles = {0,           quarter, 2 * quarter, 3 * quarter, 0.5 * quarter, -quarter,
                        4 * quarter, 0.3,     0.3 + 1e-16, 0,           1e15,          7};
    double const shift = uniform(random, -5, 5);
    questions.xforms = {qcXform<2>::I,
                        {{1, 0, 0, 2}, {0, 0}},
                        {{1, 0, 0, 1}, {shift, 0}},
                        {{0, -1, 1, 0}, {0, shift}},
                        {{1 + 4e-16, 0, 0, 1}, {5e-16, 0}},
                        {{0.6, -0.8, 0.8, 0.6}, {1, 2}},
                        qcXform<2>::I};
    return questions;
}

Answers ask(OpenContour const& contour, Questions const& questions)
{
    return answersOf(contour, questions);
}

Answers askPlain(Outline const& outline, Questions const& questions)
{
    return answersOf(qnPlain::Contour(outline.points, outline.closed), questions);
}

std::string difference(Answers const& a, Answers const& b)
{
    std::ostringstream text;
    text.precision(17);
    for (std::size_t i = 0; i < a.size() && i < b.size(); ++i) {
        double const v = a[i].second, w = b[i].second;
        if (a[i].first == b[i].first && (v == w || (v != v && w != w)))
            continue;
        text << a[i].first << " (" << i << "): " << v << ", " << b[i].first << ": " << w;
        return text.str();
    }
    if (a.size() != b.size())
        text << a.size() << " and " << b.size() << " answers";
    return text.str();
}

}  // namespace qnOutlines
