"""The list of what is kept finds every mark, and fails for one without a test."""

import pathlib
import tempfile
import unittest

import kept

SOURCE = """// Kept: two lines of one
// reason (stack/pop.ps). More text.
int a;  // Kept: behind code (PopTest.IsKept).
int b;
"""


class KeptTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.project = pathlib.Path(self.folder.name)
        self.write("postscript/lib/a.cpp", SOURCE)
        self.write("tests/scripts/stack/pop.ps", "% Kept: one\n1 pop % expect:\n")
        self.write("tests/unit/PopTest.cpp", "TEST(PopTest, IsKept) {}\n")

    def write(self, name, text):
        path = self.project / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)

    def problems(self):
        problems = []
        self.text = kept.list_of(self.project, problems)
        return problems

    def test_every_mark_is_a_row(self):
        self.assertEqual(self.problems(), [])
        rows = self.text.removeprefix(kept.HEAD).splitlines()
        self.assertEqual(rows, [
            "| postscript/lib/a.cpp | two lines of one reason | stack/pop.ps |",
            "| postscript/lib/a.cpp | behind code | PopTest.IsKept |"])

    def test_a_mark_without_a_test_fails(self):
        self.write("postscript/lib/b.h", "// Kept: for no reason.\n")
        self.assertEqual(len(self.problems()), 1)

    def test_a_script_that_does_not_say_so_fails(self):
        self.write("tests/scripts/stack/pop.ps", "1 pop % expect:\n")
        self.assertEqual(len(self.problems()), 1)

    def test_a_test_that_is_not_there_fails(self):
        self.write("tests/unit/PopTest.cpp", "TEST(PopTest, IsGone) {}\n")
        self.assertEqual(len(self.problems()), 1)


if __name__ == "__main__":
    unittest.main()
