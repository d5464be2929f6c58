"""Behaviour that is kept on purpose, as docs/kept.md lists it.

A source marks it with a comment, "Kept: REASON (TEST).", where TEST is the test that shows it: a script below
tests/scripts that says "Kept:" itself, or SUITE.NAME of a unit test. `kept.py PROJECT` fails for a mark without
such a test, and when the list is stale; with --write it writes the list.
"""

import pathlib
import re
import sys

# The folders whose marks the list holds.
FOLDERS = ["postscript/lib", "umpd"]
SUFFIXES = {".h", ".cpp", ".def"}
LIST = "docs/kept.md"
HEAD = """# Kept on purpose

What looks like a mistake and is none: callers and jobs count on it. Each mark in a source has a test that shows it.
`python3 tests/checks/kept.py . --write` makes this list from the marks.

| source | behaviour | test |
| --- | --- | --- |
"""

COMMENT = re.compile(r"//(.*)")
MARK = re.compile(r"Kept: (?P<reason>.*?) \((?P<test>[\w/-]+\.ps|[A-Z]\w*\.[A-Z]\w*)\)")
UNIT_TEST = re.compile(r"\bTEST(?:_[FP])?\(\s*(\w+),\s*(\w+)\)")


def comments(text):
    """The text of each run of comment lines, one string a run."""
    run = []
    for line in text.splitlines():
        found = COMMENT.search(line)
        # A comment behind code is a run of its own.
        if run and (not found or line[:found.start()].strip()):
            yield " ".join(run)
            run = []
        if found:
            run.append(found.group(1).strip())
    if run:
        yield " ".join(run)


def marks(path, text, problems):
    for comment in comments(text):
        found = list(MARK.finditer(comment))
        if len(found) != comment.count("Kept:"):
            problems.append(f"{path}: no test behind \"{comment[comment.find('Kept:'):]}\"")
        for mark in found:
            yield mark["reason"], mark["test"]


def unit_tests(project):
    names = set()
    for path in sorted((project / "tests").rglob("*Test.cpp")):
        names.update(".".join(found) for found in UNIT_TEST.findall(path.read_text()))
    return names


def shows(project, test, names):
    if not test.endswith(".ps"):
        return test in names
    script = project / "tests/scripts" / test
    return script.is_file() and "Kept:" in script.read_text()


def list_of(project, problems):
    names = unit_tests(project)
    rows = []
    for folder in FOLDERS:
        for path in sorted((project / folder).rglob("*")):
            if path.suffix not in SUFFIXES:
                continue
            name = path.relative_to(project).as_posix()
            for reason, test in marks(name, path.read_text(), problems):
                if not shows(project, test, names):
                    problems.append(f"{name}: {test} does not show what is kept")
                rows.append(f"| {name} | {reason.replace('|', chr(92) + '|')} | {test} |\n")
    if not rows:
        problems.append(f"{project}: no marks found")
    return HEAD + "".join(rows)


def main():
    project = pathlib.Path(sys.argv[1])
    problems = []
    text = list_of(project, problems)
    target = project / LIST
    if "--write" in sys.argv[2:]:
        target.write_text(text)
    elif not target.is_file() or target.read_text() != text:
        problems.append(f"{LIST} is stale; tests/checks/kept.py --write makes it anew")
    sys.exit("\n".join(problems) or 0)


if __name__ == "__main__":
    main()
