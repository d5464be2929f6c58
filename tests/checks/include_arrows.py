"""Includes point left only, so that a folder can be read and tested without those right of it.

    base <- objects <- interpreter <- operators <- pdf <- api

Two exceptions, in sources and never in headers: what an object does when it is executed or read is the
interpreter's business, and the interpreter names the operator families to build itself. <windows.h> stays
behind the one function that calls the platform.
"""

import pathlib
import re
import sys

FOLDERS = ["base", "objects", "interpreter", "operators", "pdf", "api"]

# Source file: headers right of its folder that it may see; a folder stands for all headers in it.
EXCEPTIONS = {
    "objects/PostscriptObject.cpp": ["interpreter"],
    "objects/NameObject.cpp": ["interpreter"],
    "objects/ArrayObject.cpp": ["interpreter"],
    "objects/FileObject.cpp": ["interpreter"],
    "interpreter/Interpreter.cpp": ["operators/LanguageOperators.h", "operators/ImplementedGenOps.h"],
}

WINDOWS_SOURCES = {"base/DebugOutput.cpp"}

# The C boundary implements the public header, and the records of the page builder are declared there.
PUBLIC_HEADER_FOLDERS = {"pdf", "api"}

INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*(["<])([^">]+)[">]', re.MULTILINE)


def complaint(source, quote, header):
    """What is wrong with one include of one source, or None."""
    folder = source.split("/")[0]
    if header.lower() == "windows.h":
        return None if source in WINDOWS_SOURCES else "only DebugOutput.cpp includes <windows.h>"
    if quote == "<":
        return None
    target = header.split("/")[0]
    if target == "quillpress":
        return None if folder in PUBLIC_HEADER_FOLDERS else "the public header is for pdf and api"
    if target not in FOLDERS or "/" not in header:
        return "paths are written from the library's top folder"
    if FOLDERS.index(target) <= FOLDERS.index(folder):
        return None
    allowed = EXCEPTIONS.get(source, [])
    return None if target in allowed or header in allowed else f"{folder} must not see {target}"


def complaints(top):
    for path in sorted(top.rglob("*")):
        if path.suffix not in {".h", ".cpp", ".def"}:
            continue
        source = path.relative_to(top).as_posix()
        if source.split("/")[0] not in FOLDERS:
            yield f"{source}: lies in none of {', '.join(FOLDERS)}"
            continue
        for quote, header in INCLUDE.findall(path.read_text(encoding="utf-8")):
            if problem := complaint(source, quote, header):
                yield f"{source}: includes {header}: {problem}"


def main():
    top = pathlib.Path(sys.argv[1])
    if not any(top.glob("*/*.cpp")):
        sys.exit(f"{top}: no sources found")
    found = list(complaints(top))
    print("\n".join(found))
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
