"""Messages are lines of text, whatever jobs and file names bring along, and jobs' own are shown on request."""

import re
import support

CONTROL = re.compile(rb"[\x00-\x09\x0b-\x1f\x7f-\xff]")


class MessageTest(support.CommandLineTest):
    def said(self, job, *arguments, name="job.ps"):
        """The lines that a job brings to standard error."""
        self.write(name, job)
        process = self.run_program(name, "-o", "out.pdf", *arguments)
        self.assertEqual(process.out, b"")
        raw = process.err.encode("utf-8", "surrogateescape")
        self.assertIsNone(CONTROL.search(raw), raw)
        for said in process.err.splitlines():
            self.assertTrue(said.startswith("quillpress: "), said)
            self.assertLessEqual(len(said), 200)
        return process.err

    def test_names_cannot_write_to_the_terminal(self):
        self.assertIn(r"TO EXECUTE for \x1B]0;title\x07", self.said("%!\n(\\033]0;title\\007) cvn cvx exec\n"))

    def test_line_ends_in_names_do_not_begin_a_message(self):
        self.assertIn(r"for a\x0Aquillpress:", self.said("%!\n(a\\nquillpress: done) cvn cvx exec\n"))

    def test_bytes_that_are_no_utf8_are_told(self):
        self.assertIn(r"for \xE4", self.said("%!\n\xe4 \n"))

    def test_long_names_are_cut(self):
        said = self.said("%!\n" + "a" * 5000 + " \n").splitlines()[0]
        self.assertIn("NOTHING TO EXECUTE for aaa", said)
        self.assertIn("...", said)
        self.assertEqual(len(said), 200)

    def test_reason_behind_a_long_file_name_is_told(self):
        result = self.run_program("a" * 240 + ".ps", "-o", "out.pdf")
        self.assertEqual(result.code, 3)
        self.assertTrue(result.err.endswith("cannot be opened: No such file or directory\n"))
        self.assertLessEqual(len(result.err), 201)

    @support.posix_only
    def test_file_names_cannot_write_to_the_terminal(self):
        self.assertIn(r"quillpress: \x1B[2J.ps: page 1, ", self.said("%!\nwrong\n", name="\x1b[2J.ps"))

    def test_printer_language_cannot_write_to_the_terminal(self):
        self.assertIn(r"language is \x1B[2J", self.said("@PJL ENTER LANGUAGE=\x1b[2J\n%!\n"))


class JobMessageTest(support.CommandLineTest):
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
