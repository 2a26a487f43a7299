// The register of questions: shapes and sizes of each, and when two answers are the same.
#include "support/questions.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <random>

namespace qnBench {

namespace {

/// What a question is asked of, and how far apart two answers to it may be, relative to the larger
/// one; below 0 where libraries mean different things by it, so that only times compare.
struct Question {
    std::string name;
    std::vector<std::string> shapes;
    double tolerance;
    std::vector<std::size_t> sizes;
};

std::vector<Question> const& questions()
{
    static std::vector<std::size_t> const sizes{4, 16, 64, 100, 1000, 10000, 100000};
    // Four points of a spiral lie on one line, and an ellipse has five parameters.
    static std::vector<std::size_t> const more{16, 64, 100, 1000, 10000, 100000};
    // Where a library goes by boxes alone, ten times as many edges take a hundred times as long.
    static std::vector<std::size_t> const upToTenThousand{16, 64, 100, 1000, 10000};
    static std::vector<std::size_t> const members{10, 100, 1000};
    static std::vector<std::string> const both{"star", "comb"};
    static std::vector<std::string> const many{"star", "comb", "spiral", "grid", "border", "glyph"};
    static std::vector<Question> const all{
        {"perimeter", {"star"}, 1e-9, sizes},
        {"area", {"star"}, 1e-9, sizes},
        {"centre", {"star"}, 1e-9, sizes},
        {"second_moments", {"star"}, 1e-2, sizes},
        {"box", {"star"}, 0, sizes},
        {"mean_position", {"star"}, 1e-9, sizes},
        {"ellipse_fit", {"oval"}, 2e-2, more},
        {"convex_hull", both, 1e-9, sizes},
        {"farthest_pair", {"star", "comb", "circle"}, 1e-9, sizes},
        {"extremal_vertex", {"star"}, 1e-9, sizes},
        {"distance_first", {"star"}, 1e-9, sizes},
        {"distance_repeated", many, 1e-9, more},
        {"nearest_vertex_first", {"star"}, 1e-9, sizes},
        {"nearest_vertex_repeated", both, 1e-9, sizes},
        {"vertices_within", {"star"}, 0, sizes},
        {"inside_first", {"star"}, 0, sizes},
        {"inside_eight", {"star"}, 0, sizes},
        {"inside_repeated", many, 0, more},
        {"distance_with_holes", {"star"}, 1e-9, sizes},
        {"long_segment_first", {"star"}, 0, sizes},
        {"long_segment_repeated", many, 0, more},
        {"short_segment_repeated", both, 0, sizes},
        {"outline_x_outline", both, 0, sizes},
        {"outline_x_outline", {"teeth"}, 0, upToTenThousand},
        {"self_crossing", {"star", "comb", "spiral", "glyph"}, 0, more},
        {"self_crossing", {"teeth"}, 0, upToTenThousand},
        {"regularise", {"few", "loops", "rose"}, -1, sizes},
        {"outer_hull", {"few", "rose"}, -1, sizes},
        {"set_crossing", {"set"}, 0, members},
        {"set_area", {"set"}, 1e-9, members},
        {"set_moments", {"set"}, 1e-9, members},
        {"set_inside", {"set"}, 0, members},
        {"set_distance", {"set"}, 1e-9, members},
        {"set_regularise", {"set", "row", "field"}, -1, members},
        {"set_save", {"set"}, -1, members},
        {"set_load", {"set"}, 0, members},
        {"save", {"star"}, -1, sizes},
        {"load", {"star"}, 0, sizes},
        {"save_load", {"star"}, 0, sizes},
        {"copy", {"star"}, 0, sizes},
        {"copy_queried", {"star"}, 0, sizes},
        {"map", {"star"}, 1e-9, sizes},
    };
    return all;
}

std::vector<Candidate>& candidates()
{
    static std::vector<Candidate> all;
    return all;
}

double uniform(std::mt19937& random, double low, double high)
{
    return low + (high - low) * (static_cast<double>(random()) / 4294967296.0);
}

void addQueries(Work& given)
{
    Points const& points = given.set.empty() ? given.outline : given.set.back();
    qcVector<2> low = points.front(), high = points.front();
    for (auto const& point : points) {
        low = {std::min(low.x(), point.x()), std::min(low.y(), point.y())};
        high = {std::max(high.x(), point.x()), std::max(high.y(), point.y())};
    }
    if (!given.set.empty())
        low = {0, 0};
    std::mt19937 random(7);
    auto const somewhere = [&](double beyond) {
        qcVector<2> const more = (high - low) * beyond;
        double const x = uniform(random, low.x() - more.x(), high.x() + more.x());
        return qcVector<2>(x, uniform(random, low.y() - more.y(), high.y() + more.y()));
    };
    for (std::size_t i = 0; i < Work::kQueries; ++i) {
        given.queries.push_back(somewhere(0.05));
        given.longSegments.push_back({somewhere(0), somewhere(0)});
        auto const start = somewhere(0);
        given.shortSegments.push_back(
            {start, start + qcVector<2>(10, qcRadian(uniform(random, 0, 6.28)))});
    }
}

/// Stars in rows of so many, so far from each other.
std::vector<Points> stars(std::size_t n, std::size_t columns, double apart)
{
    std::vector<Points> set;
    for (std::size_t i = 0; i < n; ++i) {
        qcVector<2> const place(static_cast<double>(i % columns), static_cast<double>(i / columns));
        set.push_back(outline("star", 64));
        for (auto& point : set.back())
            point = point * 0.1 + place * apart;
    }
    return set;
}

Work makeWork(std::string const& shape, std::size_t n)
{
    Work made;
    made.shape = shape;
    made.n = n;
    auto const root = static_cast<std::size_t>(std::ceil(std::sqrt(n)));
    if (shape == "set")
        made.set = stars(n, root, 400);
    else if (shape == "row")
        made.set = stars(n, n, 200);
    else if (shape == "field")
        made.set = stars(n, root, 200);
    else {
        made.outline = outline(shape, n);
        made.other = outline(shape, n, 2);
    }
    addQueries(made);
    return made;
}

bool same(double a, double b, double tolerance)
{
    return std::fabs(a - b) <= tolerance * std::max(std::fabs(a), std::fabs(b)) || a == b;
}

/// How many of the answers differ; prints the first one that does.
std::size_t compare(Question const& question, Candidate const& ours, Candidate const& theirs,
                    Work const& given)
{
    auto const a = ours.answers(given), b = theirs.answers(given);
    std::size_t different = a.size() != b.size();
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
        if (same(a[i], b[i], question.tolerance))
            continue;
        if (different++ == 0)
            std::fprintf(stderr, "%s %s %zu: %s answers %.17g, %s %.17g\n", question.name.c_str(),
                         given.shape.c_str(), given.n, ours.library.c_str(), a[i],
                         theirs.library.c_str(), b[i]);
    }
    return different;
}

}  // namespace

