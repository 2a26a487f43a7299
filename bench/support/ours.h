/// The library's own objects behind the two functions that a question asks for.
#pragma once

#include "support/questions.h"

#include <cntr/cntr.h>

namespace qnBench {

/// The points as they are, for questions that take no object.
inline Points const& points(Work const& given)
{
    return given.outline;
}

/// A contour or region, to be asked.
template <class Object>
Object prepared(Work const& given)
{
    return Object(given.outline);
}

/// Makes an object drop what it keeps of former questions: its points stay where they are.
inline void forget(qcContour& contour)
{
    contour.isClosed(true);
}

inline void forget(qcRegion& region)
{
    region.holes(std::vector<qcPtrHandle_const<qcRegion>>());
}

inline qcLineSeg segment(Points const& ends)
{
    return {ends[0], ends[1]};
}

/// A question to an object that keeps nothing of former ones.
template <class Object, class Ask>
bool firstTime(std::string const& question, Ask ask)
{
    return once(question, "cntr", prepared<Object>, [ask](Object& object, Work const& given) {
        forget(object);
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
