"""Jobs that mean harm cost neither endless time nor all of the memory."""

import subprocess
import time

import support
import test_memory
from support import line, pages

# Fails once inside a loop, and then never ends.
LOOP = "/go true def {go {/go false def wrong} if} loop\n"


class HostileTest(support.CommandLineTest):
    peak = test_memory.MemoryTest.peak

    def setUp(self):
        super().setUp()
        self.begin = time.monotonic()

    def assert_quick(self, seconds=60):
        self.assertLess(time.monotonic() - self.begin, seconds)

    def test_recovery_does_not_wait_for_a_loop_without_an_end(self):
        job = pages(LOOP, "narrow\n", line(3), prologue="/narrow {5 setlinewidth} def\n")
        pdf, messages = self.convert_with_error(job, "--keep-going")
        self.assertEqual(pdf.words(0)[1], "5")
        self.assertEqual(len(pdf.pages), 2)
        self.assertEqual(messages.count("page 1"), 1)
        self.assert_quick()

    def test_counting_texts_does_not_wait_for_a_loop_without_an_end(self):
        pdf, _ = self.convert_with_error(pages(line(1), LOOP))
        self.assertEqual(len(pdf.pages), 1)
        self.assert_quick()

    def test_line_of_printer_language_is_not_kept(self):
        blocks = 2000

        def feed(process):
            process.stdin.write(b"@PJL COMMENT ")
            for _ in range(blocks):
                process.stdin.write(b"x" * 65536)
            process.stdin.write(b"\n%!\n1 setlinewidth\n")
            process.stdin.close()

        process = subprocess.Popen([support.PROGRAM, "-", "--content"], stdin=subprocess.PIPE,
                                   stdout=subprocess.PIPE, cwd=self.folder)
        feed(process)
        self.assertEqual(process.stdout.read(), b"1 w ")
        process.stdout.close()
        self.assertEqual(process.wait(support.SECONDS), 0)
        self.assert_quick()

    def test_memory_does_not_grow_with_a_line_of_printer_language(self):
        self.write("short.ps", "@PJL COMMENT x\n%!\n1 setlinewidth\n")
        self.write("long.ps", "@PJL COMMENT " + "x" * 50000000 + "\n%!\n1 setlinewidth\n")
        growth = self.peak("long.ps", "-o", "long.pdf") - self.peak("short.ps", "-o", "short.pdf")
        self.assertLess(growth, 4096)
        self.assert_quick()

    def test_many_short_lines_of_printer_language(self):
        self.write("job.ps", "@PJL\n" * 2000000 + "%!\n1 setlinewidth\n")
        self.assertEqual(self.run_program("job.ps", "-o", "job.pdf").code, 0)
        self.assert_quick()

    def test_long_path_that_is_saved_and_turned_thousands_of_times(self):
        path = "0 0 moveto 20000 {1 1 lineto} repeat "
        self.write("plain.ps", "%!\n" + path + "20000 {gsave} repeat 20000 {1 0 translate} repeat newpath\n")
        self.assertLess(self.peak("plain.ps", "-o", "plain.pdf"), 400 * 1024)
        self.assert_quick()


if __name__ == "__main__":
    support.main()
