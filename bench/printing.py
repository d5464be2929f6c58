#!/usr/bin/env python3
"""Measures the print driver side of a Windows build under Wine, in a prefix of its own.

    bench/printing.py BUILD [ROUNDS [MEGABYTES]]
"""

import pathlib
import subprocess
import sys
import tempfile

WINE = pathlib.Path(__file__).resolve().parent.parent / "tests/windows/wine.sh"


def main():
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    build = pathlib.Path(sys.argv[1]).resolve()
    program = build / "bench/quillpress_printing.exe"
    if not program.exists():
        sys.exit(f"{program} is missing: build the preset windows")
    with tempfile.TemporaryDirectory() as folder:
        note = pathlib.Path(folder) / "prefix"
        subprocess.run([WINE, "up", note], check=True)
        try:
            sys.exit(subprocess.run([WINE, "run", note, build / "bin", program, *sys.argv[2:]]).returncode)
        finally:
            subprocess.run([WINE, "down", note], check=True)


main()
