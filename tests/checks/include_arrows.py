"""Includes point one way only, so that a folder can be read and tested without those that build on it.

FOLDERS lists every folder of product code with the folders that it may see beside itself; a file belongs to the
longest entry that its path begins with. Paths are written from the top folder.

Sources, never headers, may have exceptions: what an object does when it is executed or read is the interpreter's
business, and the interpreter names the operator families to build itself.

<windows.h> comes into the converters through the few functions that call the platform, and everywhere else through
one header; the system's headers that need it stand beside that one.
"""

import pathlib
import re
import sys


def layers(top, *names):
    """Folders in a row: each sees all those left of it."""
    folders = [f"{top}/{name}" for name in names]
    return {folder: folders[:place] for place, folder in enumerate(folders)}


CONVERTER = layers("postscript/lib", "base", "objects", "interpreter", "operators", "pdf", "api")

# The language proper, without page and font.
LANGUAGE_FOLDERS = ["objects", "streams", "scanner", "interpreter", "operators"]

# The full language: what each folder sees beside itself.
LANGUAGE = {
    f"postscript/level3/{folder}": [f"postscript/level3/{name}" for name in visible]
    for folder, visible in {
        "objects": [],
        "streams": ["objects"],
        "scanner": ["objects", "streams"],
        "interpreter": ["objects", "streams", "scanner"],
        "operators": ["objects", "streams", "scanner", "interpreter"],
        "images": ["objects", "streams", "geometry", "pdf"],
        "geometry": [],
        "pdf": ["geometry"],
        "fonts": ["geometry", "pdf"],
        "colour": LANGUAGE_FOLDERS + ["pdf"],
        "graphics": LANGUAGE_FOLDERS + ["geometry", "pdf", "fonts", "images", "colour"],
        "device": LANGUAGE_FOLDERS + ["geometry", "pdf", "fonts", "images", "colour", "graphics"],
        "text": LANGUAGE_FOLDERS + ["geometry", "pdf", "fonts", "colour", "graphics"],
        "document": LANGUAGE_FOLDERS + ["geometry", "pdf", "fonts", "images", "colour", "graphics", "text", "device"],
    }.items()
}

BELOW_JOB = ["rules", "win32", "spooler", "settings", "metadata", "output", "channel"]
DRIVER = {
    f"umpd/{folder}": [f"umpd/{name}" for name in visible]
    for folder, visible in {
        "rules": [],
        "win32": ["rules"],
        "spooler": ["rules", "win32"],
        "settings": ["rules", "win32", "spooler"],
        "metadata": ["rules", "win32", "spooler", "settings"],
        "output": ["rules", "win32", "spooler", "settings"],
        "channel": ["rules", "win32", "spooler", "settings"],
        "job": BELOW_JOB,
        "api": [*BELOW_JOB, "job"],
    }.items()
}

COMMAND_LINE = {
    "cli/system": [],
    "cli/base": [],
    "cli/job": ["cli/base"],
    "cli/spool": ["cli/base"],
    "cli/content": ["cli/base", "cli/job", "cli/spool"],
    "cli/conversion": ["cli/base", "cli/job", "cli/spool"],
    "cli/pdf": ["cli/base", "cli/job", "cli/spool", "cli/content", "cli/conversion"],
    "cli/run": ["cli/base", "postscript/level3/document", "postscript/level3/interpreter",
                "postscript/level3/streams"],
    "cli/full": ["cli/base", "cli/job", "cli/spool"],
    "cli/archive": ["cli/base", "postscript/level3/colour", "postscript/level3/document"],
    "cli/finish": ["cli/base", "cli/spool", "cli/archive"],
    "cli/driver": ["cli/base", "cli/job", "cli/spool", "cli/content", "cli/conversion", "cli/pdf"],
    "cli/task": ["cli/base", "cli/job", "cli/spool", "cli/run", "cli/full", "cli/finish", "cli/driver"],
    "cli/batch": ["cli/base", "cli/spool", "cli/task"],
    "cli/manual": ["cli/base"],
    "cli/quick": ["cli", "cli/base", "cli/spool", "cli/full", "cli/task", "cli/whole"],
    "cli/whole": ["cli"],
    "cli/cups": ["cli/base", "cli/task"],
    "cli": ["cli/base", "cli/task", "cli/batch", "cli/manual"],
}

# What the system gives is seen by every room.
COMMAND_LINE = {
    folder: visible if folder == "cli/system" else ["cli/system", *visible] for folder, visible in COMMAND_LINE.items()
}

