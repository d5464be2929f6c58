"""Images and patterns in the PDF file."""

import random
import re

import support
from support import pages

GRAY = "/DeviceGray setcolorspace "
RGB = "/DeviceRGB setcolorspace "
CMYK = "/DeviceCMYK setcolorspace "


def hex_image(data, width, height, before=""):
    """An image whose procedure reads hexadecimal data that follows it."""
    row = len(data) // height
    procedure = "{currentfile row readhexstring pop}"
    return f"{before}/row {row} string def {width} {height} 8 [1 0 0 1 0 0] {procedure} image\n{data.hex()}\n"


def string_image(data, width, height, before=""):
    """An image whose data is one hexadecimal string, which the converter passes on as it is."""
    return f"{before}{width} {height} 8 [1 0 0 1 0 0] <{data.hex()}> image\n"


def samples(seed, length):
    return random.Random(seed).randbytes(length)


class ImageTest(support.CommandLineTest):
    def image(self, pdf, page, name):
        reference = pdf.resources(page, "/XObject")[name]
        return pdf.value(reference), pdf.data(reference)

    def assert_image_data(self, data, width, height, before):
        pdf = self.convert("%!\n" + hex_image(data, width, height, before))
        dictionary, found = self.image(pdf, 0, "/PSI1")
        self.assertEqual(found, data)
        return dictionary

    def test_large_image_is_an_object(self):
        data = samples(1, 6000)
        dictionary = self.assert_image_data(data, 100, 60, GRAY)
        self.assertEqual((dictionary["/Width"], dictionary["/Height"]), (100, 60))
        self.assertEqual((dictionary["/ColorSpace"], dictionary["/BitsPerComponent"]), ("/DeviceGray", 8))
        self.assertEqual((dictionary["/Type"], dictionary["/Subtype"]), ("/XObject", "/Image"))

    def test_small_image_is_in_the_content(self):
        pdf = self.convert("%!\n" + hex_image(samples(1, 60), 10, 6, GRAY))
        self.assertEqual(pdf.resources(0, "/XObject"), {})
        self.assertIn("BI", pdf.words(0))

    def test_samples_come_back_unchanged(self):
        smooth = bytes((x * y // 50) % 256 for y in range(90) for x in range(300))
        steps = bytes((x // 40 * 30) % 256 for y in range(90) for x in range(300))
        stripes = bytes(y % 256 for y in range(90) for x in range(300))
        for data in [smooth, steps, stripes, samples(2, 27000), bytes(27000)]:
            self.assert_image_data(data, 300, 90, GRAY)
            self.assert_image_data(data, 100, 90, RGB)
            self.assert_image_data(data, 75, 90, CMYK)

    def test_large_samples_come_back_unchanged(self):
        smooth = bytes((x // 3 + y * 2 + x % 3) % 256 for y in range(500) for x in range(1500))
        noise = samples(5, 1500)
        mixed = bytes((a + noise[place % 1500] // 64) % 256 for place, a in enumerate(smooth))
        self.assert_image_data(smooth, 500, 500, RGB)
        self.assert_image_data(mixed, 500, 500, RGB)
        self.assert_image_data(samples(6, 750000), 500, 500, RGB)

    def test_smooth_samples_become_small(self):
        data = bytes((x + y + x * y // 99) % 256 for y in range(200) for x in range(300))
        self.assert_image_data(data, 300, 200, GRAY)
        self.assertLess(len(self.read("job.pdf")), len(data) // 10)

    def test_samples_without_any_order_do_not_grow(self):
        data = samples(7, 60000)
        self.assert_image_data(data, 300, 200, GRAY)
        self.assertLess(len(self.read("job.pdf")), len(data) + 2000)

    def test_image_with_more_samples_than_its_size_needs(self):
        data = samples(3, 6100)
        self.write("job.ps", f"%!\n{GRAY} /s 6100 string def 100 60 8 [1 0 0 1 0 0] "
                   f"{{currentfile s readhexstring pop}} image\n{data.hex()}\n")
        self.assertEqual(self.run_program("job.ps", "-o", "job.pdf").code, 0)
        pdf = support.Pdf(self.path("job.pdf"))
        self.assertEqual(self.image(pdf, 0, "/PSI1")[1], data)

    def test_samples_of_less_than_a_byte(self):
        data = samples(4, 5000)
        reader = "{currentfile row readhexstring pop}"
        job = f"%!\n{GRAY}/row 50 string def 400 100 1 [1 0 0 1 0 0] {reader} image\n{data.hex()}\n"
        dictionary, found = self.image(self.convert(job), 0, "/PSI1")
        self.assertEqual((found, dictionary["/BitsPerComponent"]), (data, 1))

    def test_encoded_data_keeps_its_own_filter(self):
        data = samples(5, 6000)
        pdf = self.convert("%!\n" + string_image(data, 100, 60, GRAY))
        dictionary, found = self.image(pdf, 0, "/PSI1")
        self.assertEqual(found, data)
        # qpdf writes the data without the filter in its listing, so the file itself is asked.
        self.assertIn(b"/ASCIIHexDecode", self.read("job.pdf"))
        self.assertIn((data.hex() + ">").encode(), self.read("job.pdf"))

    def test_repeated_image_is_written_once(self):
        data = samples(6, 6000)
        pdf = self.convert(pages(hex_image(data, 100, 60, GRAY) * 2, hex_image(data, 100, 60, GRAY)))
        self.assertEqual(pdf.words(0).count("/PSI1"), 2)
        self.assertEqual(pdf.resources(0, "/XObject"), pdf.resources(1, "/XObject"))
        self.assertLess(len(self.read("job.pdf")), 9000)

    def test_resources_name_just_what_the_page_draws(self):
        images = [hex_image(samples(seed, 6000), 100, 60, GRAY) for seed in range(3)]
        pdf = self.convert(pages(images[0] + images[1], "", images[2] + images[1], "/PSI1 pop\n"))
        found = [sorted(pdf.resources(page, "/XObject")) for page in range(4)]
        self.assertEqual(found, [["/PSI1", "/PSI2"], [], ["/PSI2", "/PSI3"], []])

    def test_images_of_dropped_pages_are_not_written(self):
        images = [hex_image(samples(seed, 6000), 100, 60, GRAY) for seed in range(2)]
        pdf, _ = self.convert_with_error(pages(images[0] + "wrong\n", images[1]), "--keep-going")
        self.assertEqual(list(pdf.resources(0, "/XObject")), ["/PSI2"])
        self.assertLess(len(self.read("job.pdf")), 9000)


CELL = "/BBox [0 0 8 8] /XStep 8 /YStep 8"
FULL = "/PatternType 1 /PaintType 1 /TilingType 1 " + CELL


def pattern(entries, paint, matrix="[1 0 0 1 0 0]", name="brush"):
    """Defines a pattern, without the dictionary brackets, which are no tokens here."""
    definitions = " ".join(entry + " def" for entry in re.findall(r"/\w+ (?:\[.*?\]|\S+)", entries))
    dictionary = f"20 dict begin {definitions} /PaintProc {{{paint}}} def currentdict end"
    return f"/{name} {dictionary} {matrix} makepattern def\n"


class PatternTest(support.CommandLineTest):
    PAINT = "pop 1 0 0 setrgbcolor 0 0 moveto 1 1 lineto stroke"
    USE = "brush setpattern 0 0 moveto 50 0 lineto 50 50 lineto fill\n"

    def pattern(self, pdf, page=0, name="/PA1"):
        reference = pdf.resources(page, "/Pattern")[name]
        return pdf.value(reference), pdf.data(reference).decode("latin-1")

    def test_pattern_is_a_stream_with_all_that_it_needs(self):
        dictionary, content = self.pattern(self.convert("%!\n" + pattern(FULL, self.PAINT) + self.USE))
        self.assertEqual(dictionary["/Type"], "/Pattern")
        kinds = [dictionary[key] for key in ["/PatternType", "/PaintType", "/TilingType"]]
        self.assertEqual((kinds, dictionary["/BBox"]), ([1, 1, 1], [0, 0, 8, 8]))
        self.assertEqual((dictionary["/XStep"], dictionary["/YStep"]), (8, 8))
        self.assertEqual(dictionary["/Resources"], {})
        self.assertEqual(content, "q 8 0 0 8 0 0 cm\n1 0 0 RG 1 0 0 rg 0 0 m\n1 1 l\nS Q\n")

    def test_entries_are_written_as_the_six_functions_tell_them(self):
        entries = "/PaintType 2 /TilingType 7 /BBox [0 0 8] /XStep 0 /YStep 6"
        dictionary, _ = self.pattern(self.convert("%!\n" + pattern(entries, self.PAINT) + self.USE))
        kinds = [dictionary[key] for key in ["/PaintType", "/TilingType", "/BBox", "/XStep", "/YStep"]]
        self.assertEqual(kinds, [2, 7, [0, 0, 8], 0, 6])
        self.assertNotIn("/PatternType", dictionary)

    def test_matrix_is_written_as_it_is(self):
        for space in ["", "10 20 translate 2 2 scale\n"]:
            job = "%!\n" + space + pattern(FULL, self.PAINT, "[2 0 0 3 4 5]") + self.USE
            dictionary, _ = self.pattern(self.convert(job))
            self.assertEqual(dictionary["/Matrix"], [2, 0, 0, 3, 4, 5])

    def test_pattern_whose_matrix_has_no_extent_is_left_out(self):
        self.write("job.ps", "%!\n" + pattern(FULL, self.PAINT, "[0 0 0 0 5 5]") + self.USE)
        result = self.run_program("job.ps", "-o", "job.pdf")
        self.assertEqual(result.code, 0)
        self.assertIn("quillpress: /PA1 is left out, as its dictionary is broken: ", result.err)
        self.assertEqual(support.Pdf(self.path("job.pdf")).resources(0, "/Pattern"), {})

    def test_pattern_of_an_earlier_page(self):
        pdf = self.convert(pages(pattern(FULL, self.PAINT) + self.USE, "", self.USE))
        self.assertEqual(pdf.resources(0, "/Pattern"), pdf.resources(2, "/Pattern"))
        self.assertEqual(pdf.resources(1, "/Pattern"), {})

    def test_pattern_in_a_pattern_is_among_its_resources(self):
        outer = pattern(FULL, "pop brush setpattern 0 0 moveto 9 0 lineto 9 9 lineto fill", name="outer")
        job = "%!\n" + pattern(FULL, self.PAINT, "[1 0 0 1 2 3]") + outer + "outer setpattern\n"
        pdf = self.convert(job)
        self.assertEqual(list(pdf.resources(0, "/Pattern")), ["/PA2"])
        resources = self.pattern(pdf, name="/PA2")[0]["/Resources"]
        self.assertEqual(pdf.value(resources["/Pattern"]["/PA1"])["/Matrix"], [1, 0, 0, 1, 2, 3])

    def test_unused_pattern_is_not_written(self):
        pdf = self.convert("%!\n" + pattern(FULL, self.PAINT))
        self.assertEqual(pdf.resources(0, "/Pattern"), {})
        self.assertNotIn(b"/PatternType", self.read("job.pdf"))

    def test_cell_is_written_as_it_was_captured(self):
        for paint, operators in {"gsave gsave": "q q", "grestore grestore": "Q Q"}.items():
            _, content = self.pattern(self.convert("%!\n" + pattern(FULL, "pop " + paint) + self.USE))
            self.assertEqual(content, f"q 8 0 0 8 0 0 cm\n{operators} Q\n")

    def test_image_in_a_cell_is_in_its_content(self):
        data = samples(9, 6000)
        reader = f"/data {len(data)} string def currentfile data readhexstring\n{data.hex()}\npop pop\n"
        paint = "pop 100 60 8 [1 0 0 1 0 0] data image"
        pdf = self.convert("%!\n" + GRAY + reader + pattern(FULL, paint) + self.USE)
        _, content = self.pattern(pdf)
        self.assertIn(data.decode("latin-1"), content)
        self.assertEqual(pdf.resources(0, "/XObject"), {})


class ObjectListTest(support.CommandLineTest):
    def objects(self, job, *arguments):
        self.write("job.ps", job)
        result = self.run_program("job.ps", "-o", "job.pdf", "--objects", *arguments)
        self.assertEqual(result.code, 0)
        self.assertEqual(result.out, b"")
        return result.err.splitlines()

    def test_images_and_patterns_are_listed_in_order(self):
        image = hex_image(samples(1, 6000), 100, 60, GRAY)
        lines = self.objects(pages(image + pattern(FULL, "pop"), image))
        self.assertEqual(
            lines,
            ["/PSI1 image: 100 x 60, 8 bits, /DeviceGray, 6000 bytes, on 2 pages",
             "/PA2 pattern: cell [ 0 0 8 8 ], steps 8 and 8, 19 bytes, on 0 pages"],
        )

    def test_filter_of_encoded_data_is_listed(self):
        lines = self.objects("%!\n" + string_image(samples(1, 6000), 100, 60, GRAY))
        self.assertIn("/ASCIIHexDecode", lines[0])

    def test_job_without_objects_lists_nothing(self):
        self.assertEqual(self.objects("%!\n"), [])

    def test_pdf_is_written_all_the_same(self):
        self.objects("%!\n")
        self.assertEqual(len(support.Pdf(self.path("job.pdf")).pages), 1)


if __name__ == "__main__":
    support.main()
