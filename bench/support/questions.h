/// What is asked, of which library, on which outlines: the register of all benchmarks.
///
/// Every library answers a question by two functions. `make` brings the outline into the library's
/// own form, outside of the timing; `ask` answers. A benchmark is called question/library/shape/n.
#pragma once

#include "support/outlines.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace qnBench {

/// An outline and what is asked of it.
struct Work {
    std::string shape;
    std::size_t n;
    Points outline;
    Points other;                       ///< an outline of the same kind that meets it
    Points queries;                     ///< spread over the box and a little around it
    std::vector<Points> longSegments;   ///< from anywhere in the box to anywhere
    std::vector<Points> shortSegments;  ///< 10 units long
    std::vector<Points> set;            ///< n stars of 64 vertices

    static constexpr std::size_t kQueries = 1024;
};

/// The work of a shape and size, made once. A set of n members where `shape` is "set"; where it is "row"
/// or "field", each meets its neighbours.
Work const& work(std::string const& shape, std::size_t n);

/// How one library answers one question.
struct Candidate {
    std::string question;
    std::string library;
    std::function<std::vector<double>(Work const&)> answers;
    std::function<void(benchmark::State&, Work const&)> run;
};

/// Adds a candidate and returns true, so that a static can call it.
bool add(Candidate candidate);

/// A question that is put once: to a fresh object, which `ask` makes itself where it needs one.
template <class Make, class Ask>
bool once(std::string const& question, std::string const& library, Make make, Ask ask)
{
    return add({question, library,
                [=](Work const& given) {
                    auto form = make(given);
                    return std::vector<double>{static_cast<double>(ask(form, given))};
                },
                [=](benchmark::State& state, Work const& given) {
                    auto form = make(given);
                    for (auto _ : state)
                        benchmark::DoNotOptimize(ask(form, given));
                }});
}

/// A question that is put again and again to one object, about another point or segment each time.
template <class Make, class Ask>
bool repeated(std::string const& question, std::string const& library, Make make, Ask ask)
{
    return add({question, library,
                [=](Work const& given) {
                    auto form = make(given);
                    std::vector<double> all;
                    for (std::size_t i = 0; i < Work::kQueries; ++i)
                        all.push_back(static_cast<double>(ask(form, given, i)));
                    return all;
                },
                [=](benchmark::State& state, Work const& given) {
                    auto form = make(given);
                    for (std::size_t i = 0; i < Work::kQueries; ++i)  // what is built on demand
                        benchmark::DoNotOptimize(ask(form, given, i));
                    std::size_t i = 0;
                    for (auto _ : state) {
                        benchmark::DoNotOptimize(ask(form, given, i));
                        i = (i + 1) % Work::kQueries;
                    }
                }});
}

/// Hands the candidates to the benchmark library, question by question.
void registerAll();

/// Compares the answers of every library with ours, on the sizes up to `largest`. Prints every
/// disagreement; returns whether there was none.
bool answersAgree(std::size_t largest);

}  // namespace qnBench
