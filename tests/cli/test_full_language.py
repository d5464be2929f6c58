"""Jobs in the whole language: what is written, what is said, and how the program ends."""

import os
import time

import support

PAGE = "0 0 50 50 rectfill showpage\n"


class FullLanguageTest(support.CommandLineTest):
    dialect = ()

    def run_job(self, job, *arguments):
        self.write("job.ps", job)
        return self.run_program("job.ps", "-o", "job.pdf", *arguments)

    def assert_partial(self, result, pages, says):
        """The job has failed, and the pages before are in the file."""
        self.assertEqual((result.code, result.out), (6, b""))
        self.assertIn(says, result.err)
        self.assertEqual(len(support.Pdf(self.path("job.pdf")).pages), pages)

    def assert_nothing_written(self, result, says):
        self.assertEqual((result.code, result.out), (1, b""))
        self.assertIn(says, result.err)
        self.assertEqual(self.files(), ["job.ps"])

    def test_the_whole_language_is_the_default(self):
        pdf = self.convert("%!PS\n<< /PageSize [200 100] >> setpagedevice\n" + PAGE)
        self.assertEqual(pdf.media_box(0), [0, 0, 200, 100])

    def test_the_dialect_can_be_named(self):
        self.assertEqual(len(self.convert("%!PS\n<< >> pop " + PAGE, "--dialect", "full").pages), 1)

    def test_the_drivers_dialect_can_be_asked_for(self):
        result = self.run_job("%!PS\nnonsense " + PAGE, "--dialect", "driver")
        self.assertEqual(result.code, 1)
        self.assertIn("NOTHING TO EXECUTE", result.err)

    def test_content_is_what_the_six_functions_write(self):
        self.write("job.ps", support.HEADER + "3 setlinewidth 0 0 moveto 3 9 lineto stroke showpage\n")
        self.assertIn(b"3 w", self.run_program("job.ps", "--content").out)

    def test_options_of_the_drivers_dialect_do_not_go_with_the_whole_language(self):
        for option in ("--content", "--objects", "--keep-going", "--chunk=1K"):
            result = self.run_job(PAGE, "--dialect", "full", option)
            self.assertEqual(result.code, 2)
            self.assertIn("--dialect driver", result.err)

    def test_standard_input_goes_to_standard_output(self):
        result = self.run_program("-", stdin=PAGE.encode())
        self.assertEqual((result.code, result.err), (0, ""))
        self.write("job.pdf", result.out)
        self.assertEqual(len(support.Pdf(self.path("job.pdf")).pages), 1)

    def test_pdf_goes_beside_the_job(self):
        self.write("job.ps", PAGE)
        self.assertEqual(self.run_program("job.ps").code, 0)
        self.assertEqual(self.files(), ["job.pdf", "job.ps"])

    def test_error_names_operator_page_and_place(self):
        result = self.run_job(PAGE + "1 0 div")
        self.assert_partial(result, 1, "job.ps: undefinedresult: div, page 2, byte 35\n")
        self.assertIn("job.pdf: 1 complete page written", result.err)

    def test_error_before_the_first_page_writes_nothing(self):
        self.assert_nothing_written(self.run_job("/a nonsense " + PAGE), "undefined: nonsense, page 1, byte 11")

    def test_an_error_leaves_an_earlier_file_alone(self):
        self.write("job.pdf", "precious")
        self.assertEqual(self.run_job("nonsense").code, 1)
        self.assertEqual(self.read("job.pdf"), b"precious")

    def test_an_error_writes_nothing_to_standard_output(self):
        self.assertEqual(self.run_program("-", stdin=b"nonsense").out, b"")

    def test_job_without_pages_writes_nothing(self):
        self.assert_nothing_written(self.run_job("%!PS\n1 pop"), "no page")

    def test_fewer_pages_than_promised_are_a_warning(self):
        result = self.run_job("%!PS-Adobe-3.0\n%%Pages: 3\n%%EndComments\n" + PAGE)
        self.assertEqual(result.code, 5)
        self.assertIn("warning: the job ends after 1 of 3 pages", result.err)
        self.assertEqual(len(support.Pdf(self.path("job.pdf")).pages), 1)

    def test_what_is_not_kept_is_a_warning(self):
        result = self.run_job("{1 exch sub} settransfer " + PAGE)
        self.assertEqual(result.code, 5)
        self.assertIn("warning: not kept in the PDF: transfer", result.err)

    def test_caught_errors_are_the_jobs_own_business(self):
        self.convert("{1 0 div} stopped pop clear\n" + PAGE)

    def test_a_job_that_does_not_end_is_ended(self):
        for endless in ("{} loop", "{1 pop} loop", "{gsave grestore} loop", "/p {p} def p"):
            begun = time.monotonic()
            result = self.run_job(PAGE + endless, "--timeout", "0.5")
            self.assert_partial(result, 1, "timeout")
            self.assertLess(time.monotonic() - begun, 10)

    def test_endless_pages_are_ended_in_time(self):
        result = self.run_job("{showpage} loop", "--timeout", "0.5")
        self.assertEqual(result.code, 6)
        self.assertIn("timeout", result.err)

    def test_memory_of_a_job_is_bounded(self):
        for greedy in ("[{1000 string} loop]", "[{100 string} loop]", "[{1 string} loop]", "2147483647 string", "{1} loop", "{10000 array} loop"):
            result = self.run_job(PAGE + greedy, "--max-memory", "20", "--timeout", "20")
            self.assertEqual(result.code, 6, greedy)
            self.assertRegex(result.err, "VMerror|stackoverflow|limitcheck|rangecheck")

    def test_depth_of_all_kinds_ends_in_an_error_of_the_language(self):
        for deep, error in {
            "{" * 400_000: "limitcheck|syntaxerror",
            "/p {p p} def p": "execstackoverflow",
            "200000 {gsave} repeat (x) nonsense": "limitcheck|undefined",
            "200000 {save} repeat": ".*",
            "/a [0] def a 0 a put a ==": ".*",
            "/a [0] def a 0 a put a a eq pop a length nonsense": "undefined",
            "{/f 1 dict def} pop 100000 {1 dict begin} repeat": "dictstackoverflow",
        }.items():
            result = self.run_job(PAGE + deep, "--timeout", "20")
            self.assertIn(result.code, (0, 5, 6), deep[:40])
            self.assertRegex(result.err, error)

    def test_files_of_the_machine_are_closed_to_a_job(self):
        self.write("secret.txt", "precious")
        reading = f"({self.path('secret.txt')}) (r) file 20 string readstring pop print flush\n"
        self.assertIn("invalidfileaccess", self.run_job(reading).err)
        self.assertEqual(self.run_job(f"({self.path('new')}) (w) file").code, 1)
        self.assertFalse(os.path.exists(self.path("new")))

    def test_a_folder_can_be_opened_to_a_job(self):
        os.mkdir(self.path("open"))
        self.write("open/known.txt", "well-known")
        reading = f"({self.path('open/known.txt')}) (r) file 20 string readstring pop print flush\n"
        result = self.run_job(reading + PAGE, "--allow-read", self.path("open"), "--messages")
        self.assertEqual((result.code, result.err), (0, "well-known"))
        writing = f"({self.path('open/new')}) (w) file\n"
        self.assertIn("invalidfileaccess", self.run_job(writing, "--allow-read", self.path("open")).err)

    def test_a_folder_that_is_not_there_cannot_be_opened(self):
        self.assertEqual(self.run_job(PAGE, "--allow-read", self.path("nowhere")).code, 2)

    def test_what_a_job_prints_is_shown_on_demand(self):
        self.assertEqual(self.run_job("(hello\\n) print " + PAGE).err, "")
        self.assertEqual(self.run_job("(hello\\n) print " + PAGE, "--messages").err, "hello\n")

    def test_media_is_the_page_of_jobs_that_ask_for_none(self):
        self.assertEqual(self.convert(PAGE, "--media", "100x200").media_box(0), [0, 0, 100, 200])
        asking = "<< /PageSize [300 400] >> setpagedevice " + PAGE
        self.assertEqual(self.convert(asking, "--media", "100x200").media_box(0), [0, 0, 300, 400])

    def test_encapsulated_jobs_are_cropped_to_their_box(self):
        job = "%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 10 20 110 70\n%%EndComments\n10 20 100 50 rectfill\n"
        self.assertEqual(self.convert(job).media_box(0), [10, 20, 110, 70])
        self.assertEqual(self.convert(job + "showpage", "--no-eps-crop").media_box(0), [0, 0, 595, 842])

    def test_a_name_that_ends_in_eps_makes_a_job_encapsulated(self):
        self.write("job.eps", "%!PS\n%%BoundingBox: 0 0 100 50\n%%EndComments\n0 0 100 50 rectfill\n")
        self.assertEqual(self.run_program("job.eps").code, 0)
        self.assertEqual(support.Pdf(self.path("job.pdf")).media_box(0), [0, 0, 100, 50])

    def test_title_and_creator_come_from_the_comments(self):
        pdf = self.convert("%!PS-Adobe-3.0\n%%Title: (A letter)\n%%Creator: a program\n%%EndComments\n" + PAGE)
        self.assertEqual(pdf.information("/Title"), "A letter")
        self.assertEqual(pdf.information("/Creator"), "a program")

    def test_output_that_would_replace_the_job_is_refused(self):
        self.write("job.ps", PAGE)
        self.assertEqual(self.run_program("job.ps", "-o", "job.ps").code, 2)

    def test_output_that_cannot_be_written_is_named(self):
        self.write("job.ps", PAGE)
        result = self.run_program("job.ps", "-o", "no/such/folder/job.pdf")
        self.assertEqual(result.code, 4)
        self.assertIn("no/such/folder/job.pdf", result.err)

    def test_job_that_is_not_there_is_named(self):
        self.assertEqual(self.run_program("none.ps", "-o", "job.pdf").code, 3)

    def test_same_job_makes_the_same_file(self):
        self.convert(PAGE)
        first = self.read("job.pdf")
        self.convert(PAGE)
        self.assertEqual(self.read("job.pdf"), first)


if __name__ == "__main__":
    support.main()
