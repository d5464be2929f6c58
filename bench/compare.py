#!/usr/bin/env python3
"""Times the library, the command line and Ghostscript on the same jobs, side by side: compare.py BUILD [RUNS]

BUILD is the build folder. The programs take turns, so that a slow minute of the machine meets all of them;
what counts is the median. Times are wall-clock seconds; processor seconds stand beside them, for machines
that have other work. Exit status 1 when a bar does not hold.
"""

import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

sys.dont_write_bytecode = True  # the sources stay as they are
import jobs

MEGABYTE = 1 << 20
GHOSTSCRIPT = ["gs", "-q", "-dNOPAUSE", "-dBATCH", "-dSAFER", "-sDEVICE=pdfwrite"]
AS_IS = [f"-d{change}{kind}Images=false" for change in ("AutoFilter", "Downsample") for kind in ("Gray", "Color")]
UNCOMPRESSED = [*AS_IS, "-dCompressPages=false", "-dEncodeColorImages=false", "-dEncodeGrayImages=false"]
FLATE = [*AS_IS, "-sColorImageFilter=FlateEncode", "-sGrayImageFilter=FlateEncode"]


class Program:
    """A command and what its runs took."""

    def __init__(self, name, command, output=None):
        self.name, self.command, self.output = name, command, output
        self.walls, self.processors, self.peak = [], [], 0

    def run(self):
        start = time.perf_counter()
        with subprocess.Popen(self.command, stdout=subprocess.PIPE) as child:
            text = child.stdout.read()
            _, status, usage = os.wait4(child.pid, 0)
            child.returncode = os.waitstatus_to_exitcode(status)
        self.walls.append(time.perf_counter() - start)
        if child.returncode != 0:
            sys.exit(f"{' '.join(map(str, self.command))}: exit status {child.returncode}")
        self.processors.append(usage.ru_utime + usage.ru_stime)
        # The library's driver measures its own peak; of others the system counts this program's size too.
        own = text.split()
        kibibytes = int(own[2]) if self.name == "library" else usage.ru_maxrss
        self.peak = max(self.peak, kibibytes * 1024)

    @property
    def wall(self):
        return statistics.median(self.walls)

    @property
    def processor(self):
        return statistics.median(self.processors)

    def size(self):
        return self.output.stat().st_size if self.output else 0

    def __str__(self):
        size = f"{self.size() / 1e6:9.2f} MB file" if self.output else ""
        return (f"  {self.name:24} {self.wall:8.3f} s  {self.processor:8.3f} s processor"
                f"  {self.peak / MEGABYTE:7.1f} MiB peak {size}")


class Report:
    def __init__(self):
        self.failed = False

    def bar(self, what, value, limit, unit="", note=""):
        holds = value <= limit
        self.failed |= not holds
        word = "holds " if holds else "BROKEN"
        print(f"  {word} {what}: {value:.4g}{unit}, at most {limit:.4g}{unit}{note}")

    def ratio(self, program, other, limit):
        note = f" (processor time {program.processor / other.processor:.3f})"
        self.bar(f"time of {program.name} / {other.name}", program.wall / other.wall, limit, note=note)


