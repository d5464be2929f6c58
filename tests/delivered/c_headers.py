"""Reads the functions that the public C headers declare."""

import re


def declared_functions(*headers):
    found = set()
    for header in headers:
        with open(header, encoding="utf-8") as file:
            text = re.sub(r"/\*.*?\*/", "", file.read(), flags=re.DOTALL)
        names = set(re.findall(r"QUILLPRESS_CALL\s+(\w+)\s*\(", text))
        if not names:
            raise SystemExit(f"{header}: no function declaration found")
        found |= names
    return found
