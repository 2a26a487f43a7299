/// Seeded outlines to measure on, of every shape with any number of vertices.
#pragma once

#include <qc/core/vector.h>

#include <cstddef>
#include <string>
#include <vector>

namespace qnBench {

using Points = std::vector<qcVector<2>>;

/// The closed outline of the named shape with about `n` vertices (at least 3), mostly within 0 to 4000:
///
/// | shape   | what                                                                     |
/// |---------|--------------------------------------------------------------------------|
/// | star    | around a centre, with smooth noise                                       |
/// | comb    | about sqrt(n)/2 long wavy teeth, turned by 0.3 rad                       |
/// | teeth   | straight slanted teeth of four vertices: boxes of edges overlap much     |
/// | rose    | a curve that crosses itself about n/10 times                             |
/// | few     | a curve that crosses itself 5 times                                      |
/// | loops   | a round curve with 5 small loops, so that nearly all of it is boundary   |
/// | oval    | an ellipse with noise of a hundredth                                     |
/// | circle  | evenly spaced points of a circle: many pairs nearly equally far apart    |
/// | spiral  | out and back again between its own turns                                 |
/// | grid    | back and forth along the lines of a grid, whole coordinates              |
/// | border  | the longest border line in examples/data, cut or thinned to n vertices   |
/// | glyph   | the glyph with the most vertices in examples/data, likewise              |
///
/// Another seed gives another star, comb or oval; the other shapes are moved by a little. Throws
/// std::runtime_error on an unknown shape and where example data cannot be read.
Points outline(std::string const& shape, std::size_t n, unsigned seed = 1);

}  // namespace qnBench
