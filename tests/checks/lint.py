"""clang-tidy finds nothing in the sources of the given folders.

The compile database is GCC's. Each run makes one of its own from it: of the sources that it looks at, with
what clang must know about a cross compiler and without what only GCC understands.
"""

import argparse
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys

# Headers of these folders are looked at along with the sources that include them.
OURS = ["postscript/lib", "postscript/level3", "cli", "umpd", "tools", "include"]

# Clang has other warnings under the same names.
FOR_CLANG = ["-Wno-ignored-optimization-argument", "-Wno-sign-conversion"]
ONLY_FOR_GCC = {"-fno-keep-inline-dllexport"}

COLOUR = re.compile(r"\x1b\[[0-9;]*m")
FINDING = re.compile(r"^(\S+):\d+:\d+: (?:error|warning): (.*)$|^error: (.*)$")

# A header of libqpdf holds a vector of a type that is not finished yet. With GCC 12's library in C++20 clang
# refuses that and goes on; GCC takes it.
NOT_OURS = re.compile(r"(arithmetic on a pointer to an incomplete type|static_assert failed due).*\bJSON\b")


def sources(options):
    found = {str(path) for folder in options.folders for path in (options.project / folder).rglob("*.cpp")}
    return sorted((found | set(options.also)) - set(options.without))


def standard_library_folders(compiler):
    """Where a cross compiler keeps the C++ headers. Clang finds the system's own, but not these."""
    result = subprocess.run([compiler, "-x", "c++", "-E", "-v", "-"], check=True, text=True,
                            stdin=subprocess.DEVNULL, capture_output=True)
    listed = result.stderr.partition("search starts here:\n#include <...>")[2].partition("End of search")[0]
    return [line.strip() for line in listed.splitlines() if "/c++" in line]


def options_for_target(compiler, target):
    folders = standard_library_folders(compiler)
    if not folders:
        sys.exit(f"{compiler} does not tell where its C++ headers are")
    return [f"--target={target}", "-nostdinc++", *(f"-isystem{folder}" for folder in folders)]


def write_database(build, files, folder, target):
    """Makes a compile database for clang, in a folder of its own."""
    with open(build / "compile_commands.json", encoding="utf-8") as file:
        entries = {entry["file"]: entry for entry in json.load(file)}
    if forgotten := [file for file in files if file not in entries]:
        sys.exit(f"not in the compile database, configure again: {forgotten}")
    extra = FOR_CLANG
    if target:
        extra = extra + options_for_target(shlex.split(entries[files[0]]["command"])[0], target)
    database = []
    for file in files:
        compiler, *arguments = shlex.split(entries[file]["command"])
        arguments = [argument for argument in arguments if argument not in ONLY_FOR_GCC]
        database.append({"directory": entries[file]["directory"], "file": file,
                         "arguments": [compiler, *extra, *arguments]})
    folder.mkdir(exist_ok=True)
    (folder / "compile_commands.json").write_text(json.dumps(database, indent=1), encoding="utf-8")


def lint(options, database):
    ours = "^" + re.escape(str(options.project)) + "/(" + "|".join(OURS) + ")/"
    command = [options.run_clang_tidy, f"-clang-tidy-binary={options.clang_tidy}", f"-p={database}", "-quiet",
               f"-j{os.cpu_count()}", f"-header-filter={ours}"]
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)


def parse_arguments():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--run-clang-tidy", required=True)
    parser.add_argument("--clang-tidy", required=True)
    parser.add_argument("--project", required=True, type=pathlib.Path)
    parser.add_argument("--build", required=True, type=pathlib.Path)
    parser.add_argument("--target", help="what a cross compiler compiles for, as clang calls it")
    parser.add_argument("--also", nargs="*", default=[], help="sources beside those of the folders")
    parser.add_argument("--without", nargs="*", default=[], help="sources that another run looks at")
    parser.add_argument("--folders", nargs="+", required=True)
    return parser.parse_args()


def main():
    options = parse_arguments()
    files = sources(options)
    if not files:
        sys.exit(f"{options.project}: no sources found")
    database = options.build / "lint"
    write_database(options.build, files, database, options.target)

    result = lint(options, database)
    output = COLOUR.sub("", result.stdout)
    findings = [line for line in output.splitlines() if FINDING.match(line)]
    ours = sorted({line for line in findings if not NOT_OURS.search(line)})
    print("\n".join(ours))
    if result.returncode != 0 and not findings:
        print(output)
        sys.exit(f"run-clang-tidy ended with status {result.returncode}")
    sys.exit(1 if ours else 0)


main()
