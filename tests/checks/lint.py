"""clang-tidy finds nothing in the sources that a build compiles.

Most of clang-tidy's time goes into the system's headers, so sources with the same options are looked at in batches: one
translation unit that includes them all. Sources with local functions of one name come into different batches; where
neighbours do not compile together all the same, they are parted. A source is not looked at twice as long as neither it, nor
a header of the project that it includes, nor the configuration has changed; a note in the build folder keeps that.

The compile database is GCC's: clang gets what it must know about a cross compiler besides, and does not get what
only GCC understands.
"""

import argparse
import concurrent.futures
import dataclasses
import hashlib
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys

from sources import FOLDERS

BATCH = 40

# Clang has other warnings under the same names, and takes a neighbour of the batch for what is shadowed.
FOR_CLANG = ["-Wno-ignored-optimization-argument", "-Wno-sign-conversion", "-Wno-shadow", "-ferror-limit=0"]
ONLY_FOR_GCC = {"-fno-keep-inline-dllexport", "-Winvalid-pch"}

COLOUR = re.compile(r"\x1b\[[0-9;]*m")
FINDING = re.compile(r"^(?P<file>[^\s:]+):\d+:\d+: (?:error|warning): .*\[(?P<checks>[^\]]+)\]$|^error: .*$")
LOCAL = re.compile(r"^namespace \{$(.*?)^\}  // namespace$", re.MULTILINE | re.DOTALL)
# A type, or a function or variable behind its type.
DECLARED = re.compile(r"^(?:(?:struct|class|enum class|using) (\w+)|[\w\[][\w:<>,*&\[\] ]*[ *&](\w+)(?: =|[(\[{;]))", re.MULTILINE)
BATCH_OF_THE_BUILD = re.compile(r"/Unity/unity_\w+\.c(xx)?$")
INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*"([^"]+)"', re.MULTILINE)

# A header of libqpdf holds a vector of a type that is not finished yet. With GCC 12's library in C++20 clang
# refuses that and goes on; GCC takes it.
NOT_OURS = re.compile(r"(arithmetic on a pointer to an incomplete type|static_assert failed due).*\bJSON\b")


@dataclasses.dataclass
class Source:
    path: str
    arguments: list
    reads: set  # Itself and the headers of the project.
    digest: str


def standard_library_folders(compiler):
    """Where a cross compiler keeps the C++ headers. Clang finds the system's own, but not these."""
    result = subprocess.run([compiler, "-x", "c++", "-E", "-v", "-"], check=True, text=True,
                            stdin=subprocess.DEVNULL, capture_output=True)
    listed = result.stderr.partition("search starts here:\n#include <...>")[2].partition("End of search")[0]
    return [line.strip() for line in listed.splitlines() if "/c++" in line]


def options_for_target(compiler, target):
    folders = standard_library_folders(compiler)
    if not folders:
        sys.exit(f"{compiler} does not tell where its C++ headers are")
    return [f"--target={target}", "-nostdinc++", *(f"-isystem{folder}" for folder in folders)]


def arguments_for_clang(entry):
    """What the compiler is given for a source, without the source and without the compiler."""
    arguments = shlex.split(entry["command"])[1:]
    # What GCC has compiled beforehand is nothing for clang, and every source includes what it needs.
    for option in ("-o", "-include"):
        if option in arguments:
            place = arguments.index(option)
            del arguments[place:place + 2]
    return [argument for argument in arguments
            if argument not in ONLY_FOR_GCC and argument not in ("-c", entry["file"])]


def files_read(project, path, known):
    """A file with all files of the project that it includes. Paths are written from the top folder."""
    found = {path}
    waiting = [path]
    while waiting:
        file = waiting.pop()
        if file not in known:
            text = pathlib.Path(file).read_text(encoding="utf-8")
            places = [place / name for name in INCLUDE.findall(text)
                      for place in (project, project / "include", pathlib.Path(file).parent)]
            known[file] = {str(place.resolve()) for place in places if place.is_file()}
        waiting += known[file] - found
        found |= known[file]
    return found


def digest_of(files, *others):
    digest = hashlib.sha256()
    for file in sorted(files):
        digest.update(file.encode() + b"\0" + pathlib.Path(file).read_bytes() + b"\0")
    digest.update(repr(others).encode())
    return digest.hexdigest()


def sources_below(path):
    return path.rglob("*") if path.is_dir() else [path]


def compiled(build):
    """What the build compiles, by the path of the source. One that compiles in batches has a file that includes each."""
    with open(build / "compile_commands.json", encoding="utf-8") as file:
        entries = {entry["file"]: entry for entry in json.load(file)}
    for path, entry in list(entries.items()):
        if BATCH_OF_THE_BUILD.search(path):
            included = INCLUDE.findall(pathlib.Path(path).read_text(encoding="utf-8"))
            entries |= {source: entry | {"file": path} for source in included}
    return entries


