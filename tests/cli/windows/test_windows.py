"""quillpress.exe as a user of Windows meets it. It runs under Wine, where the root of the file system is drive Z."""

import json
import os
import pathlib
import signal
import subprocess
import threading
import time
import unittest

import support

JOB = "/Helvetica findfont 24 scalefont setfont 72 700 moveto (Twelve quick quills) show showpage\n"
BROKEN = "nonsense\n"
ENDLESS = "{} loop\n"


class WindowsTest(support.CommandLineTest):
    dialect = ()

    def words(self, name):
        text = subprocess.run(["pdftotext", self.path(name), "-"], check=True, capture_output=True).stdout
        return text.decode().split()

    def assert_converted(self, name):
        self.assertEqual(self.words(name), ["Twelve", "quick", "quills"])

    def assert_ends(self, code, *arguments, **more):
        result = self.run_program(*arguments, **more)
        self.assertEqual(result.code, code, result.err)
        return result


class NamesTest(WindowsTest):
    def test_a_name_may_have_letters_of_all_kinds(self):
        self.write("résumé отчёт 日本.ps", JOB)
        self.assert_ends(0, "résumé отчёт 日本.ps")
        self.assert_converted("résumé отчёт 日本.pdf")

    def test_messages_show_such_names(self):
        self.assertIn("отчёт.ps", self.assert_ends(3, "отчёт.ps").err)

    def test_a_path_may_be_long(self):
        folder = os.path.join(*["a" * 60] * 5)
        os.makedirs(self.path(folder))
        self.write(folder + "/job.ps", JOB)
        self.assert_ends(0, folder.replace("/", "\\") + "\\job.ps")
        self.assert_converted(folder + "/job.pdf")

    def test_a_path_from_the_root_is_no_option(self):
        self.write("job.ps", JOB)
        self.assert_ends(0, self.path("job.ps"))
        self.assert_converted("job.pdf")

    def test_patterns_are_the_programs_business(self):
        for name in "a.ps", "b.ps":
            self.write(name, JOB)
        os.mkdir(self.path("out"))
        self.assert_ends(0, "*.ps", "-d", "out")
        self.assertEqual(sorted(os.listdir(self.path("out"))), ["a.pdf", "b.pdf"])

    def test_names_that_differ_in_case_clash(self):
        self.write("job.ps", JOB)
        self.assertIn("would be written by", self.assert_ends(2, "job.ps", "JOB.PS").err)


class OutputTest(WindowsTest):
    def test_a_file_is_replaced_and_nothing_else_is_left(self):
        self.write("job.ps", JOB)
        self.write("job.pdf", "old")
        self.assert_ends(0, "job.ps")
        self.assert_converted("job.pdf")
        self.assertEqual(self.files(), ["job.pdf", "job.ps"])

    def test_a_failure_leaves_the_old_file(self):
        self.write("job.ps", BROKEN)
        self.write("job.pdf", "old")
        self.assert_ends(1, "job.ps")
        self.assertEqual(self.read("job.pdf"), b"old")
        self.assertEqual(self.files(), ["job.pdf", "job.ps"])

    def test_a_folder_that_is_missing_is_said_as_elsewhere(self):
        self.write("job.ps", JOB)
        result = self.assert_ends(4, "job.ps", "-o", "none/job.pdf")
        self.assertIn("No such file or directory", result.err)

    def test_the_job_itself_is_not_replaced(self):
        self.write("job.ps", JOB)
        self.assert_ends(2, "job.ps", "-o", "JOB.PS")
        self.assertEqual(self.read("job.ps").decode(), JOB)

    def test_streams_carry_bytes(self):
        # A carriage return, an end of text, and in the compressed output any byte.
        job = "%!PS\r\n% \x1a\r\n" + JOB
        self.write("job.ps", job)
        self.assert_ends(0, "job.ps", SOURCE_DATE_EPOCH="0")
        out = self.assert_ends(0, "-", "-o", "-", stdin=job.encode("latin-1"), SOURCE_DATE_EPOCH="0").out
        self.assertEqual(out, self.read("job.pdf"))

    def test_no_variable_is_needed_for_temporary_files(self):
        self.write("job.ps", support.pages(support.line(7)))
        out = self.assert_ends(0, "job.ps", "-o", "-", *support.DRIVER, TMP="", TEMP="").out
        self.assertTrue(out.startswith(b"%PDF"))

    def test_the_drivers_dialect_is_there(self):
        self.write("job.ps", support.pages(support.line(7), support.line(8)))
        self.assert_ends(0, "job.ps", *support.DRIVER)
        pdf = support.Pdf(self.path("job.pdf"))
        self.assertEqual(len(pdf.pages), 2)
        self.assertIn("8", pdf.words(1))


