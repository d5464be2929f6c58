"""What becomes of the content text on its way into a page."""

import support
from support import line, pages


class ContentTest(support.CommandLineTest):
    def test_page_stands_between_a_save_and_a_restore(self):
        self.assertEqual(self.convert("%!\n1 setlinewidth\n").words(0), ["q", "1", "w", "Q"])

    def test_content_passes_as_the_six_functions_return_it(self):
        box = "0 0 moveto 9 0 lineto 9 9 lineto closepath"
        for body in [
            f"{box} gsave 0.5 setgray fill grestore stroke",
            f"{box} gsave gsave clip grestore newpath 1 1 moveto 2 2 lineto stroke grestore eofill",
            "gsave 2 2 scale 1 1 moveto 5 1 lineto 0.5 0.5 scale stroke grestore",
            "10 20 moveto 30 40 lineto [0 -1 1 0 5 6] concat stroke",
            "matrix currentmatrix 20 10 scale 0 0 1 0 90 arc setmatrix stroke",
            "1 2 3 4 rectclip 2 1 8 [2 0 0 1 0 0] (f*) image [3 5] 0 setdash",
        ]:
            job = f"%!\n{body}\n"
            self.assertEqual(self.convert(job).content(0), f"q\n{self.content(job)}Q\n")

    def test_text_is_taken_and_leaves_nothing(self):
        show = "/Helvetica findfont 12 scalefont setfont 10 10 moveto (abc) show 1 2 (a) ashow"
        self.assertEqual(self.convert(f"%!\n{show} 3 setlinewidth\n").words(0), ["q", "3", "w", "Q"])

    def test_open_saves_are_closed(self):
        words = self.convert("%!\ngsave gsave 1 setlinewidth gsave\n").words(0)
        self.assertEqual(words, "q q q 1 w q Q Q Q Q".split())

    def test_saves_do_not_reach_into_the_next_page(self):
        pdf = self.convert(pages("gsave gsave\n", line(2)))
        for page in range(2):
            words = pdf.words(page)
            self.assertEqual(words.count("q"), words.count("Q"))

    def test_restore_too_many_goes_back_to_the_state_of_the_page(self):
        words = self.convert("%!\n1 setlinewidth grestore 2 setlinewidth grestore grestore\n").words(0)
        self.assertEqual(words, "q 1 w Q q 2 w Q q Q q Q".split())

    def test_balanced_pairs_are_left_alone(self):
        words = self.convert("%!\ngsave gsave grestore grestore gsave grestore\n").words(0)
        self.assertEqual(words, "q q q Q Q q Q Q".split())

    def test_letters_in_inline_images_are_no_operators(self):
        data = "q Q\nQ q /PSI1 Do\nEI cm "
        image = f"{len(data)} 1 8 [1 0 0 1 0 0] ({data}) image\n"
        pdf = self.convert("%!\n" + image + "gsave\n")
        self.assertTrue(pdf.content(0).endswith("\nEI\nQ\nq Q\nQ\n"))
        self.assertEqual(pdf.resources(0, "/XObject"), {})

    def test_end_of_an_inline_image_in_its_data_is_none(self):
        data = "\nEI\nQ Q Q\nEI\nQ q"
        pdf = self.convert("%!\n" + f"{len(data)} 1 8 [1 0 0 1 0 0] ({data}) image\n5 setlinewidth\n")
        self.assertTrue(pdf.content(0).endswith(data + "\nEI\nQ\n5 w Q\n"))

    def test_end_of_an_image_mask_in_its_data_is_none(self):
        data = "\nEI\nQ Q Q\nEI\nQ q"
        mask = f"8 {len(data)} true [1 0 0 1 0 0] ({data}) imagemask\n5 setlinewidth\n"
        self.assertTrue(self.convert("%!\n" + mask).content(0).endswith(data + "\nEI\n5 w Q\n"))

    def test_image_mask_shorter_than_its_size_ends_at_its_end(self):
        mask = "80 80 true [1 0 0 1 0 0] (ab) imagemask gsave 80 80 true [1 0 0 1 0 0] (cd) imagemask\n"
        self.assertTrue(self.convert("%!\n" + mask).content(0).endswith("cd\nEI\nQ\nQ\n"))

    def test_inline_image_with_more_data_than_its_size_needs(self):
        pdf = self.convert("%!\n/DeviceGray setcolorspace 2 1 8 [1 0 0 1 0 0] (abQ Q) image gsave\n")
        self.assertTrue(pdf.content(0).endswith("\nID\nabQ Q\nEI\nQ\nq Q\nQ\n"))

    def test_long_page_is_written_in_several_streams(self):
        body = "dup 1000 div exch moveto 1.25 2.5 lineto stroke gsave 1 0 0 setrgbcolor grestore"
        job = f"%!\n0 1 60000 {{{body}}} for\n"
        pdf = self.convert(job)
        self.assertGreater(len(pdf.contents(0)), 2)
        self.assertEqual(" ".join(pdf.words(0)), " ".join(["q", *self.content(job).split(), "Q"]))

    def test_streams_of_a_page_are_cut_between_tokens(self):
        job = "%!\n0 1 60000 {dup 1000 div exch moveto 1.25 2.5 lineto stroke} for\n"
        pdf = self.convert(job)
        for stream in pdf.contents(0)[:-1]:
            self.assertIn(pdf.data(stream)[-1:], [b" ", b"\n"])

    def test_streams_are_not_cut_within_an_inline_image(self):
        data = "0123456789 \n" * 300
        image = f"/DeviceGray setcolorspace {len(data)} 1 8 [1 0 0 1 0 0] data image\n"
        job = f"%!\n/data ({data}) def 1 1 400 {{pop {image}}} for\n"
        pdf = self.convert(job)
        self.assertGreater(len(pdf.contents(0)), 2)
        for stream in pdf.contents(0):
            self.assertEqual(pdf.data(stream).count(b"BI\n"), pdf.data(stream).count(b"\nEI\n"))

    def test_streams_are_compressed(self):
        job = "%!\n1 1 1000 {pop 10 20 moveto 30 40 lineto stroke} for\n"
        self.convert(job)
        self.assertLess(len(self.read("job.pdf")), 2000)


