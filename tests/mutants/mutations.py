# SPDX-License-Identifier: GPL-3.0-or-later
"""The one-line faults that can be put into a source file."""

import hashlib
import re
from dataclasses import dataclass
from pathlib import Path

KINDS = ("comparison", "off by one", "swapped arguments", "wrong key", "dropped statement")

# Rooms of the Qt-free code; one that a tree lacks has no candidates.
ROOMS = ("table", "forms", "editors", "stepping", "timeseries", "calibration", "response", "spectra",
         "check", "meaning")

# The dictionary is data under a checksum: a fault in each of its 700 rows would tell nothing new.
LEFT_OUT = {"param_dictionary.cpp"}

COMPARISONS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "=="}
# Lines that do nothing while a program runs, or only save time.
NO_CODE = re.compile(r"^\s*(#|\}?\s*//|using |template|friend )|static_assert|\bassert\(|\breserve\(|operator")
# The order of their arguments does not matter.
SYMMETRIC = {"min", "max", "minmax", "swap", "hypot", "if", "for", "while", "switch", "catch",
             "Times", "CanJoin", "EqualsWithoutCase", "IsSameFile"}
# A statement that is an expression: what it begins with has no blank in it, a declaration has.
STATEMENT = re.compile(
    r"(?:(?:\+\+|--|\*)?(?:static_cast<void>|[A-Za-z_][\w:]*)(?:(?:\.|->)\w+|\[[^\]]*\]|\([^()]*\))*"
    r"\s*(?:\(|\+\+|--|;|<<|(?:[-+*/|&^%]|<<|>>)?=(?!=)).*;|break;|continue;)$")
NO_STATEMENT = re.compile(r"(?:return|using|namespace|case|default|public|private|throw|goto)\b(?!;)")


@dataclass(frozen=True)
class Mutation:
    """A change of `size` characters at `start` of a file, in its line `line`, counted from 1."""

    kind: str
    path: Path
    line: int
    start: int
    size: int
    text: str
    rank: str

    def applied(self):
        source = self.path.read_text()
        return source[:self.start] + self.text + source[self.start + self.size:]

    def before_and_after(self):
        at = self.line - 1
        return tuple(text.split("\n")[at].strip() for text in (self.path.read_text(), self.applied()))


def without_texts(source):
    """The source with comments and the insides of literals blanked out, of the same length."""
    def blank(match):
        found = match.group()
        if found.startswith("/"):
            return re.sub(r"[^\n]", " ", found)
        return found[0] + "_" * (len(found) - 2) + found[-1]
    return re.sub(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|(?<![0-9A-Fa-f])\'(?:\\.|[^\'\\\n])*\'', blank,
                  source, flags=re.S)


def comparisons(line, _original, _pick):
    for match in re.finditer(r" (<=?|>=?|[=!]=)(?= |$)", line):
        yield match.start(1), len(match.group(1)), COMPARISONS[match.group(1)]


def off_by_one(line, _original, pick):
    # Sizes of arrays are left alone: one more changes nothing.
    sizes = [match.span() for match in re.finditer(r"array<[^;]*?>|\[\d+\]", line)]
    for match in re.finditer(r"(?<![\w.'])(\d{1,9})(?=U?L?(?![\w.']))", line):
        if not any(start <= match.start() < end for start, end in sizes):
            number = int(match.group(1))
            step = 1 if number == 0 or pick(match.start()) % 2 else -1
            yield match.start(1), len(match.group(1)), str(number + step)


def arguments_of(line, opening):
    """Spans of the arguments of the call whose parenthesis opens there; none if it ends elsewhere."""
    depth, start, spans = 0, opening + 1, []
    for at in range(opening, len(line)):
        if line[at] in "([{" or (line[at] == "<" and line[at - 1].isalnum()):
            depth += 1
        elif line[at] in ")]}" or (line[at] == ">" and line[at - 1] not in " -"):
            depth -= 1
        if depth == 0 or (depth == 1 and line[at] == ","):
            spans.append((start + len(line[start:at]) - len(line[start:at].lstrip()), at))
            start = at + 1
        if depth == 0:
            return spans
    return []


def swapped_arguments(line, original, _pick):
    for call in re.finditer(r"(\w+)\(", line):
        spans = [] if call.group(1) in SYMMETRIC else arguments_of(line, call.end() - 1)
        for (start, end), (next_start, next_end) in zip(spans, spans[1:]):
            first, second = original[start:end], original[next_start:next_end]
            if first and second and first != second:
                yield start, next_end - start, second + original[end:next_start] + first


def dropped_statements(source, lines):
    """Line numbers, from 0, of statements that stand on one line of their own."""
    before = "{"
    for number, line in enumerate(lines):
        code = line.strip()
        if (before[-1] in ";{}:" and line.startswith("  ") and code.count("(") == code.count(")")
                and STATEMENT.match(code) and not NO_STATEMENT.match(code) and not NO_CODE.search(line)):
            yield number
        before = code or before


class Finder:
    """Finds the mutations of a tree; their ranks, and so the choice, depend on seed and line only."""

    def __init__(self, seed, dictionary):
        self.seed = seed
        rows = re.findall(r'\b(Int|Flt|Str|Pos|Amx|LSt)\(\w+, "([A-Z0-9]{4})"', dictionary.read_text())
        self.types = {key: kind for kind, key in rows}

    def number(self, *parts):
        return int(hashlib.sha256("|".join(map(str, (self.seed, *parts))).encode()).hexdigest(), 16)

    def wrong_keys(self, _line, original, pick):
        for match in re.finditer(r'"([A-Z0-9]{4})"', original):
            kind = self.types.get(match.group(1))
            others = [key for key in sorted(self.types)
                      if self.types[key] == kind and key != match.group(1)]
            if kind and others:
                yield match.start(1), 4, others[pick(match.start()) % len(others)]

    def changes_of_line(self, line, original, pick):
        for kind, find in zip(KINDS, (comparisons, off_by_one, swapped_arguments, self.wrong_keys)):
            for change in find(line, original, pick):
                yield kind, *change

    def of_file(self, path):
        source = path.read_text()
        masked = without_texts(source).split("\n")
        dropped = set(dropped_statements(source, masked))
        seen, offset = {}, 0
        for number, (line, original) in enumerate(zip(masked, source.split("\n"))):
            code = original.strip()
            seen[code] = seen.get(code, 0) + 1
            name = (path.name, code, seen[code])
            changes = []
            if code and not NO_CODE.search(line):
                changes += self.changes_of_line(line, original, lambda at: self.number(*name, at))
            if number in dropped:
                indent = len(line) - len(line.lstrip())
                changes.append((KINDS[4], indent, len(original) - indent, ";"))
            for kind, at, size, text in changes:
                rank = f"{self.number(*name, kind, at, text):064x}"
                yield Mutation(kind, path, number + 1, offset + at, size, text, rank)
            offset += len(original) + 1

    def of_tree(self, source_folder):
        """The mutations of each kind, in the order in which they are taken."""
        found = {kind: [] for kind in KINDS}
        for room in ROOMS:
            for path in sorted((source_folder / room).glob("*.cpp")):
                if path.name not in LEFT_OUT:
                    for mutation in self.of_file(path):
                        found[mutation.kind].append(mutation)
        return {kind: sorted(all_of, key=lambda m: m.rank) for kind, all_of in found.items()}
