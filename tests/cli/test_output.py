"""Where the PDF goes: whole or not at all."""

import os
import stat
import subprocess
import time

import support
from support import line, pages

JOB = pages(line(1), line(2))


def run(*arguments, **options):
    """For runs whose standard streams are special."""
    command = [support.PROGRAM, *support.DRIVER, *arguments]
    return subprocess.run(command, stderr=subprocess.PIPE, timeout=support.SECONDS, **options)


class OutputTest(support.CommandLineTest):
    def setUp(self):
        super().setUp()
        self.write("job.ps", JOB)

    def start_long_job(self):
        """Starts the program on a job that has not ended yet."""
        command = [support.PROGRAM, *support.DRIVER, "-", "-o", "job.pdf"]
        pipes = {"stdin": subprocess.PIPE, "stderr": subprocess.DEVNULL}
        process = subprocess.Popen(command, cwd=self.folder, **pipes)
        process.stdin.write(JOB.encode() * 5000)
        process.stdin.flush()
        return process

    def assert_pdf(self, name, count=2):
        self.assertEqual(len(support.Pdf(self.path(name)).pages), count)

    def test_output_is_beside_the_job_by_default(self):
        self.assertEqual(self.run_program("job.ps").code, 0)
        self.assertEqual(self.files(), ["job.pdf", "job.ps"])
        self.assert_pdf("job.pdf")

    def test_known_endings_are_replaced_and_others_kept(self):
        os.mkdir(self.path("jobs"))
        names = {"a.eps": "a.pdf", "b.prn": "b.pdf", "C.PS": "C.pdf", "d.out": "d.out.pdf", "e": "e.pdf",
                 "f.g.ps": "f.g.pdf"}
        for name, output in names.items():
            self.write("jobs/" + name, JOB)
            self.assertEqual(self.run_program("jobs/" + name).code, 0)
            self.assert_pdf("jobs/" + output)

    def test_standard_output_holds_the_pdf_and_nothing_else(self):
        result = self.run_program("job.ps", "-o", "-")
        self.assertEqual((result.code, result.err), (0, ""))
        self.write("out.pdf", result.out)
        self.assert_pdf("out.pdf")
        self.assertTrue(result.out.startswith(b"%PDF-"))
        self.assertTrue(result.out.endswith(b"%%EOF\n"))

    def test_standard_input_goes_to_standard_output_by_default(self):
        result = self.run_program("-", stdin=JOB.encode())
        self.assertEqual((result.code, result.err), (0, ""))
        self.write("out.pdf", result.out)
        self.assert_pdf("out.pdf")

    def test_terminal_gets_no_pdf_unasked(self):
        terminal, inside = os.openpty()
        self.addCleanup(os.close, terminal)
        process = run("-", stdin=subprocess.DEVNULL, stdout=inside)
        os.close(inside)
        self.assertEqual(process.returncode, 2)
        self.assertIn(b"-o", process.stderr)

    def test_nothing_goes_to_standard_output_after_an_error_on_the_first_page(self):
        result = self.run_program("-", "-o", "-", stdin=pages("wrong\n").encode())
        self.assertEqual((result.code, result.out), (1, b""))

    def test_existing_file_is_replaced(self):
        self.write("job.pdf", "before")
        self.assertEqual(self.run_program("job.ps", "-o", "job.pdf").code, 0)
        self.assert_pdf("job.pdf")

    def test_existing_file_outlives_a_job_without_complete_pages(self):
        self.write("job.pdf", "before")
        self.write("job.ps", "%!\nwrong\n")
        self.assertEqual(self.run_program("job.ps", "-o", "job.pdf").code, 1)
        self.assertEqual(self.read("job.pdf"), b"before")
        self.assertEqual(self.files(), ["job.pdf", "job.ps"])

    @support.posix_only
    def test_output_appears_only_when_it_is_complete(self):
        process = self.start_long_job()
        time.sleep(0.2)
        self.assertEqual(self.files(), ["job.ps"])
        process.stdin.close()
        self.assertEqual(process.wait(support.SECONDS), 0)
        self.assertEqual(self.files(), ["job.pdf", "job.ps"])

    @support.posix_only
    def test_killed_program_leaves_nothing_behind(self):
        process = self.start_long_job()
        process.kill()
        process.wait(support.SECONDS)
        process.stdin.close()
        self.assertEqual(self.files(), ["job.ps"])

    @support.posix_only
    def test_new_file_has_usual_permissions(self):
        mask = os.umask(0o027)
        self.addCleanup(os.umask, mask)
        self.run_program("job.ps", "-o", "job.pdf")
        self.assertEqual(stat.S_IMODE(os.stat(self.path("job.pdf")).st_mode), 0o640)

    @support.posix_only
    def test_replaced_file_keeps_its_permissions(self):
        self.write("job.pdf", "before")
        os.chmod(self.path("job.pdf"), 0o604)
        self.run_program("job.ps", "-o", "job.pdf")
        self.assertEqual(stat.S_IMODE(os.stat(self.path("job.pdf")).st_mode), 0o604)

    def test_file_behind_a_link_is_replaced_and_the_link_stays(self):
        os.mkdir(self.path("store"))
        self.write("store/real.pdf", "before")
        os.symlink("store/real.pdf", self.path("job.pdf"))
        self.assertEqual(self.run_program("job.ps", "-o", "job.pdf").code, 0)
        self.assertTrue(os.path.islink(self.path("job.pdf")))
        self.assert_pdf("store/real.pdf")

    def test_device_is_written_and_stays(self):
        self.assertEqual(self.run_program("job.ps", "-o", "/dev/null").code, 0)
        self.assertTrue(stat.S_ISCHR(os.stat("/dev/null").st_mode))

    @support.posix_only
    def test_named_pipe_gets_the_pdf(self):
        os.mkfifo(self.path("pipe"))
        process = subprocess.Popen([support.PROGRAM, *support.DRIVER, "job.ps", "-o", "pipe"], cwd=self.folder)
        data = self.read("pipe")
        self.assertEqual(process.wait(support.SECONDS), 0)
        self.write("out.pdf", data)
        self.assert_pdf("out.pdf")


