"""How a job is split into pages by its structuring comments."""

import unittest

import support
from support import line, pages


class PageSplittingTest(support.CommandLineTest):
    def assert_pages(self, pdf, *widths):
        """Each page is recognised by the width of its only line."""
        found = [pdf.words(page)[pdf.words(page).index("w") - 1] for page in range(len(pdf.pages))]
        self.assertEqual(found, [str(width) for width in widths])

    def test_each_page_comment_begins_a_page(self):
        self.assert_pages(self.convert(pages(line(1), line(2), line(3))), 1, 2, 3)

    def test_job_without_page_comments_is_one_page(self):
        self.assert_pages(self.convert("%!\n" + line(4) + "showpage\n"), 4)

    def test_job_that_draws_nothing_is_one_empty_page(self):
        self.assertEqual(self.convert("%!\n").words(0), ["q", "Q"])

    def test_page_without_text_of_its_own_is_a_page(self):
        pdf = self.convert(pages(line(1), "", line(3)))
        self.assertEqual(pdf.words(1), ["q", "Q"])
        self.assertEqual(len(pdf.pages), 3)

    def test_what_the_prologue_draws_belongs_to_the_first_page(self):
        pdf = self.convert(pages(line(1), line(2), prologue="7 setlinejoin\n"))
        self.assertIn("7 j", pdf.content(0))
        self.assertNotIn("7 j", pdf.content(1))

    def test_what_the_trailer_draws_belongs_to_the_last_page(self):
        pdf = self.convert(pages(line(1), line(2)).replace("%%Trailer\n", "%%Trailer\n7 setlinejoin\n"))
        self.assertNotIn("7 j", pdf.content(0))
        self.assertIn("7 j", pdf.content(1))

    def test_definitions_hold_on_later_pages(self):
        job = pages("/narrow {1 setlinewidth} def\n" + line(1), "narrow 0 0 moveto 1 1 lineto stroke\n")
        self.assert_pages(self.convert(job), 1, 1)

    def test_graphics_state_starts_afresh_on_each_page(self):
        job = pages("2 2 scale " + line(1), "matrix currentmatrix 0 get setlinewidth\n")
        self.assert_pages(self.convert(job), 1, 1)

    def test_first_page_keeps_the_state_of_the_set_up(self):
        job = pages("currentlinewidth 1 add setlinewidth\n", prologue="6 setlinewidth\n")
        self.assertIn("7 w", self.convert(job).content(0))

    def test_last_token_counts_without_a_line_end(self):
        self.assertIn("5 w", self.convert("%!\n5 setlinewidth").content(0))

    def test_page_comments_of_embedded_documents_do_not_count(self):
        embedded = "%%BeginDocument: figure\n%!PS\n%%Page: 1 1\n" + line(2) + "%%EndDocument\n"
        self.assertEqual(len(self.convert(pages(line(1) + embedded, line(3))).pages), 2)

    def test_embedded_documents_may_hold_others(self):
        inner = "%%BeginDocument: b\n%%Page: 1 1\n%%EndDocument\n%%Page: 2 2\n"
        job = pages(line(1) + "%%BeginDocument: a\n" + inner + "%%EndDocument\n", line(3))
        self.assert_pages(self.convert(job), 1, 3)

    def test_end_of_a_document_that_never_began_is_ignored(self):
        self.assert_pages(self.convert(pages("%%EndDocument\n" + line(1), line(2))), 1, 2)

    def test_binary_sections_are_passed_over_by_their_length(self):
        data = "\n%%Page: 9 9\n%%BeginDocument: x\n"
        reader = f"/text {len(data)} string def /take {{currentfile text readstring pop pop}} def\n"
        body = reader + f"%%BeginBinary: {len(data) + 5}\ntake\n"
        job = pages(body + data + "\n%%EndBinary\n" + line(1), line(2))
        self.assert_pages(self.convert(job), 1, 2)

    def test_data_sections_are_passed_over_by_bytes(self):
        data = "(\n%%Page: 9 9\n) pop\n"
        for kind in ["", " Binary", " ASCII Bytes"]:
            body = f"%%BeginData: {len(data)}{kind}\n{data}%%EndData\n"
            self.assert_pages(self.convert(pages(body + line(1), line(2))), 1, 2)

    def test_data_sections_are_passed_over_by_lines(self):
        for end in ["\n", "\r", "\r\n"]:
            data = f"%%BeginData: 3 ASCII Lines{end}({end}%%Page: 9 9{end}) pop{end}%%EndData{end}"
            job = pages(line(1), line(2)).replace("\n", end).replace(f"1 1{end}", f"1 1{end}{data}", 1)
            self.assert_pages(self.convert(job), 1, 2)

    def test_byte_count_begins_behind_the_whole_line_end(self):
        for end in ["\n", "\r", "\r\n"]:
            data = f"(%%){end}pop %"
            body = f"%%BeginData: {len(data)} Binary Bytes{end}{data}{end}%%Page: 2 2{end}"
            self.assertEqual(len(self.convert(pages(line(1) + body + line(2))).pages), 2)

    def test_count_that_is_no_number_passes_over_nothing(self):
        self.assert_pages(self.convert(pages("%%BeginData: many\n" + line(1), line(2))), 1, 2)

    def test_all_line_ends_are_known(self):
        for end in ["\n", "\r", "\r\n"]:
            self.assert_pages(self.convert(pages(line(1), line(2)).replace("\n", end)), 1, 2)

    def test_line_ends_may_be_mixed(self):
        job = pages(line(1), line(2), line(3)).replace("%%Page: 2 2\n", "%%Page: 2 2\r")
        self.assert_pages(self.convert(job.replace("%%Page: 3 3\n", "\r\n%%Page: 3 3\r\n")), 1, 2, 3)

    def test_comment_counts_at_the_start_of_a_line_only(self):
        self.assert_pages(self.convert(pages(line(1) + " %%Page: 2 2\n1 pop %%Page: 3 3\n")), 1)

    def test_other_comments_that_begin_alike_are_no_pages(self):
        body = "%%PageTrailer\n%%Pages: 3\n%%PageOrder: Ascend\n%Page: 4 4\n%%%Page: 5 5\n%%page: 6 6\n"
        self.assert_pages(self.convert(pages(line(1) + body)), 1)

    def test_comment_on_the_border_of_two_blocks_is_found(self):
        # Blocks of 64 KiB are read at a time; the comment is moved across their border byte by byte.
        start = pages(line(1))[: -len("%%Trailer\n%%EOF\n")]
        for place in range(65536 - 14, 65536 + 3):
            filler = "%" * (place - len(start) - 1) + "\n"
            self.assertEqual(len(start + filler), place)
            self.assert_pages(self.convert(start + filler + "%%Page: 2 2\n" + line(2)), 1, 2)

    def test_page_comment_in_the_middle_of_a_procedure_splits_the_bytes_there(self):
        pdf = self.convert(pages("{ 1 setlinewidth\n", "2 setlinewidth } exec\n"))
        self.assertEqual(pdf.words(0), ["q", "Q"])
        self.assertEqual(pdf.words(1), ["q", "1", "w", "2", "w", "Q"])

    def test_very_long_comment_does_no_harm(self):
        self.assert_pages(self.convert(pages("%%" + "x" * 200000 + "\n" + line(1), line(2))), 1, 2)


if __name__ == "__main__":
    unittest.main()
