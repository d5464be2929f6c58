"""clang-tidy finds nothing in the sources that a build compiles.

Most of clang-tidy's time goes into the system's headers: ten seconds a translation unit, and a tenth of a second
for each source. So sources are looked at in large batches, one translation unit that includes them all, with the
include folders and macros of all of them. Sources with local names in common come into different batches, and so do those
that do not compile together all the same. A source is not looked at twice as long as neither it, nor a header of the project
that it includes, nor the configuration has changed; a note in the build folder keeps that.

The compile database is GCC's: clang gets what it must know about a cross compiler besides, and does not get what
only GCC understands.
"""

import argparse
import concurrent.futures
import dataclasses
import functools
import hashlib
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys

from sources import FOLDERS

BATCH = 300

# Clang has other warnings under the same names, takes a neighbour of the batch for what is shadowed, and a main that
# was renamed for a function that must return something.
FOR_CLANG = ["-Wno-ignored-optimization-argument", "-Wno-sign-conversion", "-Wno-shadow", "-Wno-return-type",
             "-ferror-limit=0"]
# What else a compiler is told (optimisation, debug information, kinds of code) changes nothing in a source.
TELLING = ("-std=", "-W", "-isystem", "-I", "-D", "-U")
ONLY_FOR_GCC = {"-Winvalid-pch"}

# CLI11 passes a hundred strings by value, and a check follows each of them through the whole unit.
COSTLY = "#include <CLI/"

COLOUR = re.compile(r"\x1b\[[0-9;]*m")
FINDING = re.compile(r"^(?P<file>[^\s:]+):\d+:\d+: (?:error|warning): .*\[(?P<checks>[^\]]+)\]$|^error: .*$")
LOCAL = re.compile(r"^namespace \{$(.*?)^\}  // namespace$", re.MULTILINE | re.DOTALL)
# A type, or a function or variable behind its type.
DECLARED = re.compile(r"^(?:(?:struct|class|enum(?: class)?) (\w+)|using (\w+) =|(?!using)[\w\[][\w:<>,*&\[\] ]*[ *&](\w+)(?: =|[(\[{;]))",
                      re.MULTILINE)
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
    is_costly: bool
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
    """What tells of the source, of what the compiler is given: warnings and standard, include folders, macros."""
    told = iter(shlex.split(entry["command"])[1:])
    arguments = [argument + (next(told) if argument in ("-isystem", "-I", "-D") else "")
                 for argument in told if argument.startswith(TELLING) and argument not in ONLY_FOR_GCC]
    return list(dict.fromkeys(arguments))


def is_shared(argument):
    return argument.startswith(("-isystem", "-I", "-D"))


def shared_arguments(arguments):
    """Include folders and macros of all sources that are otherwise compiled alike, where no macro has two values."""
    groups = {}
    for path, own in arguments.items():
        kind = (pathlib.Path(path).suffix, *(argument for argument in own if not is_shared(argument)))
        groups.setdefault(kind, []).append(path)
    for group, paths in groups.items():
        shared = list(dict.fromkeys(argument for path in paths for argument in arguments[path] if is_shared(argument)))
        macros = {argument for argument in shared if argument.startswith("-D")}
        if len({macro.partition("=")[0] for macro in macros}) == len(macros):
            arguments |= {path: [*group[1:], *shared] for path in paths}
    return arguments


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


@functools.cache
def includes_costly_headers(path):
    return COSTLY in pathlib.Path(path).read_text(encoding="utf-8")


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
    told = shared_arguments({path: arguments_for_clang(entries[path]) for path in wanted})
    for path in wanted:
        arguments = [*extra, *told[path], *FOR_CLANG]
        reads = files_read(options.project, path, known)
        digest = digest_of(reads | {str(options.project / ".clang-tidy"), __file__}, arguments, version)
        yield Source(path, arguments, reads, any(map(includes_costly_headers, reads)), digest)


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
    return {"".join(name) for block in LOCAL.findall(text) for name in DECLARED.findall(block)}


def batches(files):
    """Batches whose local names differ, as few as keep every processor busy."""
    alike = {}
    for source in files:
        # The few sources in C are quick, and all their names are common.
        kind = ("" if source.path.endswith(".cpp") else source.path, source.is_costly, *source.arguments)
        alike.setdefault(kind, []).append(source)
    for group in alike.values():
        most = min(BATCH, len(group) // os.cpu_count() + 1)
        begun = []
        for source in group:
            names = local_names(source.path)
            fitting = (batch for batch in begun if len(batch[0]) < most and batch[1].isdisjoint(names))
            batch = next(fitting, None)
            if batch is None:
                batch = ([], set())
                begun.append(batch)
            batch[0].append(source)
            batch[1].update(names)
        yield from (sources for sources, names in begun)


def look_at(options, batch):
    """What clang-tidy says of some sources of ours."""
    unit = options.build / "lint" / (hashlib.sha256(repr([source.path for source in batch]).encode()).hexdigest()[:16]
                                     + pathlib.Path(batch[0].path).suffix)
    # Several programs may be among them.
    lines = (f'#define main main{place}\n#include "{source.path}"\n#undef main\n' for place, source in enumerate(batch))
    unit.write_text("".join(lines), encoding="utf-8")
    ours = "^" + re.escape(str(options.project)) + "/(" + "|".join(FOLDERS) + ")/"
    command = [options.clang_tidy, "--quiet", f"--config-file={options.project}/.clang-tidy",
               f"--header-filter={ours}", str(unit), "--", *batch[0].arguments]
    result = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, cwd=options.build)
    unit.unlink()
    output = COLOUR.sub("", result.stdout)
    findings = [found for found in map(FINDING.match, output.splitlines()) if found and not NOT_OURS.search(found[0])]
    if result.returncode != 0 and not any(map(FINDING.match, output.splitlines())):
        sys.exit(f"{shlex.join(command)}\n{output}\nended with status {result.returncode}")
    # The unit itself includes sources, which no source should do.
    return [found for found in findings if found["file"] != str(unit)]


def refused_by_compiler(findings, batch):
    """The sources of a batch that do not compile, perhaps only because of those before them."""
    refused = {found["file"] for found in findings if "clang-diagnostic" in (found["checks"] or "clang-diagnostic")}
    named = [source for source in batch if source.path in refused]
    return named if named or not refused else batch[1::2]


def lint(options, batch):
    """The findings, and the sources in which there are none."""
    findings = look_at(options, batch)
    if len(batch) > 1 and (parted := refused_by_compiler(findings, batch)):
        rest = [source for source in batch if source not in parted]
        print(f"{len(rest)} sources are looked at again without", *(source.path for source in parted), flush=True)
        parts = [rest, parted] if rest else [parted[0::2], parted[1::2]]
        return [sum(results, []) for results in zip(*(lint(options, part) for part in parts))]
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
