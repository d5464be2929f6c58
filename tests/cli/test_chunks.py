"""The result is the same however the job is handed to the converter."""

import random

import support
from support import line, pages

DATE = {"SOURCE_DATE_EPOCH": "1000000000"}


def job_with_everything():
    data = random.Random(1).randbytes(6000)
    image = ("/DeviceGray setcolorspace /row 100 string def 100 60 8 [1 0 0 1 0 0] "
             "{currentfile row readhexstring pop} image\n" + data.hex() + "\n")
    binary = ("/raw 40 string def 40 1 8 [1 0 0 1 0 0] {currentfile raw readstring pop} image\n"
              + data[:40].decode("latin-1") + "\n")
    brush = ("/b 9 dict begin /PaintType 1 def /PatternType 1 def /TilingType 1 def /BBox [0 0 4 4] def "
             "/XStep 4 def /YStep 4 def /PaintProc {pop 0 0 moveto 2 2 lineto stroke} def currentdict end "
             "[1 0 0 1 0 0] makepattern def b setpattern 0 0 moveto 9 0 lineto 9 9 lineto fill\n")
    text = "/Helvetica findfont 12 scalefont setfont (two\\\nlines \\101) show\n"
    return pages(line(1) + image, brush + binary, text + line(3), prologue="/p {1 2 add pop} def p\n")


class ChunkTest(support.CommandLineTest):
    def pdf(self, *arguments):
        result = self.run_program("job.ps", "-o", "job.pdf", *arguments, **DATE)
        self.assertEqual(result.code, 0)
        return self.read("job.pdf")

    def test_every_chunk_size_gives_the_same_file(self):
        self.write("job.ps", job_with_everything())
        whole = self.pdf("--chunk=1M")
        for size in ["1", "2", "3", "7", "64", "1000", "4K", "64k"]:
            self.assertEqual(self.pdf("--chunk", size), whole, size)
        self.assertEqual(self.pdf(), whole)

    def test_every_chunk_size_gives_the_same_streams_of_a_long_page(self):
        lines = (f"{n % 600} {n // 600} moveto 5 5 lineto stroke\n" for n in range(60000))
        self.write("job.ps", "%!\n" + "".join(lines))
        whole = self.pdf("--chunk=16M")
        for size in ["999", "64K", "1M"]:
            self.assertEqual(self.pdf("--chunk", size), whole, size)

    def test_pipe_gives_the_same_file(self):
        job = job_with_everything()
        self.write("job.ps", job)
        result = self.run_program("-", stdin=job.encode("latin-1"), **DATE)
        self.assertEqual(result.out, self.pdf())

    def test_same_job_gives_the_same_file(self):
        self.write("job.ps", job_with_everything())
        self.assertEqual(self.pdf(), self.pdf())

    def test_data_across_the_border_of_two_blocks(self):
        data = random.Random(2).randbytes(5000)
        reader = "{currentfile row readstring pop}"
        image = f"/row 50 string def 50 100 8 [1 0 0 1 0 0] {reader} false 1 colorimage\n"
        for place in [65536 - 4999, 65536 - 2500, 65536 - 1, 65536]:
            filler = "%" * (place - len(image) - 4) + "\n"
            job = ("%!\n" + filler + image).encode() + data + b"\n"
            self.assertEqual(job.index(data), place)
            pdf = self.convert(job)
            self.assertEqual(pdf.data(pdf.resources(0, "/XObject")["/PSI1"]), data)


if __name__ == "__main__":
    support.main()
