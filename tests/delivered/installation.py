"""What is installed works where it is put: the command line converts, and a stranger's program builds and runs."""

import argparse
import pathlib
import subprocess
import sys
import tempfile

PROGRAM = """
#include <quillpress/converter.h>
int main(void) {
  const float matrix[6] = {1, 0, 0, 1, 0, 0};
  void *converter = PSOpen(matrix);
  int length = -1;
  const char *content = PSConvertToPdf(converter, "2 setlinewidth ", &length);
  const int is_right = content != 0 && length == 4;
  PSClose(converter);
  return is_right ? 0 : 1;
}
"""


def run(*command):
    process = subprocess.run([str(word) for word in command], capture_output=True, text=True, timeout=60)
    if process.returncode != 0:
        sys.exit(f"{command}: status {process.returncode}\n{process.stdout}{process.stderr}")
    return process.stdout


def only(folder, name):
    found = [path for path in folder.rglob(name) if path.is_file()]
    if len(found) != 1:
        sys.exit(f"{name}: installed {len(found)} times")
    return found[0]


def look_at_manuals(prefix):
    for manual in ("quillpress.1", "_quillpress", "quillpress.fish"):
        if "linearize" not in only(prefix, manual).read_text():
            sys.exit(f"{manual}: does not know the options")
    only(prefix / "share/bash-completion/completions", "quillpress")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--cmake", required=True)
    parser.add_argument("--compiler", required=True)
    parser.add_argument("--build", required=True)
    parser.add_argument("--option", action="append", default=[], help="what the compiler needs for this build")
    parser.add_argument("--wine", action="append", default=[], help="runs a program for Windows, given a folder of DLLs")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="quillpress-test-") as name:
        folder = pathlib.Path(name)
        run(options.cmake, "--install", options.build, "--prefix", folder / "first")
        # Nothing remembers where it was installed.
        prefix = (folder / "first").rename(folder / "second")
        job = folder / "job.ps"
        job.write_text("%!\n2 setlinewidth\n")
        ending = ".exe" if options.wine else ""
        wine = [*options.wine, prefix / "bin"] if options.wine else []
        if run(*wine, only(prefix / "bin", "quillpress" + ending), job, "--content").rstrip("\r\n") != "2 w ":
            sys.exit("the installed command line converts otherwise")
        source = folder / "program.c"
        source.write_text(PROGRAM)
        library = only(prefix / "lib", "libquillpress.dll.a" if options.wine else "libquillpress.so")
        program = folder / f"program{ending}"
        run(options.compiler, *options.option, source, "-o", program, "-I", prefix / "include", library,
            f"-Wl,-rpath,{library.parent}")
        run(*wine, program)
        if options.wine:
            only(prefix / "bin", "twsmsnd.exe")
            only(prefix / "include", "driver.h")
        else:
            look_at_manuals(prefix)
        for document in ("LICENSE", "README.md", "CHANGELOG.md"):
            only(prefix, document)


main()
