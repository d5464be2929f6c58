"""PDF/A: what preflight says of part 1, what the files of all parts hold, and what cannot be kept in them."""

import os
import pathlib
import re
import subprocess
import sys
import xml.etree.ElementTree

import preflight
import support

LEVEL3 = pathlib.Path(__file__).parent.parent / "level3"
sys.path.insert(0, str(LEVEL3 / "text"))

import cases_of_composite_fonts  # noqa: E402
import cases_of_drivers  # noqa: E402
import cases_of_formats  # noqa: E402
import cases_of_meaning  # noqa: E402
import cases_of_operators  # noqa: E402

TEXT_MODULES = [cases_of_formats, cases_of_composite_fonts, cases_of_operators, cases_of_meaning, cases_of_drivers]

HEAD = "%!PS-Adobe-3.0\n<< /PageSize [200 200] >> setpagedevice\n"
PAGE = "0 0 9 9 rectfill showpage\n"
RGB = "1 0 0 setrgbcolor 0 0 9 9 rectfill showpage\n"
CMYK = "1 0 0 0 setcmykcolor 0 0 9 9 rectfill showpage\n"
TEXT = "/NimbusRoman-Regular 12 selectfont 20 20 moveto (words) show showpage\n"
LINK = "[ /Rect [0 0 50 50] /Subtype /Link /Action << /Subtype /URI /URI (http://example.org) >> /ANN pdfmark\n"
NOTE = "[ /Rect [10 10 30 30] /Contents (a note) /Title (me) /ANN pdfmark\n"
INFORMATION = "[ /Title (A <title> & more) /Author (Somebody) /Subject (tests) /Keywords (one, two)\n" \
    "/Creator (a program) /CreationDate (D:20240229101112+01'00') /ModDate (D:20240301) /DOCINFO pdfmark\n"

NAMESPACES = {
    "rdf": "http://www.w3.org/1999/02/22-rdf-syntax-ns#",
    "dc": "http://purl.org/dc/elements/1.1/",
    "pdf": "http://ns.adobe.com/pdf/1.3/",
    "xmp": "http://ns.adobe.com/xap/1.0/",
    "pdfaid": "http://www.aiim.org/pdfa/ns/id/",
}


class ArchiveTest(support.CommandLineTest):
    dialect = ()

    def run_job(self, job, *arguments):
        self.write("job.ps", HEAD + job)
        return self.run_program("job.ps", "-o", "job.pdf", *arguments)

    def archive(self, job, part, *arguments):
        return self.convert(HEAD + job, "--no-warnings", "--pdfa", part, *arguments)

    def refusal(self, job, *arguments):
        """What is said of a job that cannot be kept; there is no PDF then."""
        result = self.run_job(job, *arguments)
        self.assertEqual(result.code, 1)
        self.assertEqual(self.files(), ["job.ps"])
        return result.err

    def root(self, pdf):
        return pdf.value(pdf.objects["trailer"]["value"]["/Root"])

    def packet(self, pdf):
        return pdf.data(self.root(pdf)["/Metadata"])

    def metadata(self, pdf):
        """The text at a path of elements within the packet's description."""
        root = xml.etree.ElementTree.fromstring(self.packet(pdf).decode())
        description = root.find("rdf:RDF/rdf:Description", NAMESPACES)
        return lambda path: description.findtext(path, namespaces=NAMESPACES)


class PreflightTest(ArchiveTest):
    """One run for all files, as Java takes its time to start."""

    def jobs(self):
        """Every drawing and every text of the full language's tests."""
        for page in sorted((LEVEL3 / "pages").iterdir()):
            yield page.name, page.read_bytes()
        for module in TEXT_MODULES:
            for case in module.CASES:
                yield re.sub(r"[^A-Za-z0-9]+", "-", case.name) + ".txt.ps", case.job()

    def test_drawings_and_texts_are_archives_of_part_1(self):
        names = []
        for name, job in self.jobs():
            names.append(name)
            self.write(name, job)
        self.write("list", "".join(f"{name}\t{name}.pdf\n" for name in names))
        result = self.run_program("--batch", "list", "--jobs", "2", "--pdfa", "1b", "--no-warnings", "--quiet")
        self.assertIn(result.code, (0, 5), result.err)
        self.assertEqual(preflight.complaints([self.path(name + ".pdf") for name in names], self.folder), {})

    def test_what_options_and_marks_make_of_archives_is_still_valid(self):
        self.archive(CMYK, "1b")
        profile = support.Pdf(self.path("job.pdf"))
        space = profile.value(profile.value(profile.resources(0, "/ColorSpace")["/DefaultCMYK"]))
        self.write("press.icc", profile.data(space[1]))
        variants = {
            "plain": (PAGE,),
            "linearized": (TEXT + CMYK, "--linearize"),
            "chosen": (TEXT + PAGE + RGB, "--pages", "2-3,1", "--rotate", "90"),
            "marked": (LINK + NOTE + INFORMATION + TEXT,),
            "titled": (TEXT, "--title", "Ünïcode \U0001f600 <&>", "--author", "me"),
            "untitled": (TEXT, "--title", ""),
            "press": (CMYK + RGB + PAGE, "--output-intent", "press.icc"),
            "far": ("40000.5 -32768.25 moveto 9 9 lineto stroke showpage\n",),
        }
        paths = []
        for name, (job, *options) in variants.items():
            self.archive(job, "1b", *options)
            os.rename(self.path("job.pdf"), self.path(name + ".pdf"))
            paths.append(self.path(name + ".pdf"))
        self.assertEqual(self.run_program("job.ps", "-o", "split-%d.pdf", "--pdfa", "1b").code, 0)
        self.assertEqual(self.run_job(TEXT + "nonsense\n", "--pdfa", "1b").code, 6)
        paths += [self.path("split-1.pdf"), self.path("job.pdf")]
        self.assertEqual(preflight.complaints(paths, self.folder), {})

    def test_preflight_tells_a_file_that_is_no_archive(self):
        self.convert(HEAD + TEXT, "--no-warnings")
        self.assertIn("job.pdf", preflight.complaints([self.path("job.pdf")], self.folder))


if __name__ == "__main__":
    support.main()
