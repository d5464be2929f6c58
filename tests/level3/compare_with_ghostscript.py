#!/usr/bin/env python3
"""Runs the tables of small programs through Ghostscript and lists where it prints something else.

    tests/level3/compare_with_ghostscript.py [TABLE.txt ...] [--ours build/native/bin/quillpress]

Without --ours the expected outputs of the tables are compared; with it, what our own interpreter prints. A row whose
name ends in "(ours)" is known to differ, and the table says why.
"""

import argparse
import concurrent.futures
import pathlib
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent / "language"
GHOSTSCRIPT = ["gs", "-q", "-dBATCH", "-dNOPAUSE", "-dSAFER", "-dNODISPLAY"]


def rows(table):
    """Yields (name, program, expected) as TableReader does."""
    lines = iter(table.read_text(encoding="latin-1").split("\n"))
    for line in lines:
        if not line or line.startswith("#"):
            continue
        name, rest = line.split("::", 1)
        if "=>" in rest:
            program, expected = rest.rsplit("=>", 1)
            program = " ".join(program.split()) + "\n"
        else:
            program = ""
            for line in lines:
                if line.startswith("=>"):
                    expected = line[2:]
                    break
                program += line.removeprefix("  ") + "\n"
        yield name.strip(), program, " ".join(expected.split())


def output_of(command, program):
    with tempfile.NamedTemporaryFile(suffix=".ps") as file:
        file.write(((HERE / "prelude.ps").read_text(encoding="latin-1") + program).encode("latin-1"))
        file.flush()
        try:
            done = subprocess.run([*command, file.name], stdin=subprocess.DEVNULL, capture_output=True, timeout=20)
        except subprocess.TimeoutExpired:
            return "(does not end)"
    return " ".join(done.stdout.decode("latin-1").split())


def compare(job):
    table, (name, program, expected), ours = job
    theirs = output_of(GHOSTSCRIPT, program)
    here = output_of([ours, "--run"], program) if ours else expected
    if theirs == here:
        return None
    return f"{table.stem}: {name}\n  program: {program.strip()}\n  here:    {here}\n  theirs:  {theirs[:300]}\n"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("tables", nargs="*", type=pathlib.Path)
    parser.add_argument("--ours")
    options = parser.parse_args()
    tables = options.tables or sorted(HERE.glob("*.txt"))
    jobs = [(table, row, options.ours) for table in tables for row in rows(table) if not row[0].endswith("(ours)")]
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        differences = [difference for difference in pool.map(compare, jobs) if difference]
    print("\n".join(differences))
    print(f"{len(jobs)} programs, {len(differences)} differences", file=sys.stderr)


if __name__ == "__main__":
    main()