class BatchTest(WindowsTest):
    def batch(self, jobs, *arguments):
        for name, text in jobs.items():
            self.write(name, text)
        self.write("list", "".join(name + "\r\n" for name in jobs))
        return "--batch", "list", "--report", "report", *arguments

    def codes(self):
        records = [json.loads(line) for line in self.read("report").splitlines()]
        return {record["job"]: record["code"] for record in records}

    def test_a_job_that_fails_takes_no_other_with_it(self):
        jobs = {f"{number}.ps": BROKEN if number == 2 else JOB for number in range(6)}
        self.assert_ends(1, *self.batch(jobs, "--jobs", "2"))
        self.assertEqual(self.codes(), {name: int(name == "2.ps") for name in jobs})
        self.assertEqual([name for name in self.files() if name.endswith(".pdf")],
                         ["0.pdf", "1.pdf", "3.pdf", "4.pdf", "5.pdf"])

    def test_a_list_may_come_from_a_program(self):
        self.write("отчёт.ps", JOB)
        self.assert_ends(0, "--batch", "-", stdin="отчёт.ps\tвывод.pdf\n".encode())
        self.assert_converted("вывод.pdf")

    def processes(self):
        """Those that have been given this test's list, the first one first."""
        found = []
        for entry in pathlib.Path("/proc").glob("[0-9]*"):
            try:
                arguments = (entry / "cmdline").read_bytes()
                started = int((entry / "stat").read_text().rsplit(")", 1)[1].split()[19])
            except (OSError, ValueError, IndexError):
                continue
            if b"quillpress.exe" in arguments and self.folder.encode() in arguments.replace(b"\\", b"/"):
                found.append((started, int(entry.name)))
        return [number for _, number in sorted(found)]

    def test_a_worker_that_is_killed_costs_its_own_job_only(self):
        self.batch({"endless.ps": ENDLESS, "good.ps": JOB})
        self.write("list", f"{self.path('endless.ps')}\n{self.path('good.ps')}\n")
        # The list's path tells these processes from others.
        arguments = "--batch", self.path("list"), "--report", self.path("report"), "--jobs", "1"
        run = threading.Thread(target=lambda: setattr(self, "result", self.run_program(*arguments)))
        run.start()
        end = time.monotonic() + support.SECONDS / 2
        while len(self.processes()) < 2 and time.monotonic() < end:
            time.sleep(0.1)
        time.sleep(1)
        os.kill(self.processes()[-1], signal.SIGKILL)
        run.join()
        self.assertEqual(self.result.code, 1)
        self.assertIn("endless.ps: its worker", self.result.err)
        self.assertEqual(self.codes(), {self.path("endless.ps"): 1, self.path("good.ps"): 0})


class UsageTest(WindowsTest):
    def test_version_and_help(self):
        self.assertRegex(self.assert_ends(0, "--version").out, rb"^quillpress [0-9.]+\n$")
        self.assertIn(b"--batch", self.assert_ends(0, "--help").out)

    def test_a_job_that_never_ends_has_a_limit(self):
        self.write("job.ps", ENDLESS)
        self.assertIn("timeout", self.assert_ends(1, "job.ps", "--timeout", "1").err)

    def test_a_job_that_fills_the_memory_has_a_limit(self):
        self.write("job.ps", "[ { 100000 string } loop\n")
        self.assertIn("VMerror", self.assert_ends(1, "job.ps", "--max-memory", "20").err)


if __name__ == "__main__":
    unittest.main()
