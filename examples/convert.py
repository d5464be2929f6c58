#!/usr/bin/env python3
"""Converts a PostScript job to PDF with the shared library alone: convert.py JOB.ps JOB.pdf"""

import ctypes
import os
import sys


def load():
    library = ctypes.CDLL("libquillpress-document.so.1")
    # Without these, ctypes takes every argument and result for an int and cuts addresses to half their size.
    library.QuillpressDocumentNew.restype = ctypes.c_void_p
    library.QuillpressDocumentFree.argtypes = [ctypes.c_void_p]
    library.QuillpressDocumentConvertFile.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_char_p]
    library.QuillpressDocumentError.argtypes = [ctypes.c_void_p]
    library.QuillpressDocumentError.restype = ctypes.c_char_p
    library.QuillpressDocumentWarning.argtypes = [ctypes.c_void_p, ctypes.c_size_t]
    library.QuillpressDocumentWarning.restype = ctypes.c_char_p
    library.QuillpressDocumentPageCount.argtypes = [ctypes.c_void_p]
    library.QuillpressDocumentPageCount.restype = ctypes.c_uint64
    return library


def main():
    if len(sys.argv) != 3:
        sys.exit(f"usage: {sys.argv[0]} JOB.ps JOB.pdf")
    library = load()
    document = library.QuillpressDocumentNew()
    if not document:
        sys.exit("out of memory")
    try:
        status = library.QuillpressDocumentConvertFile(document, *map(os.fsencode, sys.argv[1:]))
        index = 0
        while warning := library.QuillpressDocumentWarning(document, index):
            print("warning:", warning.decode("utf-8", "replace"), file=sys.stderr)
            index += 1
        if error := library.QuillpressDocumentError(document):
            print(error.decode("utf-8", "replace"), file=sys.stderr)
        print(library.QuillpressDocumentPageCount(document), "pages")
        return status
    finally:
        library.QuillpressDocumentFree(document)


if __name__ == "__main__":
    sys.exit(main())
