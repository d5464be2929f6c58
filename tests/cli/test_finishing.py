"""What is done to a PDF when its pages are there: pages chosen and turned, its information, encryption."""

import os
import subprocess

import support
from support import line, pages

JOB = "".join(f"<< /PageSize [{number}00 500] >> setpagedevice 0 0 9 9 rectfill showpage\n" for number in range(1, 5))
TEXTS = ("--title", "Titel mit Ä", "--author", "somebody", "--subject", "tests", "--keywords", "one, two")


class FinishedPdfTest(support.CommandLineTest):
    dialect = ()

    def run_job(self, *arguments, job=JOB):
        self.write("job.ps", job)
        return self.run_program("job.ps", "-o", "job.pdf", *arguments)

    def inspect(self, *arguments, name="job.pdf"):
        command = ["qpdf", *arguments, self.path(name)]
        return subprocess.run(command, capture_output=True, text=True, timeout=support.SECONDS).stdout


class FinishingTest(FinishedPdfTest):
    def widths(self, *arguments):
        return [pdf_page["/MediaBox"][2] // 100 for pdf_page in self.convert(JOB, *arguments).pages]

    def test_pages_are_chosen_in_their_order(self):
        self.assertEqual(self.widths("--pages", "2-3,1"), [2, 3, 1])
        self.assertEqual(self.widths("--pages", "3-"), [3, 4])
        self.assertEqual(self.widths("--pages", "4-3"), [4, 3])

    def test_a_page_can_come_again(self):
        self.assertEqual(self.widths("--pages", "1,2,1"), [1, 2, 1])

    def test_pages_that_are_not_there_are_a_warning(self):
        result = self.run_job("--pages", "4-9")
        self.assertEqual(result.code, 5)
        self.assertIn("warning: not all of the pages", result.err)
        self.assertEqual(len(support.Pdf(self.path("job.pdf")).pages), 1)

    def test_no_page_of_those_that_are_there_is_a_usage_error(self):
        result = self.run_job("--pages", "5-9")
        self.assertEqual(result.code, 2)
        self.assertIn("which has 4 pages", result.err)
        self.assertEqual(self.files(), ["job.ps"])

    def test_pages_left_out_are_not_in_the_file(self):
        bookmark = "[ /Page 1 /View [/Fit] /Title (begin) /OUT pdfmark\n"
        pdf = self.convert(bookmark + JOB, "--pages", "3")
        boxes = [value["value"]["/MediaBox"] for value in pdf.objects.values()
                 if isinstance(value.get("value"), dict) and value["value"].get("/Type") == "/Page"]
        self.assertEqual(boxes, [[0, 0, 300, 500]])

    def test_pages_are_turned(self):
        for page in self.convert(JOB, "--rotate", "90").pages:
            self.assertEqual(page["/Rotate"], 90)
        self.assertEqual(self.convert(JOB, "--rotate", "-90").pages[0]["/Rotate"], 270)

    def test_information_goes_before_the_jobs_own(self):
        pdf = self.convert("%!PS-Adobe-3.0\n%%Title: own\n%%Creator: program\n%%EndComments\n" + JOB, *TEXTS)
        self.assertEqual(pdf.information("/Title"), "Titel mit Ä")
        self.assertEqual(pdf.information("/Author"), "somebody")
        self.assertEqual(pdf.information("/Subject"), "tests")
        self.assertEqual(pdf.information("/Keywords"), "one, two")
        self.assertEqual(pdf.information("/Creator"), "program")

    def test_an_empty_title_takes_the_jobs_away(self):
        pdf = self.convert("%!PS-Adobe-3.0\n%%Title: own\n%%EndComments\n" + JOB, "--title", "")
        self.assertIsNone(pdf.information("/Title"))

    def test_the_first_page_can_be_put_first(self):
        self.convert(JOB, "--linearize")
        self.assertIn("no linearization errors", self.inspect("--check-linearization"))

    def test_the_version_can_be_named(self):
        for version in ("1.4", "1.5", "2.0"):
            self.convert(JOB, "--pdf-version", version)
            self.assertTrue(self.read("job.pdf").startswith(b"%PDF-" + version.encode()))
        self.convert(JOB, "--pdf-version", "1.4")
        self.assertNotIn(b"/ObjStm", self.read("job.pdf"))

    def test_equal_jobs_give_equal_files(self):
        options = ("--pages", "2-3", "--rotate", "90", "--linearize", *TEXTS)
        self.convert(JOB, *options)
        first = self.read("job.pdf")
        self.convert(JOB, *options)
        self.assertEqual(self.read("job.pdf"), first)

    def test_each_page_can_have_a_file(self):
        self.write("job.ps", JOB)
        self.assertEqual(self.run_program("job.ps", "-o", "page-%03d.pdf", "--title", "each").code, 0)
        names = [f"page-00{number}.pdf" for number in range(1, 5)]
        self.assertEqual(self.files(), ["job.ps", *names])
        for number, name in enumerate(names, 1):
            pdf = support.Pdf(self.path(name))
            self.assertEqual([page["/MediaBox"][2] for page in pdf.pages], [number * 100])
            self.assertEqual(pdf.information("/Title"), "each")

    def test_chosen_pages_are_numbered_anew(self):
        self.write("job.ps", JOB)
        self.assertEqual(self.run_program("job.ps", "-o", "p%d.pdf", "--pages", "3-4").code, 0)
        self.assertEqual(self.files(), ["job.ps", "p1.pdf", "p2.pdf"])

    def test_complete_pages_before_an_error_are_finished_too(self):
        result = self.run_job("--rotate", "180", job=JOB + "nonsense\n")
        self.assertEqual(result.code, 6)
        self.assertEqual([page["/Rotate"] for page in support.Pdf(self.path("job.pdf")).pages], [180] * 4)

    def test_standard_output_gets_the_finished_pdf(self):
        result = self.run_program("-", "--pages", "2", stdin=JOB.encode())
        self.assertEqual(result.code, 0)
        self.write("out.pdf", result.out)
        self.assertEqual(support.Pdf(self.path("out.pdf")).media_box(0), [0, 0, 200, 500])

    def test_a_link_stays_and_the_file_behind_it_is_replaced(self):
        self.write("real.pdf", "before")
        os.symlink("real.pdf", self.path("job.pdf"))
        self.assertEqual(self.run_job("--pages", "1").code, 0)
        self.assertTrue(os.path.islink(self.path("job.pdf")))
        self.assertEqual(len(support.Pdf(self.path("real.pdf")).pages), 1)

    def test_content_cannot_be_finished(self):
        result = self.run_job("--content", "--pages", "1")
        self.assertEqual(result.code, 2)
        self.assertIn("--content", result.err)


class EncryptionTest(FinishedPdfTest):
    def encryption(self, password):
        return self.inspect("--show-encryption", f"--password={password}")

    def test_both_passwords_open_the_pdf(self):
        self.assertEqual(self.run_job("--user-password", "u", "--owner-password", "o").code, 0)
        self.assertIn("file encryption method: AESv3", self.encryption("u"))
        self.assertIn("Supplied password is owner password", self.encryption("o"))
        self.assertEqual(self.inspect("--show-npages"), "")

    def test_only_what_is_permitted_is_allowed(self):
        self.run_job("--owner-password", "o", "--permissions", "print-coarse,copy")
        rights = self.encryption("")
        for right in ("extract for any purpose", "print low resolution"):
            self.assertIn(right + ": allowed", rights)
        for right in ("print high resolution", "modify anything", "modify annotations", "modify forms"):
            self.assertIn(right + ": not allowed", rights)

    def test_everything_is_permitted_unless_said_otherwise(self):
        self.run_job("--owner-password", "o")
        self.assertNotIn("not allowed", self.encryption(""))

    def test_without_an_owners_password_the_users_is_the_owners(self):
        self.run_job("--user-password", "u")
        self.assertIn("Supplied password is owner password", self.encryption("u"))

    def test_encryption_wants_a_password(self):
        result = self.run_job("--encrypt")
        self.assertEqual(result.code, 2)
        self.assertIn("wants --user-password or --owner-password", result.err)


class DriversDialectTest(support.CommandLineTest):
    def test_pdfs_of_the_drivers_dialect_are_finished_too(self):
        pdf = self.convert(pages(line(1), line(2), line(3)), "--pages", "2-", "--title", "given")
        self.assertEqual(len(pdf.pages), 2)
        self.assertIn("2 w", pdf.content(0))
        self.assertEqual(pdf.information("/Title"), "given")


if __name__ == "__main__":
    support.main()
