"""The DLL exports what its module definition file names, undecorated, and nothing else; the public headers
declare just these functions."""

import argparse
import sys

import c_headers
import dll_tables


def defined_names(definition):
    with open(definition, encoding="utf-8") as file:
        lines = [line.partition(";")[0].strip() for line in file]
    return set(line.split()[0] for line in lines[lines.index("EXPORTS") + 1:] if line)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--objdump", required=True)
    parser.add_argument("--definition", required=True)
    parser.add_argument("--header", required=True, action="append")
    parser.add_argument("library")
    options = parser.parse_args()

    wanted = defined_names(options.definition)
    if not wanted:
        sys.exit(f"{options.definition}: names no export")
    declared = c_headers.declared_functions(*options.header)
    exported = dll_tables.exports(dll_tables.headers(options.objdump, options.library))
    for name in sorted(wanted - exported):
        print(f"{options.library}: {name} is not exported")
    for name in sorted(exported - wanted):
        print(f"{options.library}: {name} is exported without being named in {options.definition}")
    for name in sorted(wanted - declared):
        print(f"{options.definition}: {name} is declared in no header")
    for name in sorted(declared - wanted):
        print(f"{options.definition}: {name}, which a header declares, is missing")
    sys.exit(0 if exported == wanted == declared else 1)


main()
