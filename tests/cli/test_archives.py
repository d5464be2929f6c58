"""PDF/A: what preflight says of PDF/A-1b, what the files of all parts hold, and what cannot be kept in them."""

import os
import pathlib
import re
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


TRANSPARENT_PAGE = "blend-modes.ps"


class PreflightTest(ArchiveTest):
    """One run for all files, as Java takes its time to start."""

    def jobs(self):
        """Every drawing and every text of the full language's tests that PDF/A-1 can have."""
        for page in sorted((LEVEL3 / "pages").iterdir()):
            if page.name != TRANSPARENT_PAGE:
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


FORBIDDEN_KEYS = {"/AA", "/EF", "/OPI", "/Ref", "/HTP", "/TR", "/TR2", "/XFA", "/JavaScript", "/Interpolate", "/Alternates",
                  "/Encrypt", "/OCProperties", "/PS"}


class StructureTest(ArchiveTest):
    """What the parts have in common, looked at without anybody's checker."""

    # A page for each thing that archives have a rule for.
    PAGES = [RGB, CMYK, TEXT, LINK + NOTE + PAGE, INFORMATION + PAGE,
             "0 0 moveto 9 9 lineto stroke showpage\n",
             "[ /Separation (Gold) cvn /DeviceCMYK { 0 exch dup 0.5 mul exch 0 } ] setcolorspace 0.5 setcolor\n" + PAGE,
             "<< /ImageType 1 /Width 1 /Height 1 /BitsPerComponent 8 /Decode [0 1] /ImageMatrix [1 0 0 1 0 0]\n"
             "/Interpolate true /DataSource <80> >> image showpage\n"]

    def dictionaries(self, value):
        """Every dictionary within a value."""
        if isinstance(value, dict):
            yield value
            value = list(value.values())
        if isinstance(value, list):
            for item in value:
                yield from self.dictionaries(item)

    def check(self, pdf, part):
        trailer = pdf.objects["trailer"]["value"]
        self.assertEqual(len(trailer["/ID"]), 2)
        self.assertNotIn("/Encrypt", trailer)
        for entry in pdf.objects.values():
            value = entry["stream"]["dict"] if "stream" in entry else entry["value"]
            for dictionary in self.dictionaries(value):
                self.assertEqual(FORBIDDEN_KEYS & set(dictionary), set())
                self.check_font(pdf, dictionary)
            self.assertNotIn(value.get("/Filter") if isinstance(value, dict) else None, ("/LZWDecode", "/Crypt"))
        intent = pdf.value(self.root(pdf)["/OutputIntents"][0])
        self.assertEqual(intent["/S"], "/GTS_PDFA1")
        profile = pdf.data(intent["/DestOutputProfile"])
        self.assertEqual(profile[36:40], b"acsp")
        self.assertEqual(pdf.value(intent["/DestOutputProfile"])["/N"], 3)
        self.assertNotIn("/Filter", pdf.value(self.root(pdf)["/Metadata"]))
        tell = self.metadata(pdf)
        self.assertEqual((tell("pdfaid:part"), tell("pdfaid:conformance")), (part[0], part[1].upper()))

    def check_font(self, pdf, font):
        if font.get("/Type") != "/Font" or font["/Subtype"] in ("/Type0", "/Type3"):
            return
        self.assertTrue({"/FontFile", "/FontFile2", "/FontFile3"} & set(pdf.value(font["/FontDescriptor"])))

    def test_each_part_has_all_that_it_asks_for(self):
        for part in ("1b", "2b", "3b"):
            with self.subTest(part=part):
                self.check(self.archive("".join(self.PAGES), part), part)
                version = b"%PDF-1.4\n%" if part == "1b" else b"%PDF-1.7\n%"
                data = self.read("job.pdf")
                self.assertTrue(data.startswith(version))
                self.assertTrue(all(byte > 127 for byte in data[10:14]))
                self.assertTrue(data.endswith(b"%%EOF\n"))
                self.assertEqual(b"/ObjStm" in data, part != "1b")
                self.assertEqual(b"/XRef" in data, part != "1b")

    def test_the_packet_says_what_the_information_says(self):
        pdf = self.archive(INFORMATION + PAGE, "2b")
        tell = self.metadata(pdf)
        self.assertEqual(tell("dc:title/rdf:Alt/rdf:li"), "A <title> & more")
        self.assertEqual(tell("dc:creator/rdf:Seq/rdf:li"), "Somebody")
        self.assertEqual(tell("dc:description/rdf:Alt/rdf:li"), "tests")
        self.assertEqual(tell("pdf:Keywords"), "one, two")
        self.assertEqual(tell("xmp:CreatorTool"), "a program")
        self.assertEqual(tell("pdf:Producer"), pdf.information("/Producer"))
        self.assertEqual(tell("xmp:CreateDate"), "2024-02-29T10:11:12+01:00")
        self.assertEqual(pdf.information("/CreationDate"), "D:20240229101112+01'00'")
        self.assertEqual(tell("xmp:ModifyDate"), "2024-03-01T00:00:00Z")
        self.assertEqual(pdf.information("/ModDate"), "D:20240301000000Z")

    def test_texts_of_options_are_in_the_packet(self):
        pdf = self.archive(INFORMATION + PAGE, "2b", "--title", "Titel \u00c4", "--author", "")
        self.assertEqual(self.metadata(pdf)("dc:title/rdf:Alt/rdf:li"), "Titel \u00c4")
        self.assertIsNone(self.metadata(pdf)("dc:creator/rdf:Seq/rdf:li"))

    def test_what_xml_cannot_say_goes_from_both(self):
        pdf = self.archive("[ /Title (a\\001b) /DOCINFO pdfmark " + PAGE, "2b")
        self.assertEqual(self.metadata(pdf)("dc:title/rdf:Alt/rdf:li"), "ab")
        self.assertEqual(pdf.information("/Title"), "ab")

    def test_dates_as_people_say_them_are_understood(self):
        pdf = self.archive("[ /CreationDate (Sat Nov 21 23:32:22 2026) /DOCINFO pdfmark " + PAGE, "1b")
        self.assertEqual(self.metadata(pdf)("xmp:CreateDate"), "2026-11-21T23:32:22Z")

    def test_equal_jobs_give_equal_archives(self):
        job = "".join(self.PAGES)
        self.archive(job, "1b")
        first = self.read("job.pdf")
        self.archive(job, "1b")
        self.assertEqual(self.read("job.pdf"), first)

    def test_each_of_several_files_is_an_archive(self):
        self.write("job.ps", HEAD + PAGE + CMYK)
        self.assertEqual(self.run_program("job.ps", "-o", "p%d.pdf", "--pdfa", "2b").code, 0)
        for name in ("p1.pdf", "p2.pdf"):
            self.check(support.Pdf(self.path(name)), "2b")

    def test_a_subset_names_its_glyphs_in_part_1(self):
        pdf = self.archive(TEXT, "1b")
        font = pdf.value(list(pdf.resources(0, "/Font").values())[0])
        self.assertEqual(pdf.value(font["/FontDescriptor"])["/CharSet"], "u:/d/o/r/s/w")

    def test_links_and_notes_are_printed(self):
        pdf = self.archive(LINK + NOTE + PAGE, "2b")
        link, note = [pdf.value(annotation) for annotation in pdf.pages[0]["/Annots"]]
        self.assertEqual(link["/F"], 4)
        self.assertEqual(note["/F"], 4 + 8 + 16)
        self.assertIn(b"re", pdf.data(note["/AP"]["/N"]))


