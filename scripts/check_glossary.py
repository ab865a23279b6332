#!/usr/bin/env python3
"""Checks that docs/glossary.md explains every capital name of the headers under src.

A capital name is a C++ identifier in capitals, digits and underscores with three letters or more. Each must have a row
`NAME` | meaning | header, with a meaning, and with a header that holds the name; rows stand in alphabetical order.
--missing prints ready-made rows for the names without one; a meaning is taken from the comment of the declaration."""

import argparse
import itertools
import re
import sys

from cpp_source import ROOT, files, tokens

GLOSSARY = ROOT / "docs" / "glossary.md"
# Names of the C and C++ libraries, which are not words of this program.
LIBRARY = {"FILE", "NULL", "EOF", "SIZE_MAX", "INT_MAX", "INT_MIN", "SEEK_SET", "SEEK_CUR", "SEEK_END"}


class Use:
    """A place where a header holds a name."""

    def __init__(self, header, line, declares, comment):
        self.header = header
        self.line = line
        self.declares = declares
        self.comment = comment


def is_capital_name(text):
    return re.fullmatch(r"[A-Z][A-Z0-9_]*", text) and sum(map(str.isalpha, text)) >= 3 and text not in LIBRARY


def declares(before, after):
    """Whether a name between these two tokens looks declared there: it follows a type, and no expression goes on."""
    follows_type = before is not None and (
        (before.kind == "name" and before.text not in ("return", "case", "goto")) or before.text in (">", "&", "*", "]")
    )
    return follows_type and (after is None or after.text in (";", "=", "{", "(", ",", ")", "[", ":"))


def comments_by_line(found):
    """For each line of code its comment: behind it on the line, or the lines just above it."""
    behind = {}
    above = {}
    last_code = 0
    block, block_end = [], -1
    for token in found:
        if token.kind != "comment":
            last_code = token.line
            if block_end == token.line - 1:
                above.setdefault(token.line, " ".join(block))
            continue
        text = token.text.lstrip("/*!< ").rstrip("*/ ").strip()
        if token.line == last_code:
            behind[token.line] = text
            continue
        if block_end != token.line - 1:
            block = []
        block.append(text)
        block_end = token.line
    return above | behind


def uses():
    """Capital names of the headers, each with the places where it stands."""
    table = {}
    for path in files("src", suffixes=(".h",)):
        found = list(tokens(path.read_text(encoding="utf-8")))
        comments = comments_by_line(found)
        code = [token for token in found if token.kind not in ("comment", "directive")]
        header = str(path.relative_to(ROOT))
        for index, token in enumerate(code):
            name = token.text.rstrip("_")
            if token.kind != "name" or not is_capital_name(name):
                continue
            before = code[index - 1] if index else None
            after = code[index + 1] if index + 1 < len(code) else None
            use = Use(header, token.line, declares(before, after), comments.get(token.line, ""))
            table.setdefault(name, []).append(use)
    return table


def glossary_rows():
    """Rows of the glossary: name -> (meaning, header). The first cell may hold several names."""
    rows = {}
    for line in GLOSSARY.read_text(encoding="utf-8").splitlines():
        cells = [cell.strip() for cell in re.split(r"(?<!\\)\|", line)[1:-1]]
        if len(cells) == 3:
            for name in re.findall(r"`(\w+)`", cells[0]):
                rows[name] = (cells[1], cells[2].strip("`"))
    return rows


def meaning_from(comment, name):
    """The part of a declaration's comment that explains the name: up to the first full stop."""
    named = re.search(rf"\b{name}\b`?\s*[:=,]\s*([^;]+)", comment)
    text = named.group(1) if named else comment
    text = re.split(r"\.(?:\s|$)", text)[0].strip()
    return text.replace("|", "\\|")


def row_for(name, places):
    """A glossary row for the name, with the place that declares and explains it best."""
    best = max(places, key=lambda use: (use.declares, bool(use.comment)))
    return f"| `{name}` | {meaning_from(best.comment, name)} | `{best.header}` |"


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--missing", action="store_true", help="print rows for the names that have none, and do not check")
    arguments = parser.parse_args()

    names, rows = uses(), glossary_rows()
    missing = sorted(set(names) - set(rows))
    if arguments.missing:
        print("\n".join(row_for(name, names[name]) for name in missing))
        return 0

    faults = [f"{names[name][0].header}:{names[name][0].line}: {name} has no row" for name in missing]
    for name, (meaning, header) in sorted(rows.items()):
        if not meaning:
            faults.append(f"{name} has no meaning")
        if header not in {use.header for use in names.get(name, [])}:
            faults.append(f"{name} does not stand in {header or 'any header'}")
    faults += [f"{after} must not follow {before}" for before, after in itertools.pairwise(rows) if before > after]
    print("\n".join(f"docs/glossary.md: {fault}" for fault in faults) or f"{len(names)} capital names, all explained")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