class Bench:
    def __init__(self, build, runs, folder):
        self.feed, self.command_line = build / "bench/quillpress_feed", build / "bin/quillpress"
        self.runs, self.folder = runs, folder
        self.report = Report()

    def job(self, kind):
        path = self.folder / f"{kind}.ps"
        # In a process of its own: this one must stay small, its size counts into the peaks it reads.
        subprocess.run([sys.executable, "-B", jobs.__file__, kind, path], check=True)
        print(f"{kind}: {path.stat().st_size / 1e6:.1f} MB")
        return path

    def library(self, job):
        return Program("library", [self.feed, job])

    def quillpress(self, job):
        pdf = self.folder / "quillpress.pdf"
        return Program("command line", [self.command_line, job, "-o", pdf], pdf)

    def ghostscript(self, job, name, options):
        pdf = self.folder / f"{name.replace(' ', '-')}.pdf"
        return Program(name, [*GHOSTSCRIPT, *options, f"-sOutputFile={pdf}", job], pdf)

    def time(self, *programs):
        for _ in range(self.runs):
            for program in programs:
                program.run()
        for program in programs:
            print(program)

    def vector(self):
        job = self.job("vector")
        library, line = self.library(job), self.quillpress(job)
        ghostscript = self.ghostscript(job, "ghostscript", [])
        self.time(library, line, ghostscript)
        self.report.ratio(library, ghostscript, 0.15)
        self.report.ratio(line, ghostscript, 0.30)
        self.report.bar("file of command line / ghostscript", line.size() / ghostscript.size(), 1)
        long_job = self.job("vector-long")
        long_library, long_line = self.library(long_job), self.quillpress(long_job)
        self.time(long_library, long_line)
        for short, long in ((library, long_library), (line, long_line)):
            note = f" (processor time {long.processor / short.processor:.3f})"
            self.report.bar(f"four times the job, {long.name}", long.wall / short.wall, 4.8, note=note)
        for short, long, limit in ((library, long_library, 8), (line, long_line, 24)):
            peak = max(short.peak, long.peak)
            self.report.bar(f"peak memory of {short.name}, both jobs", peak / MEGABYTE, limit, " MiB")
        job.unlink()
        long_job.unlink()

    def image(self, kind, limit):
        job = self.job(kind)
        library, line = self.library(job), self.quillpress(job)
        plain = self.ghostscript(job, "ghostscript uncompressed", UNCOMPRESSED)
        flate = self.ghostscript(job, "ghostscript flate", FLATE)
        self.time(library, plain, line, flate)
        memory = 8 + 3.2 * jobs.DECODED_BYTES[kind] / MEGABYTE
        self.report.ratio(library, plain, limit)
        self.report.ratio(line, flate, 0.70)
        self.report.bar("file of command line / ghostscript flate", line.size() / flate.size(), 1)
        for program in (library, line):
            self.report.bar(f"peak memory of {program.name}", program.peak / MEGABYTE, memory, " MiB")
        job.unlink()

    def language(self, kind, limit):
        job = self.job(kind)
        library, ghostscript = self.library(job), self.ghostscript(job, "ghostscript", [])
        self.time(library, ghostscript)
        self.report.ratio(library, ghostscript, limit)
        job.unlink()

    def text(self):
        job = self.job("text")
        line, ghostscript = self.quillpress(job), self.ghostscript(job, "ghostscript", [])
        self.time(line, ghostscript)
        self.report.ratio(line, ghostscript, 0.20)
        self.report.bar("file of command line / ghostscript", line.size() / ghostscript.size(), 1)
        job.unlink()

    def growth(self, what, few, many):
        jobs_of_both = [self.job(f"{what}-{count}") for count in (few, many)]
        short, long = map(self.library, jobs_of_both)
        self.time(short, long)
        note = f" (processor time {long.processor / short.processor:.3f})"
        self.report.bar(f"four times the {what}", long.wall / short.wall, 4.8, note=note)
        for job in jobs_of_both:
            job.unlink()

    def open_close(self):
        print("open and close a converter")
        times = [float(subprocess.check_output([self.feed, "--open-close", "1000"])) for _ in range(self.runs)]
        self.report.bar("open and close", statistics.median(times), 0.08, " ms")


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    runs = int(sys.argv[2]) if len(sys.argv) > 2 else 5
    with tempfile.TemporaryDirectory(prefix="bench-") as folder:
        bench = Bench(build, runs, pathlib.Path(folder))
        bench.open_close()
        bench.vector()
        bench.image("image-hex", 0.40)
        bench.image("image-binary", 0.35)
        bench.language("language", 0.60)
        bench.language("tokens", 0.75)
        bench.text()
        bench.growth("images", 10000, 40000)
        bench.growth("patterns", 10000, 40000)
        bench.growth("walks", 2000, 8000)
        print(f"load of the machine at the end: {os.getloadavg()[0]:.1f}")
    sys.exit(bench.report.failed)


if __name__ == "__main__":
    main()
