"""The check of the includes itself: what it lets through and what it reports."""

import itertools
import unittest

import include_arrows
from include_arrows import complaint, misplaced


class Case(unittest.TestCase):
    def allow(self, file, header, quote='"', beside=()):
        self.assertIsNone(complaint(file, quote, header, {header, *beside}), f"{file} includes {header}")

    def report(self, file, header, quote='"', beside=()):
        self.assertIsNotNone(complaint(file, quote, header, {header, *beside}), f"{file} includes {header}")


class Converter(Case):
    def test_left_is_allowed(self):
        self.allow("postscript/lib/pdf/PathOperators.h", "objects/Ref.h")

    def test_own_folder_is_allowed(self):
        self.allow("postscript/lib/objects/ObjectStack.h", "objects/Ref.h")

    def test_right_is_reported(self):
        self.report("postscript/lib/objects/ObjectStack.h", "pdf/Matrix.h")

    def test_exception_holds_for_the_source_only(self):
        self.allow("postscript/lib/objects/NameObject.cpp", "interpreter/Interpreter.h")
        self.report("postscript/lib/objects/NameObject.h", "interpreter/Interpreter.h")

    def test_interpreter_sees_two_headers_of_the_operators(self):
        self.allow("postscript/lib/interpreter/Interpreter.cpp", "operators/LanguageOperators.h")
        self.report("postscript/lib/interpreter/Interpreter.cpp", "operators/MathOperators.h")

    def test_relative_path_is_reported(self):
        self.report("postscript/lib/objects/ObjectStack.h", "Ref.h")
        self.report("postscript/lib/objects/ObjectStack.h", "../base/Ex.h")

    def test_windows_header_stays_in_one_source(self):
        self.allow("postscript/lib/base/DebugOutput.cpp", "windows.h", "<")
        self.report("postscript/lib/objects/Ref.h", "Windows.h", "<")

    def test_driver_is_never_seen(self):
        self.report("postscript/lib/api/Exports.cpp", "job/UmDriver.h")
        self.report("postscript/lib/api/Exports.cpp", "win32/Windows.h")
        self.report("postscript/lib/api/Exports.cpp", "umpd/job/UmDriver.h")
        self.report("postscript/lib/api/Exports.cpp", "quillpress/driver.h")
        self.allow("postscript/lib/api/Exports.cpp", "quillpress/converter.h")


class Driver(Case):
    # From left to right; those of one group do not see each other.
    GROUPS = [["win32"], ["spooler"], ["settings"], ["metadata", "launcher", "output"], ["job"], ["exports"]]

    def test_every_folder_has_its_place(self):
        self.assertEqual(sorted(itertools.chain(*self.GROUPS)), sorted(include_arrows.DRIVER_FOLDERS))

    def test_only_left_and_own_are_allowed(self):
        for (i, sources), (j, targets) in itertools.product(enumerate(self.GROUPS), repeat=2):
            for source, target in itertools.product(sources, targets):
                for suffix in "h", "cpp":
                    decide = self.allow if j < i or source == target else self.report
                    decide(f"umpd/{source}/A.{suffix}", f"{target}/B.h")

    def test_relative_path_is_reported(self):
        self.report("umpd/win32/Text.cpp", "Text.h")
        self.report("umpd/job/UmDriver.cpp", "../win32/Text.h")
        self.report("umpd/job/UmDriver.cpp", "umpd/win32/Text.h")

    def test_only_job_sees_one_header_of_the_converter(self):
        self.allow("umpd/job/ConverterObjects.cpp", "pdf/PdfObjectList.h")
        self.report("umpd/exports/JobExports.cpp", "pdf/PdfObjectList.h")
        self.report("umpd/job/ConverterObjects.cpp", "pdf/Postscript2Pdf.h")
        self.report("umpd/job/ConverterObjects.cpp", "base/Ex.h")

    def test_only_exports_sees_its_public_header(self):
        self.allow("umpd/exports/JobExports.cpp", "quillpress/driver.h")
        self.report("umpd/job/UmDriver.cpp", "quillpress/driver.h")
        self.report("umpd/exports/JobExports.cpp", "quillpress/converter.h")

    def test_launcher_program_is_not_seen(self):
        self.report("umpd/launcher/LauncherProxy.cpp", "tools/launcher/Message.h")

    def test_windows_header_comes_through_one_header(self):
        self.allow("umpd/win32/Windows.h", "windows.h", "<")
        self.report("umpd/win32/Text.cpp", "windows.h", "<")
        self.report("umpd/win32/Text.cpp", "Windows.h", "<")
        self.report("umpd/job/UmDriver.h", "windows.h", "<")

    def test_other_system_headers_stand_beside_it(self):
        self.allow("umpd/win32/ShellFolders.cpp", "shlobj.h", "<", beside=["win32/Windows.h"])
        self.report("umpd/win32/ShellFolders.cpp", "shlobj.h", "<")
        self.allow("umpd/win32/Text.cpp", "string", "<")


class Launcher(Case):
    def test_itself_and_win32_are_allowed(self):
        self.allow("tools/launcher/Launcher.cpp", "tools/launcher/Message.h")
        self.allow("tools/launcher/Launcher.cpp", "win32/Windows.h")

    def test_the_channel_is_allowed(self):
        self.allow("tools/launcher/Message.h", "launcher/LauncherStruct.h")
        self.allow("tools/launcher/Receiver.h", "launcher/ChannelNames.h")

    def test_everything_else_is_reported(self):
        self.report("tools/launcher/Receiver.cpp", "launcher/LauncherProxy.h")
        self.report("tools/launcher/Receiver.cpp", "settings/DriverSettings.h")
        self.report("tools/launcher/Receiver.cpp", "pdf/PdfObjectList.h")
        self.report("tools/launcher/Receiver.cpp", "quillpress/driver.h")
        self.report("tools/launcher/Receiver.cpp", "Receiver.h")
        self.report("tools/launcher/Receiver.cpp", "windows.h", "<")
        self.report("tools/launcher/Receiver.cpp", "shellapi.h", "<")


class Places(unittest.TestCase):
    def test_known_folders_are_allowed(self):
        for file in "postscript/lib/pdf/Matrix.h", "umpd/job/UmDriver.h", "tools/launcher/Log.h":
            self.assertIsNone(misplaced(file))

    def test_others_are_reported(self):
        for file in "postscript/lib/Matrix.h", "postscript/lib/job/Matrix.h", "umpd/UmDriver.h", "umpd/pdf/A.h":
            self.assertIsNotNone(misplaced(file))


unittest.main()
