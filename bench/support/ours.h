/// The library's own objects behind the two functions that a question asks for.
#pragma once

#include "support/questions.h"

#include <cntr/cntr.h>

namespace qnBench {

/// The points as they are, for questions that make a fresh object in the timing.
inline Points const& points(Work const& given)
{
    return given.outline;
}

template <class Object>
Object fresh(Points const& outline)
{
    return Object(outline);
}

/// A contour or region, to be asked repeatedly.
template <class Object>
Object prepared(Work const& given)
{
    return fresh<Object>(given.outline);
}

inline qcLineSeg segment(Points const& ends)
{
    return {ends[0], ends[1]};
}

/// A question to a fresh object.
template <class Object, class Ask>
bool firstTime(std::string const& question, Ask ask)
{
    return once(question, "cntr", points, [ask](Points const& outline, Work const& given) {
        auto object = fresh<Object>(outline);
        return ask(object, given);
    });
}

/// A question to one object, repeatedly.
template <class Object, class Ask>
bool everyTime(std::string const& question, Ask ask)
{
    return repeated(question, "cntr", prepared<Object>, ask);
}

}  // namespace qnBench
