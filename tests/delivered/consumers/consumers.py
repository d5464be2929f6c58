"""Programs of strangers build with what is installed, or with the sources as a part of their own, and run."""

import json
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

HERE = pathlib.Path(__file__).resolve().parent
PROJECT = HERE.parents[2]
BUILD = pathlib.Path(os.environ["QUILLPRESS_BUILD"])
CMAKE = os.environ["CMAKE_COMMAND"]
COMPILERS = {"gcc": "g++", "clang-14": "clang++-14"}

CONVERTER_SAYS = "2 w "
DOCUMENT_SAYS = "%PDF- 2\n"
DEMO_SAYS = "2 pages\n"


def run(*command, folder=None, **environment):
    process = subprocess.run([str(word) for word in command], cwd=folder, env={**os.environ, **environment},
                             capture_output=True, text=True, timeout=300)
    if process.returncode != 0:
        raise AssertionError(f"{command}: status {process.returncode}\n{process.stdout}{process.stderr}")
    return process.stdout


def setUpModule():
    global scratch, prefix, libraries
    folder = tempfile.TemporaryDirectory(prefix="quillpress-test-")
    unittest.addModuleCleanup(folder.cleanup)
    scratch = pathlib.Path(folder.name)
    run(CMAKE, "--install", BUILD, "--prefix", scratch / "first", "--strip")
    # Nothing remembers where it was installed.
    prefix = (scratch / "first").rename(scratch / "second")
    libraries = next(prefix.rglob("libquillpress.so")).parent


def configure(source, name, *options, **environment):
    folder = scratch / name
    run(CMAKE, "-S", source, "-B", folder, "-G", "Ninja", f"-DCMAKE_PREFIX_PATH={prefix}", *options, **environment)
    return folder


class FindPackage(unittest.TestCase):
    def test_programs_with_each_library(self):
        for c, cpp in COMPILERS.items():
            with self.subTest(compiler=c):
                folder = configure(HERE, "package-" + c, f"-DCMAKE_C_COMPILER={c}", f"-DCMAKE_CXX_COMPILER={cpp}")
                run(CMAKE, "--build", folder)
                for kind in ("", "-static"):
                    self.assertEqual(run(folder / ("converter" + kind)), CONVERTER_SAYS)
                    self.assertEqual(run(folder / ("document" + kind)), DOCUMENT_SAYS)
                self.assertEqual(run(folder / "both-static"), DOCUMENT_SAYS)

    def test_another_major_version_is_refused(self):
        with self.assertRaisesRegex(AssertionError, "requested version"):
            configure(HERE, "too-new", "-DWANTED_VERSION=2.0")


class PkgConfig(unittest.TestCase):
    def flags(self, *arguments):
        return run("pkg-config", *arguments, PKG_CONFIG_PATH=str(libraries / "pkgconfig")).split()

    def test_c_with_the_shared_libraries(self):
        for compiler in COMPILERS:
            with self.subTest(compiler=compiler):
                converter = scratch / ("converter-" + compiler)
                run(compiler, "-std=c11", "-pedantic-errors", HERE / "converter.c", "-o", converter,
                    *self.flags("--cflags", "--libs", "quillpress"))
                self.assertEqual(run(converter, LD_LIBRARY_PATH=str(libraries)), CONVERTER_SAYS)
                convert = scratch / ("convert-" + compiler)
                run(compiler, "-std=c11", "-pedantic-errors", PROJECT / "examples/convert.c", "-o", convert,
                    *self.flags("--cflags", "--libs", "quillpress-document"))
                job, pdf = PROJECT / "examples/demo.ps", scratch / "demo.pdf"
                self.assertEqual(DEMO_SAYS, run(convert, job, pdf, LD_LIBRARY_PATH=str(libraries)))
                self.assertEqual(pdf.read_bytes()[:5], b"%PDF-")

    def test_programs_with_the_static_libraries(self):
        """Linked by a C compiler, so that what C++ needs must be among the flags."""
        run("gcc", "-static", HERE / "converter.c", "-o", scratch / "alone",
            *self.flags("--static", "--cflags", "--libs", "quillpress"))
        self.assertEqual(run(scratch / "alone"), CONVERTER_SAYS)
        # Of what this one needs, Debian has no archives.
        flags = self.flags("--static", "--cflags", "--libs", "quillpress-document")
        flags[flags.index("-lquillpress-document")] = "-l:libquillpress-document.a"
        run("gcc", PROJECT / "examples/convert.c", "-o", scratch / "convert", *flags)
        self.assertEqual(DEMO_SAYS, run(scratch / "convert", PROJECT / "examples/demo.ps", scratch / "demo.pdf"))


class SharedLibraries(unittest.TestCase):
    def test_programs_ask_for_the_major_version(self):
        for name in ("libquillpress", "libquillpress-document"):
            self.assertIn(f"{name}.so.1\n", run("objdump", "-p", libraries / (name + ".so")))
            self.assertEqual(os.readlink(libraries / (name + ".so")), name + ".so.1")

    def test_the_library_is_small(self):
        self.assertLess((libraries / "libquillpress.so").stat().st_size, 1_000_000)

    def test_python(self):
        output = run("python3", PROJECT / "examples/convert.py", PROJECT / "examples/demo.ps", scratch / "python.pdf",
                     LD_LIBRARY_PATH=str(libraries))
        self.assertEqual(output, DEMO_SAYS)
        self.assertEqual((scratch / "python.pdf").read_bytes()[:5], b"%PDF-")


class Embedding(unittest.TestCase):
    """By clang, as GCC is what the sources are built with anyway, and in one piece, which is quick."""

    def embed(self, name, *options):
        return configure(HERE / "embedding", name, f"-DQUILLPRESS={PROJECT}", "-DCMAKE_BUILD_TYPE=Debug",
                         "-DCMAKE_CXX_FLAGS_DEBUG=-O0", "-DCMAKE_UNITY_BUILD=ON", "-DCMAKE_UNITY_BUILD_BATCH_SIZE=0",
                         "-DCMAKE_C_COMPILER=clang-14", "-DCMAKE_CXX_COMPILER=clang++-14", *options)

    def test_by_add_subdirectory(self):
        folder = self.embed("embedded")
        rules = (folder / "build.ninja").read_text()
        for unwanted in ("-Werror", "quillpress-cli", "gtest", "launcher_rules"):
            self.assertNotIn(unwanted, rules)
        tests = json.loads(run("ctest", "--show-only=json-v1", folder=folder))["tests"]
        self.assertEqual([test["name"] for test in tests], ["own"])
        # The converter alone: the rest takes minutes, and its build is no other.
        run(CMAKE, "--build", folder, "--target", "converter")
        self.assertEqual(run(folder / "converter"), CONVERTER_SAYS)

    def test_by_fetch_content_and_with_the_command_line(self):
        folder = self.embed("fetched", "-DFETCH=ON", "-DQUILLPRESS_COMMAND_LINE=ON")
        rules = (folder / "build.ninja").read_text()
        self.assertIn("quillpress-cli", rules)
        self.assertNotIn("gtest", rules)


if __name__ == "__main__":
    for compiler in COMPILERS:
        if shutil.which(compiler) is None:
            raise SystemExit(f"{compiler} is missing: scripts/setup installs it")
    unittest.main()
