"""What the output is worth when system calls fail and signals come: whole or not at all, and no name left."""

import errno
import os
import signal
import subprocess
import time

import support
from support import line, pages

JOB = pages(line(1), line(2))
LIBRARY = os.environ["QUILLPRESS_FAULTS_LIBRARY"]
# A sanitizer wants to be loaded first.
SANITIZER = os.environ.get("ASAN_OPTIONS", "") + ":verify_asan_link_order=0"


class MachineFailureTest(support.CommandLineTest):
    def setUp(self):
        super().setUp()
        self.write("job.ps", JOB)

    def run_with(self, *arguments, **faults):
        """Runs the program while the calls named by `faults` fail with an error or bring a signal."""
        text = ",".join(f"{call}={number}" for call, number in faults.items())
        environment = {"LD_PRELOAD": LIBRARY, "QUILLPRESS_FAULTS": text, "ASAN_OPTIONS": SANITIZER}
        return self.run_program(*(arguments or ("job.ps", "-o", "job.pdf")), **environment)

    def assert_pdf(self):
        self.assertEqual(self.files(), ["job.pdf", "job.ps"])
        self.assertEqual(len(support.Pdf(self.path("job.pdf")).pages), 2)

    def assert_untouched(self, result, says):
        self.assertEqual(result.code, 4)
        self.assertIn("quillpress: job.pdf " + says, result.err)
        self.assertEqual(self.files(), ["job.pdf", "job.ps"])
        self.assertEqual(self.read("job.pdf"), b"before")


class FailingCallTest(MachineFailureTest):
    def setUp(self):
        super().setUp()
        self.write("job.pdf", "before")

    def test_file_system_without_nameless_files(self):
        self.assertEqual(self.run_with(nameless=errno.EOPNOTSUPP).code, 0)
        self.assert_pdf()

    def test_disk_that_cannot_keep_the_file(self):
        self.assert_untouched(self.run_with(fsync=errno.EIO), "cannot be written: Input/output error")

    def test_disk_that_cannot_keep_a_named_file(self):
        result = self.run_with(nameless=errno.EOPNOTSUPP, fsync=errno.EIO)
        self.assert_untouched(result, "cannot be written: Input/output error")

    def test_file_system_that_cannot_promise(self):
        self.assertEqual(self.run_with(fsync=errno.EINVAL).code, 0)
        self.assert_pdf()

    def test_name_that_cannot_be_given(self):
        self.assert_untouched(self.run_with(linkat=errno.EACCES), "cannot be put in place: Permission denied")

    def test_place_that_cannot_be_taken(self):
        self.assert_untouched(self.run_with(rename=errno.EACCES), "cannot be put in place: Permission denied")

    def test_named_file_that_cannot_take_its_place(self):
        result = self.run_with(nameless=errno.EOPNOTSUPP, rename=errno.EACCES)
        self.assert_untouched(result, "cannot be put in place: Permission denied")


