"""Several jobs in one run: where their PDFs go, and what becomes of the others when one fails."""

import os
import subprocess

import support

PAGE = "0 0 50 50 rectfill showpage\n"


class SeveralJobsTest(support.CommandLineTest):
    dialect = ()

    def setUp(self):
        super().setUp()
        self.write("a.ps", PAGE)
        self.write("b.ps", PAGE * 2)

    def assert_pages(self, name, count):
        self.assertEqual(len(support.Pdf(self.path(name)).pages), count)

    def assert_refused(self, *arguments, says):
        before = self.files()
        result = self.run_program(*arguments)
        self.assertEqual((result.code, result.out), (2, b""))
        self.assertIn(says, result.err)
        self.assertEqual(self.files(), before)

    def test_each_pdf_goes_beside_its_job(self):
        os.mkdir(self.path("c"))
        self.write("c/a.ps", PAGE * 3)
        result = self.run_program("a.ps", "b.ps", "c/a.ps")
        self.assertEqual((result.code, result.err, result.out), (0, "", b""))
        for name, count in {"a.pdf": 1, "b.pdf": 2, "c/a.pdf": 3}.items():
            self.assert_pages(name, count)

    def test_each_pdf_goes_into_the_folder(self):
        os.mkdir(self.path("out"))
        self.assertEqual(self.run_program("-d", "out", "a.ps", "b.ps").code, 0)
        self.assertEqual(sorted(os.listdir(self.path("out"))), ["a.pdf", "b.pdf"])

    def test_a_folder_that_is_not_there_is_an_output_error(self):
        result = self.run_program("-d", "none", "a.ps")
        self.assertEqual(result.code, 4)
        self.assertRegex(result.err, r"none[/\\]a.pdf cannot be written")

    def test_a_clash_of_names_is_an_error_before_anything_is_written(self):
        self.write("a.eps", PAGE)
        self.assert_refused("b.ps", "a.ps", "a.eps", says="a.pdf would be written by a.ps and by a.eps")

    def test_one_output_is_not_for_several_jobs(self):
        self.assert_refused("a.ps", "b.ps", "-o", "x.pdf", says="--output is for one job")

    def test_a_job_that_fails_takes_no_other_with_it(self):
        self.write("wrong.ps", "nonsense\n")
        result = self.run_program("a.ps", "wrong.ps", "none.ps", "b.ps")
        self.assertEqual(result.code, 3)
        self.assertIn("wrong.ps: undefined", result.err)
        self.assertIn("none.ps cannot be opened", result.err)
        self.assert_pages("a.pdf", 1)
        self.assert_pages("b.pdf", 2)

    def test_the_gravest_code_is_the_programs(self):
        self.write("wrong.ps", "nonsense\n")
        self.write("late.ps", PAGE + "nonsense\n")
        self.write("short.ps", "%!PS-Adobe-3.0\n%%Pages: 9\n" + PAGE)
        self.assertEqual(self.run_program("a.ps", "short.ps").code, 5)
        self.assertEqual(self.run_program("short.ps", "late.ps", "a.ps").code, 6)
        self.assertEqual(self.run_program("wrong.ps", "late.ps").code, 1)

    def test_a_job_converted_after_others_gives_the_same_bytes(self):
        self.write("text.ps", "/Helvetica findfont 9 scalefont setfont 9 9 moveto (text) show showpage\n")
        self.run_program("text.ps")
        alone = self.read("text.pdf")
        self.run_program("a.ps", "b.ps", "text.ps")
        self.assertEqual(self.read("text.pdf"), alone)


class DriversDialectTest(support.CommandLineTest):
    def test_a_job_converted_after_others_gives_the_same_bytes(self):
        image = "gsave 9 9 scale 1 1 8 [1 0 0 1 0 0] {<%s>} image grestore\n"
        self.write("a.ps", support.pages(image % "80", image % "81"))
        self.write("b.ps", support.pages(image % "82"))
        environment = {"SOURCE_DATE_EPOCH": "0"}
        self.run_program("b.ps", **environment)
        alone = self.read("b.pdf")
        self.assertEqual(self.run_program("a.ps", "b.ps", **environment).code, 0)
        self.assertEqual(self.read("b.pdf"), alone)


class InputTest(support.CommandLineTest):
    dialect = ()

    def run_in_bash(self, command, **environment):
        variables = {**os.environ, "quillpress": support.PROGRAM, **environment}
        return subprocess.run(["bash", "-c", command], cwd=self.folder, env=variables, timeout=support.SECONDS)

    @support.posix_only
    def test_a_descriptor_of_the_shell_is_a_job(self):
        self.write("a.ps", PAGE * 2)
        self.assertEqual(self.run_in_bash('"$quillpress" <(cat a.ps) -o out.pdf').returncode, 0)
        self.assertEqual(len(support.Pdf(self.path("out.pdf")).pages), 2)

    @support.posix_only
    def test_a_folder_for_temporary_files_is_not_needed(self):
        self.write("a.ps", PAGE)
        command = '"$quillpress" a.ps -o - > out.pdf && "$quillpress" a.ps --rotate 90 -o - > turned.pdf'
        self.assertEqual(self.run_in_bash("unset TMPDIR; " + command).returncode, 0)
        self.assertEqual(self.run_in_bash(command, TMPDIR="/none/such").returncode, 0)
        self.assertEqual(len(support.Pdf(self.path("out.pdf")).pages), 1)
        self.assertEqual(len(support.Pdf(self.path("turned.pdf")).pages), 1)

    def test_a_full_disk_leaves_the_old_file(self):
        noise = "/DeviceGray setcolorspace 1 1 40000 {pop 0 rand 600 mod moveto rand 600 mod rand 800 mod lineto stroke} for "
        self.write("a.ps", noise + "showpage\n")
        self.write("a.pdf", "before")
        for options in ("", "--rotate 90"):
            run = self.run_in_bash(f"ulimit -f 100; trap '' XFSZ; exec \"$quillpress\" a.ps {options}")
            self.assertEqual(run.returncode, 4)
            self.assertEqual(self.read("a.pdf"), b"before")
            self.assertEqual(self.files(), ["a.pdf", "a.ps"])


if __name__ == "__main__":
    support.main()
