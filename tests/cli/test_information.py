"""What the file says about itself."""

import support
from support import pages


class InformationTest(support.CommandLineTest):
    def title(self, value):
        return self.convert(pages("", header=f"%%Title: {value}\n")).information("/Title")

    def test_title_and_creator(self):
        pdf = self.convert(pages("", header="%%Title: Annual report\n%%Creator: Word processor\n"))
        self.assertEqual(pdf.information("/Title"), "Annual report")
        self.assertEqual(pdf.information("/Creator"), "Word processor")

    def test_producer_names_the_version(self):
        version = self.run_program("--version").out.decode().split()[1]
        self.assertEqual(self.convert("%!\n").information("/Producer"), f"Quillpress {version}")

    def test_creation_date(self):
        self.assertRegex(self.convert("%!\n").information("/CreationDate"), r"^D:20\d{12}Z$")

    def test_creation_date_may_be_given(self):
        self.write("job.ps", "%!\n")
        self.run_program("job.ps", SOURCE_DATE_EPOCH="86400")
        self.assertEqual(support.Pdf(self.path("job.pdf")).information("/CreationDate"), "D:19700102000000Z")

    def test_job_without_comments_has_no_title(self):
        pdf = self.convert("%!\n")
        self.assertIsNone(pdf.information("/Title"))
        self.assertIsNone(pdf.information("/Creator"))

    def test_title_in_parentheses(self):
        self.assertEqual(self.title("(Annual report)"), "Annual report")

    def test_escapes_in_parentheses(self):
        self.assertEqual(self.title("(a \\(b\\) \\\\ \\101\\344)"), "a (b) \\ A\xe4")

    def test_parentheses_within_a_title_stay(self):
        self.assertEqual(self.title("Report (draft)"), "Report (draft)")

    def test_title_in_hexadecimal(self):
        self.assertEqual(self.title("<416E6E75616C>"), "Annual")

    def test_title_in_sixteen_bits(self):
        self.assertEqual(self.title("<FEFF20AC0041>"), "\u20acA")

    def test_angle_brackets_around_other_text_stay(self):
        self.assertEqual(self.title("<draft>"), "<draft>")

    def test_title_in_utf_8(self):
        self.assertEqual(self.title("\u20ac \xe4".encode().decode("latin-1")), "\u20ac \xe4")

    def test_other_bytes_are_windows_1252(self):
        self.assertEqual(self.title("\x80 \xe4 \x93"), "\u20ac \xe4 \u201c")

    def test_title_at_the_end(self):
        job = pages("", header="%%Title: (atend)\n").replace("%%EOF", "%%Title: Late\n%%EOF")
        self.assertEqual(self.convert(job).information("/Title"), "Late")

    def test_first_title_counts(self):
        self.assertEqual(self.title("First\n%%Title: Second"), "First")

    def test_titles_of_resources_and_pages_do_not_count(self):
        job = pages("%%Title: page\n", prologue="%%BeginResource: x\n%%Title: resource\n%%EndResource\n")
        self.assertIsNone(self.convert(job).information("/Title"))

    def test_empty_title_is_none(self):
        self.assertIsNone(self.title(""))


if __name__ == "__main__":
    support.main()
