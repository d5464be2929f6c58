"""Errors in the job: what is said, what is written, how it goes on."""

import support
from support import line, pages

MESSAGE = "Exception:[NameObject.cpp:"


class ErrorMessageTest(support.CommandLineTest):
    def failure(self, job, *arguments):
        self.write("job.ps", job)
        result = self.run_program("job.ps", "-o", "job.pdf", *arguments)
        self.assertEqual((result.code, result.out), (1, b""))
        return result.err.splitlines()[0]

    def assert_byte(self, job, page, offset):
        """In single bytes an error has its exact place: the byte that ends the token."""
        self.assert_starts(self.failure(job, "--chunk=1"), f"page {page}, byte {offset}")

    def assert_chunk(self, job, page, begin, end, *arguments):
        """Otherwise the chunk is told that ends at a byte, or at the next page."""
        self.assert_starts(self.failure(job, *arguments), f"page {page}, in the {end - begin} bytes from byte {begin}")

    def assert_starts(self, found, place):
        start = f"quillpress: job.ps: {place}: {MESSAGE}"
        self.assertTrue(found.startswith(start), found + " does not begin with " + start)

    def test_converter_s_own_words_are_told(self):
        message = r"Exception:\[NameObject\.cpp:\d+\] NOTHING TO EXECUTE for wrong$"
        self.assertRegex(self.failure("%!\nwrong\n"), message)

    def test_page_and_chunk_are_told(self):
        job = pages(line(1), line(2) + "wrong\n", line(3))
        self.assert_chunk(job, 2, job.index("%%Page: 2"), job.index("%%Page: 3"))

    def test_chunk_is_as_long_as_chunks_are(self):
        job = pages(line(1), line(2) * 50 + "wrong\n", line(3))
        page = job.index("%%Page: 2")
        for size in [2, 7, 100]:
            begin = page + (job.index("wrong") + 5 - page) // size * size
            self.assert_chunk(job, 2, begin, min(begin + size, job.index("%%Page: 3")), "--chunk", str(size))

    def test_byte_is_told_in_single_bytes(self):
        job = pages(line(1), line(2) * 50 + "wrong\n", line(3))
        self.assert_byte(job, 2, job.index("wrong") + 5)

    def test_byte_counts_the_envelope(self):
        envelope = "\x1b%-12345X@PJL ENTER LANGUAGE=POSTSCRIPT\n"
        self.assert_byte(envelope + "%!\nwrong\n", 1, len(envelope) + 8)
        self.assert_chunk(envelope + "%!\nwrong\n", 1, len(envelope), len(envelope) + 9)

    def test_chunk_far_into_a_long_job(self):
        job = pages(*[line(1) * 20000] * 3, "wrong\n")
        self.assertGreater(len(job), 500000)
        self.assert_chunk(job, 4, job.index("%%Page: 4"), len(job))

    def test_error_in_the_last_token(self):
        self.assert_byte("%!\nwrong", 1, 8)
        self.assert_starts(self.failure("%!\nwrong"), "page 1, byte 8")

    def test_error_in_the_set_up_is_one_of_the_first_page(self):
        job = pages(line(1), prologue="wrong\n")
        self.assert_byte(job, 1, job.index("wrong") + 5)
        self.assert_chunk(job, 1, 0, job.index("%%Page: 1"))

    def test_error_in_the_trailer_is_one_of_the_last_page(self):
        job = pages(line(1), line(2)).replace("%%EOF", "wrong")
        self.assert_byte(job, 2, job.index("wrong") + 5)

    def test_place_in_standard_input_is_told_alike(self):
        job = pages(line(1), line(2) + "wrong\n")
        result = self.run_program("-", "-o", "job.pdf", stdin=job.encode())
        begin = job.index("%%Page: 2")
        place = f"page 2, in the {len(job) - begin} bytes from byte {begin}: {MESSAGE}"
        self.assertIn("quillpress: standard input: " + place, result.err)


