#!/usr/bin/env python3
"""extract_snippets.py OUT.cpp FILE.md...: makes one program of the C++ code in guides.

A block fenced as ```cpp is taken when the line above it is `<!-- run -->` (it is run) or
`<!-- compile -->` (it is only compiled). Each block stands alone, as the body of a function; its
#include lines go to the top. A statement on one line whose comment begins with a value is checked:

    part.area(false);                 // 1200
    double const r = fit.residual();  // 0.25, and any note after a comma
    part.centerOfMass(false);         // (20, 15)
    e.what();                         // "qcBadPointer"
    line.fitEllipse(ellipse, r);      // throws qcContourDefs::EmptyContour

Whole numbers, truth values and texts must agree exactly, decimal fractions to half a unit of their
last digit. A declaration checks the variable that it declares. Other comments are comments.
"""
import re
import sys

NUMBER = r"-?\d+(?:\.\d+)?(?:e-?\d+)?"
VALUE = re.compile(
    rf"(?P<throws>throws [\w:]+)|(?P<pair>\({NUMBER}, {NUMBER}\))|(?P<bool>true|false)"
    rf'|(?P<text>"[^"]*")|(?P<hex>0x[0-9A-Fa-f]+)|(?P<number>{NUMBER})'
)
CHECKED = re.compile(r"^(?P<statement>\s*\S.*;)\s*// (?P<comment>.*)$")
DECLARATION = re.compile(r"^\s*[\w:<>*& ]+[ &*](?P<name>\w+) = ")

PREAMBLE = """// Made by scripts/extract_snippets.py from the guides: change those.
#include <cntr/cntr.h>

#include <cmath>
#include <cstdio>
#include <exception>
#include <sstream>
#include <string>
%s
namespace {

int checks = 0;
int failures = 0;

template <class T>
std::string shown(T const& value)
{
    std::ostringstream out;
    out.precision(17);
    out << value;
    return out.str();
}
[[maybe_unused]] std::string shown(qcVector<2> const& v)
{
    return "(" + shown(v.x()) + ", " + shown(v.y()) + ")";
}
[[maybe_unused]] std::string shown(std::wstring const& text) { return std::string(text.begin(), text.end()); }

[[maybe_unused]] bool near(double value, double expected, double half)
{
    return value == expected || std::fabs(value - expected) <= half;
}
[[maybe_unused]] bool near(qcVector<2> const& value, qcVector<2> const& expected, double halfX, double halfY)
{
    return near(value.x(), expected.x(), halfX) && near(value.y(), expected.y(), halfY);
}

void check(bool passed, char const* place, std::string const& found)
{
    ++checks;
    if (passed)
        return;
    ++failures;
    std::printf("%%s: got %%s\\n", place, found.c_str());
}

"""

POSTAMBLE = """
struct Snippet {
    char const* place;
    void (*run)();
};

Snippet const snippets[] = {
%s};

}  // namespace

int main()
{
    for (auto const& snippet : snippets) {
        try {
            snippet.run();
        } catch (std::exception const& e) {
            check(false, snippet.place, e.what());
        }
    }
    std::printf("%%d checks, %%d failed\\n", checks, failures);
    return failures != 0 || checks == 0;
}
"""


def half_unit(number):
    """Half a unit of the last digit of a decimal fraction; 0 for a whole number."""
    mantissa, _, exponent = number.partition("e")
    decimals = len(mantissa.partition(".")[2])
    return f"0.5000001e{int(exponent or 0) - decimals}" if decimals else "0.0"


def checked(line, place):
    """The line with its check, or as it is when its comment does not begin with a value."""
    match = CHECKED.match(line)
    value = match and VALUE.match(match["comment"])
    if not value or not re.match(r"$|[,;:]", match["comment"][value.end() :]):
        return line
    statement = match["statement"].strip()
    quoted = '"' + place.replace('"', '\\"') + '"'
    if value["throws"]:
        kind = value["throws"].split()[1]
        return (
            f'try {{ {statement} check(false, {quoted}, "no exception"); }} '
            f"catch ({kind} const& e) {{ check(typeid(e) == typeid({kind}), {quoted}, e.what()); }}"
        )
    declared = DECLARATION.match(match["statement"])
    before, actual = (statement, declared["name"]) if declared else ("", statement.rstrip("; "))
    if value["pair"]:
        x, y = value["pair"][1:-1].split(", ")
        test = f"near(found_, {{{x}, {y}}}, {half_unit(x)}, {half_unit(y)})"
    elif value["number"]:
        number = value["number"]
        test = f"near(static_cast<double>(found_), {number}, {half_unit(number)})"
    elif value["text"]:
        test = f"shown(found_) == {value['text']}"
    else:
        test = f"found_ == {value['hex'] or value['bool']}"
    return f"{before} {{ auto const& found_ = {actual}; check({test}, {quoted}, shown(found_)); }}"


def blocks(path):
    """The marked blocks of a guide: whether it is run, the number of its first line, its lines."""
    with open(path, encoding="utf-8") as file:
        lines = file.read().splitlines()
    number = 0
    while number < len(lines):
        mark = re.fullmatch(r"<!-- (run|compile) -->", lines[number].strip())
        number += 1
        if not mark:
            continue
        if number == len(lines) or lines[number].strip() != "```cpp":
            sys.exit(f"{path}:{number}: a mark without a block of C++ below it")
        begin = number + 1
        number = begin
        while number < len(lines) and lines[number].strip() != "```":
            number += 1
        if number == len(lines):
            sys.exit(f"{path}:{begin}: a block without an end")
        yield mark[1] == "run", begin + 1, lines[begin:number]


def main():
    out, guides = sys.argv[1], sys.argv[2:]
    includes, functions, table = [], [], []
    for path in guides:
        for is_run, first, lines in blocks(path):
            name = f"snippet{len(functions)}"
            body = []
            for number, line in enumerate(lines, first):
                if line.startswith("#include"):
                    includes.append(line)
                    line = ""
                body += [f'#line {number} "{path}"', checked(line, f"{path}:{number}: {line.strip()}")]
            functions.append(f"[[maybe_unused]] void {name}()\n{{\n" + "\n".join(body) + "\n}\n")
            if is_run:
                table.append(f'    {{"{path}:{first}", {name}}},\n')
    with open(out, "w", encoding="utf-8") as file:
        file.write(PREAMBLE % "".join(line + "\n" for line in sorted(set(includes))))
        file.write("\n".join(functions) + POSTAMBLE % "".join(table))


if __name__ == "__main__":
    main()
