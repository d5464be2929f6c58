"""Text of every kind through this program and through Ghostscript: the same picture, and words that can be found.

    test_text.py [NAME...]      all cases, or those named; says how far each is off

A case is a job on a small page, so that a glyph that is wrong or missing is far more than the half per cent that
pages may differ, and the words that pdftotext must find in it. Every font must be embedded as a subset, and the
PDF sound for each program that looks at it.
"""

import concurrent.futures
import os
import pathlib
import re
import subprocess
import sys
import tempfile

sys.path.insert(1, str(pathlib.Path(__file__).resolve().parents[1]))

import cases_of_composite_fonts
import cases_of_drivers
import cases_of_formats
import cases_of_meaning
import cases_of_operators
from comparison import LIMIT, by_ghostscript, differences, require, run

CLI = os.environ["QUILLPRESS_CLI"]
MODULES = [cases_of_formats, cases_of_composite_fonts, cases_of_operators, cases_of_meaning, cases_of_drivers]

# Otherwise the standard fonts are whatever the machine shows in their place.
EMBEDDING_ALL = ("-c", "<< /NeverEmbed [] >> setdistillerparams", "-f")


def converted(case, job, folder):
    """Our PDF of a job. What a case is known to lose or replace may be counted: exit code 5."""
    pdf = folder / "ours.pdf"
    result = run(CLI, "--dialect", "full", str(job), "-o", str(pdf))
    said = result.stderr.decode(errors="replace").strip()
    require(result.returncode in (0, 5), f"exit code {result.returncode}: {said}")
    require(case.warning in said, f"no warning of {case.warning!r}: {said!r}")
    return pdf


def check_soundness(pdf):
    for command in (["qpdf", "--check"], ["mutool", "info"], ["pdffonts"]):
        result = run(*command, str(pdf))
        said = (result.stdout if command[0] == "qpdf" else result.stderr).decode(errors="replace").strip()
        isQuiet = result.returncode == 0 if command[0] == "qpdf" else not said
        require(isQuiet, f"{command[0]}: {said[-300:]}")


def check_fonts(case, pdf):
    """pdffonts: name, type, encoding, then embedded, subset, has Unicode. Type 3 fonts have no subset tag."""
    rows = run("pdffonts", str(pdf)).stdout.decode().splitlines()[2:]
    require(case.fonts in (None, len(rows)), f"{len(rows)} fonts, not {case.fonts}")
    for row in rows:
        flags = re.search(r"\s(yes|no)\s+(yes|no)\s+(yes|no)\s+\d+\s+\d+$", row)
        require(flags and flags[1] == "yes", f"a font is not embedded: {row}")
        require("Type 3" in row or flags[2] == "yes", f"a font is no subset: {row}")


def check_words(case, pdf):
    found = run("pdftotext", str(pdf), "-").stdout.decode(errors="replace").split()
    require(case.words is None or found == case.words.split(), f"the words are {' '.join(found)!r}, not {case.words!r}")


def examine(case):
    """What is wrong with a case, or None, and how far its picture is off."""
    worst = 0.0
    try:
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            job = folder / "job.ps"
            job.write_bytes(case.job())
            ours = converted(case, job, folder)
            check_soundness(ours)
            check_fonts(case, ours)
            check_words(case, ours)
            job.write_bytes(case.job(case.alike))
            theirs = by_ghostscript(job, folder, *EMBEDDING_ALL)
            worst = max(differences(ours, theirs), default=0.0)
            require(worst <= LIMIT, f"the picture differs by {worst:.2%}")
    except (AssertionError, subprocess.TimeoutExpired) as problem:
        return str(problem), worst
    return None, worst


def main():
    wanted = sys.argv[1:]
    cases = [case for module in MODULES for case in module.CASES]
    names = [case.name for case in cases]
    require(len(names) == len(set(names)), "two cases have one name")
    cases = [case for case in cases if not wanted or case.name in wanted]
    require(cases, "no such case")
    failures = 0
    with concurrent.futures.ThreadPoolExecutor(max_workers=os.cpu_count() or 2) as pool:
        for case, (problem, worst) in zip(cases, pool.map(examine, cases)):
            failures += problem is not None
            if problem or wanted:
                print(f"{case.name}: {problem or 'alike'} ({worst:.3%})")
    print(f"{len(cases)} cases, {failures} of them wrong")
    sys.exit(1 if failures else 0)


if __name__ == "__main__":
    main()
