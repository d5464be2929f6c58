"""Every drawing of pages/ through this program and through Ghostscript, both PDFs through one renderer.

    test_pages.py [NAME...]      all drawings, or those named; says how far each page is off

A page may differ by half a per cent on average, after a blur of 3 x 3 pixels at 60 dpi: that allows for the edges
that two ways of writing one drawing put differently, and for nothing that one would see. Each PDF must also be
sound, and drawings whose first line says so must hold the objects named there:

    %!PS  expect: /ShadingType 4
"""

import concurrent.futures
import os
import pathlib
import re
import subprocess
import sys
import tempfile

from comparison import LIMIT, by_ghostscript, differences, run

PAGES = pathlib.Path(__file__).parent / "pages"
CLI = os.environ["QUILLPRESS_CLI"]


def converted(job, folder):
    """Our PDF of a job, or what went wrong. What a drawing is known to lose may be counted: exit code 5."""
    pdf = folder / "ours.pdf"
    result = run(CLI, "--dialect", "full", str(job), "-o", str(pdf))
    if result.returncode not in (0, 5):
        raise AssertionError(f"exit code {result.returncode}: {result.stderr.decode(errors='replace').strip()}")
    return pdf


def check_objects(job, pdf):
    expected = re.findall(r"expect: (.*)", job.read_text(encoding="latin-1").split("\n", 1)[0])
    if not expected:
        return
    text = run("qpdf", "--qdf", "--object-streams=disable", str(pdf), "-").stdout.decode(errors="replace")
    flat = re.sub(r"\s+", " ", text)
    for item in expected[0].split(", "):
        if item.strip() not in flat:
            raise AssertionError(f"the PDF holds no {item.strip()}")


def examine(job):
    """What is wrong with a drawing, or None, and how far it is off."""
    worst = 0.0
    try:
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            ours = converted(job, folder)
            check = run("qpdf", "--check", str(ours))
            if check.returncode != 0:
                return "unsound: " + check.stdout.decode(errors="replace").strip()[-300:], worst
            check_objects(job, ours)
            crop = ["-dEPSCrop"] if job.suffix == ".eps" else []
            for number, off in enumerate(differences(ours, by_ghostscript(job, folder, *crop)), 1):
                worst = max(worst, off)
                if worst > LIMIT:
                    return f"page {number} differs by {worst:.2%}", worst
    except (AssertionError, subprocess.TimeoutExpired) as problem:
        return str(problem), worst
    return None, worst


def main():
    wanted = sys.argv[1:]
    jobs = sorted(path for path in PAGES.iterdir() if path.suffix in {".ps", ".eps"})
    jobs = [job for job in jobs if not wanted or job.stem in wanted]
    if not jobs:
        sys.exit("no drawings")
    failures = 0
    with concurrent.futures.ThreadPoolExecutor(max_workers=os.cpu_count() or 2) as pool:
        for job, (problem, worst) in zip(jobs, pool.map(examine, jobs)):
            failures += problem is not None
            if problem or wanted:
                print(f"{job.stem}: {problem or 'alike'} ({worst:.3%})")
    print(f"{len(jobs)} drawings, {failures} of them wrong")
    sys.exit(1 if failures else 0)


if __name__ == "__main__":
    main()
