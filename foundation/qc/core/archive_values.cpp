/// \file
/// Values and their bytes in an archive.
#include <qc/core/archive.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <type_traits>

namespace {

constexpr unsigned long long kLargest32 = 0xFFFFFFFFULL;

constexpr bool kLittleEndian = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__;

static_assert(sizeof(double) == 8 && std::numeric_limits<double>::is_iec559);
static_assert(sizeof(qcVector<2>) == 16 && std::is_trivially_copyable<qcVector<2>>::value);

}  // namespace

void qcArchive::bytes(unsigned char* values, std::size_t count)
{
    requireUsable();
    if (storing_) {
        write_(values, count);
        return;
    }
    if (count > remaining_())
        throw EndOfData("the data end before the value");
    read_(values, count);
}

unsigned long long qcArchive::remaining() const
{
    return storing_ || closed_ ? 0 : remaining_();
}

void qcArchive::number(unsigned long& value)
{
    unsigned char data[4];
    for (int i = 0; i < 4; ++i)
        data[i] = static_cast<unsigned char>((value >> (8 * i)) & 0xFF);
    bytes(data, 4);
    if (storing_)
        return;
    value = 0;
    for (int i = 0; i < 4; ++i)
        value |= static_cast<unsigned long>(data[i]) << (8 * i);
}

qcArchive& qcArchive::operator||(bool& value)
{
    unsigned char data = value ? 1 : 0;
    bytes(&data, 1);
    if (data > 1)
        throw ValueOutOfRange("a bool that is neither 0 nor 1");
    value = data == 1;
    return *this;
}

qcArchive& qcArchive::operator||(long& value)
{
    if (storing_ && (value < std::numeric_limits<std::int32_t>::min() ||
                     value > std::numeric_limits<std::int32_t>::max()))
        throw ValueOutOfRange("a long that does not fit 32 bits: " + std::to_string(value));
    unsigned long bits = static_cast<unsigned long>(value) & kLargest32;
    number(bits);
    value = static_cast<std::int32_t>(static_cast<std::uint32_t>(bits));
    return *this;
}

qcArchive& qcArchive::operator||(unsigned long& value)
{
    if (storing_ && value > kLargest32) {
        throw ValueOutOfRange("an unsigned long that does not fit 32 bits: " +
                              std::to_string(value));
    }
    number(value);
    return *this;
}

qcArchive& qcArchive::operator||(double& value)
{
    doubles(&value, 1);
    return *this;
}

void qcArchive::doubles(double* values, std::size_t count)
{
    if (kLittleEndian) {
        if (count > std::numeric_limits<std::size_t>::max() / sizeof(double))
            throw BadCount("more doubles than memory can hold");
        bytes(reinterpret_cast<unsigned char*>(values), count * sizeof(double));
        return;
    }
    for (std::size_t i = 0; i < count; ++i) {
        auto* const data = reinterpret_cast<unsigned char*>(values + i);
        unsigned char reversed[sizeof(double)];
        std::reverse_copy(data, data + sizeof(double), reversed);
        bytes(reversed, sizeof(double));
        std::reverse_copy(reversed, reversed + sizeof(double), data);
    }
}

void qcArchive::vectors(qcVector<2>* values, std::size_t count)
{
    if (kLittleEndian && count <= std::numeric_limits<std::size_t>::max() / sizeof(qcVector<2>)) {
        bytes(reinterpret_cast<unsigned char*>(values), count * sizeof(qcVector<2>));
        return;
    }
    for (std::size_t i = 0; i < count; ++i)
        *this || values[i];
}

unsigned long qcArchive::count(unsigned long n, std::size_t minimumBytesPerItem)
{
    *this || n;
    if (storing_)
        return n;
    unsigned long long const each = std::max<unsigned long long>(minimumBytesPerItem, 1);
    unsigned long long const room = remaining_() - std::min(promised_, remaining_());
    if (n > room / each) {
        throw BadCount("a count of " + std::to_string(n) + " items where " + std::to_string(room) +
                       " bytes remain for them");
    }
    return n;
}

qcArchive& operator||(qcArchive& archive, unsigned char& value)
{
    archive.bytes(&value, 1);
    return archive;
}

qcArchive& operator||(qcArchive& archive, qcVector<2>& value)
{
    double xy[2] = {value.x(), value.y()};
    archive.doubles(xy, 2);
    value = qcVector<2>(xy[0], xy[1]);
    return archive;
}
