"""Where the size of a page comes from."""

import support
from support import pages

A4 = [0, 0, 595, 842]


class PageSizeTest(support.CommandLineTest):
    def assert_boxes(self, job, *boxes, media=None):
        pdf = self.convert(job, *([f"--media={media}"] if media else []))
        found = [pdf.media_box(page) for page in range(len(pdf.pages))]
        self.assertEqual(found, [list(box) for box in boxes])

    def test_page_without_any_size_is_a4(self):
        self.assert_boxes("%!\n", A4)

    def test_bounding_box_of_the_header(self):
        self.assert_boxes(pages("", header="%%BoundingBox: 12 13 582 829\n"), [12, 13, 582, 829])

    def test_bounding_box_at_the_end(self):
        job = pages("", "", header="%%BoundingBox: (atend)\n")
        self.assert_boxes(job.replace("%%EOF", "%%BoundingBox: 1 2 300 400\n%%EOF"), *[[1, 2, 300, 400]] * 2)

    def test_header_goes_before_trailer(self):
        job = pages("", header="%%BoundingBox: 0 0 100 100\n")
        self.assert_boxes(job.replace("%%EOF", "%%BoundingBox: 0 0 200 200\n%%EOF"), [0, 0, 100, 100])

    def test_document_media_goes_before_bounding_box(self):
        header = "%%BoundingBox: 0 0 100 100\n%%DocumentMedia: Plain 300 400 75 white ( )\n"
        self.assert_boxes(pages("", header=header), [0, 0, 300, 400])

    def test_document_media_may_have_blanks_in_its_name(self):
        header = "%%DocumentMedia: (Thick paper) 300 400 0 () ()\n"
        self.assert_boxes(pages("", header=header), [0, 0, 300, 400])

    def test_document_media_may_stand_on_the_next_line(self):
        header = "%%DocumentMedia:\n%%+ Plain 300 400 0 () ()\n%%+ Other 500 600 0 () ()\n"
        self.assert_boxes(pages("", header=header), [0, 0, 300, 400])

    def test_page_bounding_box_of_the_defaults_goes_before_document_media(self):
        defaults = "%%BeginDefaults\n%%PageBoundingBox: 5 6 205 306\n%%EndDefaults\n"
        header = "%%DocumentMedia: Plain 300 400 0 () ()\n"
        self.assert_boxes(pages("", "", header=header, prologue=defaults), *[[5, 6, 205, 306]] * 2)

    def test_page_bounding_box_of_a_page_is_for_that_page_alone(self):
        defaults = "%%PageBoundingBox: 0 0 200 300\n"
        job = pages("", "%%PageBoundingBox: 0 0 50 60\n", "", prologue=defaults)
        self.assert_boxes(job, [0, 0, 200, 300], [0, 0, 50, 60], [0, 0, 200, 300])

    def test_page_bounding_box_may_stand_in_the_page_trailer(self):
        body = "%%PageBoundingBox: (atend)\n%%PageTrailer\n%%PageBoundingBox: 0 0 50 60\n"
        self.assert_boxes(pages(body, ""), [0, 0, 50, 60], A4)

    def test_page_bounding_box_of_the_trailer_is_nobodys(self):
        job = pages("").replace("%%EOF", "%%PageBoundingBox: 0 0 50 60\n%%EOF")
        self.assert_boxes(job, A4)

    def test_media_option_goes_before_everything(self):
        job = pages("%%PageBoundingBox: 0 0 50 60\n", header="%%BoundingBox: 0 0 100 100\n")
        self.assert_boxes(job, [0, 0, 612, 792], media="Letter")

    def test_empty_and_senseless_boxes_are_ignored(self):
        for box in ["0 0 0 0", "10 10 5 5", "0 0 100", "0 0 x 9", "0 0 1 1 1", "", "0 0 1e9 5", "0 0 nan 5",
                    "0 0 inf 9", "0 0 15000 9", "900000 0 900100 100"]:
            self.assert_boxes(pages(f"%%PageBoundingBox: {box}\n", header=f"%%BoundingBox: {box}\n"), A4)

    def test_boxes_may_have_fractions_and_signs(self):
        self.assert_boxes(pages("%%PageBoundingBox: -10.25 +0 +99.5 100.1234\n"), [-10.25, 0, 99.5, 100.123])

    def test_boxes_in_embedded_documents_do_not_count(self):
        embedded = "%%BeginDocument: x\n%%PageBoundingBox: 0 0 5 5\n%%BoundingBox: 0 0 6 6\n%%EndDocument\n"
        self.assert_boxes(pages(embedded), A4)

    def test_boxes_of_resources_in_the_prologue_do_not_count(self):
        resource = "%%BeginResource: x\n%%BoundingBox: 0 0 6 6\n%%EndResource\n"
        self.assert_boxes(pages("", prologue=resource), A4)

    def test_content_is_not_moved_into_the_box(self):
        pdf = self.convert(pages("20 30 moveto 40 50 lineto stroke\n", header="%%BoundingBox: 10 10 90 90\n"))
        self.assertEqual(pdf.words(0), "q 20 30 m 40 50 l S Q".split())


class MediaTest(support.CommandLineTest):
    def assert_media(self, media, width, height):
        left, bottom, right, top = self.convert("%!\n", f"--media={media}").media_box(0)
        self.assertEqual((left, bottom), (0, 0))
        self.assertAlmostEqual(right, width, places=2)
        self.assertAlmostEqual(top, height, places=2)

    def test_names(self):
        self.assert_media("A3", 842, 1191)
        self.assert_media("A4", 595, 842)
        self.assert_media("A5", 420, 595)
        self.assert_media("Letter", 612, 792)
        self.assert_media("Legal", 612, 1008)
        self.assert_media("Tabloid", 792, 1224)

    def test_names_in_any_case(self):
        self.assert_media("a4", 595, 842)
        self.assert_media("LETTER", 612, 792)

    def test_points(self):
        self.assert_media("300x400", 300, 400)
        self.assert_media("300.5x400pt", 300.5, 400)

    def test_millimetres(self):
        self.assert_media("210x297mm", 595.276, 841.89)

    def test_centimetres(self):
        self.assert_media("21x29.7cm", 595.276, 841.89)

    def test_inches(self):
        self.assert_media("8.5x11in", 612, 792)


if __name__ == "__main__":
    support.main()
