/// What the readers of the formats share: the limits, the closing rule, numbers and faults.
#pragma once

#include "read_outlines.h"
#include "text_source.h"

#include <string>
#include <vector>

namespace qnTool {

/// A fault in the text: ends the outline under way.
struct MalformedText {
    int line;
    std::string message;
};

/// A limit was reached: ends the reading.
struct LimitReached {
    int line;
    std::string message;
};

/// Collects outlines and errors into a result.
class OutlineSink {
public:
    OutlineSink(ReadResult& result, std::string const& file, ReadOptions const& options);

    /// Puts a point at the end of `points`; throws LimitReached.
    void addPoint(std::vector<qcVector<2>>& points, qcVector<2> const& point, int line);
    /// Counts an outline or a hole; throws LimitReached.
    void countOutline(int line);
    /// Drops a repeated first point and decides whether the outline is closed.
    void close(Outline& outline, bool ring) const;

    void add(Outline&& outline) { result_.outlines.push_back(std::move(outline)); }
    /// Records a fault; throws LimitReached after too many.
    void report(MalformedText const& fault);
    void report(ReadError::Kind kind, int line, std::string const& message);

    /// The number of outlines, and back to an earlier number.
    std::size_t size() const { return result_.outlines.size(); }
    void dropFrom(std::size_t size) { result_.outlines.resize(size); }
    Outline& operator[](std::size_t index) { return result_.outlines[index]; }

private:
    ReadResult& result_;
    std::string const& file_;
    ReadOptions const& options_;
    std::size_t points_ = 0;
    std::size_t outlines_ = 0;
};

/// Drops the last point where it repeats the first; true if it did.
bool dropRepeat(std::vector<qcVector<2>>& points);

/// The number that stands next, which `what` names; throws MalformedText.
double takeNumber(TextSource& source, char const* what);

/// The name in a comment, of which the source stands at the '#'; passes over the line.
std::string takeName(TextSource& source);

/// Read to the end; `name` is that of the first outline.
void readWkt(TextSource& source, OutlineSink& sink, std::string name);
void readCsv(TextSource& source, OutlineSink& sink, std::string name);

/// The text that stands next begins a WKT geometry, read or refused.
bool looksLikeWkt(TextSource& source);

}  // namespace qnTool