class CompletePagesTest(support.CommandLineTest):
    def assert_pages(self, pdf, *widths):
        found = [pdf.words(page)[pdf.words(page).index("w") - 1] for page in range(len(pdf.pages))]
        self.assertEqual(found, [str(width) for width in widths])

    def test_pages_before_the_error_are_written(self):
        pdf, messages = self.convert_with_error(pages(line(1), line(2), line(3) + "wrong\n", line(4)))
        self.assert_pages(pdf, 1, 2)
        self.assertIn("job.pdf: 2 complete pages written", messages)

    def test_one_error_is_reported_once(self):
        _, messages = self.convert_with_error(pages(line(1), "wrong\n", "wrong\n", "wrong\n"))
        self.assertEqual(messages.count("Exception"), 1)

    def test_nothing_is_written_without_a_complete_page(self):
        self.write("job.ps", pages("wrong\n", line(2)))
        result = self.run_program("job.ps", "-o", "job.pdf")
        self.assertEqual(result.code, 1)
        self.assertIn("no page is complete, so nothing is written", result.err)
        self.assertEqual(self.files(), ["job.ps"])

    def test_sizes_from_the_trailer_count_in_spite_of_the_error(self):
        job = pages(line(1), "wrong\n", header="%%BoundingBox: (atend)\n")
        pdf, _ = self.convert_with_error(job.replace("%%EOF", "%%BoundingBox: 0 0 50 60\n%%EOF"))
        self.assertEqual(pdf.media_box(0), [0, 0, 50, 60])

    def test_keep_going_leaves_out_the_page_alone(self):
        pdf, messages = self.convert_with_error(pages(line(1), "wrong\n" + line(2), line(3)), "--keep-going")
        self.assert_pages(pdf, 1, 3)
        self.assertIn("page 2, in the ", messages)

    def test_keep_going_reports_each_error(self):
        job = pages(line(1), "wrong\n", line(3), "wrong\n", line(5))
        pdf, messages = self.convert_with_error(job, "--keep-going")
        self.assert_pages(pdf, 1, 3, 5)
        for page in (2, 4):
            self.assertIn(f"page {page}, in the 18 bytes from byte {job.index(f'%%Page: {page}')}: ", messages)

    def test_keep_going_without_any_complete_page(self):
        self.write("job.ps", pages("wrong\n", "wrong\n"))
        result = self.run_program("job.ps", "-o", "job.pdf", "--keep-going")
        self.assertEqual(result.code, 1)
        self.assertEqual(self.files(), ["job.ps"])

    def test_keep_going_without_an_error_is_a_success(self):
        self.assert_pages(self.convert(pages(line(1), line(2)), "--keep-going"), 1, 2)

    def test_keep_going_after_an_error_in_the_set_up(self):
        pdf, _ = self.convert_with_error(pages(line(1), line(2), prologue="wrong\n"), "--keep-going")
        self.assert_pages(pdf, 1, 2)

    # Elsewhere a copy of the process goes on, and it begins anew with the set-up on Windows.
    @support.posix_only
    def test_keep_going_keeps_what_pages_have_defined(self):
        job = pages("/width 4 def\n" + line(1), "wrong\n", "width setlinewidth\n")
        pdf, _ = self.convert_with_error(job, "--keep-going")
        self.assert_pages(pdf, 1, 4)

    def test_keep_going_drops_the_rest_of_a_procedure(self):
        job = pages(line(1), "/p {wrong 9 setlinewidth} def p\n", line(3))
        pdf, _ = self.convert_with_error(job, "--keep-going")
        self.assert_pages(pdf, 1, 3)
        self.assertNotIn("9 w", pdf.content(1))

    def test_keep_going_gets_out_of_an_endless_loop_of_errors(self):
        job = pages("{wrong} loop\n", "narrow\n", prologue="/narrow {5 setlinewidth} def\n")
        pdf, _ = self.convert_with_error(job, "--keep-going")
        self.assert_pages(pdf, 5)

    def test_keep_going_gets_out_of_a_string_that_cannot_end(self):
        job = pages("(\\q) pop\n", "narrow\n", prologue="/narrow {5 setlinewidth} def\n")
        pdf, _ = self.convert_with_error(job, "--keep-going")
        self.assert_pages(pdf, 5)

    def test_keep_going_gets_out_of_an_open_procedure(self):
        job = pages("{ //wrong\n", "narrow\n", prologue="/narrow {5 setlinewidth} def\n")
        pdf, _ = self.convert_with_error(job, "--keep-going")
        self.assert_pages(pdf, 5)

    def test_keep_going_gets_out_of_an_image_that_lacks_data(self):
        image = "10 10 8 [1 0 0 1 0 0] {wrong currentfile 100 string readstring pop} image\n"
        job = pages(image, "narrow\n", line(3), prologue="/narrow {5 setlinewidth} def\n")
        pdf, _ = self.convert_with_error(job, "--keep-going")
        self.assert_pages(pdf, 5, 3)

    def test_text_of_a_failed_page_is_not_run(self):
        job = pages("wrong\n/later 3 def\n", line(2) + "/later where {pop wrong} if\n")
        pdf, messages = self.convert_with_error(job, "--keep-going", "--chunk=4")
        self.assert_pages(pdf, 2)
        self.assertEqual(messages.count("Exception"), 1)


if __name__ == "__main__":
    support.main()
