"""The C and C++ files of the project."""

import pathlib

FOLDERS = ["postscript", "umpd", "include", "cli", "tools", "tests", "bench"]
SUFFIXES = {".h", ".c", ".cpp"}


def source_files(project):
    return sorted(
        path
        for folder in FOLDERS
        for path in (pathlib.Path(project) / folder).rglob("*")
        if path.suffix in SUFFIXES)