class OutputErrorTest(support.CommandLineTest):
    def assert_refused(self, output, says, name=None):
        self.write("job.ps", JOB)
        result = self.run_program("job.ps", "-o", output)
        self.assertEqual((result.code, result.out), (4, b""))
        self.assertIn(f"quillpress: {name or output} {says}", result.err)

    def test_folder_that_is_missing(self):
        self.assert_refused("missing/job.pdf", "cannot be written")
        self.assertEqual(self.files(), ["job.ps"])

    def test_folder_that_takes_no_files(self):
        self.assert_refused("/proc/job.pdf", "cannot be written")

    def test_folder_as_output(self):
        self.assert_refused(".", "is a directory")

    def test_device_without_room(self):
        self.assert_refused("/dev/full", "cannot be written")

    def test_full_standard_output(self):
        self.write("job.ps", JOB)
        with open("/dev/full", "wb") as full:
            process = run(self.path("job.ps"), "-o", "-", stdout=full)
        self.assertEqual(process.returncode, 4)
        self.assertIn(b"standard output cannot be written", process.stderr)

    def test_reader_that_goes_away(self):
        self.write("job.ps", JOB)
        reader, writer = os.pipe()
        os.close(reader)
        process = run(self.path("job.ps"), "-o", "-", stdout=writer)
        os.close(writer)
        self.assertEqual(process.returncode, 4)
        self.assertIn(b"standard output cannot be written", process.stderr)

    def test_full_standard_output_for_content(self):
        self.write("job.ps", JOB)
        with open("/dev/full", "wb") as full:
            process = run(self.path("job.ps"), "--content", stdout=full)
        self.assertEqual(process.returncode, 4)

    @support.posix_only
    def test_disk_that_fills_up_on_the_way(self):
        body = "/r {0.1 add dup sin} def 1 1 100000 {r exch r moveto 1 2 lineto stroke} for\n"
        self.write("job.ps", pages(body))
        command = f"ulimit -f 100; trap '' XFSZ; exec {support.PROGRAM} --dialect driver job.ps -o job.pdf"
        process = subprocess.run(["sh", "-c", command], stderr=subprocess.PIPE, cwd=self.folder)
        self.assertEqual(process.returncode, 4)
        message = b"job.pdf cannot be written: the temporary file beside it: File too large"
        self.assertIn(message, process.stderr)
        self.assertEqual(self.files(), ["job.ps"])


if __name__ == "__main__":
    support.main()
