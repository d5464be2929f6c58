"""Every function that docs/architecture.md names on its roads exists in the sources.

A name is `function` or `Class::function`, in backticks, in a section that begins with "The road". The function of a
class is looked for where the class is: in its source, or in a header that declares the class.
"""

import pathlib
import re
import sys

FOLDERS = ["postscript", "umpd", "cli", "tools", "include"]
ROAD = re.compile(r"^## The road.*?$(.*?)(?=^## |\Z)", re.MULTILINE | re.DOTALL)
NAME = re.compile(r"`((?:\w+::)?\w+)`")


def roads(document):
    """The texts of the sections that are roads."""
    return ROAD.findall(document)


def names(document):
    return [name for road in roads(document) for name in NAME.findall(road)]


def exists(name, sources):
    owner, _, function = name.rpartition("::")
    if any(re.search(rf"\b{re.escape(name)}\s*\(", text) for text in sources):
        return True
    if not owner:
        return False
    return any(re.search(rf"\bclass {owner}\b[^;]*{{.*?\b{function}\s*\(", text, re.DOTALL) for text in sources)


def read_sources(project):
    files = [file for folder in FOLDERS for file in (project / folder).rglob("*") if file.suffix in {".h", ".cpp"}]
    return [file.read_text(encoding="utf-8") for file in files]


def main():
    project = pathlib.Path(sys.argv[1])
    document = (project / "docs/architecture.md").read_text(encoding="utf-8")
    sources = read_sources(project)
    if len(roads(document)) != 3:
        sys.exit("docs/architecture.md has not three roads")
    missing = [name for name in names(document) if not exists(name, sources)]
    for name in missing:
        print(f"docs/architecture.md: {name}: no such function")
    sys.exit(1 if missing else 0)


if __name__ == "__main__":
    main()
