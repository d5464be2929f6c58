"""The check of the includes itself: what it lets through and what it reports."""

import pathlib
import tempfile
import unittest

import include_arrows
from include_arrows import FOLDERS, WINDOWS_HEADER, complaint, complaints, folder_of


class Case(unittest.TestCase):
    def allow(self, file, header, quote='"', beside=()):
        self.assertIsNone(complaint(file, quote, header, {header, *beside}), f"{file} includes {header}")

    def report(self, file, header, quote='"', beside=()):
        self.assertIsNotNone(complaint(file, quote, header, {header, *beside}), f"{file} includes {header}")


class Table(Case):
    def test_every_folder_sees_itself_and_what_its_row_names_and_nothing_else(self):
        for source, visible in FOLDERS.items():
            for target in FOLDERS:
                for suffix in "h", "cpp":
                    decide = self.allow if target == source or target in visible else self.report
                    decide(f"{source}/A.{suffix}", f"{target}/B.h")

    def test_rows_name_only_folders_of_the_table(self):
        for visible in FOLDERS.values():
            self.assertLessEqual(set(visible), set(FOLDERS))

    def test_no_two_folders_see_each_other(self):
        for source, visible in FOLDERS.items():
            for target in visible:
                self.assertNotIn(source, FOLDERS[target])

    def test_the_longest_folder_counts(self):
        self.assertEqual(folder_of("postscript/lib/pdf/Matrix.h"), "postscript/lib/pdf")
        self.assertEqual(folder_of("cli/pdf/Document.h"), "cli/pdf")
        self.assertEqual(folder_of("cli/Program.h"), "cli")
        self.assertIsNone(folder_of("postscript/lib/Matrix.h"))


class Paths(Case):
    def test_relative_path_is_reported(self):
        self.report("postscript/lib/objects/ObjectStack.h", "Ref.h")
        self.report("postscript/lib/objects/ObjectStack.h", "../base/Ex.h")
        self.report("postscript/lib/objects/ObjectStack.h", "postscript/lib/objects/../base/Ex.h")
        self.report("umpd/rules/Text.cpp", "rules/Text.h")

    def test_tests_are_never_seen(self):
        self.report("cli/Program.cpp", "tests/unit/RunInterpreter.h")

    def test_file_in_no_folder_is_reported(self):
        self.assertTrue(list(complaints(pathlib.Path("."), "postscript/lib/Stray.h")))

    def test_a_file_is_read_from_the_project(self):
        with tempfile.TemporaryDirectory() as folder:
            project = pathlib.Path(folder)
            file = project / "postscript/lib/base/Ex.h"
            file.parent.mkdir(parents=True)
            file.write_text('#include "postscript/lib/pdf/Matrix.h"\n  #  include "postscript/lib/base/A.h"\n')
            found = list(complaints(project, "postscript/lib/base/Ex.h"))
            self.assertEqual(len(found), 1)
            self.assertIn("postscript/lib/pdf/Matrix.h", found[0])


class Exceptions(Case):
    def test_exception_of_a_source_holds_for_no_header(self):
        self.allow("postscript/lib/objects/NameObject.cpp", "postscript/lib/interpreter/Interpreter.h")
        self.report("postscript/lib/objects/NameObject.h", "postscript/lib/interpreter/Interpreter.h")

    def test_interpreter_sees_two_headers_of_the_operators(self):
        interpreter = "postscript/lib/interpreter/Interpreter.cpp"
        self.allow(interpreter, "postscript/lib/operators/LanguageOperators.h")
        self.report(interpreter, "postscript/lib/operators/MathOperators.h")

    def test_only_job_sees_one_header_of_the_converter(self):
        self.allow("umpd/job/UmDriver.cpp", "postscript/lib/pdf/PdfObjectList.h")
        self.report("umpd/rules/Text.cpp", "postscript/lib/pdf/PdfObjectList.h")
        self.report("umpd/job/UmDriver.cpp", "postscript/lib/pdf/Postscript2Pdf.h")
        self.allow("umpd/api/JobTable.cpp", "postscript/lib/base/Guarded.h")
        self.report("umpd/job/UmDriver.cpp", "postscript/lib/base/Guarded.h")

    def test_exceptions_name_folders_or_files_of_the_table(self):
        for holder in include_arrows.EXCEPTIONS:
            self.assertTrue(holder in FOLDERS or folder_of(holder))


class Headers(Case):
    def test_public_headers_have_their_users(self):
        self.allow("postscript/lib/api/Converter.cpp", "quillpress/converter.h", "<")
        self.allow("cli/conversion/Converter.cpp", "quillpress/converter.h", "<")
        self.report("cli/content/ContentScanner.cpp", "quillpress/converter.h", "<")
        self.report("postscript/lib/objects/Ref.h", "quillpress/converter.h", "<")
        self.report("postscript/lib/api/Converter.cpp", "quillpress/driver.h", "<")
        self.report("umpd/job/UmDriver.cpp", "quillpress/converter.h", "<")

    def test_windows_header_stays_in_two_files(self):
        self.allow("postscript/lib/base/DebugOutput.cpp", "windows.h", "<")
        self.allow(WINDOWS_HEADER, "windows.h", "<")
        self.report("postscript/lib/objects/Ref.h", "Windows.h", "<")
        self.report("umpd/job/UmDriver.cpp", "windows.h", "<")

    def test_system_headers_stand_beside_it(self):
        self.allow("umpd/spooler/Printer.cpp", "winspool.h", "<", beside=[WINDOWS_HEADER])
        self.report("umpd/spooler/Printer.cpp", "winspool.h", "<")
        self.allow("cli/spool/Spool.cpp", "fcntl.h", "<")

    def test_headers_of_the_language_are_free(self):
        self.allow("umpd/spooler/Printer.cpp", "vector", "<")


if __name__ == "__main__":
    unittest.main()
