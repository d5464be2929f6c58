"""A job that is cut off is converted as far as it goes, with a warning and an exit code of its own."""

import support
from support import line, pages

IMAGE = "10 10 8 [1 0 0 1 0 0] {currentfile 100 string readstring pop} image\n"
INSIDE = "the job ends inside a string, a procedure or an image; it may be cut off"


class CutOffTest(support.CommandLineTest):
    def assert_cut_off(self, job, reason=INSIDE, count=2):
        self.write("job.ps", job)
        result = self.run_program("job.ps", "-o", "job.pdf")
        self.assertEqual((result.code, result.out), (5, b""))
        self.assertEqual(result.err, f"quillpress: job.ps: warning: {reason}\n")
        self.assertEqual(len(support.Pdf(self.path("job.pdf")).pages), count)

    def cut(self, end):
        return pages(line(1), line(2)).replace("%%Trailer\n%%EOF\n", end)

    def test_job_that_ends_inside_a_string(self):
        for end in ("(abc", "<4142", "(a (b)", "(a\\"):
            self.assert_cut_off(self.cut(end))

    def test_job_that_ends_inside_a_procedure(self):
        self.assert_cut_off(self.cut("/p { 1 2 add"))
        self.assert_cut_off(self.cut("{ { } "))

    def test_job_that_ends_inside_an_image(self):
        self.assert_cut_off(self.cut(IMAGE + "abc"))

    def test_job_that_ends_inside_a_read(self):
        self.assert_cut_off(self.cut("currentfile 100 string readstring\nabc"))

    def test_job_that_ends_inside_counted_data(self):
        end = "%%BeginData: 100 Binary Bytes\n% abc"
        self.assert_cut_off(self.cut(end), "the job ends inside a section of data; it may be cut off")

    def test_job_with_fewer_pages_than_it_promises(self):
        job = pages(line(1), line(2), header="%%Pages: 3\n").replace("%%Trailer\n%%EOF\n", "")
        self.assert_cut_off(job, "the job ends before the last of its pages; it may be cut off")

    def test_job_that_is_over_may_have_fewer_pages(self):
        self.assertEqual(len(self.convert(pages(line(1), header="%%Pages: 3\n")).pages), 1)

    def test_complete_jobs_are_not_cut_off(self):
        for end in ("", "%%EOF", "\n\n", "(abc) pop", "{ 1 } pop", "% a comment", "showpage quit\n", "[ 1 2"):
            self.assertEqual(len(self.convert(self.cut(end)).pages), 2)

    def test_jobs_that_redefine_operators_are_not_cut_off(self):
        taken = "".join(f"/{name} {{wrong}} def " for name in ["get", "exec", "setlinewidth", "def"])
        self.assertEqual(len(self.convert(f"%!\n{taken}\n").pages), 1)

    def test_asking_leaves_no_trace_on_the_page(self):
        self.assertEqual(self.convert("%!\n3 setlinewidth\n").words(0), ["q", "3", "w", "Q"])

    def test_error_goes_before_the_warning(self):
        _, messages = self.convert_with_error(pages(line(1), "wrong\n") + "(abc")
        self.assertNotIn("warning", messages)

    def test_content_has_the_same_exit_code(self):
        self.write("job.ps", "%!\n1 setlinewidth (abc")
        result = self.run_program("job.ps", "--content")
        self.assertEqual((result.code, result.out), (5, b"1 w "))
        self.assertIn(INSIDE, result.err)


if __name__ == "__main__":
    support.main()
