// Outlines as lines of x,y with blank or comment lines between them.
#include "outline_sink.h"

#include <charconv>

namespace qnTool {

namespace {

constexpr std::size_t kMaxHeader = 1000;

bool isSeparator(char c)
{
    return c == ',' || c == ';' || c == '\t' || c == ' ';
}

/// A word begins here, quoted or not, and no number such as "nan" or "infinity".
bool beginsWord(std::string_view text)
{
    double value = 0.0;
    char const* const end = text.data() + text.size();
    auto const parsed = std::from_chars(text.data(), end, value);
    bool const number =
        parsed.ec != std::errc::invalid_argument && (parsed.ptr == end || !isLetter(*parsed.ptr));
    return !text.empty() && !number &&
           (isLetter(text[0]) || text[0] == '"' || text[0] == '_' || (text[0] & 0x80) != 0);
}

/// The line names columns: two words or more, the second after a separator.
bool isHeader(TextSource& source)
{
    auto line = source.ahead(kMaxHeader);
    line = line.substr(0, line.find('\n'));
    bool const marked = line.find_first_of(",;\t") != std::string_view::npos;
    auto const gap = line.find_first_of(marked ? ",;\t" : " ");
    if (gap == std::string_view::npos || !beginsWord(line))
        return false;
    line.remove_prefix(gap);
    while (!line.empty() && isSeparator(line[0]))
        line.remove_prefix(1);
    return beginsWord(line);
}

/// The point on this line; passes over the line.
qcVector<2> takePoint(TextSource& source)
{
    int const line = source.line();
    double const x = takeNumber(source, "x");
    bool const blank = isBlank(source.peek());
    source.skipBlanks(false);
    if (source.peek() == ',' || source.peek() == ';')
        source.skip();
    else if (!blank || source.peek() == '\n' || source.atEnd())
        throw MalformedText{line, "expected a separator and y after x, found " + source.found()};
    source.skipBlanks(false);
    double const y = takeNumber(source, "y");
    source.skipBlanks(false);
    if (!source.atEnd() && source.peek() != '\n')
        throw MalformedText{line,
                            "expected the end of the line after x and y, found " + source.found()};
    source.skipLine();
    return {x, y};
}

/// True where the next line carries a point; the source then stands at it.
bool atPointLine(TextSource& source)
{
    source.skipBlanks(false);
    return !source.atEnd() && source.peek() != '\n' && source.peek() != '#';
}

/// The outline whose first line stands next, or a report of what is wrong with it.
void takeOutline(TextSource& source, OutlineSink& sink, std::string&& name)
{
    Outline outline;
    outline.name = std::move(name);
    outline.line = source.line();
    try {
        sink.countOutline(outline.line);
        while (atPointLine(source)) {
            int const line = source.line();
            sink.addPoint(outline.points, takePoint(source), line);
        }
    } catch (MalformedText const& fault) {
        if (source.cutOff())
            return;  // that is what will be reported, not the text
        sink.report(fault);
        source.skipLine();
        while (atPointLine(source))
            source.skipLine();
        return;
    }
    if (source.cutOff())
        return;  // more of it may have followed
    sink.close(outline, false);
    sink.add(std::move(outline));
}

}  // namespace

void readCsv(TextSource& source, OutlineSink& sink, std::string name)
{
    if (isHeader(source))
        source.skipLine();
    for (;;) {
        source.skipBlanks(true);
        if (source.atEnd())
            return;
        if (source.peek() == '#') {
            name = takeName(source);
        } else {
            takeOutline(source, sink, std::move(name));
            name.clear();
        }
    }
}

}  // namespace qnTool
