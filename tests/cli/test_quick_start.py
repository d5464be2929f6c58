"""The program is in two files: a small one that converts, and a library with all else, loaded when it is needed."""

import os
import pathlib
import re
import shutil
import subprocess

import support

LIBRARIES = pathlib.Path(os.environ["QUILLPRESS_BUILD"]) / "lib"
PAGE = "0 0 50 50 rectfill showpage\n"


class QuickStartTest(support.CommandLineTest):
    dialect = ()

    def run_without_the_rest(self, *arguments):
        """Runs the small file beside the engine alone, and notes in loaded.* what is loaded."""
        os.makedirs(self.path("bin"), exist_ok=True)
        os.makedirs(self.path("lib"), exist_ok=True)
        program = shutil.copy(support.PROGRAM, self.path("bin"))
        shutil.copy(LIBRARIES / "libquillpress-document.so.1", self.path("lib"))
        self.write("job.ps", PAGE)
        environment = {**os.environ, "LD_DEBUG": "files", "LD_DEBUG_OUTPUT": self.path("loaded")}
        process = subprocess.run([program, "job.ps", *arguments], cwd=self.path("."), env=environment,
                                 stdin=subprocess.DEVNULL, capture_output=True, timeout=support.SECONDS)
        return support.Result(process)

    def loaded(self):
        text = "".join(path.read_text() for path in pathlib.Path(self.path(".")).glob("loaded.*"))
        return set(re.findall(r"file=(\S+?)\.so[.\d]* ", text))

    def test_a_pdf_needs_the_engine_and_no_more(self):
        result = self.run_without_the_rest()
        self.assertEqual((result.code, result.err), (0, ""))
        self.assertEqual(len(support.Pdf(self.path("job.pdf")).pages), 1)
        self.assertIn("libquillpress-document", self.loaded())
        self.assertNotIn("libqpdf", self.loaded())
        self.assertNotIn("libquillpress", self.loaded())

    def test_without_the_rest_a_rework_says_what_is_missing(self):
        result = self.run_without_the_rest("--linearize")
        self.assertEqual(result.code, 1)
        self.assertRegex(result.err, r"^quillpress: the rest of the program is missing: .*/libquillpress-command\.so\.\d")
        self.assertFalse(os.path.exists(self.path("job.pdf")))

    def test_both_files_know_the_same_options(self):
        self.write("job.ps", PAGE)
        result = self.run_program("job.ps", "--linearize", "--image-quality", "80")
        self.assertEqual((result.code, result.err), (0, ""))
        self.assertEqual(len(support.Pdf(self.path("job.pdf")).pages), 1)


if __name__ == "__main__":
    support.main()
