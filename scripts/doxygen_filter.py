#!/usr/bin/env python3
"""doxygen_filter.py HEADER: the header as the reference reads it.

Members whose meaning the language gives need no comment in the headers: copying, comparison and the
streaming hook of a class. Here they get their line, in front of the declaration so that line numbers
stay; one that has a comment of its own keeps it.
"""
import re
import sys

CLASS = r"\w+(?:<[\w<> ]*>)?"
MEANINGS = [
    (re.compile(rf"\s*(?P<name>\w+)\((?P=name)(?:<\w+>)? const&(?: \w+)?\)"), "Copies the value."),
    (re.compile(rf"\s*(?:\w+::)*{CLASS}& operator=\("), "Copies the value."),
    (re.compile(r".*\boperator==\("), "Exact comparison of the values."),
    (re.compile(r".*\boperator!=\("), "The opposite of operator==."),
    (re.compile(r"\s*friend .*\boperator<\("), "Comparison of the values."),
    (re.compile(r"\s*(?:virtual )?void serialize_\("), "Streams the fields of `version`."),
]


def main():
    documented = False
    with open(sys.argv[1], encoding="utf-8") as file:
        for line in file:
            stripped = line.strip()
            if not documented:
                meaning = next((text for pattern, text in MEANINGS if pattern.match(line)), None)
                if meaning:
                    line = f"/** {meaning} */ {line}"
            # A comment belongs to what follows it, past the line of a template's parameters.
            documented = stripped.startswith("///") or (documented and stripped.startswith("template"))
            sys.stdout.write(line)


if __name__ == "__main__":
    main()
