"""Text that is not drawn, and messages that the job prints."""

import support
from support import pages

FONT = "/Helvetica findfont 12 scalefont setfont 10 10 moveto\n"


class TextCountTest(support.CommandLineTest):
    def assert_texts(self, job, count):
        self.write("job.ps", job)
        result = self.run_program("job.ps", "-o", "job.pdf")
        self.assertEqual(result.code, 0, result.err)
        times = "time" if count == 1 else "times"
        said = f"quillpress: job.ps: text is not drawn; the job shows text {count} {times}\n"
        self.assertEqual(result.err, said if count else "")

    def test_job_without_text_says_nothing(self):
        self.assert_texts("%!\n1 setlinewidth\n", 0)

    def test_one_text(self):
        self.assert_texts("%!\n" + FONT + "(abc) show\n", 1)

    def test_texts_of_all_pages_are_told_once(self):
        self.assert_texts(pages("(a) show (b) show\n", "(c) show\n"), 3)

    def test_every_operator_that_shows_text_counts(self):
        uses = ["(a) show", "1 2 (a) ashow", "1 2 3 (a) widthshow", "1 2 3 4 5 (a) awidthshow",
                "{} (a) kshow", "{} (a) cshow", "/a glyphshow", "(a) [1] xshow", "(a) [1] yshow",
                "(a) [1 1] xyshow"]
        for use in uses:
            self.assert_texts(f"%!\n{FONT}{use}\n", 1)

    def test_text_shown_by_procedures_and_other_names_counts(self):
        names = "/p {show} def /q /show load def /r {//show} def\n"
        uses = "(a) p (b) q (c) r (d) systemdict /show get exec (e) /show load exec (f) /show cvx exec\n"
        self.assert_texts("%!\n" + names + uses, 6)

    def test_built_in_abbreviations_count(self):
        self.assert_texts("%!\n(a) S 1 2 (b) A 1 2 3 (c) W 1 2 3 4 5 (d) D\n", 4)

    def test_text_in_a_procedure_that_does_not_run_does_not_count(self):
        self.assert_texts("%!\n/p {(a) show} def false {(b) show} if\n", 0)

    def test_names_of_the_job_s_own_do_not_count(self):
        self.assert_texts("%!\n/show {pop} def (a) show\n", 0)

    def test_job_that_takes_over_the_counter_s_operators_changes_nothing(self):
        taken = "".join(f"/{name} {{wrong}} def " for name in ["add", "put", "get", "setlinewidth"])
        self.assert_texts(f"%!\n{taken} (a) show\n", 1)

    def test_count_lasts_through_save_and_restore(self):
        self.assert_texts("%!\nsave (a) show restore save (b) show restore\n", 2)

    def test_operand_stack_is_left_as_it_was(self):
        self.assertEqual(self.content_of("%!\n7 (a) show count setlinewidth setlinewidth\n"), "1 w 7 w ")

    def test_counting_leaves_no_trace_on_the_page(self):
        self.write("job.ps", "%!\n3 setlinewidth (a) show\n")
        self.run_program("job.ps", "-o", "job.pdf")
        self.assertEqual(support.Pdf(self.path("job.pdf")).words(0), ["q", "3", "w", "Q"])

    def test_error_of_an_operator_is_its_own(self):
        self.write("job.ps", "%!\n1 show\n")
        result = self.run_program("job.ps")
        self.assertIn("Expected ps_string at ", result.err)

    def test_large_counts(self):
        self.assert_texts("%!\n12345 {(a) show} repeat\n", 12345)

    def content_of(self, job):
        self.write("job.ps", job)
        return self.run_program("job.ps", "--content").out.decode()


class MessageTest(support.CommandLineTest):
    def test_messages_are_shown_on_request(self):
        self.write("job.ps", "%!\n(hello) = (there\\n) print\n")
        result = self.run_program("job.ps", "--messages")
        self.assertEqual((result.code, result.out), (0, b""))
        self.assertEqual(result.err, "hello\nthere\n")

    def test_messages_are_dropped_otherwise(self):
        self.convert("%!\n(hello) = (there) print\n")

    def test_messages_stay_out_of_the_pdf(self):
        self.write("job.ps", "%!\n(hello) =\n")
        result = self.run_program("job.ps", "--messages", "-o", "-")
        self.assertNotIn(b"hello", result.out)
        self.assertIn("hello", result.err)


if __name__ == "__main__":
    support.main()
