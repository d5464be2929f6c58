"""A case of test_text.py: a page with text on it."""

import dataclasses
from typing import Callable, Optional

# The page is small, so that every glyph counts.
START = b"%!PS-Adobe-3.0\n<< /PageSize [240 100] >> setpagedevice\n"
END = b"\nshowpage\n"


@dataclasses.dataclass
class Case:
    name: str
    # The program between the page's size and showpage, as text or bytes.
    make: Callable
    # What pdftotext finds; None where that is no matter.
    words: Optional[str]
    # A part of what is said on standard error.
    warning: str = ""
    # How many fonts there are in the PDF.
    fonts: Optional[int] = None
    # The program that Ghostscript gets, where it cannot read what is meant.
    alike: Optional[Callable] = None

    def job(self, make=None):
        program = (make or self.make)()
        return START + (program if isinstance(program, bytes) else program.encode("latin-1")) + END


def text(program, words, name, **more):
    """A case whose program is at hand."""
    return Case(name, lambda: program, words, **more)
