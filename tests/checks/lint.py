"""clang-tidy finds nothing in the library and the command line.

run-clang-tidy chooses files by pattern and is content when none fits, so it is first made sure that the
compile database knows every source.
"""

import json
import os
import pathlib
import re
import subprocess
import sys

FOLDERS = ["postscript/lib", "cli"]

# The compile database is written for GCC; clang has other warnings under the same names.
FOR_CLANG = ["-Wno-ignored-optimization-argument", "-Wno-sign-conversion"]

COLOUR = re.compile(r"\x1b\[[0-9;]*m")
FINDING = re.compile(r"^(\S+):\d+:\d+: (?:error|warning): (.*)$|^error: (.*)$")

# A header of libqpdf holds a vector of a type that is not finished yet. With GCC 12's library in C++20 clang
# refuses that and goes on; GCC takes it.
NOT_OURS = re.compile(r"(arithmetic on a pointer to an incomplete type|static_assert failed due).*\bJSON\b")


def sources(project):
    return sorted(
        str(path) for folder in FOLDERS for path in (pathlib.Path(project) / folder).rglob("*.cpp"))


def without_entry(files, build):
    with open(pathlib.Path(build) / "compile_commands.json", encoding="utf-8") as file:
        known = {entry["file"] for entry in json.load(file)}
    return [file for file in files if file not in known]


def lint(run_clang_tidy, clang_tidy, project, build, files):
    ours = re.escape(project) + "/(" + "|".join(FOLDERS + ["include"]) + ")/"
    command = [run_clang_tidy, f"-clang-tidy-binary={clang_tidy}", f"-p={build}", "-quiet",
               f"-j{os.cpu_count()}", f"-header-filter={ours}",
               *(f"-extra-arg={option}" for option in FOR_CLANG),
               *(f"^{re.escape(file)}$" for file in files)]
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)


def main():
    run_clang_tidy, clang_tidy, project, build = sys.argv[1:]
    files = sources(project)
    if not files:
        sys.exit(f"{project}: no sources found")
    if forgotten := without_entry(files, build):
        sys.exit(f"not in the compile database, configure again: {forgotten}")

    result = lint(run_clang_tidy, clang_tidy, project, build, files)
    output = COLOUR.sub("", result.stdout)
    findings = [line for line in output.splitlines() if FINDING.match(line)]
    ours = sorted({line for line in findings if not NOT_OURS.search(line)})
    print("\n".join(ours))
    if result.returncode != 0 and not findings:
        print(output)
        sys.exit(f"run-clang-tidy ended with status {result.returncode}")
    sys.exit(1 if ours else 0)


main()
