"""Numbers that PDF readers refuse are errors of their page."""

import support
from support import line, pages

# A pattern whose cell and matrix can be chosen.
PATTERN = """8 dict begin /PatternType 1 def /PaintType 1 def /TilingType 1 def /BBox [0 0 8 8] def
/XStep %s def /YStep 8 def /PaintProc {pop %s} def currentdict end matrix makepattern setpattern
0 0 9 9 rectfill
"""
INFINITE = "9 {1e300 1e300 scale} repeat\n"


def pattern(step="8", paint="0 0 moveto 8 8 lineto stroke"):
    return PATTERN % (step, paint)


class NumberTest(support.CommandLineTest):
    def assert_refused(self, body, says):
        """The second of three pages is refused, and left out with --keep-going."""
        job = pages(line(1), body, line(3))
        pdf, messages = self.convert_with_error(job)
        self.assertEqual(len(pdf.pages), 1)
        self.assertIn(f"quillpress: job.ps: page 2: {says}", messages)
        pdf, messages = self.convert_with_error(job, "--keep-going")
        self.assertEqual([pdf.words(page)[1] for page in range(len(pdf.pages))], ["1", "3"])
        self.assertEqual(messages.count("page 2: "), 1)

    def test_number_in_the_content(self):
        self.assert_refused("1e19 setlinewidth\n", "the number 10000000000000000000 is beyond what PDF readers take")

    def test_negative_number_in_the_content(self):
        self.assert_refused("-1e30 0 moveto 9 9 lineto stroke\n", "the number 1000000")

    def test_pattern_in_an_infinite_space(self):
        self.assert_refused(INFINITE + pattern(), "")

    def test_number_in_a_pattern(self):
        self.assert_refused(pattern(paint="1e30 setlinewidth"), "the number 1000000")

    def test_number_in_the_dictionary_of_a_pattern(self):
        self.assert_refused(pattern(step="1e30"), "the number 1000000")

    def test_largest_usual_numbers_pass(self):
        self.assertIn("1000000000000 w", self.convert("%!\n1e12 setlinewidth 0 0 moveto 9 9 lineto stroke\n").content(0))

    def test_digits_in_an_inline_image_are_no_number(self):
        job = "%!\n/DeviceGray setcolorspace 24 1 8 [24 0 0 1 0 0] (111111111111111111111111) image\n"
        self.assertIn("111111111111111111111111", self.convert(job).content(0))

    def test_content_is_written_as_the_converter_tells_it(self):
        self.assertEqual(self.content("%!\n1e19 setlinewidth\n"), "10000000000000000000 w ")


if __name__ == "__main__":
    support.main()
