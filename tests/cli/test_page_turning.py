"""Pages are turned so that viewers show them the way they are read."""

import unittest

import support

FONT = "/Helvetica findfont 10 scalefont setfont\n"
LANDSCAPE = "%!PS-Adobe-3.0\n%%Orientation: Landscape\n%%EndComments\n"


def text(angle, characters=5):
    return f"gsave 300 300 translate {angle} rotate 0 0 moveto ({'x' * characters}) show grestore\n"


class PageTurningTest(support.CommandLineTest):
    dialect = ()

    def turns(self, job, *options):
        self.write("job.ps", job)
        self.assertEqual(self.run_program("job.ps", "-q", *options).code, 0)
        return [int(page.get("/Rotate", 0)) for page in support.Pdf(self.path("job.pdf")).pages]

    def test_text_that_runs_upwards_is_turned_upright(self):
        for angle in (0, 90, 180, 270):
            self.assertEqual(self.turns("%!\n" + FONT + text(angle) + "showpage\n"), [angle])

    def test_each_page_is_turned_by_itself(self):
        pages = "".join(text(angle) + "showpage\n" for angle in (90, 0, 270))
        self.assertEqual(self.turns("%!\n" + FONT + pages), [90, 0, 270])

    def test_most_of_the_characters_count(self):
        self.assertEqual(self.turns("%!\n" + FONT + text(0, 4) + text(90, 6) + "showpage\n"), [90])
        self.assertEqual(self.turns("%!\n" + FONT + text(0, 6) + text(90, 4) + "showpage\n"), [0])

    def test_text_that_is_drawn_as_a_path_counts(self):
        job = "%!\n" + FONT + "100 100 moveto 90 rotate (abc) true charpath fill showpage\n"
        self.assertEqual(self.turns(job), [90])

    def test_single_glyphs_count(self):
        self.assertEqual(self.turns("%!\n" + FONT + "9 9 moveto 90 rotate /a glyphshow showpage\n"), [90])

    def test_characters_with_a_procedure_between_them_count_once(self):
        upwards = "gsave 9 9 moveto 90 rotate {pop pop} (abc) kshow grestore\n"
        self.assertEqual(self.turns("%!\n" + FONT + upwards + text(0, 4) + "showpage\n"), [0])
        self.assertEqual(self.turns("%!\n" + FONT + upwards + text(0, 2) + "showpage\n"), [90])

    def test_text_whose_width_is_asked_for_counts(self):
        measured = "gsave 90 rotate (abcdef) stringwidth pop pop grestore "
        self.assertEqual(self.turns("%!\n" + FONT + measured + text(0, 5) + "showpage\n"), [90])
        self.assertEqual(self.turns("%!\n" + FONT + measured + text(0, 7) + "showpage\n"), [0])

    def test_text_within_glyphs_does_not_count(self):
        font = ("/Outer 8 dict dup begin /FontType 3 def /FontMatrix [1 0 0 1 0 0] def /FontBBox [0 0 9 9] def\n"
                "/Encoding 256 array def 0 1 255 {Encoding exch /.notdef put} for\n"
                "/BuildChar {pop pop 9 0 setcharwidth 90 rotate 0 0 moveto /Helvetica findfont setfont (abcde) show}\n"
                "def end definefont setfont\n")
        self.assertEqual(self.turns("%!\n" + font + "100 100 moveto (a) show showpage\n"), [0])

    def test_comments_of_the_job_tell(self):
        self.assertEqual(self.turns(LANDSCAPE + "0 0 9 9 rectfill showpage\n"), [90])
        pages = "%%Page: 1 1\nshowpage\n%%Page: 2 2\n%%PageOrientation: Portrait\nshowpage\n"
        self.assertEqual(self.turns(LANDSCAPE + pages), [90, 0])

    def test_a_wide_page_is_landscape_already(self):
        page = "<</PageSize [842 595]>> setpagedevice\n" + FONT + text(0) + "showpage\n"
        self.assertEqual(self.turns(LANDSCAPE + page), [0])

    def test_encapsulated_pictures_stay_as_they_are(self):
        job = "%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 400 300\n%%Orientation: Landscape\n%%EndComments\n"
        self.assertEqual(self.turns(job + FONT + text(90) + "showpage\n"), [0])
        self.assertEqual(self.turns(job + FONT + text(90) + "showpage\n", "--no-eps-crop"), [90])

    def test_what_pdfmark_says_counts_more(self):
        for kind in ("PAGE", "PAGES"):
            job = f"%!\n[/Rotate 180 /{kind} pdfmark\n" + FONT + text(90) + "showpage\n"
            self.assertEqual(self.turns(job), [180])

    def test_no_auto_rotate_leaves_pages_as_they_are(self):
        self.assertEqual(self.turns(LANDSCAPE + FONT + text(90) + "showpage\n", "--no-auto-rotate"), [0])

    def test_rotate_turns_further(self):
        self.assertEqual(self.turns("%!\n" + FONT + text(90) + "showpage\n", "--rotate", "90"), [180])


if __name__ == "__main__":
    unittest.main()