class SignalTest(MachineFailureTest):
    def setUp(self):
        super().setUp()
        # Who runs the tests may have chosen to ignore some, and the program would do so too.
        for number in (signal.SIGTERM, signal.SIGHUP, signal.SIGINT):
            self.addCleanup(signal.signal, number, signal.signal(number, signal.SIG_DFL))

    def assert_ended(self, result, number):
        self.assertEqual(result.code, -number)
        self.assertEqual([name for name in self.files() if name not in ("job.ps", "job.pdf")], [])

    def test_signal_while_the_file_is_written(self):
        for number in (signal.SIGTERM, signal.SIGHUP, signal.SIGINT):
            self.assert_ended(self.run_with(fsync=-number), number)
            self.assertEqual(self.files(), ["job.ps"])

    def test_signal_while_a_named_file_is_written(self):
        for number in (signal.SIGTERM, signal.SIGHUP, signal.SIGINT):
            self.assert_ended(self.run_with(nameless=errno.EOPNOTSUPP, fsync=-number), number)
            self.assertEqual(self.files(), ["job.ps"])

    def test_signal_while_the_file_gets_its_name(self):
        self.assert_ended(self.run_with(linkat=-signal.SIGTERM), signal.SIGTERM)
        self.assertEqual(self.files(), ["job.ps"])

    def test_signal_while_a_replacement_gets_its_name(self):
        self.write("job.pdf", "before")
        self.assert_ended(self.run_with(linkat=-signal.SIGTERM), signal.SIGTERM)
        self.assertEqual(self.read("job.pdf"), b"before")

    def test_signal_while_a_replacement_takes_its_place(self):
        self.write("job.pdf", "before")
        self.assert_ended(self.run_with(rename=-signal.SIGTERM), signal.SIGTERM)
        self.assert_pdf()

    def test_signal_while_the_job_is_read(self):
        for faults in ("", f"nameless={errno.EOPNOTSUPP}"):
            environment = {**os.environ, "LD_PRELOAD": LIBRARY, "QUILLPRESS_FAULTS": faults,
                           "ASAN_OPTIONS": SANITIZER}
            command = [support.PROGRAM, *support.DRIVER, "-", "-o", "job.pdf"]
            process = subprocess.Popen(command, cwd=self.folder, stdin=subprocess.PIPE, env=environment)
            process.stdin.write(JOB.encode() * 2000)
            process.stdin.flush()
            time.sleep(0.1)
            process.terminate()
            self.assertEqual(process.wait(support.SECONDS), -signal.SIGTERM)
            process.stdin.close()
            self.assertEqual(self.files(), ["job.ps"])

    def test_ignored_signal_changes_nothing(self):
        environment = {**os.environ, "LD_PRELOAD": LIBRARY, "ASAN_OPTIONS": SANITIZER,
                       "QUILLPRESS_FAULTS": f"nameless={errno.EOPNOTSUPP},fsync=-{signal.SIGHUP.value}"}
        command = f"trap '' HUP; exec {support.PROGRAM} --dialect driver job.ps -o job.pdf"
        process = subprocess.run(["sh", "-c", command], cwd=self.folder, env=environment, timeout=support.SECONDS)
        self.assertEqual(process.returncode, 0)
        self.assert_pdf()

    def test_limit_on_the_size_of_files_is_an_output_error(self):
        body = "/r {0.1 add dup sin} def 1 1 100000 {r exch r moveto 1 2 lineto stroke} for\n"
        self.write("job.ps", pages(body))
        for output in ("job.pdf", "-"):
            command = f"ulimit -f 100; exec {support.PROGRAM} job.ps --content -o {output} > other"
            process = subprocess.run(["sh", "-c", command], stderr=subprocess.PIPE, cwd=self.folder)
            self.assertEqual(process.returncode, 4)
            self.assertIn(b"cannot be written", process.stderr)
            self.assertEqual(self.files(), ["job.ps", "other"])


class StandardStreamTest(MachineFailureTest):
    def run_shell(self, command):
        process = subprocess.run(["sh", "-c", command.replace("quillpress", " ".join([support.PROGRAM, *support.DRIVER]))], cwd=self.folder,
                                 stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=support.SECONDS)
        return support.Result(process)

    def test_closed_standard_error_does_not_harm_the_output(self):
        self.write("job.ps", JOB.replace("%%Trailer", "(text) show wrong\n%%Trailer"))
        self.assertEqual(self.run_shell("quillpress job.ps -o job.pdf --messages --objects 2>&-").code, 1)
        self.assertEqual(len(support.Pdf(self.path("job.pdf")).pages), 1)

    def test_closed_standard_output_loses_nothing_in_silence(self):
        result = self.run_shell("quillpress job.ps -o - >&-")
        self.assertEqual((result.code, result.err),
                         (4, "quillpress: standard output cannot be written: Bad file descriptor\n"))

    def test_closed_standard_output_does_not_matter_to_a_file(self):
        self.assertEqual(self.run_shell("quillpress job.ps -o job.pdf >&- 2>&- <&-").code, 0)
        self.assert_pdf()

    def test_closed_standard_input_is_an_input_error(self):
        result = self.run_shell("quillpress - -o job.pdf <&-")
        self.assertEqual((result.code, result.err),
                         (3, "quillpress: standard input cannot be read: Bad file descriptor\n"))

    def test_standard_output_that_is_the_job_is_refused(self):
        for command in ("quillpress job.ps -o - >> job.ps", "quillpress - < job.ps >> job.ps",
                        "quillpress job.ps --content 1<> job.ps"):
            result = self.run_shell(command)
            self.assertEqual((result.code, result.err),
                             (2, "quillpress: the output would replace the job itself\n"))
            self.assertEqual(self.read("job.ps"), JOB.encode())

    def test_job_and_output_may_be_one_device(self):
        self.assertEqual(self.run_shell("quillpress job.ps -o /dev/null < /dev/null").code, 0)


if __name__ == "__main__":
    support.main()
