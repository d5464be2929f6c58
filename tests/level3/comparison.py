"""The same job through Ghostscript, and how far two PDFs differ when one renderer draws them.

What Ghostscript makes of a job is kept in the folder QUILLPRESS_REFERENCES, and so is what has been found about two PDFs:
the same jobs are compared natively and under the sanitizers, today and tomorrow, and this program, too, always makes
the same of them.
"""

import functools
import hashlib
import json
import os
import pathlib
import shutil
import subprocess
import threading

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
    result = run(*GHOSTSCRIPT, f"-sOutputFile={pdf}", *options, str(job))
    require(result.returncode == 0, "Ghostscript fails: " + result.stdout.decode(errors="replace")[:200])
    keep(kept.name, pdf.read_bytes())
    return pdf


def keep(name, content):
    """Two that keep the same at the same time do not meet."""
    REFERENCES.mkdir(parents=True, exist_ok=True)
    unfinished = REFERENCES / f"{name}.{os.getpid()}.{threading.get_ident()}"
    unfinished.write_bytes(content)
    unfinished.replace(REFERENCES / name)


def rendered(pdf):
    """The pages as files of pixels, in order."""
    run("pdftoppm", "-r", str(DOTS_PER_INCH), str(pdf), str(pdf.with_suffix("")))
    return sorted(pdf.parent.glob(pdf.stem + "-*.ppm"))


@functools.cache
def renderer():
    """What finds the differences."""
    sources = (pathlib.Path(__file__).parent / "pictures").glob("*.*")
    return run("pdftoppm", "-v").stderr + b"".join(path.read_bytes() for path in (pathlib.Path(__file__), *sorted(sources)))


def differences(ours, theirs):
    """Of two PDFs, page by page."""
    digest = hashlib.sha256(renderer())
    for pdf in (ours, theirs):
        digest.update(hashlib.sha256(pdf.read_bytes()).digest())
    kept = REFERENCES / f"{digest.hexdigest()}.json"
    if not kept.exists():
        keep(kept.name, json.dumps(differences_of_pictures(ours, theirs)).encode())
    return json.loads(kept.read_bytes())


def differences_of_pictures(ours, theirs):
    pictures = rendered(ours), rendered(theirs)
    require(len(pictures[0]) == len(pictures[1]), f"{len(pictures[0])} pages, not {len(pictures[1])}")
    found = []
    for mine, other in zip(*pictures):
        result = run(COMPARE, str(mine), str(other))
        require(result.returncode == 0, result.stderr.decode().strip())
        found.append(float(result.stdout))
    return found
