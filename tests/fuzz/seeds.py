"""Writes a seed for each program of tests/scripts, to begin a corpus with.

    seeds.py TARGET FOLDER

The last byte of a seed for `splits` and `tokenizer` tells how it is cut.
"""

import pathlib
import re
import sys

SCRIPTS = pathlib.Path(__file__).parent.parent / "scripts"
EXPECTATION = re.compile(rb"% (?:expect|error|content|prints):.*")
ESCAPE = re.compile(rb"\\x([0-9a-f]{2})")


def programs(script):
    """The programs of a script file: each ends with the line that says what must come of it."""
    program = b""
    for line in script.read_bytes().splitlines(keepends=True):
        if not program and (line.lstrip().startswith(b"%") or not line.strip()):
            continue
        text = EXPECTATION.sub(b"", line)
        program += ESCAPE.sub(lambda match: bytes([int(match[1], 16)]), text)
        if text != line:
            yield program
            program = b""


def main():
    target, folder = sys.argv[1], pathlib.Path(sys.argv[2])
    if target not in {"convert", "splits", "tokenizer"}:
        sys.exit(f"{target}: begins with no seeds")
    folder.mkdir(parents=True, exist_ok=True)
    count = 0
    for script in sorted(SCRIPTS.glob("*/*.ps")):
        for number, program in enumerate(programs(script)):
            way = b"" if target == "convert" else bytes([count % 256])
            (folder / f"{script.parent.name}-{script.stem}-{number}").write_bytes(program + way)
            count += 1
    print(f"{count} seeds")


main()
