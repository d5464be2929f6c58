"""Runs the command line as a user would, and takes apart the PDF files that it writes."""

import base64
import json
import os
import re
import subprocess
import tempfile
import unittest

PROGRAM = os.environ["QUILLPRESS_CLI"]
SECONDS = 120

DRIVER = ("--dialect", "driver")

# For what Windows has no like of: its shells pass no descriptors, its file names hold no control characters, its processes
# get no signals, its files keep no permissions.
posix_only = unittest.skipIf(os.environ.get("QUILLPRESS_SYSTEM") == "windows", "not on Windows")

HEADER = "%!PS-Adobe-3.0\n"


class Result:
    """What a finished run has returned and written."""

    def __init__(self, process):
        self.code = process.returncode
        self.out = process.stdout
        self.err = process.stderr.decode("utf-8", "replace")


class Pdf:
    """A PDF file, read by qpdf after it has found nothing wrong with it."""

    def __init__(self, path):
        check = subprocess.run(["qpdf", "--check", path], capture_output=True, timeout=SECONDS, text=True)
        if check.returncode != 0:
            raise AssertionError("qpdf --check: " + check.stdout + check.stderr)
        command = ["qpdf", "--json=2", "--json-stream-data=inline", "--decode-level=generalized", path]
        text = subprocess.run(command, capture_output=True, timeout=SECONDS, check=True).stdout
        document = json.loads(text)
        self.objects = document["qpdf"][1]
        self.pages = [self.value(page["object"]) for page in document["pages"]]

    def value(self, reference):
        """The object behind a reference; anything else is itself."""
        if not isinstance(reference, str) or not re.fullmatch(r"\d+ \d+ R", reference):
            return reference
        entry = self.objects["obj:" + reference]
        return entry["stream"]["dict"] if "stream" in entry else entry["value"]

    def data(self, reference):
        """The bytes of a stream, without those of its filters that are no picture formats."""
        return base64.b64decode(self.objects["obj:" + reference]["stream"]["data"])

    def contents(self, page):
        """References to the content streams of a page."""
        contents = self.pages[page]["/Contents"]
        return contents if isinstance(contents, list) else [contents]

    def content(self, page):
        """The content of a page as a reader sees it."""
        return b"\n".join(self.data(stream) for stream in self.contents(page)).decode("latin-1")

    def words(self, page):
        """The tokens of a page's content."""
        return self.content(page).split()

    def media_box(self, page):
        return self.pages[page]["/MediaBox"]

    def resources(self, page, category):
        """The references of one category of a page's resources, by name."""
        return self.value(self.pages[page]["/Resources"]).get(category, {})

    def information(self, key):
        text = self.value(self.objects["trailer"]["value"]["/Info"]).get(key)
        if text is None or text.startswith("u:"):
            return text and text[2:]
        # The bytes of PDFDocEncoding, which are those of Latin-1 with a few characters more.
        return bytes.fromhex(text[2:]).decode("latin-1").translate({0xA0: "\u20ac", 0x8D: "\u201c"})


class CommandLineTest(unittest.TestCase):
    """Gives each test a folder of its own, in which the program runs."""

    # Most tests are about the driver's dialect.
    dialect = DRIVER

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="quillpress-test-")
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def path(self, name):
        return os.path.join(self.folder, name)

    def write(self, name, text):
        with open(self.path(name), "wb") as file:
            file.write(text if isinstance(text, bytes) else text.encode("latin-1"))
        return self.path(name)

    def read(self, name):
        with open(self.path(name), "rb") as file:
            return file.read()

    def files(self):
        return sorted(os.listdir(self.folder))

    def run_program(self, *arguments, stdin=b"", **environment):
        process = subprocess.run(
            [PROGRAM, *self.dialect, *arguments],
            input=stdin,
            capture_output=True,
            cwd=self.folder,
            timeout=SECONDS,
            env={**os.environ, **environment},
        )
        return Result(process)

    def convert(self, job, *arguments):
        """Converts a job that has no error, silently, and reads the result."""
        self.write("job.ps", job)
        result = self.run_program("job.ps", "-o", "job.pdf", *arguments)
        self.assertEqual((result.code, result.err, result.out), (0, "", b""))
        return Pdf(self.path("job.pdf"))

    def convert_with_error(self, job, *arguments):
        """Converts a job that has an error and delivers some pages; returns the PDF and the messages."""
        self.write("job.ps", job)
        result = self.run_program("job.ps", "-o", "job.pdf", *arguments)
        self.assertEqual((result.code, result.out), (1, b""))
        return Pdf(self.path("job.pdf")), result.err

    def content(self, job, *arguments):
        """The content text of a job that has no error."""
        self.write("job.ps", job)
        result = self.run_program("job.ps", "--content", *arguments)
        self.assertEqual((result.code, result.err), (0, ""))
        return result.out.decode("latin-1")


def line(number):
    """PostScript that leaves a line recognisable by its width."""
    return f"{number} setlinewidth 0 0 moveto {number} 9 lineto stroke\n"


def pages(*bodies, prologue="", header=""):
    """A job with page comments."""
    text = HEADER + header + "%%EndComments\n" + prologue
    for number, body in enumerate(bodies, 1):
        text += f"%%Page: {number} {number}\n{body}"
    return text + "%%Trailer\n%%EOF\n"


def main():
    unittest.main()
