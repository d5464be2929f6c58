"""Where the job comes from, and what is said when it is none."""

import support
from support import line, pages


class InputTest(support.CommandLineTest):
    def assert_refused(self, name, says):
        before = self.files()
        result = self.run_program(name, "-o", "job.pdf")
        self.assertEqual((result.code, result.out), (3, b""))
        self.assertIn(f"quillpress: {name} ", result.err)
        self.assertIn(says, result.err)
        self.assertEqual(self.files(), before)

    def test_missing_file(self):
        self.assert_refused("missing.ps", "cannot be opened: No such file or directory")

    def test_empty_file(self):
        self.write("job.ps", "")
        self.assert_refused("job.ps", "is empty")

    def test_folder(self):
        self.assert_refused(".", "is a directory")

    @support.posix_only
    def test_file_that_cannot_be_read(self):
        self.assert_refused("/proc/self/mem", "cannot be read: Input/output error")

    def test_pdf_file(self):
        self.write("job.ps", "%PDF-1.4\n%\xe2\xe3\xcf\xd3\n1 0 obj\n")
        self.assert_refused("job.ps", "is not PostScript: it is a PDF file")

    def test_printer_command_language(self):
        self.write("job.ps", "\x1bE\x1b&l26A hello")
        self.assert_refused("job.ps", "is not PostScript: it is a PCL or other escape sequence job")

    def test_printer_command_language_xl(self):
        self.write("job.ps", "\x1b%-12345X@PJL COMMENT x\n) HP-PCL XL;2;0;Comment\n")
        self.assert_refused("job.ps", "is not PostScript: it is a PCL XL job")

    def test_pictures(self):
        for start, kind in [("\x89PNG\r\n\x1a\n", "PNG"), ("\xff\xd8\xff\xe0", "JPEG"), ("II*\0", "TIFF")]:
            self.write("job.ps", start + "\0" * 50)
            self.assert_refused("job.ps", f"is not PostScript: it is a {kind} picture")

    def test_archives(self):
        self.write("job.ps", "PK\x03\x04" + "\0" * 50)
        self.assert_refused("job.ps", "is not PostScript: it is a ZIP or XPS file")
        self.write("job.ps", "\x1f\x8b\x08" + "\0" * 50)
        self.assert_refused("job.ps", "is not PostScript: it is compressed with gzip")

    def test_other_text(self):
        for text in ["hello\n", "%", "!", "% PostScript\n", "a" * 100000]:
            self.write("job.ps", text)
            self.assert_refused("job.ps", "is not PostScript: it does not begin with %!")

    def test_shortest_job(self):
        self.assertEqual(len(self.convert("%!").pages), 1)

    def test_existing_output_outlives_bad_input(self):
        self.write("job.pdf", "before")
        self.write("job.ps", "hello")
        self.assertEqual(self.run_program("job.ps", "-o", "job.pdf").code, 3)
        self.assertEqual(self.read("job.pdf"), b"before")

    def test_job_from_standard_input(self):
        job = pages(line(1), line(2)).encode()
        self.assertEqual(self.run_program("-", "-o", "job.pdf", stdin=job).code, 0)
        self.assertEqual(len(support.Pdf(self.path("job.pdf")).pages), 2)

    def test_standard_input_has_a_name_in_messages(self):
        result = self.run_program("-", "-o", "job.pdf", stdin=b"")
        self.assertEqual((result.code, result.err), (3, "quillpress: standard input is empty\n"))
        result = self.run_program("-", "-o", "job.pdf", stdin=b"hello")
        self.assertIn("quillpress: standard input is not PostScript", result.err)

    def test_file_names_may_begin_with_a_dash_behind_a_double_dash(self):
        self.write("-job.ps", "%!\n")
        self.assertEqual(self.run_program("-o", "job.pdf", "--", "-job.ps").code, 0)


if __name__ == "__main__":
    support.main()
