// Boost.Serialization: points saved to and loaded from memory in its binary form.
#include "support/questions.h"

#include <boost/archive/binary_iarchive.hpp>
#include <boost/archive/binary_oarchive.hpp>
#include <boost/iostreams/device/array.hpp>
#include <boost/iostreams/device/back_inserter.hpp>
#include <boost/iostreams/stream_buffer.hpp>
#include <boost/serialization/is_bitwise_serializable.hpp>
#include <boost/serialization/vector.hpp>

namespace {

struct Point {
    double x, y;

    template <class Archive>
    void serialize(Archive& archive, unsigned)
    {
        archive& x& y;
    }
};

}  // namespace

BOOST_IS_BITWISE_SERIALIZABLE(Point)
BOOST_CLASS_TRACKING(Point, boost::serialization::track_never)

namespace {

using namespace qnBench;
namespace io = boost::iostreams;
constexpr unsigned kFlags = boost::archive::no_header;

std::vector<Point> plain(Work const& given)
{
    std::vector<Point> made;
    for (auto const& at : given.outline)
        made.push_back({at.x(), at.y()});
    return made;
}

std::vector<char> saved(std::vector<Point> const& points)
{
    std::vector<char> bytes;
    io::stream_buffer<io::back_insert_device<std::vector<char>>> buffer(bytes);
    boost::archive::binary_oarchive archive(buffer, kFlags);
    archive << points;
    buffer.close();
    return bytes;
}

std::size_t loadedSize(std::vector<char> const& bytes)
{
    io::stream_buffer<io::array_source> buffer(bytes.data(), bytes.size());
    boost::archive::binary_iarchive archive(buffer, kFlags);
    std::vector<Point> points;
    archive >> points;
    return points.size();
}

bool const registered[] = {
    once("save", "Boost", plain,
         [](auto const& points, Work const&) { return saved(points).size(); }),
    once(
        "load", "Boost", [](Work const& given) { return saved(plain(given)); },
        [](auto const& bytes, Work const&) { return loadedSize(bytes); }),
    once("save_load", "Boost", plain,
         [](auto const& points, Work const&) { return loadedSize(saved(points)); }),
};

}  // namespace
