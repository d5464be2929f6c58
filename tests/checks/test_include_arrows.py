"""The check of the includes itself: what it lets through and what it reports."""

import unittest

from include_arrows import complaint


class Arrows(unittest.TestCase):
    def test_left_is_allowed(self):
        self.assertIsNone(complaint("pdf/PathOperators.h", '"', "objects/Ref.h"))

    def test_own_folder_is_allowed(self):
        self.assertIsNone(complaint("objects/ObjectStack.h", '"', "objects/Ref.h"))

    def test_right_is_reported(self):
        self.assertIsNotNone(complaint("objects/ObjectStack.h", '"', "pdf/Matrix.h"))

    def test_exception_holds_for_the_source_only(self):
        self.assertIsNone(complaint("objects/NameObject.cpp", '"', "interpreter/Interpreter.h"))
        self.assertIsNotNone(complaint("objects/NameObject.h", '"', "interpreter/Interpreter.h"))

    def test_interpreter_sees_two_headers_of_the_operators(self):
        self.assertIsNone(complaint("interpreter/Interpreter.cpp", '"', "operators/LanguageOperators.h"))
        self.assertIsNotNone(complaint("interpreter/Interpreter.cpp", '"', "operators/MathOperators.h"))

    def test_relative_path_is_reported(self):
        self.assertIsNotNone(complaint("objects/ObjectStack.h", '"', "Ref.h"))
        self.assertIsNotNone(complaint("objects/ObjectStack.h", '"', "../base/Ex.h"))

    def test_windows_header_stays_in_one_source(self):
        self.assertIsNone(complaint("base/DebugOutput.cpp", "<", "windows.h"))
        self.assertIsNotNone(complaint("objects/Ref.h", "<", "Windows.h"))


unittest.main()
