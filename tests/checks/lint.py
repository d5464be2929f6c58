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


def main():
    run_clang_tidy, clang_tidy, project, build = sys.argv[1:]
    sources = {str(path) for folder in FOLDERS for path in (pathlib.Path(project) / folder).rglob("*.cpp")}
    with open(pathlib.Path(build) / "compile_commands.json", encoding="utf-8") as file:
        known = {entry["file"] for entry in json.load(file)}
    if not sources or sources - known:
        sys.exit(f"not in the compile database: {sorted(sources - known)}; configure again")

    ours = re.escape(project) + "/(" + "|".join(FOLDERS + ["include"]) + ")/"
    command = [run_clang_tidy, f"-clang-tidy-binary={clang_tidy}", f"-p={build}", "-quiet",
               f"-j{os.cpu_count()}", f"-header-filter={ours}", *map(re.escape, sorted(sources))]
    result = subprocess.run(command, capture_output=True, text=True)
    for line in result.stdout.splitlines() + result.stderr.splitlines():
        if not line.endswith(" warnings generated.") and not line.startswith(clang_tidy):
            print(line)
    sys.exit(result.returncode)


main()
