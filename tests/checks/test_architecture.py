"""The check of docs/architecture.md itself: what it takes for a function and what it misses."""

import unittest

from architecture import exists, names

DOCUMENT = """# Title
`outside`
## The road of a chunk
1. `first`, then `Class::second`: `a file.cpp` is no name.
## Else
`elsewhere`
## The road of a job
`third`
"""


class Names(unittest.TestCase):
    def test_only_roads_count(self):
        self.assertEqual(names(DOCUMENT), ["first", "Class::second", "third"])


class Existence(unittest.TestCase):
    def test_function_is_found(self):
        self.assertTrue(exists("first", ["int first(int);"]))
        self.assertFalse(exists("first", ["int firstOne(int); int first;"]))

    def test_function_of_a_class_is_found_in_a_source(self):
        self.assertTrue(exists("Class::second", ["void Class::second() {}"]))
        self.assertFalse(exists("Class::second", ["void Other::second() {}"]))

    def test_function_of_a_class_is_found_in_a_header(self):
        self.assertTrue(exists("Class::second", ["class Class final {\n void second() {}\n};"]))
        self.assertFalse(exists("Class::second", ["class Class;\nvoid second();"]))


if __name__ == "__main__":
    unittest.main()
