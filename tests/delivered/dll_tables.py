"""Reads the import and export tables that objdump prints of a Windows library."""

import re
import subprocess


def headers(objdump, library):
    result = subprocess.run([objdump, "-p", library], check=True, capture_output=True, text=True)
    return result.stdout


def imports(text):
    """Pairs of DLL name, in lower case, and function name; an import by number shows as "#number"."""
    table = text.partition("The Import Tables")[2].partition("The Export Tables")[0]
    found = set()
    dll = None
    for line in table.splitlines():
        if name := re.match(r"\s*DLL Name: (\S+)", line):
            dll = name.group(1).lower()
        elif member := re.match(r"\s*[0-9a-f]+\s+(\d+)\s+(\S+)\s*$", line):
            found.add((dll, member.group(2)))
        elif number := re.match(r"\s*[0-9a-f]+\s+(\d+)\s+<none>", line):
            found.add((dll, "#" + number.group(1)))
    return found


def exports(text):
    """Every exported name, as a caller must spell it."""
    table = text.partition("[Ordinal/Name Pointer] Table")[2]
    return set(re.findall(r"^\s*\[\s*\d+\](?:\s\+base\[\s*\d+\])?\s+(?:[0-9a-f]+\s+)?(\S+)\s*$", table, flags=re.MULTILINE))
