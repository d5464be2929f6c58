"""The DLL exports what its module definition file names, undecorated, and nothing else."""

import argparse
import sys

import dll_tables


def defined_names(definition):
    with open(definition, encoding="utf-8") as file:
        lines = [line.partition(";")[0].strip() for line in file]
    return set(line.split()[0] for line in lines[lines.index("EXPORTS") + 1:] if line)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--objdump", required=True)
    parser.add_argument("--definition", required=True)
    parser.add_argument("library")
    options = parser.parse_args()

    wanted = defined_names(options.definition)
    exported = dll_tables.exports(dll_tables.headers(options.objdump, options.library))
    if not wanted:
        sys.exit(f"{options.definition}: names no export")
    for name in sorted(wanted - exported):
        print(f"{options.library}: {name} is not exported")
    for name in sorted(exported - wanted):
        print(f"{options.library}: {name} is exported without being named in {options.definition}")
    sys.exit(0 if wanted == exported else 1)


main()