Work const& work(std::string const& shape, std::size_t n)
{
    static std::map<std::pair<std::string, std::size_t>, Work> all;
    auto const key = std::make_pair(shape, n);
    auto found = all.find(key);
    if (found == all.end())
        found = all.emplace(key, makeWork(shape, n)).first;
    return found->second;
}

bool add(Candidate candidate)
{
    candidates().push_back(std::move(candidate));
    return true;
}

void registerAll()
{
    for (auto const& question : questions())
        for (auto const& shape : question.shapes)
            for (std::size_t const n : question.sizes)
                for (auto const& candidate : candidates()) {
                    if (candidate.question != question.name)
                        continue;
                    auto const name = question.name + "/" + candidate.library + "/" + shape + "/" +
                                      std::to_string(n);
                    benchmark::RegisterBenchmark(name.c_str(),
                                                 [&candidate, shape, n](benchmark::State& state) {
                                                     candidate.run(state, work(shape, n));
                                                 });
                }
}

bool answersAgree(std::size_t largest)
{
    std::size_t compared = 0, faults = 0;
    for (auto const& question : questions()) {
        std::vector<Candidate const*> asked;
        for (auto const& candidate : candidates())
            if (candidate.question == question.name)
                asked.push_back(&candidate);
        auto const ours = std::find_if(asked.begin(), asked.end(),
                                       [](auto const* each) { return each->library == "cntr"; });
        if (ours == asked.end() || asked.size() < 2 || question.tolerance < 0)
            continue;
        for (auto const& shape : question.shapes)
            for (std::size_t const n : question.sizes)
                for (auto const* theirs : asked) {
                    if (theirs == *ours || n > largest)
                        continue;
                    ++compared;
                    faults += compare(question, **ours, *theirs, work(shape, n)) != 0;
                }
    }
    std::fprintf(stderr, "answers: %zu comparisons, %zu with differences\n", compared, faults);
    return faults == 0;
}

}  // namespace qnBench
