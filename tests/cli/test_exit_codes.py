"""Each exit code, from a run that ends so; and what documents them."""

import os
import pathlib

import support

PAGE = "0 0 50 50 rectfill showpage\n"
README = pathlib.Path(__file__).resolve().parents[2] / "README.md"


class ExitCodeTest(support.CommandLineTest):
    dialect = ()

    def assert_ends(self, code, job, *arguments, writes):
        self.write("job.ps", job)
        self.assertEqual(self.run_program("job.ps", *arguments).code, code)
        self.assertEqual(os.path.exists(self.path("job.pdf")), writes)

    def test_0_is_done(self):
        self.assert_ends(0, PAGE, writes=True)

    def test_1_is_an_error_and_nothing_written(self):
        self.assert_ends(1, "nonsense\n", writes=False)
        self.assert_ends(1, "0 0 50 50 rectfill\n", writes=False)

    def test_2_is_a_command_line_that_asks_for_what_cannot_be(self):
        self.assert_ends(2, PAGE, "--nonsense", writes=False)
        self.assert_ends(2, PAGE, "--pages", "2", writes=False)

    def test_3_is_a_job_that_cannot_be_read(self):
        self.assertEqual(self.run_program("none.ps").code, 3)
        self.assertEqual(self.run_program(".").code, 3)

    def test_4_is_an_output_that_cannot_be_written(self):
        self.assert_ends(4, PAGE, "-o", "/dev/full", writes=False)

    def test_5_is_done_with_warnings(self):
        self.assert_ends(5, "%!PS-Adobe-3.0\n%%Pages: 9\n" + PAGE, writes=True)

    def test_6_is_an_error_and_the_complete_pages_written(self):
        self.assert_ends(6, PAGE + "nonsense\n", writes=True)

    def test_help_and_readme_name_each(self):
        shown = self.run_program("--help").out.decode()
        readme = README.read_text(encoding="utf-8")
        for code in range(7):
            self.assertRegex(shown, rf"(?m)^  {code} \w")
            self.assertRegex(readme, rf"(?m)^\| {code} \|")


if __name__ == "__main__":
    support.main()
