// Chooses the format and ends the reading at a limit; numbers, names and the closing rule.
#include "read_outlines.h"

#include "outline_sink.h"

#include <charconv>
#include <cmath>

namespace qnTool {

namespace {

constexpr std::size_t kMaxErrors = 1000;
constexpr std::size_t kMaxName = 1000;
// The longest number worth writing, the exact value of a subnormal, has some 770 characters.
constexpr std::size_t kMaxNumber = 1024;

std::string countText(std::uint64_t count, char const* what)
{
    return "more than " + std::to_string(count) + " " + what + ": the rest was left out";
}

/// Passes over blank lines and comments before the first outline; returns its name.
std::string skipToContent(TextSource& source)
{
    if (source.ahead(3) == "\xef\xbb\xbf")
        source.skip(3);
    std::string name;
    for (;;) {
        source.skipBlanks(true);
        if (source.peek() != '#')
            return name;
        name = takeName(source);
    }
}

void readContent(TextSource& source, OutlineSink& sink, OutlineFormat& format)
{
    std::string name = skipToContent(source);
    if (source.atEnd())
        return;
    if (format == OutlineFormat::eGuess)
        format = looksLikeWkt(source) ? OutlineFormat::eWkt : OutlineFormat::eCsv;
    if (format == OutlineFormat::eWkt)
        readWkt(source, sink, std::move(name));
    else
        readCsv(source, sink, std::move(name));
}

}  // namespace

std::string ReadError::text() const
{
    return file + ":" + std::to_string(line) + ": " + message;
}

OutlineSink::OutlineSink(ReadResult& result, std::string const& file, ReadOptions const& options)
    : result_(result), file_(file), options_(options)
{
}

void OutlineSink::addPoint(std::vector<qcVector<2>>& points, qcVector<2> const& point, int line)
{
    if (points_ == options_.maxPoints)
        throw LimitReached{line, countText(options_.maxPoints, "points")};
    ++points_;
    points.push_back(point);
}

void OutlineSink::countOutline(int line)
{
    if (outlines_ == options_.maxOutlines)
        throw LimitReached{line, countText(options_.maxOutlines, "outlines and holes")};
    ++outlines_;
}

void OutlineSink::close(Outline& outline, bool ring) const
{
    outline.closed = dropRepeat(outline.points) || ring || options_.closed;
}

void OutlineSink::report(MalformedText const& fault)
{
    report(ReadError::eMalformed, fault.line, fault.message);
    if (result_.errors.size() >= kMaxErrors)
        throw LimitReached{fault.line,
                           std::to_string(kMaxErrors) + " errors: the rest was left out"};
}

void OutlineSink::report(ReadError::Kind kind, int line, std::string const& message)
{
    result_.errors.push_back({kind, file_, line, message});
}

bool dropRepeat(std::vector<qcVector<2>>& points)
{
    if (points.size() < 2 || points.front() != points.back())
        return false;
    points.pop_back();
    return true;
}

double takeNumber(TextSource& source, char const* what)
{
    auto const text = source.ahead(kMaxNumber + 1);
    char const* const end = text.data() + text.size();
    // A plus sign is usual in tables, but std::from_chars takes none.
    bool const plus = text.size() > 1 && text[0] == '+' && text[1] != '-';
    double value = 0.0;
    auto const parsed = std::from_chars(text.data() + (plus ? 1 : 0), end, value);
    std::string fault;
    if (parsed.ec == std::errc::invalid_argument)
        fault = std::string("expected ") + what + ", a number, found ";
    else if (parsed.ptr - text.data() > static_cast<std::ptrdiff_t>(kMaxNumber))
        fault = std::string(what) + " has too many characters: ";
    else if (parsed.ec == std::errc::result_out_of_range)
        fault = std::string(what) + " is too large or too small for a double: ";
    else if (!std::isfinite(value))
        fault = std::string(what) + " is not finite: ";
    if (!fault.empty())
        throw MalformedText{source.line(), fault + source.found()};
    source.skip(static_cast<std::size_t>(parsed.ptr - text.data()));
    return value;
}

std::string takeName(TextSource& source)
{
    source.skip();
    source.skipBlanks(false);
    std::string name = source.takeLine(kMaxName);
    if (name.size() == kMaxName) {  // cut, but not inside a UTF-8 character
        while (!name.empty() && (name.back() & 0xc0) == 0x80)
            name.pop_back();
        if (!name.empty() && (name.back() & 0x80) != 0)
            name.pop_back();
    }
    // Names reach terminals: nothing in them may steer one, U+0080 to U+009F included.
    for (std::size_t i = 0; i < name.size(); ++i) {
        auto const byte = static_cast<unsigned char>(name[i]);
        bool const second = i > 0 && name[i - 1] == '\xc2' && byte >= 0x80 && byte < 0xa0;
        if (second)
            name[i - 1] = ' ';
        if (second || byte < 0x20 || byte == 0x7f)
            name[i] = ' ';
    }
    name.erase(0, name.find_first_not_of(' '));
    while (!name.empty() && isBlank(name.back()))
        name.pop_back();
    return name;
}

ReadResult readOutlines(std::istream& in, std::string const& file, ReadOptions const& options)
{
    ReadResult result;
    result.format = options.format;
    TextSource source(in, options.maxBytes);
    OutlineSink sink(result, file, options);
    try {
        readContent(source, sink, result.format);
        if (source.failed())
            sink.report(ReadError::eUnreadable, source.line(), "reading failed");
        else if (source.overLimit())
            throw LimitReached{source.line(), countText(options.maxBytes, "bytes")};
    } catch (LimitReached const& limit) {
        sink.report(ReadError::eLimit, limit.line, limit.message);
    }
    if (result.outlines.empty() && result.errors.empty())
        sink.report(ReadError::eNothing, source.line(), "no outline in this input");
    return result;
}

}  // namespace qnTool
