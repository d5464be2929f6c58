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

    def test_fewer_pages_than_the_trailer_promises_are_a_warning(self):
        result = self.run_job("%!PS-Adobe-3.0\n%%Pages: (atend)\n%%EndComments\n" + PAGE + "%%Trailer\n%%Pages: 2\n%%EOF\n")
        self.assertEqual(result.code, 5)
        self.assertIn("warning: the job ends after 1 of 2 pages", result.err)

    def test_a_trailer_left_over_from_another_document_promises_nothing(self):
        # As programs leave it that put several pages on one.
        result = self.run_job("%!PS-Adobe-3.0\n%%Pages: 1\n%%EndComments\n" + PAGE + "%%Trailer\n%%Pages: 2\n%%EOF\n")
        self.assertEqual(result.err, "")
        self.assertEqual(result.code, 0)

    def test_a_job_that_is_cut_off_gets_a_warning(self):
        for rest, where in {
            "(abc": "a string",
            "(abc\\": "a string",
            "<4142": "a string",
            "<~abc": "a string",
            "/a { 1 2 ": "a procedure",
            "{ (a) { 1": "a procedure",
            "2 2 8 [1 0 0 1 0 0] currentfile image\nab": "an image",
            "2 2 8 [1 0 0 1 0 0] {currentfile 2 string readhexstring pop} image\n4142": "an image",
            "2 2 8 [1 0 0 1 0 0] currentfile /ASCIIHexDecode filter /DCTDecode filter image\nffd8ff": "the data of a filter",
            "9 9 8 [1 0 0 1 0 0] currentfile /ASCII85Decode filter image\nGb": "the data of a filter",
            "currentfile /ASCIIHexDecode filter 9 string readstring\n4142": "the data of a filter",
            "{currentfile 2 string readstring pop} /RunLengthDecode filter 9 string readstring\na": "the data of a filter",
            "currentfile 0 (%%End) /SubFileDecode filter flushfile\nabc": "the data of a filter",
        }.items():
            result = self.run_job(PAGE + rest)
            self.assertEqual(result.code, 5, rest)
            self.assertRegex(result.err, f"^quillpress: job.ps: warning: the job ends within {where}, page 2, byte \\d+", rest)
            self.assertEqual(result.err.count("\n"), 1)
            self.assertEqual(len(support.Pdf(self.path("job.pdf")).pages), 1)

    def test_a_job_that_is_cut_off_before_its_first_page_writes_nothing(self):
        self.assert_nothing_written(self.run_job("/a (abc"), "syntaxerror, page 1, byte 7\n")

    def test_data_that_ends_where_the_program_says_so_is_no_warning(self):
        for whole in (
            "2 2 8 [1 0 0 1 0 0] {()} image " + PAGE,
            "({1) cvx stopped pop clear " + PAGE,
            PAGE + "currentfile 0 () /SubFileDecode filter flushfile\nabc",
            PAGE + "{currentfile 9 string readline {pop} {pop exit} ifelse} bind loop\nabc\ndef\n",
        ):
            result = self.run_job(whole)
            self.assertEqual((result.code, result.err), (0, ""), whole)

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

    def test_a_path_without_end_is_bounded(self):
        for growing in ("{1 1 lineto}", "{1 1 2 2 3 3 curveto}", "{closepath 1 1 lineto}", "{gsave 10000 {1 1 lineto} repeat}"):
            result = self.run_job(PAGE + "0 0 moveto " + growing + " loop", "--timeout", "60", "--max-memory", "100")
            self.assert_partial(result, 1, "limitcheck: ")

    def test_filters_that_nobody_needs_take_no_room(self):
        many = "100000 {(6162>) /ASCIIHexDecode filter 9 string readstring pop pop} repeat\n"
        self.assertEqual(self.run_job(many + PAGE, "--max-memory", "30").code, 0)

    def test_filters_over_filters_have_an_end(self):
        for kind in ("(abc) 100000 {/ASCIIHexDecode filter} repeat", "(abc) 100000 {/NullEncode filter} repeat"):
            self.assert_partial(self.run_job(PAGE + kind), 1, "limitcheck: filter")

    def test_images_beyond_all_measure_take_no_room(self):
        for source in ("currentfile", "{(abc)}", "(abc)"):
            result = self.run_job(PAGE + f"100000 100000 8 [1 0 0 1 0 0] {source} image", "--timeout", "1", "--max-memory", "50")
            self.assertIn(result.code, (5, 6), source)
            self.assertRegex(result.err, "timeout, page 2|ends within an image, page 2")

    def test_a_handler_that_fails_itself_has_an_end(self):
        # Each round leaves what it has pushed, and more of that makes fewer rounds.
        handler = "{" + "0 " * 100 + "nonsense}"
        self.assert_partial(self.run_job(PAGE + f"errordict /undefined {handler} put nonsense"), 1, "stackoverflow")

    def test_no_program_runs(self):
        for pipe in ("(%pipe%touch new) (w) file", "(%pipe%touch new) (r) file", "(|touch new) (r) file", "(%pipe%touch new) run"):
            self.assertEqual(self.run_job(pipe).code, 1, pipe)
            self.assertFalse(os.path.exists(self.path("new")), pipe)

    def test_files_are_neither_removed_nor_renamed(self):
        self.write("secret.txt", "precious")
        name = f"({self.path('secret.txt')})"
        for harm in (f"{name} deletefile", f"{name} ({self.path('new')}) renamefile", f"{name} (w) file", f"{name} (a) file", f"{name} (r+) file", f"{name} (w+) file"):
            for folder in ((), ("--allow-read", self.path("."))):
                self.assertEqual(self.run_job(harm, *folder).code, 1, harm)
                self.assertEqual(self.read("secret.txt"), b"precious")
                self.assertFalse(os.path.exists(self.path("new")))

    # Wine shows a link of this machine as the file itself.
    @support.posix_only
    def test_a_folder_that_is_open_does_not_open_those_beside_it(self):
        for folder in ("open", "open2"):
            os.mkdir(self.path(folder))
            self.write(folder + "/a.txt", "precious")
        os.symlink(self.path("open2/a.txt"), self.path("open/link.txt"))
        for name in ("open/../open2/a.txt", "open2/a.txt", "open/link.txt"):
            result = self.run_job(f"({self.path(name)}) (r) file " + PAGE, "--allow-read", self.path("open"))
            self.assertIn("invalidfileaccess", result.err, name)

    def test_depth_of_all_kinds_ends_in_an_error_of_the_language(self):
        for deep, error in {
            "{" * 400_000: "limitcheck",
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

    def test_comments_of_the_trailer_count_where_the_header_has_none(self):
        header = "%!PS-Adobe-3.0\n%%Title: First\n%%Creator: (atend)\n%%EndComments\n"
        trailer = "%%Trailer\n%%Title: Other\n%%Creator: early\n%%Creator: late\n%%EOF\n"
        pdf = self.convert(header + PAGE + trailer)
        self.assertEqual(pdf.information("/Title"), "First")
        self.assertEqual(pdf.information("/Creator"), "late")

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
