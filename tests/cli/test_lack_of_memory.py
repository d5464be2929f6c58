"""A job that wants more memory than there is."""

import resource
import subprocess

import support
from support import line, pages

LIMIT = 512 * 1024 * 1024


class LackOfMemoryTest(support.CommandLineTest):
    def run_limited(self, job, *arguments):
        self.write("job.ps", job)
        process = subprocess.run(
            [support.PROGRAM, *support.DRIVER, "job.ps", "-o", "job.pdf", *arguments], capture_output=True, cwd=self.folder,
            timeout=support.SECONDS, preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (LIMIT, LIMIT)))
        return support.Result(process)

    def test_lack_of_memory_has_its_own_words(self):
        result = self.run_limited(pages(line(1), "2000000000 string pop\n"))
        self.assertEqual(result.code, 1)
        self.assertRegex(result.err, r"^quillpress: job\.ps: page 2, in the \d+ bytes from byte \d+: out of memory\n")

    def test_pages_before_it_are_written(self):
        self.run_limited(pages(line(1), "2000000000 string pop\n"))
        self.assertEqual(len(support.Pdf(self.path("job.pdf")).pages), 1)

    def test_later_pages_go_on(self):
        result = self.run_limited(pages(line(1), "2000000000 string pop\n", line(3)), "--keep-going")
        self.assertEqual(result.code, 1)
        self.assertEqual(len(support.Pdf(self.path("job.pdf")).pages), 2)


if __name__ == "__main__":
    support.main()
