"""Memory does not grow with the length of a job."""

import os
import subprocess

import support
from support import pages

# Under a sanitizer freed memory would wait in quarantine, which grows with the job.
SANITIZER = {"ASAN_OPTIONS": "quarantine_size_mb=1:detect_leaks=0:exitcode=99"}
# The peak of a process is known to its parent only, and is that of all its children; so each gets its own.
MEASURE = """
import resource, subprocess, sys
subprocess.run(sys.argv[1:], check=True)
print(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss)
"""


class FlatMemoryTest(support.CommandLineTest):
    def peak(self, *arguments):
        """The most memory, in KiB, that the program has at a time."""
        environment = {**os.environ, **SANITIZER}
        command = ["python3", "-c", MEASURE, support.PROGRAM, *self.dialect, *arguments]
        process = subprocess.run(command, cwd=self.folder, env=environment, capture_output=True, check=True)
        return int(process.stdout)

    def assert_flat(self, short, long):
        self.write("short.ps", short)
        self.write("long.ps", long)
        growth = self.peak("long.ps", "-o", "long.pdf") - self.peak("short.ps", "-o", "short.pdf")
        self.assertLess(growth, 4096)


class MemoryTest(FlatMemoryTest):
    def body(self, lines):
        numbers = range(lines)
        return "".join(f"{n % 613}.{n % 97} {n % 811} moveto {n % 401} 5.5 lineto stroke\n" for n in numbers)

    def test_one_long_page(self):
        self.assert_flat(pages(self.body(60000)), pages(self.body(400000)))

    def test_many_pages(self):
        self.assert_flat(pages(*[self.body(6000)] * 10), pages(*[self.body(6000)] * 70))


class FullLanguageMemoryTest(FlatMemoryTest):
    dialect = ()

    def test_ten_thousand_pages_of_a_short_program(self):
        page = "9 9 moveto 100 {rand 500 mod rand 500 mod lineto} repeat stroke showpage"
        self.assert_flat(f"500 {{{page}}} repeat\n", f"10000 {{{page}}} repeat\n")

    def test_strings_and_dictionaries_are_given_back(self):
        page = "/a 100 string def /d 10 dict def d /a a put /f [1 2 3] def 0 0 9 9 rectfill"
        self.assert_flat(f"50000 {{{page}}} repeat showpage\n", f"400000 {{{page}}} repeat showpage\n")


if __name__ == "__main__":
    support.main()
