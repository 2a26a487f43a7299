/// Outlines to ask questions about: shapes with names, and seeded random ones of many kinds.
#pragma once

#include <qc/core/vector.h>

#include <random>
#include <string>
#include <vector>

namespace qnOutlines {

struct Outline {
    std::string name;
    std::vector<qcVector<2>> points;
    bool closed;
};

/// A number from `low` up to `high`, the same with every standard library.
double uniform(std::mt19937& random, double low, double high);

/// Shapes that answers are known of, and the ones that a fault was or might be seen on.
std::vector<Outline> named();

/// Stars, loose lines, lattice points (touches, ties, repeats, collinear runs), near misses at the
/// size of the tolerances, combs, spirals, circles, roses and pinwheels, far away, huge and tiny.
std::vector<Outline> randomised(unsigned seed, int count);

/// Long outlines that lie beside themselves (spirals and bands to and fro), most with one small bump that
/// may reach the next stretch, and cross it.
std::vector<Outline> foldedBack(unsigned seed, int count);

}  // namespace qnOutlines
