/// The archive files under tests/data: one for every record and version there is, and the objects
/// they must come back as for ever.
#pragma once

#include "tests/support/stored_objects.h"

#include <functional>

namespace qnTest {

struct Golden {
    std::string name;  ///< of the file, without .archive
    bool current;      ///< still written like this
    std::function<Root()> expected;
    Bytes bytes;
};

std::vector<Golden> goldenArchives();

/// Records byte by byte, as no class of today writes them.
class Composer {
public:
    Composer& byte(int value);
    template <class... More>
    Composer& byte(int value, More... more)
    {
        return byte(value).byte(more...);
    }
    Composer& number(unsigned long value);  ///< 4 bytes
    Composer& real(double value);
    Composer& text(std::string const& characters);  ///< count and characters
    Composer& newObject(std::string const& className) { return byte(1).text(className); }
    Composer& reference(unsigned long object) { return byte(2).number(object); }
    Composer& null() { return byte(0); }
    Composer& pointList(std::vector<std::pair<double, double>> const& points);
    /// The contour record of version 1 without the points' own object around it.
    Composer& contour(unsigned long label, std::vector<std::pair<double, double>> const& points);
    /// A new contour of version 1, or a new region up to the number of its holes.
    Composer& newContour(int closed, std::vector<std::pair<double, double>> const& points,
                         unsigned long bound = 3);
    Composer& newRegion(unsigned long holes,
                        std::vector<std::pair<double, double>> const& points = {});
    Bytes const& bytes() const { return bytes_; }

private:
    Bytes bytes_;
};

}  // namespace qnTest
