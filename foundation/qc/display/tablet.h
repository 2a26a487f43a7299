/// \file
/// Drawing: the surface that shapes draw themselves on, one that records and one that writes SVG.
#pragma once

#include <qc/core/export.h>
#include <qc/core/vector.h>

#include <iosfwd>
#include <string>
#include <vector>

/// A colour of three 8-bit parts; black by default.
class qcColor {
public:
    constexpr qcColor() noexcept = default;
    /// The three parts, 0 to 255 each.
    constexpr qcColor(unsigned char r, unsigned char g, unsigned char b) noexcept
        : r_(r), g_(g), b_(b)
    {
    }

    /// Red.
    constexpr unsigned char r() const noexcept { return r_; }
    /// Green.
    constexpr unsigned char g() const noexcept { return g_; }
    /// Blue.
    constexpr unsigned char b() const noexcept { return b_; }

    friend constexpr bool operator==(qcColor a, qcColor b) noexcept
    {
        return a.r_ == b.r_ && a.g_ == b.g_ && a.b_ == b.b_;
    }
    friend constexpr bool operator!=(qcColor a, qcColor b) noexcept { return !(a == b); }

private:
    unsigned char r_ = 0;
    unsigned char g_ = 0;
    unsigned char b_ = 0;
};

/// A surface to draw on.
class QC_EXPORT qcUITablet {
public:
    /// Where a drawing goes: with the image, or on top of it.
    enum Layers { eImageLayer = 0, eOverlayLayer = 1 };

    virtual ~qcUITablet();

    /// Draws one line segment.
    virtual void drawLineSeg(qcPair<double> const& from, qcPair<double> const& to,
                             qcColor const& color, Layers layer) = 0;
};

/// Remembers what is drawn on it.
class QC_EXPORT qcRecordingTablet : public qcUITablet {
public:
    /// One call of drawLineSeg().
    struct Segment {
        /// Where the line begins.
        qcPair<double> from;
        /// Where it ends.
        qcPair<double> to;
        /// Its colour.
        qcColor color;
        /// The layer that it was drawn on.
        Layers layer;
    };

    ~qcRecordingTablet() override;
    void drawLineSeg(qcPair<double> const& from, qcPair<double> const& to, qcColor const& color,
                     Layers layer) override;

    /// The segments in the order in which they were drawn.
    std::vector<Segment> const& segments() const noexcept { return segments_; }

private:
    std::vector<Segment> segments_;
};

/// Collects a picture and writes it as SVG, scaled so that everything drawn, or the frame if one is
/// set, fills a picture of the given size. What is drawn on the image layer lies under what is
/// drawn on the overlay layer; within a layer the later lies on top.
///
/// Places are in the units of the drawing, line widths and radii in pixels of the picture. A shape
/// with a coordinate that is not finite is left out: it has no place in a picture.
class QC_EXPORT qcSvgTablet : public qcUITablet {
public:
    /// Which way the y axis of the drawing points in the picture.
    enum YAxis { eYUp, eYDown };

    /// What a shape looks like. Without an outline or filling it is invisible.
    struct Style {
        qcColor color;        ///< of the outline
        double width = 1.0;   ///< of the outline; 0 for none
        bool filled = false;  ///< even-odd, with fillColor
        /// Inside, where `filled` is set.
        qcColor fillColor;
        /// Of the filling: 0 lets everything through, 1 nothing.
        double fillOpacity = 1.0;
        /// Where the shape goes.
        Layers layer = eOverlayLayer;
    };

    /// `pixels` is the length of the picture's longer side, without the margin; at least 1.
    explicit qcSvgTablet(YAxis yAxis = eYUp, double pixels = 800.0);
    ~qcSvgTablet() override;

    void drawLineSeg(qcPair<double> const& from, qcPair<double> const& to, qcColor const& color,
                     Layers layer) override;

    /// An open line through the points.
    void polyline(std::vector<qcVector<2>> const& points, Style const& style);

    /// A closed outline, or several as one figure: an outline and its holes.
    void polygon(std::vector<qcVector<2>> const& points, Style const& style);
    /// Several outlines as one figure.
    void polygon(std::vector<std::vector<qcVector<2>>> const& outlines, Style const& style);

    /// A disc of `radius` pixels around a point.
    void marker(qcVector<2> const& center, double radius, qcColor const& color,
                Layers layer = eOverlayLayer);

    /// Text (UTF-8) that begins beside `place`, `height` pixels high.
    void label(qcVector<2> const& place, std::string const& text, qcColor const& color,
               double height = 12.0, Layers layer = eOverlayLayer);

    /// The picture `href` between two opposite corners, under everything drawn later on its layer.
    void image(std::string const& href, qcVector<2> const& corner,
               qcVector<2> const& oppositeCorner, Layers layer = eImageLayer);

    /// Shows the rectangle between two opposite corners instead of all that is drawn.
    void frame(qcVector<2> const& corner, qcVector<2> const& oppositeCorner);

    /// Shown as the picture's title.
    void title(std::string const& text);

    /// Writes the picture; it may grow and be written again. Errors are those of `out`.
    void write(std::ostream& out) const;

private:
    enum Kind { ePath, eMarker, eLabel, eImage };
    struct Element {
        Kind kind = ePath;
        std::vector<std::vector<qcVector<2>>> outlines;  // points; one or two corners otherwise
        bool closed = false;
        Style style;
        double size = 0.0;  // radius or height
        std::string text;
    };
    class Mapping;

    void add(Element element);
    Mapping mapping() const;
    static void writeElement(std::ostream& out, Element const& element, Mapping const& mapping);

    YAxis yAxis_;
    double pixels_;
    std::vector<Element> elements_;
    std::vector<qcVector<2>> frame_;
    std::string title_;
};