class ColourTest(ArchiveTest):
    def test_cmyk_has_a_profile_where_the_intent_is_rgb(self):
        pdf = self.archive(CMYK, "2b")
        family, profile = pdf.value(pdf.resources(0, "/ColorSpace")["/DefaultCMYK"])
        self.assertEqual(family, "/ICCBased")
        self.assertEqual(pdf.value(profile)["/N"], 4)
        self.assertEqual(pdf.data(profile)[12:20], b"prtrCMYK")

    def test_rgb_has_a_profile_where_the_intent_is_cmyk(self):
        pdf = self.archive(CMYK, "2b")
        self.write("press.icc", pdf.data(pdf.value(pdf.resources(0, "/ColorSpace")["/DefaultCMYK"])[1]))
        pdf = self.archive(RGB + CMYK, "2b", "--output-intent", "press.icc")
        self.assertEqual(list(pdf.resources(0, "/ColorSpace")), ["/DefaultRGB"])
        intent = pdf.value(self.root(pdf)["/OutputIntents"][0])
        self.assertEqual(pdf.data(intent["/DestOutputProfile"]), self.read("press.icc"))
        self.assertEqual(intent["/OutputConditionIdentifier"], "u:Four inks on coated paper")

    def test_the_intents_own_colours_stay_as_they_are(self):
        self.assertEqual(self.archive(RGB, "2b").resources(0, "/ColorSpace"), {})

    def test_an_ink_among_several_says_what_it_looks_like(self):
        several = "[ /DeviceN [ /Gold /Silver ] /DeviceRGB {BODY} ] setcolorspace 1 0.5 setcolor\n" + PAGE
        for body in ("{ 2 copy add 2 div }", "{ 0 1 1 { pop } for 2 copy exch }"):
            pdf = self.archive(several.replace("{BODY}", body), "2b")
            space = pdf.value(list(pdf.resources(0, "/ColorSpace").values())[0])
            colorants = pdf.value(space[4])["/Colorants"]
            self.assertEqual(sorted(colorants), ["/Gold", "/Silver"])
            family, ink, alternative, _ = pdf.value(colorants["/Silver"])
            self.assertEqual((family, ink, alternative), ("/Separation", "/Silver", "/DeviceRGB"))


