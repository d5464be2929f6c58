"""Every source is formatted as .clang-format says."""

import subprocess
import sys

from sources import source_files


def main():
    clang_format, project = sys.argv[1:]
    files = source_files(project)
    if not files:
        sys.exit(f"{project}: no sources found")
    sys.exit(subprocess.run([clang_format, "--dry-run", "--Werror", *files], cwd=project).returncode)


main()
