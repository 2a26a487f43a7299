/// Pictures of what a subcommand found, on the SVG surface of the foundation.
#pragma once

#include "shapes.h"

#include <qc/display/tablet.h>

#include <string>

namespace qnTool {

struct PictureOptions {
    std::string file;  ///< empty for no picture
    bool yDown = false;
};

/// Collects a picture; without a file everything here does nothing.
class Picture {
public:
    Picture(PictureOptions const& options, std::string const& title);

    /// The outline over a light filling that leaves the holes out.
    void shape(Shape const& shape);
    /// An outline as it was, to be drawn over.
    void original(Shape const& shape);
    /// An outline that came out.
    void result(qcRegion const& region);
    /// The second of two figures.
    void other(Shape const& shape);
    /// A point asked for, with the closest point of an outline.
    void query(qcVector<2> const& point, qcVector<2> const& closest, bool inside);
    /// A point where outlines meet.
    void crossing(qcVector<2> const& point);
    /// An ellipse, as a curve.
    void ellipse(qcEllipse const& ellipse);
    /// The middle of something.
    void center(qcVector<2> const& point);

    /// Writes the file. Throws CommandError.
    void save() const;

private:
    bool wanted() const { return !file_.empty(); }
    void draw(Shape const& shape, qcSvgTablet::Style const& style);

    std::string file_;
    qcSvgTablet tablet_;
};

}  // namespace qnTool