FOLDERS = {
    **CONVERTER,
    **LANGUAGE,
    **DRIVER,
    **COMMAND_LINE,
    "tools/launcher": ["umpd/rules", "umpd/win32"],
}

# Headers, or folders of headers, that one file or all files of one folder may see besides.
EXCEPTIONS = {
    "postscript/lib/objects/PostscriptObject.cpp": ["postscript/lib/interpreter"],
    "postscript/lib/objects/NameObject.cpp": ["postscript/lib/interpreter"],
    "postscript/lib/objects/ArrayObject.cpp": ["postscript/lib/interpreter"],
    "postscript/lib/objects/FileObject.cpp": ["postscript/lib/interpreter"],
    "postscript/lib/interpreter/Interpreter.cpp": [
        "postscript/lib/operators/LanguageOperators.h", "postscript/lib/operators/ImplementedGenOps.h"],
    # Every reset of a job clears the list of PDF objects, and the exported functions of both faces let no
    # exception out: all that the driver and the converter share.
    "umpd/job": ["postscript/lib/pdf/PdfObjectList.h"],
    "umpd/api": ["postscript/lib/base/Guarded.h"],
}

# Who implements or uses which of the public headers.
PUBLIC_HEADERS = {
    "quillpress/converter.h": ["postscript/lib/pdf", "postscript/lib/api", "cli/conversion", "cli/pdf"],
    "quillpress/document.h": ["postscript/level3/document", "cli/full"],
    "quillpress/driver.h": ["umpd/api"],
}

WINDOWS_HEADER = "umpd/win32/Windows.h"
SOURCES_OF_WINDOWS_HEADER = {
    WINDOWS_HEADER, "cli/system/windows/Windows.h", "postscript/lib/base/DebugOutput.cpp",
    "postscript/level3/fonts/SystemFonts.cpp", "postscript/level3/interpreter/FileAccess.cpp"}
PORTABLE = ("postscript/", "cli/")

INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*(["<])([^">]+)[">]', re.MULTILINE)


def folder_of(path):
    """The entry of FOLDERS that a path lies in, or None."""
    inside = [folder for folder in FOLDERS if path.startswith(folder + "/")]
    return max(inside, key=len, default=None)


def is_among(header, allowed):
    return any(header == entry or header.startswith(entry + "/") for entry in allowed)


def system_complaint(file, header, all_headers):
    """What is wrong with <header>, or None."""
    if header.startswith("quillpress/"):
        users = PUBLIC_HEADERS.get(header, [])
        return None if folder_of(file) in users else "the public header is not for this folder"
    if header.lower() == "windows.h":
        return None if file in SOURCES_OF_WINDOWS_HEADER else f"<windows.h> comes through {WINDOWS_HEADER}"
    # Outside the portable folders only the platform's headers end in ".h".
    if not file.startswith(PORTABLE) and header.endswith(".h") and WINDOWS_HEADER not in all_headers:
        return f"a header of the system stands beside {WINDOWS_HEADER}"
    return None


def own_complaint(file, header):
    """What is wrong with "header", or None."""
    folder, target = folder_of(file), folder_of(header)
    if target is None or ".." in header:
        return "paths are written from the top folder, and name a folder of the product"
    if target == folder or target in FOLDERS[folder]:
        return None
    allowed = EXCEPTIONS.get(file, []) + EXCEPTIONS.get(folder, [])
    return None if is_among(header, allowed) else f"{folder} must not see {target}"


def complaint(file, quote, header, all_headers=()):
    """What is wrong with one include of one file, both as paths from the project's top folder, or None."""
    return system_complaint(file, header, all_headers) if quote == "<" else own_complaint(file, header)


def complaints(project, file):
    if folder_of(file) is None:
        yield f"{file}: lies in no folder that FOLDERS lists"
        return
    includes = INCLUDE.findall((project / file).read_text(encoding="utf-8"))
    all_headers = {header for _, header in includes}
    for quote, header in includes:
        if problem := complaint(file, quote, header, all_headers):
            yield f"{file}: includes {header}: {problem}"


def product_files(project):
    """The sources below the top folders that FOLDERS speaks of."""
    for top in sorted({folder.split("/")[0] for folder in FOLDERS}):
        for path in sorted((project / top).rglob("*")):
            if path.suffix in {".h", ".cpp", ".def"}:
                yield path.relative_to(project).as_posix()


def main():
    project = pathlib.Path(sys.argv[1])
    files = list(product_files(project))
    for folder in FOLDERS:
        if not any(folder_of(file) == folder for file in files):
            sys.exit(f"{project / folder}: no sources found")
    found = [problem for file in files for problem in complaints(project, file)]
    print("\n".join(found))
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