def sources(options):
    entries = compiled(options.build)
    wanted = {str(path) for folder in options.folders for path in sources_below(options.project / folder)
              if path.suffix in {".c", ".cpp"}}
    skipped = tuple(str(options.project / folder) for folder in options.without)
    wanted = sorted(path for path in wanted if not path.startswith(skipped))
    if forgotten := [path for path in wanted if path not in entries]:
        sys.exit(f"not in the compile database, configure again: {forgotten}")

    extra = []
    if options.target:
        extra = options_for_target(shlex.split(entries[wanted[0]]["command"])[0], options.target)
    version = subprocess.run([options.clang_tidy, "--version"], check=True, text=True, capture_output=True).stdout
    known = {}
    for path in wanted:
        arguments = [*extra, *arguments_for_clang(entries[path]), *FOR_CLANG]
        reads = files_read(options.project, path, known)
        digest = digest_of(reads | {str(options.project / ".clang-tidy"), __file__}, arguments, version)
        yield Source(path, arguments, reads, digest)


class Notes:
    """The sources in which nothing was found, with their digests."""

    def __init__(self, path):
        self.path = path
        self.digests = json.loads(path.read_text(encoding="utf-8")) if path.exists() else {}

    def has(self, source):
        return self.digests.get(source.path) == source.digest

    def add(self, clean):
        self.digests.update({source.path: source.digest for source in clean})
        unfinished = self.path.with_suffix(".new")
        unfinished.write_text(json.dumps(self.digests, indent=1), encoding="utf-8")
        unfinished.replace(self.path)


def local_names(path):
    text = pathlib.Path(path).read_text(encoding="utf-8")
    return {kind or name for block in LOCAL.findall(text) for kind, name in DECLARED.findall(block)}


def batches(files):
    alike = {}
    for source in files:
        alike.setdefault((pathlib.Path(source.path).suffix, *source.arguments), []).append(source)
    for group in alike.values():
        begun = []
        for source in group:
            names = local_names(source.path)
            fitting = (batch for batch in begun if len(batch[0]) < BATCH and batch[1].isdisjoint(names))
            batch = next(fitting, None)
            if batch is None:
                batch = ([], set())
                begun.append(batch)
            batch[0].append(source)
            batch[1].update(names)
        yield from (sources for sources, names in begun)


def look_at(options, batch, *more):
    """What clang-tidy says of some sources of ours."""
    unit = options.build / "lint" / (hashlib.sha256(repr([source.path for source in batch]).encode()).hexdigest()[:16]
                                     + pathlib.Path(batch[0].path).suffix)
    unit.write_text("".join(f'#include "{source.path}"\n' for source in batch), encoding="utf-8")
    ours = "^" + re.escape(str(options.project)) + "/(" + "|".join(FOLDERS) + ")/"
    command = [options.clang_tidy, "--quiet", f"--config-file={options.project}/.clang-tidy",
               f"--header-filter={ours}", *more, str(unit), "--", *batch[0].arguments]
    result = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, cwd=options.build)
    unit.unlink()
    output = COLOUR.sub("", result.stdout)
    findings = [found for found in map(FINDING.match, output.splitlines()) if found and not NOT_OURS.search(found[0])]
    if result.returncode != 0 and not any(map(FINDING.match, output.splitlines())):
        sys.exit(f"{shlex.join(command)}\n{output}\nended with status {result.returncode}")
    # The unit itself includes sources, which no source should do.
    return [found for found in findings if found["file"] != str(unit)]


def compile_together(options, batch):
    # One check has to be asked for; this one is quick.
    findings = look_at(options, batch, "--checks=-*,clang-diagnostic-*,modernize-use-nullptr")
    return not any("clang-diagnostic" in (found["checks"] or "clang-diagnostic") for found in findings)


def lint(options, batch):
    """The findings, and the sources in which there are none."""
    if len(batch) > 1 and not compile_together(options, batch):
        halves = [lint(options, batch[place::2]) for place in range(2)]
        return [sum(results, []) for results in zip(*halves)]
    findings = look_at(options, batch)
    named = {found["file"] for found in findings}
    return findings, [source for source in batch if None not in named and not source.reads & named]


def parse_arguments():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--clang-tidy", required=True)
    parser.add_argument("--project", required=True, type=pathlib.Path)
    parser.add_argument("--build", required=True, type=pathlib.Path)
    parser.add_argument("--target", help="what a cross compiler compiles for, as clang calls it")
    parser.add_argument("--without", nargs="*", default=[], help="sources and folders that another build looks at")
    parser.add_argument("--folders", nargs="+", required=True)
    return parser.parse_args()


def main():
    options = parse_arguments()
    (options.build / "lint").mkdir(exist_ok=True)
    notes = Notes(options.build / "lint" / "clean.json")
    files = list(sources(options))
    changed = [source for source in files if not notes.has(source)]
    print(f"{len(files)} sources, {len(changed)} to look at", flush=True)
    said = set()
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        waiting = [pool.submit(lint, options, batch) for batch in sorted(batches(changed), key=len, reverse=True)]
        for done in concurrent.futures.as_completed(waiting):
            findings, clean = done.result()
            notes.add(clean)
            for line in sorted({found[0] for found in findings} - said):
                print(line, flush=True)
                said.add(line)
    sys.exit(1 if said else 0)


if __name__ == "__main__":
    main()
