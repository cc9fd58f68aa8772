"""What can be changed in a file of the product: one operator, constant, text or statement at a time."""

import random
import re

SWAPS = [
    (r"(?<![<>=!+\-*/&|^-])<=(?!>)", ["<", ">="]),
    (r"(?<![<>=!\-])>=", [">", "<="]),
    (r"(?<= )<(?= )", ["<=", ">"]),
    (r"(?<= )>(?= )", [">=", "<"]),
    (r"==", ["!="]),
    (r"!=", ["=="]),
    (r"&&", ["||"]),
    (r"\|\|", ["&&"]),
    (r"(?<= )\+(?= )", ["-"]),
    (r"(?<= )-(?= )", ["+"]),
    (r"(?<= )\*(?= \w)", ["/"]),
    (r"(?<= )/(?= )", ["*"]),
    (r"\+=", ["-="]),
    (r"-=", ["+="]),
    (r"\btrue\b", ["false"]),
    (r"\bfalse\b", ["true"]),
    (r"(?<![=!])!(?=[a-zA-Z_(])", [""]),
    (r"\bqMin\b|\bstd::min\b", ["qMax"]),
    (r"\bqMax\b|\bstd::max\b", ["qMin"]),
    (r"\bstd::floor\b", ["std::ceil"]),
    (r"\bstd::ceil\b", ["std::floor"]),
    (r"\bbreak;", ["continue;"]),
]
NUMBER = re.compile(r"(?<![\w.\"'])(\d+(?:\.\d+)?)(?![\w.x'])")
TEXT = re.compile(r'"((?:[^"\\]|\\.)+)"')
CALL = re.compile(r"^\s*(?:\w+(?:\.|->|::))*\w+\([^;{}]*\);\s*$")
SKIP_LINE = re.compile(r"^\s*(#|//|template|using |namespace |static_assert|Q_|case |default:|\}|class |struct |enum )"
                       r"|operator|\bauto \w+ = \[|setObjectName|tr\(\"\"\)|objectName")


def source_lines(path):
    """Numbers and texts of lines that are code."""
    in_comment = False
    for number, line in enumerate(path.read_text(encoding="utf-8").split("\n")):
        if in_comment or line.strip().startswith("/*"):
            in_comment = "*/" not in line
            continue
        if SKIP_LINE.search(line) or not line.strip():
            continue
        yield number, line


def outside_texts(line):
    """Which columns are neither text nor comment."""
    masked = TEXT.sub(lambda m: '"' + " " * len(m.group(1)) + '"', line)
    comment = masked.find("//")
    return masked if comment < 0 else masked[:comment]


def mutants_of(path):
    """Pairs of a line's index and its changed text."""
    found = []
    for number, line in source_lines(path):
        masked = outside_texts(line)
        for pattern, replacements in SWAPS:
            for match in re.finditer(pattern, masked):
                for replacement in replacements:
                    found.append((number, line[:match.start()] + replacement + line[match.end():]))
        for match in NUMBER.finditer(masked):
            value = match.group(1)
            changed = repr(float(value) + 1.0) if "." in value else str(int(value) + 1)
            found.append((number, line[:match.start()] + changed + line[match.end():]))
        for match in TEXT.finditer(line):
            if match.end() <= len(masked) and not line.lstrip().startswith("#") and match.group(1) != "C":
                text = match.group(1)
                changed = ("x" if text[0] != "x" else "y") + text[1:] if text[0] not in "\\%" else text + "x"
                found.append((number, line[:match.start(1)] + changed + line[match.end(1):]))
        if CALL.match(masked) and "return" not in line and "emit" not in masked.split("(")[0]:
            found.append((number, re.match(r"\s*", line).group(0) + ";"))
        elif masked.strip().startswith("emit "):
            found.append((number, re.match(r"\s*", line).group(0) + ";"))
    return found


def drawn(root, folder, only, without, seed):
    """The mutants of a folder as (file, line's index, line, changed line), in the seed's order."""
    mutants = []
    for path in sorted((root / folder).rglob("*")):
        name = str(path.relative_to(root))
        if path.suffix not in (".cpp", ".h") or (only and name not in only) or (without and re.search(without, name)):
            continue
        lines = path.read_text(encoding="utf-8").split("\n")
        mutants += [(name, number, lines[number], text) for number, text in dict.fromkeys(mutants_of(path))]
    random.Random(f"{seed} {folder}").shuffle(mutants)
    return mutants
