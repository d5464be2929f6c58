"""What the command line makes of the sample jobs looks as what Ghostscript makes of them. Each job has
one test, named after it; QUILLPRESS_CLI names the command line."""

import os
import pathlib
import re
import tempfile
import unittest

import compare
import image_jobs

JOBS = pathlib.Path(__file__).resolve().parent / "jobs"
# Mean difference of a page. Both files go through one renderer, so only rounding may differ.
LIMIT = 0.005
# A page of a sample job must have this much on it, else a blank page would pass.
LEAST_INK = 0.02
# PDF places a pattern from where the page begins, and the driver's dialect tells of it from where it is selected, which
# is another place in these jobs.
PLACED_PATTERNS = {"hatches", "image_in_pattern"}


class PictureTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="pictures-")
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)
        cls.command = os.environ["QUILLPRESS_CLI"]

    def job(self, name):
        """The path of a job: one of the written ones, or one computed now."""
        if name not in image_jobs.JOBS:
            return JOBS / f"{name}.ps"
        path = self.folder / f"{name}.ps"
        path.write_bytes(image_jobs.JOBS[name]())
        return path

    def convert(self, job):
        pdf = self.folder / f"{job.stem}.pdf"
        dialect = ("full", "--media", "letter") if job.stem in PLACED_PATTERNS else ("driver",)
        compare.run(self.command, "--dialect", *dialect, job, "-o", pdf)
        compare.run("qpdf", "--check", pdf)
        return pdf

    def reference(self, job):
        pdf = self.folder / f"{job.stem}.reference.pdf"
        box = re.search(rb"^%%BoundingBox: 0 0 (\d+) (\d+)", job.read_bytes(), re.M)
        compare.ghostscript_pdf(job, pdf, int(box[1]), int(box[2]))
        return pdf

    def check(self, name):
        job = self.job(name)
        converted, reference = self.convert(job), self.reference(job)
        sizes = compare.page_sizes(reference)
        self.assertGreater(len(sizes), 0)
        self.assertEqual(compare.page_sizes(converted), sizes)
        for page in range(1, len(sizes) + 1):
            ours, theirs = compare.render(converted, page), compare.render(reference, page)
            self.assertGreater(compare.difference(theirs, compare.blank(theirs)), LEAST_INK, f"page {page} is blank")
            self.assertLess(compare.difference(ours, theirs), LIMIT, f"page {page}")

    def test_two_different_jobs_differ(self):
        one = compare.render(self.convert(self.job("polygons")), 1)
        other = compare.render(self.reference(self.job("strokes")), 1)
        self.assertGreater(compare.difference(one, other), 10 * LIMIT)

    def test_blank_page_differs(self):
        page = compare.render(self.reference(self.job("transformations")), 1)
        self.assertGreater(compare.difference(page, compare.blank(page)), 4 * LIMIT)

    def test_image_upside_down_differs(self):
        right = self.job("image_gray")
        wrong = self.folder / "upside-down.ps"
        wrong.write_bytes(right.read_bytes().replace(b"bh add translate bw bh neg scale", b"translate bw bh scale"))
        pages = [compare.render(self.reference(job), 1) for job in (right, wrong)]
        self.assertGreater(compare.difference(*pages), 2 * LIMIT)

    def test_pages_of_two_sizes_are_not_compared(self):
        with self.assertRaises(AssertionError):
            compare.difference((2, 1, b"\0" * 6), (1, 2, b"\0" * 6))

    def test_black_against_white_is_one(self):
        page = (2, 2, b"\0" * 12)
        self.assertEqual(compare.difference(page, compare.blank(page)), 1)


for job_name in sorted([path.stem for path in JOBS.glob("*.ps")] + list(image_jobs.JOBS)):
    setattr(PictureTest, "test_" + job_name.replace("-", "_"), lambda self, name=job_name: self.check(name))

if __name__ == "__main__":
    unittest.main()
