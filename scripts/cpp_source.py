"""C++ sources of this repository as lists of tokens, for the checks beside this file."""

import pathlib
import re
from typing import Iterator, NamedTuple

ROOT = pathlib.Path(__file__).resolve().parent.parent

_TOKEN = re.compile(
    r"""
      (?P<comment>  //(?:\\\n|[^\n])* | /\*.*?\*/ )
    | (?P<directive> ^[ \t]*\#(?:\\\n|[^\n])* )
    | (?P<string>   (?:u8|[uUL])?R"(?P<mark>[^()\\\s]*)\(.*?\)(?P=mark)" | (?:u8|[uUL])?"(?:\\.|[^"\\\n])*" )
    | (?P<number>   \.?[0-9](?:[eEpP][+-]|'(?=\w)|[\w.])* )
    | (?P<char>     (?:u8|[uUL])?'(?:\\.|[^'\\\n])+' )
    | (?P<name>     [A-Za-z_]\w* )
    | (?P<punctuation> ::|->|[^\s\w] )
    """,
    re.VERBOSE | re.DOTALL | re.MULTILINE,
)


class Token(NamedTuple):
    kind: str  # comment, directive, string, number, char, name, or punctuation
    text: str
    line: int  # from 1


def files(*folders: str, suffixes: tuple[str, ...]) -> list[pathlib.Path]:
    """The files with one of the suffixes in the folders of the repository, sorted."""
    found = (path for folder in folders for path in (ROOT / folder).rglob("*"))
    return sorted(path for path in found if path.suffix in suffixes and path.is_file())


def tokens(text: str) -> Iterator[Token]:
    """The tokens of a C++ text in their order."""
    line, position = 1, 0
    for match in _TOKEN.finditer(text):
        line += text.count("\n", position, match.start())
        position = match.start()
        yield Token(match.lastgroup if match.lastgroup != "mark" else "string", match.group(), line)
