"""Includes point left only, so that a folder can be read and tested without those right of it.

    converter  base <- objects <- interpreter <- operators <- pdf <- api
    driver     win32 <- spooler <- settings <- (metadata, launcher, output) <- job <- exports

Metadata, launcher and output do not see each other. The converter and the driver do not see each other
either, but for the list of PDF objects that a job clears. The launcher program shares with the driver what
both sides of their channel must agree on.

Two exceptions in the converter, in sources and never in headers: what an object does when it is executed or
read is the interpreter's business, and the interpreter names the operator families to build itself.

<windows.h> comes into the converter through the one function that calls the platform, and everywhere else
through one header; the system's headers that need it stand beside that one.
"""

import pathlib
import re
import sys

CONVERTER = "postscript/lib"
DRIVER = "umpd"
LAUNCHER = "tools/launcher"

CONVERTER_FOLDERS = ["base", "objects", "interpreter", "operators", "pdf", "api"]

# Each folder of the driver and the folders left of it.
BELOW_JOB = ["win32", "spooler", "settings", "metadata", "launcher", "output"]
DRIVER_FOLDERS = {
    "win32": [],
    "spooler": ["win32"],
    "settings": ["win32", "spooler"],
    "metadata": ["win32", "spooler", "settings"],
    "launcher": ["win32", "spooler", "settings"],
    "output": ["win32", "spooler", "settings"],
    "job": BELOW_JOB,
    "exports": [*BELOW_JOB, "job"],
}

# Source file: headers right of its folder that it may see; a folder stands for all headers in it.
EXCEPTIONS = {
    "objects/PostscriptObject.cpp": ["interpreter"],
    "objects/NameObject.cpp": ["interpreter"],
    "objects/ArrayObject.cpp": ["interpreter"],
    "objects/FileObject.cpp": ["interpreter"],
    "interpreter/Interpreter.cpp": ["operators/LanguageOperators.h", "operators/ImplementedGenOps.h"],
}

WINDOWS_HEADER = "umpd/win32/Windows.h"
WINDOWS_SOURCES = {"base/DebugOutput.cpp"}

# The C boundary implements the public header, and the records of the page builder are declared there.
PUBLIC_HEADER_FOLDERS = {"pdf", "api"}

CONVERTER_HEADERS_OF_JOB = {"pdf/PdfObjectList.h"}
DRIVER_HEADERS_OF_LAUNCHER = {"launcher/LauncherStruct.h", "launcher/ChannelNames.h"}

INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*(["<])([^">]+)[">]', re.MULTILINE)


def converter_complaint(source, quote, header):
    """What is wrong with one include of one source below the converter's top folder, or None."""
    folder = source.split("/")[0]
    if header.lower() == "windows.h":
        return None if source in WINDOWS_SOURCES else "only DebugOutput.cpp includes <windows.h>"
    if quote == "<":
        return None
    target = header.split("/")[0]
    if target == "quillpress":
        if header != "quillpress/converter.h":
            return "the converter has nothing to do with the driver"
        return None if folder in PUBLIC_HEADER_FOLDERS else "the public header is for pdf and api"
    if target not in CONVERTER_FOLDERS or "/" not in header:
        return "paths are written from the library's top folder"
    if CONVERTER_FOLDERS.index(target) <= CONVERTER_FOLDERS.index(folder):
        return None
    allowed = EXCEPTIONS.get(source, [])
    return None if target in allowed or header in allowed else f"{folder} must not see {target}"


def system_complaint(file, header, all_headers):
    """The same for <header> in a file outside the converter. Only the platform's headers end in ".h" there."""
    if header.lower() == "windows.h":
        return None if file == WINDOWS_HEADER else "<windows.h> comes through win32/Windows.h"
    if header.endswith(".h") and "win32/Windows.h" not in all_headers:
        return "a header of the system stands beside win32/Windows.h"
    return None


def driver_complaint(source, header):
    """The same for "header" in a source below the driver's top folder."""
    folder = source.split("/")[0]
    if header in CONVERTER_HEADERS_OF_JOB:
        return None if folder == "job" else "only job sees the converter"
    target = header.split("/")[0]
    if target == "quillpress":
        if header != "quillpress/driver.h":
            return "the driver has nothing to do with the converter's interface"
        return None if folder == "exports" else "the public header is for exports"
    if target in CONVERTER_FOLDERS and "/" in header:
        return "of the converter, job sees the list of PDF objects and nobody anything else"
    if target not in DRIVER_FOLDERS or "/" not in header:
        return "paths are written from the driver's top folder"
    if target == folder or target in DRIVER_FOLDERS[folder]:
        return None
    return f"{folder} must not see {target}"


def launcher_complaint(header):
    if header.startswith((LAUNCHER + "/", "win32/")) or header in DRIVER_HEADERS_OF_LAUNCHER:
        return None
    return "the launcher sees itself, the driver's win32, and the record and the names of the channel"


def complaint(file, quote, header, all_headers=()):
    """What is wrong with one include of one file, both as paths from the project's top folder, or None."""
    if file.startswith(CONVERTER + "/"):
        return converter_complaint(file[len(CONVERTER) + 1:], quote, header)
    if quote == "<":
        return system_complaint(file, header, all_headers)
    if file.startswith(DRIVER + "/"):
        return driver_complaint(file[len(DRIVER) + 1:], header)
    return launcher_complaint(header)


def misplaced(file):
    """What is wrong with the place of a file, or None."""
    for top, folders in (CONVERTER, CONVERTER_FOLDERS), (DRIVER, DRIVER_FOLDERS):
        if file.startswith(top + "/") and file[len(top) + 1:].split("/")[0] not in folders:
            return f"lies in none of {', '.join(folders)}"
    return None


def complaints(project, top):
    for path in sorted((project / top).rglob("*")):
        if path.suffix not in {".h", ".cpp", ".def"}:
            continue
        file = path.relative_to(project).as_posix()
        if problem := misplaced(file):
            yield f"{file}: {problem}"
            continue
        includes = INCLUDE.findall(path.read_text(encoding="utf-8"))
        all_headers = {header for _, header in includes}
        for quote, header in includes:
            if problem := complaint(file, quote, header, all_headers):
                yield f"{file}: includes {header}: {problem}"


def main():
    project = pathlib.Path(sys.argv[1])
    found = []
    for top in CONVERTER, DRIVER, LAUNCHER:
        if not any((project / top).rglob("*.cpp")):
            sys.exit(f"{project / top}: no sources found")
        found += complaints(project, top)
    print("\n".join(found))
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
