"""A DLL or program imports only functions that the oldest Windows it is for has, from libraries that belong to Windows.

One missing import keeps it from being loaded at all, and the compiler's own libraries import too: a
change of compiler or a call to a new library function shows here and not at a customer's.
"""

import argparse
import sys

import dll_tables


def allowed_functions(paths):
    """Lines "[library.dll]" and below each the functions that may be imported from it."""
    allowed = set()
    for path in paths:
        dll = None
        with open(path, encoding="utf-8") as file:
            for line in file:
                word = line.partition("#")[0].strip()
                if word.startswith("["):
                    dll = word.strip("[]").lower()
                elif word:
                    allowed.add((dll, word))
    return allowed


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--objdump", required=True)
    parser.add_argument("--allowed", required=True, action="append", help="may be given several times")
    parser.add_argument("library")
    options = parser.parse_args()

    imported = dll_tables.imports(dll_tables.headers(options.objdump, options.library))
    if not any(dll == "kernel32.dll" for dll, _ in imported):
        sys.exit(f"{options.library}: no import from kernel32.dll found, so the table was not understood")
    refused = sorted(imported - allowed_functions(options.allowed))
    for dll, function in refused:
        print(f"{options.library}: imports {function} from {dll}; "
              f"if the oldest Windows has it, add it to {options.allowed[-1]}")
    sys.exit(1 if refused else 0)


main()
