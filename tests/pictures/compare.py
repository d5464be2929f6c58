"""Renders PDFs and measures how far two of them differ. One renderer draws both, so that what differs
is what the files tell it to draw."""

import re
import subprocess

DOTS_PER_INCH = 50


def run(*command):
    done = subprocess.run(command, capture_output=True, timeout=300)
    if done.returncode != 0:
        said = (done.stderr + done.stdout).decode(errors="replace")
        raise AssertionError(f"{' '.join(map(str, command))}: exit status {done.returncode}\n{said}")
    return done.stdout


def ghostscript_pdf(job, pdf, width, height):
    """Ghostscript's PDF of `job` on pages of width x height points, with every image kept as it is."""
    run("gs", "-q", "-dNOPAUSE", "-dBATCH", "-dSAFER", "-sDEVICE=pdfwrite", f"-sOutputFile={pdf}",
        f"-dDEVICEWIDTHPOINTS={width}", f"-dDEVICEHEIGHTPOINTS={height}", "-dFIXEDMEDIA", "-dAutoRotatePages=/None",
        "-sColorConversionStrategy=LeaveColorUnchanged",
        *(f"-dAutoFilter{kind}Images=false" for kind in ("Gray", "Color")),
        *(f"-d{kind}ImageFilter=/FlateEncode" for kind in ("Gray", "Color")),
        *(f"-dDownsample{kind}Images=false" for kind in ("Gray", "Color", "Mono")),
        str(job))


def page_sizes(pdf):
    """[(width, height)] of the pages, in points."""
    text = run("pdfinfo", "-f", "1", "-l", "9999", pdf).decode()
    return [(float(w), float(h)) for w, h in re.findall(r"^Page +\d+ size: +([\d.]+) x ([\d.]+) pts", text, re.M)]


def render(pdf, page):
    """(width, height, RGB bytes) of one page, counted from 1."""
    picture = run("pdftoppm", "-r", str(DOTS_PER_INCH), "-f", str(page), "-l", str(page), pdf)
    header = re.match(rb"P6\s(\d+) (\d+)\s255\s", picture)
    return int(header[1]), int(header[2]), picture[header.end():]


def difference(one, other):
    """Mean difference of two pages, from 0 (alike) to 1 (black against white)."""
    if one[:2] != other[:2]:
        raise AssertionError(f"pages of {one[:2]} and {other[:2]} dots cannot be compared")
    return sum(abs(a - b) for a, b in zip(one[2], other[2])) / (255 * len(one[2]))


def blank(like):
    width, height, picture = like
    return width, height, b"\xff" * len(picture)
