# SPDX-License-Identifier: MIT
"""The small changes that make C++ code wrong: which there are, and where a file has a place for them.

A change is one replacement in one line. Comments, texts in quotes and preprocessor lines have none. Code is read line by line
and not understood: a change may be no C++, which the compiler then says, or change nothing that anybody could notice.
"""

import collections
import dataclasses
import itertools
import pathlib
import re


@dataclasses.dataclass(frozen=True)
class Change:
    """What one line is replaced by."""
    path: str
    line: int  # from 1
    kind: str
    before: str
    after: str

    def __str__(self):
        return f"{self.path}:{self.line}: {self.kind}\n    - {self.before.strip()}\n    + {self.after.strip()}"


# Between operands there are spaces, between the brackets of a template there are none.
EXCHANGED = {
    "boundary": {" < ": " <= ", " <= ": " < ", " > ": " >= ", " >= ": " > "},
    "equality": {" == ": " != ", " != ": " == "},
    "connective": {" && ": " || ", " || ": " && "},
    "arithmetic": {" + ": " - ", " - ": " + ", " += ": " -= ", " -= ": " += "},
    "truth": {"true": "false", "false": "true"},
}
NUMBER = re.compile(r"(?<![\w.'])(0|[1-9][\d']*)(?![\w.'])")
NEGATION = re.compile(r"!(?=[\w(:])")
CONDITION = re.compile(r"\b(?:if|while) \(")
CALL = re.compile(r"\s*(?:\*?[A-Za-z_][\w:]*(?:\.|->|::)?)(?:[\w:.>\-\[\]*]|\(\))*\(.*\);\s*$")
ASSIGNMENT = re.compile(r"\s*[A-Za-z_*][\w.>\-\[\]*()]* [+\-*/|&]?= .*;\s*$")
LEAVING = re.compile(r"\s*(?:return|break|continue);\s*$")
RESERVATION = re.compile(r"\s*[\w.>\-]+(?:\.|->)reserve\(.*;\s*$")
NO_STATEMENT = re.compile(r"\s*(?:return|if|for|while|switch|case|using|static_assert|throw|delete|else|do|Q_OBJECT|Q_PROPERTY|"
                          r"Q_DECLARE\w*|Q_REGISTER\w*)\b")


def without_texts(source):
    """The lines of a file, comments, quoted texts and preprocessor lines replaced by as many '@'."""
    pattern = re.compile(r'//[^\n]*|/\*.*?\*/|R"(\w*)\(.*?\)\1"|"(?:\\.|[^"\\\n])*"|(?<!\w)\'(?:\\.|[^\'\\\n])+\'|'
                         r'^[ \t]*#(?:\\\n|[^\n])*', re.DOTALL | re.MULTILINE)
    return pattern.sub(lambda found: re.sub(r"[^\n]", "@", found.group()), source).split("\n")


def closing(line, opening):
    """Where the bracket that opens at `opening` is closed; None when that is in another line."""
    depth = 0
    for place in range(opening, len(line)):
        depth += {"(": 1, ")": -1}.get(line[place], 0)
        if depth == 0:
            return place
    return None


def places(code):
    """For one line of code without its texts: kind, begin, end, replacement."""
    if RESERVATION.match(code):
        return  # whatever is reserved, nobody could notice
    for kind, pairs in EXCHANGED.items():
        for old, new in pairs.items():
            pattern = rf"\b{old}\b" if old.isalpha() else re.escape(old)
            yield from ((kind, found.start(), found.end(), new) for found in re.finditer(pattern, code))
    for found in NUMBER.finditer(code):
        if not code[:found.start()].rstrip().endswith(") ="):  # nor a function without a body
            yield "number", found.start(), found.end(), str(int(found.group().replace("'", "")) + 1)
    for found in NEGATION.finditer(code):
        yield "negation dropped", found.start(), found.end(), ""
    for found in CONDITION.finditer(code):
        end = closing(code, found.end() - 1)
        if end is not None and ";" not in code[found.end():end]:
            yield "condition negated", found.end(), end, f"!({code[found.end():end]})"
    balanced = code.count("(") == code.count(")")
    if LEAVING.match(code) or balanced and not NO_STATEMENT.match(code) and (CALL.match(code) or ASSIGNMENT.match(code)):
        begin = len(code) - len(code.lstrip())
        yield "statement dropped", begin, len(code.rstrip()), ";"


def changes(path, source):
    """All changes of a file."""
    for number, (line, code) in enumerate(zip(source.split("\n"), without_texts(source)), 1):
        for kind, begin, end, new in places(code):
            if kind == "condition negated":  # with its texts
                new = f"!({line[begin:end]})"
            yield Change(path, number, kind, line, line[:begin] + new + line[end:])


def applied(source, change):
    """The file's text with the change made."""
    lines = source.split("\n")
    assert lines[change.line - 1] == change.before
    lines[change.line - 1] = change.after
    return "\n".join(lines)


def room(path):
    """kit/core/log for kit/core/log/linux/AppendLine.cpp."""
    parts = pathlib.PurePath(path).parts[:-1]
    return "/".join(parts[:3] if parts[0] == "kit" else parts[:2])


def one_room_after_the_other(places, each, dice):
    """So many places, that is paths and lines, of every room: the first of each room, then the second of each."""
    rooms = collections.defaultdict(list)
    for place in sorted(places):
        rooms[room(place[0])].append(place)
    samples = [dice.sample(rooms[name], min(each, len(rooms[name]))) for name in sorted(rooms)]
    return [place for row in itertools.zip_longest(*samples) for place in row if place]
