"""Each page of a PDF holds the words that are given for it, so that they can be searched and copied."""

import subprocess
import sys


def main():
    file, *wanted = sys.argv[1:]
    text = subprocess.run(["pdftotext", file, "-"], check=True, capture_output=True, encoding="utf-8").stdout
    pages = [" ".join(page.split()) for page in text.split("\f")[:-1]]
    if pages != wanted:
        sys.exit(f"{file}: {pages}, not {wanted}")


main()