class ContentOptionTest(support.CommandLineTest):
    def test_text_is_written_as_the_converter_makes_it(self):
        self.assertEqual(self.content("%!\n10 20 moveto 30 40 lineto stroke\n"), "10 20 m\n30 40 l\nS ")

    def test_pages_follow_each_other(self):
        job = pages("1 setlinewidth\n", "gsave\n", "grestore 3 setlinewidth\n")
        self.assertEqual(self.content(job), "1 w q Q 3 w ")

    def test_text_goes_to_a_file(self):
        self.write("job.ps", "%!\n1 setlinewidth\n")
        result = self.run_program("job.ps", "--content", "-o", "text")
        self.assertEqual((result.code, result.out, self.read("text")), (0, b"", b"1 w "))

    def test_no_pdf_is_written(self):
        self.content("%!\n")
        self.assertEqual(self.files(), ["job.ps"])

    def test_incomplete_page_is_left_out(self):
        self.write("job.ps", pages("1 setlinewidth\n", "2 setlinewidth wrong\n", "3 setlinewidth\n"))
        result = self.run_program("job.ps", "--content", "--chunk=1")
        self.assertEqual((result.code, result.out), (1, b"1 w "))

    def test_keep_going_goes_on_with_the_next_page(self):
        self.write("job.ps", pages("1 setlinewidth\n", "2 setlinewidth wrong\n", "3 setlinewidth\n"))
        result = self.run_program("job.ps", "--content", "--keep-going", "--chunk=1")
        self.assertEqual((result.code, result.out), (1, b"1 w 3 w "))

    def test_no_file_is_written_without_a_complete_page(self):
        self.write("job.ps", "%!\nwrong\n")
        self.assertEqual(self.run_program("job.ps", "--content", "-o", "text").code, 1)
        self.assertEqual(self.files(), ["job.ps"])


if __name__ == "__main__":
    support.main()
