"""The filter for print servers, called as CUPS calls it."""

import os
import signal
import subprocess
import time

import support

FILTER = os.environ["QUILLPRESS_FILTER"]
TWO_PAGES = "%!PS\n%%Title: (of the job)\n0 0 50 50 rectfill showpage 0 0 9 9 rectfill showpage\n"


class PrintFilterTest(support.CommandLineTest):
    def run_filter(self, *arguments, job=TWO_PAGES, **environment):
        process = subprocess.run([FILTER, *arguments], input=job.encode(), capture_output=True, cwd=self.folder,
                                 timeout=support.SECONDS, env={**os.environ, **environment})
        return support.Result(process)

    def print_job(self, options="", title="A title", copies="1", job=TWO_PAGES, **environment):
        result = self.run_filter("7", "alice", title, copies, options, job=job, **environment)
        self.assertEqual(result.code, 0, result.err)
        with open(self.path("printed.pdf"), "wb") as file:
            file.write(result.out)
        self.lines = [line for line in result.err.splitlines() if not line.startswith("DEBUG: ")]
        return support.Pdf(self.path("printed.pdf"))

    def test_the_job_comes_through_standard_input(self):
        self.assertEqual(len(self.print_job().pages), 2)

    def test_the_job_comes_in_a_file(self):
        path = self.write("job.ps", TWO_PAGES)
        result = self.run_filter("7", "alice", "A title", "1", "", path, job="nonsense")
        self.assertEqual((result.code, result.out[:5]), (0, b"%PDF-"))

    def test_title_and_user_are_in_the_document_information(self):
        pdf = self.print_job(title="Übersicht")
        self.assertEqual((pdf.information("/Title"), pdf.information("/Author")), ("Übersicht", "alice"))

    def test_without_a_title_it_is_that_of_the_job(self):
        self.assertEqual(self.print_job(title="").information("/Title"), "of the job")

    def test_pages_are_told_with_their_copies(self):
        self.print_job(copies="3")
        self.assertEqual(self.lines, ["PAGE: 1 3", "PAGE: 2 3"])

    def test_every_line_is_for_the_server(self):
        result = self.run_filter("7", "alice", "A title", "1", "", job="%!\n/Nonesuch findfont pop showpage nonsense\n")
        self.assertEqual(result.code, 1)
        for line in result.err.splitlines():
            self.assertRegex(line, "^(DEBUG|WARNING|ERROR|PAGE): ")
        self.assertIn("ERROR: standard input: undefined: nonsense", result.err)
        # The page before the error is printed.
        self.assertIn("PAGE: 1 1", result.err)
        self.assertEqual(result.out[:5], b"%PDF-")

    def test_what_is_not_kept_is_a_warning(self):
        self.print_job(job="%!\n/Nonesuch findfont 9 scalefont setfont 9 9 moveto (text) show showpage\n")
        self.assertRegex(self.lines[0], "^WARNING: standard input: .*Nonesuch")

    def test_a_job_without_pages_prints_nothing(self):
        result = self.run_filter("7", "alice", "A title", "1", "", job="%!\nnonsense\n")
        self.assertEqual((result.code, result.out), (1, b""))
        self.assertIn("ERROR: standard input: undefined: nonsense", result.err)

    def test_a_file_that_is_not_there(self):
        result = self.run_filter("7", "alice", "A title", "1", "", "absent.ps")
        self.assertEqual((result.code, result.out), (1, b""))
        self.assertRegex(result.err, "ERROR: absent.ps ")

    def test_other_numbers_of_arguments(self):
        for arguments in ((), ("7", "alice", "title", "1"), ("7", "alice", "title", "1", "", "file", "more")):
            result = self.run_filter(*arguments)
            self.assertEqual((result.code, result.out), (1, b""))
            self.assertIn("ERROR: usage: pstopdf-quillpress JOB USER TITLE COPIES OPTIONS [FILE]", result.err)

    def test_the_size_of_pages_that_ask_for_none(self):
        for options, size in (("", [595, 842]), ("media=Letter", [612, 792]), ("PageSize=A5 media=A4", [420, 595]),
                              ("media=na_letter_8.5x11in", [612, 792]), ("media=Custom.100x200", [100, 200]),
                              ("media=tray-2,Legal,plain", [612, 1008]), ("media=nonsense", [595, 842])):
            with self.subTest(options):
                self.assertEqual(self.print_job(options).media_box(0)[2:], size)

    def test_pages_are_picked_and_turned(self):
        pdf = self.print_job("page-ranges=2 orientation-requested=5")
        self.assertEqual([page.get("/Rotate") for page in pdf.pages], [90])
        self.assertEqual(self.lines, ["PAGE: 1 1"])

    def test_filters_that_follow_pick_and_turn_pages_themselves(self):
        pdf = self.print_job("page-ranges=2 orientation-requested=4", FINAL_CONTENT_TYPE="application/vnd.cups-pdf")
        self.assertEqual([page.get("/Rotate", 0) for page in pdf.pages], [0, 0])

    def test_pages_are_left_to_the_printer_as_they_are_painted(self):
        job = "%!PS-Adobe-3.0\n%%Orientation: Landscape\n%%EndComments\n0 0 9 9 rectfill showpage\n"
        self.assertEqual([page.get("/Rotate", 0) for page in self.print_job(job=job).pages], [0])

    def test_a_range_that_makes_no_sense_is_left_out(self):
        self.assertEqual(len(self.print_job("page-ranges=x").pages), 2)
        self.assertEqual(self.lines[0], "WARNING: page-ranges: not a list of pages: x")

    def test_options_in_quotes(self):
        pdf = self.print_job("job-name='media=A5 \\'x\\'' collate nofitplot \tmedia=\"Letter\"  page-ranges=\\1")
        self.assertEqual((len(pdf.pages), pdf.media_box(0)[2:]), (1, [612, 792]))

    def test_a_cancelled_job_leaves_nothing(self):
        self.write("job.ps", "%!\nshowpage {} loop\n")
        folder = self.path("tmp")
        os.mkdir(folder)
        with open(self.path("out"), "wb") as out:
            process = subprocess.Popen([FILTER, "7", "alice", "A title", "1", "", self.path("job.ps")], stdout=out,
                                       stderr=subprocess.PIPE, env={**os.environ, "TMPDIR": folder})
        # The first line shows that it runs.
        process.stderr.readline()
        time.sleep(0.2)
        process.send_signal(signal.SIGTERM)
        process.communicate(timeout=support.SECONDS)
        self.assertEqual(process.returncode, -signal.SIGTERM)
        self.assertEqual((os.listdir(folder), self.read("out")), ([], b""))


if __name__ == "__main__":
    support.main()
