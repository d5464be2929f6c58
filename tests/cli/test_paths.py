"""Paths in the PDF live as they do in PostScript, whatever the order in which the job tells of them."""

import os
import re
import subprocess
import tempfile
import unittest

CLI = os.environ["QUILLPRESS_CLI"]


def page_operators(program, *options):
    """The operators of the only page of `program`'s PDF, numbers rounded to two decimals."""
    with tempfile.TemporaryDirectory() as folder:
        job, pdf, plain = (os.path.join(folder, name) for name in ("job.ps", "job.pdf", "plain.pdf"))
        with open(job, "w", encoding="latin-1") as file:
            file.write("%!PS-Adobe-3.0\n" + program + "\n")
        subprocess.run([CLI, "--dialect", "driver", job, "-o", pdf, *options], check=True)
        subprocess.run(["qpdf", "--check", pdf], check=True, stdout=subprocess.DEVNULL)
        subprocess.run(["qpdf", "--stream-data=uncompress", pdf, plain], check=True)
        with open(plain, "rb") as file:
            content = re.search(rb"stream\n(q\n.*?)\nendstream", file.read(), re.S).group(1).decode("latin-1")
    words = [re.sub(r"^-?\d+\.\d+$", lambda number: f"{float(number[0]):g}"[:7], word) for word in content.split()]
    text = " ".join(words)
    assert text.startswith("q ") and text.endswith(" Q"), text
    return text[2:-2]


BOX = "0 0 moveto 9 0 lineto 9 9 lineto closepath"
BOX_TEXT = "0 0 m 9 0 l 9 9 l h"


class Paths(unittest.TestCase):
    def test_a_path_that_is_painted_at_once_passes_unchanged(self):
        self.assertEqual(page_operators(BOX + " fill " + BOX + " stroke"), f"{BOX_TEXT} f {BOX_TEXT} S")

    def test_a_path_filled_between_gsave_and_grestore_is_still_there_to_stroke(self):
        self.assertEqual(
            page_operators(BOX + " gsave fill grestore stroke"),
            f"{BOX_TEXT} n q {BOX_TEXT} f Q {BOX_TEXT} S")

    def test_a_colour_set_after_gsave_stands_before_the_path(self):
        self.assertEqual(
            page_operators(BOX + " gsave 0.5 setgray fill grestore stroke"),
            f"{BOX_TEXT} n q 0.5 G 0.5 g {BOX_TEXT} f Q {BOX_TEXT} S")

    def test_a_path_survives_nested_saves(self):
        self.assertEqual(
            page_operators(BOX + " gsave gsave fill grestore stroke grestore eofill"),
            f"{BOX_TEXT} n q q {BOX_TEXT} f Q {BOX_TEXT} S Q {BOX_TEXT} f*")

    def test_a_path_clips_between_gsave_and_grestore_and_is_stroked_after(self):
        self.assertEqual(
            page_operators(BOX + " gsave clip 2 setlinewidth grestore stroke"),
            f"{BOX_TEXT} n q {BOX_TEXT} W n 2 w Q {BOX_TEXT} S")

    def test_a_path_goes_on_after_grestore(self):
        self.assertEqual(
            page_operators("0 0 moveto 9 0 lineto gsave stroke grestore 9 9 lineto stroke"),
            "0 0 m 9 0 l n q 0 0 m 9 0 l S Q 0 0 m 9 0 l 9 9 l S")

    def test_a_new_path_after_grestore_gives_the_old_one_up(self):
        self.assertEqual(
            page_operators(BOX + " gsave fill grestore newpath 1 1 moveto 2 2 lineto stroke"),
            f"{BOX_TEXT} n q {BOX_TEXT} f Q 1 1 m 2 2 l S")

    def test_newpath_inside_gsave_leaves_the_outer_path_alone(self):
        self.assertEqual(
            page_operators(BOX + " gsave newpath 1 1 moveto 2 2 lineto stroke grestore stroke"),
            f"{BOX_TEXT} n q n 1 1 m 2 2 l S Q {BOX_TEXT} S")

    def test_a_path_stays_in_place_when_the_matrix_changes_before_it_is_painted(self):
        self.assertEqual(
            page_operators("gsave 2 2 scale 1 1 moveto 5 1 lineto 0.5 0.5 scale stroke grestore"),
            "q 2 0 0 2 0 0 cm 1 1 m 5 1 l n 0.5 0 0 0.5 0 0 cm 2 2 m 10 2 l S Q")

    def test_an_arc_built_under_a_scaling_that_is_taken_back_keeps_its_place(self):
        operators = page_operators(
            "matrix currentmatrix 100 50 translate 20 10 scale 0 0 1 0 90 arc setmatrix stroke")
        self.assertRegex(operators, r"0\.05 0 0 0\.1 -5 -5 cm 120 50 m 120 55\.\d+ 111\.\d+ 60 100 60 c S$")

    def test_a_turned_and_mirrored_space_maps_points_back(self):
        self.assertEqual(
            page_operators("10 20 moveto 30 40 lineto [0 -1 1 0 5 6] concat stroke"),
            "10 20 m 30 40 l n 0 -1 1 0 5 6 cm -14 5 m -34 25 l S")

    def test_a_path_under_a_space_that_is_flat_is_dropped(self):
        self.assertEqual(
            page_operators("10 20 moveto 30 40 lineto [1 1 1 1 0 0] concat stroke"),
            "10 20 m 30 40 l n 1 1 1 1 0 0 cm S")

    def test_a_rectangular_clip_leaves_a_waiting_path_alone(self):
        self.assertEqual(
            page_operators(BOX + " gsave 1 2 3 4 rectclip fill grestore stroke"),
            f"{BOX_TEXT} n q 1 2 3 4 re W n {BOX_TEXT} f Q {BOX_TEXT} S")

    def test_an_image_between_path_and_painting_passes_unharmed(self):
        operators = page_operators(BOX + " gsave 2 1 8 [2 0 0 1 0 0] (f*) image grestore stroke")
        self.assertIn("/W 2 /H 1 /BPC 8 /CS /G ID f* EI Q Q", operators)
        self.assertTrue(operators.endswith(f"{BOX_TEXT} S"), operators)

    def test_where_the_job_is_cut_does_not_matter(self):
        program = BOX + " gsave fill grestore stroke 2 2 scale 0 0 moveto 1 1 lineto 3 3 scale stroke"
        whole = page_operators(program)
        for chunk in ("1", "2", "7", "30"):
            self.assertEqual(page_operators(program, "--chunk", chunk), whole)


if __name__ == "__main__":
    unittest.main()
