"""What stands around a job for the printer is taken off."""

import struct

import support
from support import line, pages

EXIT = b"\x1b%-12345X"
JOB = pages(line(1), line(2)).encode()
PJL = EXIT + b"@PJL JOB NAME=\"report\"\r\n@PJL SET RESOLUTION=600\r\n@PJL ENTER LANGUAGE=POSTSCRIPT \r\n"


def dos_header(*sections):
    """Offsets and lengths of the PostScript, of a metafile and of a picture, and no checksum."""
    return struct.pack("<4sIIIIIIH", b"\xc5\xd0\xd3\xc6", *sections, 0xFFFF)


class EnvelopeTest(support.CommandLineTest):
    def assert_two_pages(self, job):
        pdf = self.convert(job)
        self.assertEqual([pdf.words(page)[1] for page in range(len(pdf.pages))], ["1", "2"])

    def test_universal_exit_and_printer_language_in_front(self):
        self.assert_two_pages(PJL + JOB)

    def test_universal_exit_behind(self):
        self.assert_two_pages(PJL + JOB + EXIT)

    def test_printer_language_behind(self):
        self.assert_two_pages(PJL + JOB + EXIT + b"@PJL EOJ NAME=\"report\"\r\n" + EXIT)

    def test_printer_language_with_bare_line_feeds(self):
        self.assert_two_pages(PJL.replace(b"\r", b"") + JOB + EXIT)

    def test_last_line_of_printer_language_without_an_end(self):
        self.assert_two_pages(JOB + EXIT + b"@PJL EOJ")

    def test_control_d_in_front_and_behind(self):
        self.assert_two_pages(b"\x04" + JOB + b"\x04")

    def test_control_d_and_line_ends_behind(self):
        self.assert_two_pages(JOB + b"\r\n\x04\r\n\r\n")

    def test_control_d_before_the_universal_exit(self):
        self.assert_two_pages(b"\x04" + PJL + b"\x04" + JOB + b"\x04" + EXIT)

    def test_white_space_in_front(self):
        self.assert_two_pages(b"\r\n \x00" + JOB)

    def test_envelope_across_the_border_of_two_blocks(self):
        tail = b"\x04\r\n" + EXIT + b"@PJL EOJ\r\n" + EXIT
        for place in range(65536 - len(tail) - 1, 65536 + 2):
            filler = b"%" * (place - len(JOB) - 1) + b"\n"
            self.assert_two_pages(JOB + filler + tail)

    def test_control_d_in_binary_data_stays(self):
        data = b"\x04\x04 \x1b%-1234\x04"
        reader = b"%%!\n/t %d string def /take {currentfile t readstring pop} def\ntake\n" % len(data)
        uses = b"\n8 get setlinewidth t length setlinewidth\n"
        # The ninth byte is the digit 3.
        self.assertEqual(self.content((reader + data + uses).decode("latin-1")), f"51 w {len(data)} w ")

    def test_control_d_before_much_white_space_is_no_end(self):
        job = b"%!\n(\x04" + b" " * 70000 + b") length setlinewidth\n"
        self.assertEqual(self.content(job.decode("latin-1")), "70001 w ")

    def test_start_of_a_universal_exit_at_the_end_is_text(self):
        result = self.run_program("-", "--content", stdin=b"%!\n1 setlinewidth\n\x1b%-12")
        self.assertIn("NOTHING TO EXECUTE for \\x1B\n", result.err)

    def test_second_job_is_announced_and_left_out(self):
        self.write("job.ps", PJL + JOB + EXIT + PJL + JOB + EXIT)
        result = self.run_program("job.ps", "-o", "job.pdf")
        self.assertEqual(result.code, 0)
        self.assertIn("only the first job", result.err)
        self.assertEqual(len(support.Pdf(self.path("job.pdf")).pages), 2)

    def test_job_in_another_language_is_refused(self):
        self.write("job.ps", EXIT + b"@PJL ENTER LANGUAGE=PCLXL\r\n) HP-PCL XL;2;0\r\n")
        result = self.run_program("job.ps", "-o", "job.pdf")
        self.assertEqual(result.code, 3)
        self.assertIn("PCLXL", result.err)

    def test_envelope_without_a_job_is_refused(self):
        for envelope in [EXIT, PJL + EXIT, b"\x04", b"\r\n\r\n", PJL + b"\x04"]:
            self.write("job.ps", envelope)
            result = self.run_program("job.ps", "-o", "job.pdf")
            self.assertEqual(result.code, 3)
            self.assertIn("holds no PostScript job", result.err)
            self.assertEqual(self.files(), ["job.ps"])

    def test_eps_file_with_a_binary_header(self):
        preview = b"II*\0 a preview picture %!PS\n"
        header = dos_header(30, len(JOB), 0, 0, 30 + len(JOB), len(preview))
        self.assert_two_pages(header + JOB + preview)

    def test_eps_file_with_its_preview_first(self):
        preview = b"%%Page: 7 7\n" * 10000
        begin = 30 + len(preview)
        header = dos_header(begin, len(JOB), 30, len(preview), 0, 0)
        self.assert_two_pages(header + preview + JOB + b"more")


if __name__ == "__main__":
    support.main()
