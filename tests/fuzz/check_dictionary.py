"""The dictionary of the fuzzers is the one that the program makes: no operator is missing.

    check_dictionary.py PROGRAM DICTIONARY
"""

import difflib
import pathlib
import subprocess
import sys


def main():
    program, dictionary = sys.argv[1:]
    made = subprocess.run([program], check=True, text=True, capture_output=True).stdout
    kept = pathlib.Path(dictionary).read_text(encoding="ascii")
    if made == kept:
        return
    sys.stdout.writelines(difflib.unified_diff(kept.splitlines(True), made.splitlines(True), dictionary, program))
    sys.exit(f"write it anew: {program} > {dictionary}")


main()
