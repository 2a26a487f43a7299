// Reads any bytes as an archive: a pointer record, put every query to what comes out, and store it
// again, which must then read the same.
#include "tests/support/stored_objects.h"

#include <qc/core/exception.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

void require(bool holds, char const* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "archive_fuzz: %s\n", what);
    std::abort();
}

// Larger inputs say nothing new, and queries are quadratic in the points.
constexpr std::size_t kLargest = 4096;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    if (size > kLargest)
        return -1;
    qnTest::Root loaded;
    try {
        loaded = qnTest::load(qnTest::Bytes(data, data + size));
    } catch (qcArchive::Errors const&) {
        return 0;
    }
    if (!loaded.object)
        return 0;
    auto const failure = qnTest::askEverything(*loaded.object);
    require(failure.empty(), failure.c_str());
    auto const bytes = qnTest::store(*loaded.object);
    auto const again = qnTest::load(bytes);
    require(qnTest::store(*again.object) == bytes, "stored again the bytes differ");
    require(qnTest::describe(again.object) == qnTest::describe(loaded.object),
            "read again the object differs");
    return 0;
}
