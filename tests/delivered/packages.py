"""The Debian packages: what is in each, what each needs, and that the program runs out of them."""

import os
import pathlib
import re
import subprocess
import tempfile
import unittest

BUILD = os.environ["QUILLPRESS_BUILD"]
JOB = pathlib.Path(__file__).resolve().parents[2] / "examples/demo.ps"


def run(*command, **environment):
    process = subprocess.run([str(word) for word in command], cwd=BUILD, env={**os.environ, **environment},
                             capture_output=True, text=True, timeout=300)
    if process.returncode != 0:
        raise AssertionError(f"{command}: status {process.returncode}\n{process.stdout}{process.stderr}")
    return process.stdout


def setUpModule():
    global packages, root
    folder = tempfile.TemporaryDirectory(prefix="quillpress-test-")
    unittest.addModuleCleanup(folder.cleanup)
    run(os.environ["CPACK_COMMAND"], "-G", "DEB", "-B", folder.name)
    packages = {path.name.split("_")[0]: path for path in pathlib.Path(folder.name).glob("*.deb")}
    root = pathlib.Path(folder.name) / "root"
    for package in packages.values():
        run("dpkg-deb", "-x", package, root)


def files(package):
    """The packed files, without the folder that is named after the machine's architecture."""
    listing = run("dpkg-deb", "--contents", packages[package]).splitlines()
    for line in listing:
        if not re.match(r"drwxr-xr-x|-rwxr-xr-x|-rw-r--r--|lrwxrwxrwx", line) or line.split()[1] != "root/root":
            raise AssertionError("permissions: " + line)
    names = [line.split()[5] for line in listing if not line.startswith("d")]
    return sorted(re.sub(r"/lib/[^/]*-linux-gnu[^/]*/", "/lib/", name) for name in names)


def field(package, name):
    return run("dpkg-deb", "--field", packages[package], name).strip()


def documents(package):
    return [f"./usr/share/doc/{package}/{name}" for name in ("changelog.gz", "copyright")]


class Packages(unittest.TestCase):
    def test_there_are_three(self):
        self.assertEqual(sorted(packages), ["libquillpress-dev", "libquillpress1", "quillpress"])
        self.assertEqual({field(package, "Version") for package in packages}, {"1.0.0"})

    def test_the_libraries(self):
        names = [f"./usr/lib/lib{name}.so.1{rest}" for name in ("quillpress-document", "quillpress")
                 for rest in ("", ".0.0")]
        self.assertEqual(files("libquillpress1"), sorted(names + documents("libquillpress1")))
        needed = field("libquillpress1", "Depends")
        self.assertRegex(needed, r"libstdc\+\+6 .*zlib1g")
        self.assertNotIn("qpdf", needed)

    def test_linkers_learn_of_the_libraries(self):
        control = root.parent / "control"
        run("dpkg-deb", "--control", packages["libquillpress1"], control)
        self.assertEqual(sorted(path.name for path in control.iterdir()), ["control", "md5sums", "shlibs", "triggers"])
        self.assertEqual(sorted((control / "shlibs").read_text().split("\n"))[-2:],
                         ["libquillpress 1 libquillpress1 (>= 1.0.0)",
                          "libquillpress-document 1 libquillpress1 (>= 1.0.0)"])

    def test_what_programs_are_built_with(self):
        names = files("libquillpress-dev")
        for name in ("include/quillpress/converter.h", "include/quillpress/document.h", "lib/libquillpress.a",
                     "lib/libquillpress.so", "lib/libquillpress-document.a", "lib/libquillpress-document.so",
                     "lib/pkgconfig/quillpress.pc", "lib/pkgconfig/quillpress-document.pc",
                     "lib/cmake/Quillpress/QuillpressConfig.cmake"):
            self.assertIn("./usr/" + name, names)
        self.assertIn("libquillpress1 (= 1.0.0)", field("libquillpress-dev", "Depends"))

    def test_the_command_line(self):
        names = files("quillpress")
        for name in ("bin/quillpress", "lib/libquillpress-command.so.1.0.0", "lib/cups/filter/pstopdf-quillpress",
                     "share/cups/mime/quillpress.convs", "share/man/man1/quillpress.1.gz",
                     "share/zsh/site-functions/_quillpress", "share/bash-completion/completions/quillpress",
                     "share/doc/quillpress/README.md"):
            self.assertIn("./usr/" + name, names)
        self.assertRegex(field("quillpress", "Depends"), r"libquillpress1 \(= 1\.0\.0\).*libqpdf")
        programs = [root / "usr" / name for name in ("bin/quillpress", "lib/cups/filter/pstopdf-quillpress")]
        for program in [*programs, *root.rglob("libquillpress-command.so.*")]:
            self.assertNotRegex(run("objdump", "-p", program), "RPATH|RUNPATH")

    def test_nothing_has_debug_information(self):
        for path in [*root.rglob("*.so.1"), *root.rglob("*.so.1.0.0"), *root.rglob("*.a"), root / "usr/bin/quillpress"]:
            self.assertNotIn(".debug_info", run("objdump", "-h", path), path)

    def test_the_program_runs(self):
        libraries = next(root.rglob("libquillpress.so.1")).parent
        run(root / "usr/bin/quillpress", JOB, "-o", root / "demo.pdf", LD_LIBRARY_PATH=str(libraries))
        self.assertEqual((root / "demo.pdf").read_bytes()[:5], b"%PDF-")
        run(root / "usr/bin/quillpress", JOB, "-o", root / "demo.pdf", "--linearize", LD_LIBRARY_PATH=str(libraries))
        self.assertIn(b"/Linearized", (root / "demo.pdf").read_bytes()[:200])


if __name__ == "__main__":
    unittest.main()
