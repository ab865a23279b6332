#!/usr/bin/env python3
"""Reports C++ files and functions that grow too long, and fails for those that are far too long."""

import re
import sys

from cpp_source import ROOT, files, tokens

FILE_REPORTED, FILE_REFUSED = 600, 700
FUNCTION_REPORTED, FUNCTION_REFUSED = 80, 120

_SCOPE = re.compile(r"^(?:(?:export|inline|static|typedef|template|requires)\b\s*)*(?:namespace|class|struct|union|enum|extern)\b")


def functions(text):
    """Yields (name, first line, number of lines) of the function bodies of a C++ text."""
    head, head_line, depth, name = [], 0, 0, None  # depth: of braces inside a body or data, 0 outside
    for token in tokens(text):
        if token.kind in ("comment", "directive"):
            continue
        if depth:
            depth += {"{": 1, "}": -1}.get(token.text, 0)
            if depth == 0:
                if name:
                    yield name, head_line, token.line - head_line + 1
                head = [*head, "}"] if _goes_on_after_brace(head) else []
        elif token.text == "{":
            name = "" if _goes_on_after_brace(head) else _function_name(head)
            if name is None:
                head = []
            else:
                depth = 1
        elif token.text in ("}", ";") or (token.text == ":" and head in (["public"], ["protected"], ["private"])):
            head = []
        else:
            if not head:
                head_line = token.line
            head.append(token.text)


def _goes_on_after_brace(head):
    """Whether a brace after these tokens holds values ahead of a body: a default argument, a constructor's initial value."""
    words = " ".join(head)
    return head.count("(") > head.count(")") or (") :" in words and re.search(r"[:,] \w+$", words) is not None)


def _function_name(head):
    """The name of the function whose body follows the tokens, "" for data in braces, None for a scope to look into."""
    if head and head[-1] in ("=", ",", "(", "return"):
        return ""
    if _SCOPE.match(" ".join(_without_template_lists(head))) or "(" not in head:
        return None
    if "operator" in head:
        start = head.index("operator")
        return "".join(head[start : head.index("(", start + 2)])
    opening = next((i for i, text in enumerate(head) if text == "(" and _may_name(head[i - 1])), 0)
    if "=" in head[: head.index("(")]:  # a lambda that has a name, or data
        return head[head.index("=") - 1] if head[-1] == ")" else ""
    start = opening - 1
    while start >= 2 and head[start - 1] == "::":
        start -= 2
    return "".join(head[max(start, 0) : opening])


def _may_name(text):
    return re.fullmatch(r"[A-Za-z_]\w*", text) and text not in ("requires", "decltype", "noexcept", "explicit", "alignas")


def _without_template_lists(head):
    """The tokens without the <...> behind each word `template`."""
    kept, depth, after_template = [], 0, False
    for text in head:
        if text == "<" and (after_template or depth):
            depth += 1
        elif text == ">" and depth:
            depth -= 1
        elif not depth:
            kept.append(text)
        after_template = text == "template"
    return kept


def main():
    refused = False
    count, longest = 0, ("", 0)
    for path in files("src", "tests", "benchmarks", suffixes=(".h", ".cpp", ".cc")):
        text = path.read_text(encoding="utf-8")
        shown = path.relative_to(ROOT)
        lines = text.count("\n")
        if lines > FILE_REPORTED:
            print(f"{shown}: {lines} lines")
            refused |= lines > FILE_REFUSED
        for name, line, length in functions(text):
            count += 1
            longest = max(longest, (f"{name} in {shown}", length), key=lambda entry: entry[1])
            if length > FUNCTION_REPORTED:
                print(f"{shown}:{line}: {name} has {length} lines")
                refused |= length > FUNCTION_REFUSED
    print(f"{count} functions, the longest {longest[0]} with {longest[1]} lines")
    if refused:
        print(f"Too long: files over {FILE_REFUSED} lines or functions over {FUNCTION_REFUSED} lines")
    return 1 if refused else 0


if __name__ == "__main__":
    sys.exit(main())
