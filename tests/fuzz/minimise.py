"""Replaces the corpus of a target by the fewest and smallest inputs that reach the same code.

    minimise.py BUILD-OF-FUZZERS REPLAY TARGET FOLDER...

The folders are where the fuzzer has worked; what the corpus holds now counts as well. An input that a build
without a bound on steps does not finish at once is left out: such builds replay the corpus.
"""

import hashlib
import os
import pathlib
import subprocess
import sys
import tempfile

CORPUS = pathlib.Path(__file__).parent / "corpus"
MOST_BYTES = 1024
MOST_FILES = 250
SECONDS = 2


def merged(fuzzer, folders, into):
    environment = {**os.environ, "ASAN_OPTIONS": "quarantine_size_mb=16"}
    subprocess.run([fuzzer, "-merge=1", f"-max_len={MOST_BYTES}", into, *folders], check=True, env=environment,
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    return sorted(pathlib.Path(into).iterdir(), key=lambda path: (path.stat().st_size, path.name))


def ends(replay, target, path):
    try:
        return subprocess.run([replay, target, path], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                              timeout=SECONDS).returncode == 0
    except subprocess.TimeoutExpired:
        return False


def main():
    build, replay, target, *folders = sys.argv[1:]
    corpus = CORPUS / target
    corpus.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory() as into:
        found = merged(f"{build}/bin/fuzz_{target}", [*folders, corpus], into)
        # Evenly over the sizes, because the smallest reach the least.
        step = max(1, -(-len(found) // MOST_FILES))
        kept = [path.read_bytes() for path in found[::-step] if ends(replay, target, path)]
    if not kept:
        sys.exit(f"{target}: no input is any good; is the program that replays them?")
    for path in corpus.iterdir():
        path.unlink()
    for content in kept:
        (corpus / hashlib.sha1(content).hexdigest()[:16]).write_bytes(content)
    print(f"{target}: {len(kept)} of {len(found)} inputs, {sum(map(len, kept))} bytes")


main()
