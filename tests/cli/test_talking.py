"""What the command line says while it works, and how it can be made to say more or less."""

import os
import re
import subprocess

import support

PAGE = "0 0 50 50 rectfill showpage\n"
WARNING = "%!PS-Adobe-3.0\n%%Pages: 9\n" + PAGE
# Each page takes 40 ms, whatever the machine.
SLOW = "1 1 30 {pop usertime 40 add {dup usertime lt {exit} if} loop pop showpage} for\n"


class TalkingTest(support.CommandLineTest):
    dialect = ()

    def run_job(self, job, *arguments):
        self.write("job.ps", job)
        return self.run_program("job.ps", *arguments)

    def test_the_name_of_an_error_comes_first(self):
        self.assertEqual(self.run_job("foo\n").err, "quillpress: job.ps: undefined: foo, page 1, byte 3\n")
        self.assertIn(": typecheck: add, page 2, byte", self.run_job(PAGE + "1 (a) add").err)

    def test_the_nearest_option_is_proposed_for_a_misspelt_one(self):
        result = self.run_job(PAGE, "--linearise")
        self.assertEqual(result.code, 2)
        self.assertIn("unknown option --linearise; did you mean --linearize?", result.err)
        self.assertIn("unknown option --xyzzy\n", self.run_job(PAGE, "--xyzzy").err)

    def test_warnings_can_be_left_out(self):
        self.assertIn("warning: the job ends after 1 of 9 pages", self.run_job(WARNING).err)
        for option in ("--no-warnings", "--quiet", "-q"):
            result = self.run_job(WARNING, option)
            self.assertEqual((result.code, result.err), (5, ""))

    def test_errors_are_said_however_quiet(self):
        result = self.run_job(PAGE + "foo\n", "--quiet")
        self.assertEqual(result.code, 6)
        self.assertRegex(result.err, r"^quillpress: job.ps: undefined: foo, page 2, byte \d+\n$")

    def test_what_becomes_of_a_job_is_said_on_demand(self):
        self.assertEqual(self.run_job(PAGE).err, "")
        said = r"^quillpress: job\.ps: 2 pages, \d+ bytes to job\.pdf in \d+\.\d\d s\n$"
        self.assertRegex(self.run_job(PAGE * 2, "--verbose").err, said)
        self.assertRegex(self.run_job(PAGE * 2, "-v", "--rotate", "90").err, said)

    def test_help_shows_examples(self):
        self.assertIn(b"Examples:\n  quillpress job.ps\n", self.run_program("--help").out)


class ProgressTest(support.CommandLineTest):
    dialect = ()

    def terminal_text(self, job, *arguments):
        """What a terminal gets as standard error."""
        self.write("job.ps", job)
        terminal, inside = os.openpty()
        self.addCleanup(os.close, terminal)
        command = [support.PROGRAM, "job.ps", *arguments]
        process = subprocess.run(command, cwd=self.folder, stderr=inside, timeout=support.SECONDS)
        self.assertEqual(process.returncode, 0)
        os.write(inside, b"$")
        os.close(inside)
        text = b""
        while not text.endswith(b"$"):
            text += os.read(terminal, 4096)
        return text.decode()[:-1]

    # Wine tells a terminal more than the program does.
    @support.posix_only
    def test_a_terminal_sees_pages_bytes_and_rate_and_nothing_stays(self):
        text = self.terminal_text(SLOW)
        lines = [line for line in text.split("\r") if line.strip()]
        self.assertGreater(len(lines), 1)
        for shown in lines:
            self.assertRegex(shown, r"^job\.ps: \d+ pages, \d+ bytes read, \d+ pages/s *$")
        self.assertTrue(re.search(r"\r +\r$", text))

    def test_a_short_job_shows_none(self):
        self.assertEqual(self.terminal_text(PAGE), "")

    def test_a_quiet_run_shows_none(self):
        self.assertEqual(self.terminal_text(SLOW, "--quiet"), "")

    def test_what_is_no_terminal_sees_none(self):
        self.write("job.ps", SLOW)
        self.assertEqual(self.run_program("job.ps").err, "")


class DatesTest(support.CommandLineTest):
    dialect = ()

    def test_the_date_comes_from_the_jobs_comments(self):
        pdf = self.convert("%!PS-Adobe-3.0\n%%CreationDate: Mon Jan  5 10:11:12 1998\n%%EndComments\n" + PAGE)
        self.assertEqual(pdf.information("/CreationDate"), "D:19980105101112")

    def test_without_one_it_comes_from_the_environment(self):
        self.write("job.ps", PAGE)
        self.run_program("job.ps", SOURCE_DATE_EPOCH="86400")
        self.assertEqual(support.Pdf(self.path("job.pdf")).information("/CreationDate"), "D:19700102000000Z")

    def test_without_either_there_is_none(self):
        self.assertIsNone(self.convert(PAGE).information("/CreationDate"))


class GeneratedTest(support.CommandLineTest):
    dialect = ()

    def test_the_manual_page_and_the_completions_name_every_option(self):
        options = set(re.findall(r"--[a-z][a-z-]*", self.run_program("--help").out.decode()))
        self.assertGreater(len(options), 25)
        for kind in ("man", "bash", "zsh", "fish"):
            result = self.run_program("--generate", kind)
            self.assertEqual((result.code, result.err), (0, ""))
            text = result.out.decode().replace("\\-", "-")
            for option in options:
                self.assertIn(("-l " + option[2:]) if kind == "fish" else option, text)

    def test_nothing_else_can_be_generated(self):
        self.assertEqual(self.run_program("--generate", "html").code, 2)


if __name__ == "__main__":
    support.main()
