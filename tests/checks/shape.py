"""Folders of product code keep their shape: not too finely cut, and explained.

Counted over the .h and .cpp files below a folder, line by line:
  frame     blank lines, #include, #pragma once, and the lines that open or close a namespace or extern "C"
  comment   lines that hold nothing but a comment, of the sources (.cpp) only
A unit is a header with the source of the same name; its size is the sum of both files' lines.
"""

import argparse
import pathlib
import re
import sys

FRAME = re.compile(r'\s*$|#\s*(include|pragma)\b|namespace\b.*\{$|\}\s*// (namespace|extern)|extern "C" \{$')
COMMENT = re.compile(r"\s*//")
SMALL = 50


def lines_of(paths):
    return [line for path in paths for line in path.read_text(encoding="utf-8").splitlines()]


def share(lines, pattern):
    return 100 * sum(1 for line in lines if pattern.match(line)) / len(lines)


def small_units(paths):
    sizes = {}
    for path in paths:
        unit = path.with_suffix("")
        sizes[unit] = sizes.get(unit, 0) + len(lines_of([path]))
    return sorted(unit for unit, size in sizes.items() if size <= SMALL)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("--most-frame", type=float, required=True, help="per cent of all lines")
    parser.add_argument("--comments", type=float, nargs=2, required=True, help="least and most per cent of sources")
    parser.add_argument("--most-small-units", type=int, required=True, help=f"units of at most {SMALL} lines")
    options = parser.parse_args()

    paths = sorted(path for path in options.folder.rglob("*") if path.suffix in {".h", ".cpp"})
    if not paths:
        sys.exit(f"{options.folder}: no sources found")
    frame = share(lines_of(paths), FRAME)
    comments = share(lines_of(path for path in paths if path.suffix == ".cpp"), COMMENT)
    small = small_units(paths)
    print(f"frame {frame:.1f} %, comments {comments:.1f} %, {len(small)} small units:")
    print("\n".join(f"  {unit}" for unit in small))
    least, most = options.comments
    sys.exit(frame > options.most_frame or not least <= comments <= most or len(small) > options.most_small_units)


main()