class RefusalTest(ArchiveTest):
    def test_what_cannot_be_kept_is_named(self):
        cases = {
            "an action of the kind Launch":
                "[ /Rect [0 0 9 9] /Subtype /Link /Action << /Subtype /Launch /File (x) >> /ANN pdfmark",
            "an action of the kind JavaScript":
                "[ /Title (t) /Action << /Subtype /JavaScript /JS (x) >> /OUT pdfmark",
            "an action of the kind Named (Print)":
                "[ /Rect [0 0 9 9] /Subtype /Link /Action << /Subtype /Named /N /Print >> /ANN pdfmark",
            "an annotation of the kind Movie": "[ /Rect [0 0 9 9] /Subtype /Movie /ANN pdfmark",
            "an annotation (Square) without a look": "[ /Rect [0 0 9 9] /Subtype /Square /ANN pdfmark",
            "an annotation (Link) that is not always seen": "[ /Rect [0 0 9 9] /Subtype /Link /F 2 /ANN pdfmark",
            "actions that start by themselves": "[ /AA << /O << /S /GoTo >> >> /PAGE pdfmark",
            "the CreationDate \"yesterday\", which is no date": "[ /CreationDate (yesterday) /DOCINFO pdfmark",
            "the ink Gold, which has several looks":
                "[ /Separation /Gold /DeviceGray { } ] setcolorspace PAGE "
                "[ /Separation /Gold /DeviceGray { 2 div } ] setcolorspace PAGE".replace("PAGE", PAGE),
            "a page that is too small": "<< /PageSize [2 2] >> setpagedevice",
        }
        for what, job in cases.items():
            with self.subTest(what=what):
                self.assertIn("cannot be kept in PDF/A-2b: ", message := self.refusal(job + "\n" + PAGE, "--pdfa", "2b"))
                self.assertIn(what, message)

    def test_the_page_is_named(self):
        link = "[ /Rect [0 0 9 9] /Subtype /Movie /ANN pdfmark\n"
        self.assertIn("page 2: ", self.refusal(PAGE + link + PAGE, "--pdfa", "3b"))

    def test_none_of_several_files_is_written(self):
        self.write("job.ps", HEAD + PAGE + "[ /Rect [0 0 9 9] /Subtype /Movie /ANN pdfmark\n" + PAGE)
        self.assertEqual(self.run_program("job.ps", "-o", "p%d.pdf", "--pdfa", "2b").code, 1)
        self.assertEqual(self.files(), ["job.ps"])

    def test_blend_modes_are_for_later_parts(self):
        job = (LEVEL3 / "pages" / TRANSPARENT_PAGE).read_text(encoding="latin-1")
        self.assertIn("transparency", self.refusal(job, "--pdfa", "1b"))
        self.assertEqual(self.run_job(job, "--pdfa", "2b", "--no-warnings").code, 0)

    def test_transparency_is_for_later_parts(self):
        job = "[ /Group << /S /Transparency >> /PAGE pdfmark\n" + PAGE
        self.assertIn("transparency", self.refusal(job, "--pdfa", "1b"))
        self.archive(job, "2b")

    def test_a_packet_of_the_job_gives_way_with_a_warning(self):
        result = self.run_job("[ /XML (<x/>) /Metadata pdfmark\n" + PAGE, "--pdfa", "2b")
        self.assertEqual(result.code, 5)
        self.assertIn("the metadata packet of the job is replaced", result.err)
        self.assertIn(b"pdfaid:part", self.packet(support.Pdf(self.path("job.pdf"))))


class OptionTest(ArchiveTest):
    def test_archives_are_not_encrypted_and_have_their_version(self):
        for options in (("--encrypt", "--user-password", "u"), ("--pdf-version", "1.7"), ("--dialect", "driver")):
            result = self.run_job(PAGE, "--pdfa", "1b", *options)
            self.assertEqual(result.code, 2, options)
            self.assertIn(options[0], result.err)

    def test_other_parts_are_refused(self):
        result = self.run_job(PAGE, "--pdfa", "1a")
        self.assertEqual(result.code, 2)
        self.assertIn('not a part of PDF/A, 1b, 2b or 3b: "1a"', result.err)

    def test_an_intent_wants_an_archive(self):
        result = self.run_job(PAGE, "--output-intent", "x.icc")
        self.assertEqual(result.code, 2)
        self.assertIn("wants --pdfa", result.err)

    def test_an_intent_that_cannot_be_used_is_refused(self):
        self.archive(PAGE, "1b")
        pdf = support.Pdf(self.path("job.pdf"))
        profile = pdf.data(pdf.value(self.root(pdf)["/OutputIntents"][0])["/DestOutputProfile"])
        os.remove(self.path("job.pdf"))
        cases = {
            "cannot be read": None,
            "is no ICC profile": b"not a profile",
            "neither a screen nor a printer": profile[:12] + b"scnr" + profile[16:],
            "neither gray nor RGB nor CMYK": profile[:16] + b"Lab " + profile[20:],
            "a later version than PDF/A-1b takes": profile[:8] + b"\x04" + profile[9:],
        }
        for complaint, data in cases.items():
            with self.subTest(complaint=complaint):
                if data is not None:
                    self.write("intent.icc", data)
                result = self.run_job(PAGE, "--pdfa", "1b", "--output-intent", "intent.icc")
                self.assertEqual(result.code, 2)
                self.assertIn(complaint, result.err)
                self.assertNotIn("job.pdf", self.files())


if __name__ == "__main__":
    support.main()
