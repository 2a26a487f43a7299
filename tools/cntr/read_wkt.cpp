// Outlines as WKT geometries. Nesting is read by loops: no text can make the reader recurse.
#include "outline_sink.h"

#include <algorithm>
#include <array>

namespace qnTool {

namespace {

constexpr std::array<std::string_view, 4> kRead = {"LINESTRING", "POLYGON", "MULTILINESTRING",
                                                   "MULTIPOLYGON"};
constexpr std::array<std::string_view, 13> kRefused = {"POINT",
                                                       "MULTIPOINT",
                                                       "GEOMETRYCOLLECTION",
                                                       "GEOMETRY",
                                                       "CIRCULARSTRING",
                                                       "COMPOUNDCURVE",
                                                       "CURVEPOLYGON",
                                                       "MULTICURVE",
                                                       "MULTISURFACE",
                                                       "POLYHEDRALSURFACE",
                                                       "TRIANGLE",
                                                       "TIN",
                                                       "SRID"};
constexpr char const* kExpected = "LINESTRING, POLYGON, MULTILINESTRING or MULTIPOLYGON";
constexpr std::size_t kMaxWord = 32;

template <class List>
bool contains(List const& list, std::string_view word)
{
    return std::find(list.begin(), list.end(), word) != list.end();
}

/// The letters that the text begins with, in capitals.
std::string capitals(std::string_view text)
{
    std::string word;
    for (char const c : text) {
        if (!isLetter(c))
            break;
        word.push_back(c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c);
    }
    return word;
}

/// The word of letters that stands next, in capitals; empty if there is none.
std::string nextWord(TextSource& source)
{
    return capitals(source.ahead(kMaxWord));
}

bool isGeometry(std::string_view word)
{
    return contains(kRead, word) || contains(kRefused, word);
}

bool isDimension(std::string_view word)
{
    return word == "Z" || word == "M" || word == "ZM";
}

/// The word without a Z, M or ZM at its end, if that makes it the name of a geometry.
std::string withoutDimension(std::string const& word)
{
    for (std::size_t length = 1; length <= 2 && length < word.size(); ++length) {
        auto stem = word.substr(0, word.size() - length);
        if (!isGeometry(word) && isGeometry(stem) && isDimension(word.substr(stem.size())))
            return stem;
    }
    return word;
}

/// Passes over one character that has to stand next; `where` says after what.
void expect(TextSource& source, char wanted, char const* where)
{
    source.skipBlanks(true);
    if (source.peek() != wanted)
        throw MalformedText{source.line(), std::string("expected '") + wanted + "' " + where +
                                               ", found " + source.found()};
    source.skip();
}

/// After an item of a list: true past a comma, false past the closing parenthesis.
bool another(TextSource& source, char const* what)
{
    source.skipBlanks(true);
    int const next = source.peek();
    if (next != ',' && next != ')')
        throw MalformedText{source.line(), std::string("expected ',' or ')' after ") + what +
                                               ", found " + source.found()};
    source.skip();
    return next == ',';
}

/// `(x y, x y)`
void takePoints(TextSource& source, OutlineSink& sink, std::vector<qcVector<2>>& points)
{
    sink.countOutline(source.line());
    expect(source, '(', "before the points");
    do {
        source.skipBlanks(true);
        int const line = source.line();
        double const x = takeNumber(source, "x");
        int const next = source.peek();
        if (!isBlank(next) && next != '\n')
            throw MalformedText{line, "expected a blank and y after x, found " + source.found()};
        source.skipBlanks(true);
        sink.addPoint(points, {x, takeNumber(source, "y")}, line);
    } while (another(source, "a point of x and y"));
}

/// `((x y, x y), (x y))`: the outline and its holes.
void takeRings(TextSource& source, OutlineSink& sink, Outline& outline)
{
    expect(source, '(', "before the rings");
    takePoints(source, sink, outline.points);
    while (another(source, "a ring")) {
        outline.holes.emplace_back();
        takePoints(source, sink, outline.holes.back());
        dropRepeat(outline.holes.back());
    }
}

void takePart(TextSource& source, OutlineSink& sink, std::string const& name, bool rings)
{
    Outline outline;
    outline.name = name;
    source.skipBlanks(true);
    outline.line = source.line();
    if (rings)
        takeRings(source, sink, outline);
    else
        takePoints(source, sink, outline.points);
    sink.close(outline, rings);
    sink.add(std::move(outline));
}

/// What follows the geometry's name.
void takeGeometry(TextSource& source, OutlineSink& sink, std::string const& word,
                  std::string const& name, int line)
{
    bool const rings = word == "POLYGON" || word == "MULTIPOLYGON";
    std::size_t const first = sink.size();
    if (word == "LINESTRING" || word == "POLYGON") {
        takePart(source, sink, name, rings);
        sink[first].line = line;
        return;
    }
    expect(source, '(', "before the parts");
    do {
        takePart(source, sink, name, rings);
    } while (another(source, "a part"));
    if (sink.size() > first + 1 && !name.empty())
        for (std::size_t i = first; i < sink.size(); ++i)
            sink[i].name += " " + std::to_string(i - first + 1);
}

/// Passes over text in balanced parentheses, if such stands next.
void skipParentheses(TextSource& source, std::string const& word, int line)
{
    source.skipBlanks(true);
    std::uint64_t depth = 0;
    while (source.peek() == '(' || depth > 0) {
        int const c = source.peek();
        if (c < 0)
            throw MalformedText{line, word + " has no closing ')': the rest was left out"};
        depth += c == '(' ? 1U : 0U;
        depth -= c == ')' ? 1U : 0U;
        source.skip();
        if (depth == 0)
            return;
    }
}

/// Reports the geometry named by the word that was passed if it is one that is not read, and
/// passes over it.
bool refuse(TextSource& source, OutlineSink& sink, std::string const& word, int line)
{
    source.skipBlanks(true);
    std::string const plain = withoutDimension(word);
    std::string const next = nextWord(source);
    std::string message;
    if (contains(kRefused, plain)) {
        message = word + " is not read: expected " + kExpected;
    } else if (plain != word || isDimension(next)) {
        message = plain + " with Z or M is not read: expected points of x and y alone";
    } else if (next == "EMPTY") {
        message = word + " EMPTY has no points";
    } else {
        return false;
    }
    sink.report({line, message});
    for (auto more = next; isDimension(more) || more == "EMPTY"; more = nextWord(source)) {
        source.skip(more.size());
        source.skipBlanks(true);
    }
    skipParentheses(source, word, line);
    return true;
}

/// Passes to the next line that begins with a letter or '#', at least past what stands here
/// unless that is such a beginning.
void resynchronise(TextSource& source, int faultyLine)
{
    source.skipBlanks(false);
    while (!source.atEnd()) {
        bool const begins = isLetter(source.peek()) || source.peek() == '#';
        if (begins && source.atLineStart() && source.line() > faultyLine)
            return;
        source.skipLine();
        source.skipBlanks(false);
    }
}

void takeNamed(TextSource& source, OutlineSink& sink, std::string const& name)
{
    int const line = source.line();
    std::size_t const first = sink.size();
    try {
        std::string const word = nextWord(source);
        if (!isGeometry(withoutDimension(word)))
            throw MalformedText{line,
                                std::string("expected ") + kExpected + ", found " + source.found()};
        source.skip(word.size());
        if (!refuse(source, sink, word, line))
            takeGeometry(source, sink, word, name, line);
    } catch (MalformedText const& fault) {
        sink.dropFrom(first);
        if (source.cutOff())
            return;  // that is what will be reported, not the text
        sink.report(fault);
        resynchronise(source, line);
    } catch (LimitReached const&) {
        sink.dropFrom(first);
        throw;
    }
}

}  // namespace

bool looksLikeWkt(TextSource& source)
{
    std::string const word = nextWord(source);
    if (!isGeometry(withoutDimension(word)))
        return false;
    // A table may have a column called Point: what follows tells.
    auto rest = source.ahead(TextSource::kMaxAhead).substr(word.size());
    rest.remove_prefix(std::min(rest.find_first_not_of(" \t\r\n"), rest.size()));
    auto const next = capitals(rest);
    return rest.empty() || rest[0] == '(' || rest[0] == '=' || isDimension(next) || next == "EMPTY";
}

void readWkt(TextSource& source, OutlineSink& sink, std::string name)
{
    for (;;) {
        source.skipBlanks(true);
        if (source.atEnd())
            return;
        if (source.peek() == '#') {
            name = takeName(source);
        } else if (source.peek() == ';') {
            source.skip();
        } else {
            takeNamed(source, sink, name);
            name.clear();
        }
    }
}

}  // namespace qnTool
