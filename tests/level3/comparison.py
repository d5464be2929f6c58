"""The same job through Ghostscript, and how far two PDFs differ when one renderer draws them.

What Ghostscript makes of a job is kept in the folder QUILLPRESS_REFERENCES: the same jobs are compared natively and
under the sanitizers, today and tomorrow, and it always makes the same of them.
"""

import functools
import hashlib
import os
import pathlib
import shutil
import subprocess

COMPARE = os.environ["QUILLPRESS_COMPARE"]
REFERENCES = pathlib.Path(os.environ["QUILLPRESS_REFERENCES"])
# Mean difference of a page, after a blur of 3 x 3 pixels.
LIMIT = 0.005
DOTS_PER_INCH = 60
SECONDS = 60
GHOSTSCRIPT = ["gs", "-q", "-dBATCH", "-dNOPAUSE", "-dSAFER", "-sDEVICE=pdfwrite"]


def run(*command):
    return subprocess.run(command, capture_output=True, timeout=SECONDS, check=False)


def require(condition, message):
    if not condition:
        raise AssertionError(message)


@functools.cache
def ghostscript_version():
    return run("gs", "--version").stdout


def by_ghostscript(job, folder, *options):
    """A PDF in the folder."""
    pdf = folder / "theirs.pdf"
    key = hashlib.sha256(repr((ghostscript_version(), options)).encode() + job.read_bytes()).hexdigest()
    kept = REFERENCES / f"{key}.pdf"
    if kept.exists():
        shutil.copyfile(kept, pdf)
        return pdf
    result = run(*GHOSTSCRIPT, *options, f"-sOutputFile={pdf}", str(job))
    require(result.returncode == 0, "Ghostscript fails: " + result.stdout.decode(errors="replace")[:200])
    REFERENCES.mkdir(parents=True, exist_ok=True)
    # Two that keep the same one at the same time do not meet.
    unfinished = REFERENCES / f"{key}.{os.getpid()}.{folder.name}"
    shutil.copyfile(pdf, unfinished)
    unfinished.replace(kept)
    return pdf


def rendered(pdf):
    """The pages as files of pixels, in order."""
    run("pdftoppm", "-r", str(DOTS_PER_INCH), str(pdf), str(pdf.with_suffix("")))
    return sorted(pdf.parent.glob(pdf.stem + "-*.ppm"))


def differences(ours, theirs):
    """Of two PDFs, page by page."""
    pictures = rendered(ours), rendered(theirs)
    require(len(pictures[0]) == len(pictures[1]), f"{len(pictures[0])} pages, not {len(pictures[1])}")
    for mine, other in zip(*pictures):
        result = run(COMPARE, str(mine), str(other))
        require(result.returncode == 0, result.stderr.decode().strip())
        yield float(result.stdout)
