"""Batches: lists of jobs in several processes, reports, and runs that are interrupted and go on."""

import json
import os
import pathlib
import signal
import subprocess
import time

import support

PAGE = "0 0 50 50 rectfill showpage\n"
# Runs until somebody ends it.
ENDLESS = "%!PS endless\n{} loop\n"


class BatchTest(support.CommandLineTest):
    dialect = ()

    def write_jobs(self, count):
        names = [f"job{number}.ps" for number in range(count)]
        for name in names:
            self.write(name, PAGE)
        self.write("list", "".join(name + "\n" for name in names))
        return names

    def pdfs(self):
        return [name for name in self.files() if name.endswith(".pdf")]

    def records(self, name="report"):
        return [json.loads(line) for line in self.read(name).splitlines()]

    def lines_of_report(self):
        return self.read("report").count(b"\n") if os.path.exists(self.path("report")) else 0

    def start(self, *arguments):
        process = subprocess.Popen([support.PROGRAM, *arguments], cwd=self.folder, stderr=subprocess.PIPE)
        self.addCleanup(process.stderr.close)
        self.addCleanup(process.kill)
        return process

    def wait_for(self, condition):
        end = time.monotonic() + 30
        while time.monotonic() < end:
            found = condition()
            if found:
                return found
            time.sleep(0.01)
        self.fail("it has not come to pass")


class ManifestTest(BatchTest):
    def test_a_line_is_a_job_or_a_job_and_its_output(self):
        self.write("a.ps", PAGE)
        self.write("b c.ps", PAGE * 2)
        self.write("list", "a.ps\r\n\nb c.ps\tout.pdf\n")
        result = self.run_program("--batch", "list")
        self.assertEqual((result.code, result.err), (0, ""))
        self.assertEqual(self.pdfs(), ["a.pdf", "out.pdf"])
        self.assertEqual(len(support.Pdf(self.path("out.pdf")).pages), 2)

    def test_standard_input_can_be_the_manifest(self):
        self.write("a.ps", PAGE)
        os.mkdir(self.path("out"))
        self.assertEqual(self.run_program("--batch", "-", "-d", "out", stdin=b"a.ps").code, 0)
        self.assertEqual(os.listdir(self.path("out")), ["a.pdf"])

    def test_a_clash_is_an_error_before_anything_is_written(self):
        self.write_jobs(2)
        self.write("list", "job0.ps\njob1.ps\t./job0.pdf\n")
        result = self.run_program("--batch", "list", "--report", "report")
        self.assertEqual(result.code, 2)
        self.assertIn("would be written by job0.ps and by job1.ps", result.err)
        self.assertEqual(self.files(), ["job0.ps", "job1.ps", "list"])

    def test_a_line_that_is_neither_is_told_by_its_number(self):
        for line in ("\tout.pdf", "a.ps\t", "a.ps\tb\tc", "-", "a.ps\t-"):
            self.write("list", "x.ps\n" + line + "\n")
            result = self.run_program("--batch", "list")
            self.assertEqual(result.code, 2)
            self.assertIn("line 2 of the manifest", result.err)

    def test_a_manifest_that_cannot_be_read_is_an_input_error(self):
        for name in ("none", "."):
            self.assertEqual(self.run_program("--batch", name).code, 3)

    def test_no_jobs_are_done_at_once(self):
        self.write("list", "")
        self.assertEqual(self.run_program("--batch", "list").code, 0)

    def test_what_is_for_one_job_is_refused(self):
        self.write_jobs(1)
        for arguments in (("-o", "x.pdf"), ("--run",), ("--content",)):
            self.assertEqual(self.run_program("--batch", "list", *arguments).code, 2)

    def test_options_hold_for_each_job(self):
        self.write_jobs(2)
        self.assertEqual(self.run_program("--batch", "list", "--rotate", "90").code, 0)
        for name in self.pdfs():
            self.assertEqual(support.Pdf(self.path(name)).pages[0]["/Rotate"], 90)

    def test_parts_of_a_list_make_the_whole(self):
        self.write_jobs(5)
        self.assertEqual(self.run_program("--batch", "list", "--shard", "1/2").code, 0)
        self.assertEqual(self.pdfs(), ["job0.pdf", "job2.pdf", "job4.pdf"])
        self.assertEqual(self.run_program("--batch", "list", "--shard", "2/2").code, 0)
        self.assertEqual(len(self.pdfs()), 5)

    def test_numbers_that_cannot_be_are_usage_errors(self):
        self.write_jobs(1)
        for option in ("--jobs=0", "--jobs=x", "--jobs=1025", "--shard=0/2", "--shard=3/2", "--shard=1", "--shard=1/x"):
            self.assertEqual(self.run_program("--batch", "list", option).code, 2)


class ReportTest(BatchTest):
    def test_each_job_has_a_line(self):
        self.write("good.ps", PAGE * 2)
        self.write("wrong.ps", PAGE + "foo\n")
        self.write("short.ps", "%!PS-Adobe-3.0\n%%Pages: 9\n" + PAGE)
        self.write("list", "good.ps\nwrong.ps\nshort.ps\nnone.ps\n")
        self.assertEqual(self.run_program("--batch", "list", "--report", "report").code, 3)
        records = {record["job"]: record for record in self.records()}
        good = records["good.ps"]
        self.assertGreater(good.pop("milliseconds"), 0)
        self.assertEqual(good, {"job": "good.ps", "output": "good.pdf", "code": 0, "error": None, "message": None,
                                "page": None, "byte": None, "pages": 2, "warnings": [], "fonts": [],
                                "bytes": os.path.getsize(self.path("good.pdf"))})
        wrong = records["wrong.ps"]
        self.assertEqual([wrong[key] for key in ("code", "error", "page", "pages")], [6, "undefined", 2, 1])
        self.assertEqual(wrong["message"], f"undefined: foo, page 2, byte {wrong['byte']}")
        self.assertEqual(records["short.ps"]["warnings"], ["the job ends after 1 of 9 pages; it may be cut off"])
        self.assertEqual([records["none.ps"][key] for key in ("code", "error", "pages")], [3, None, 0])

    def test_fonts_that_others_stand_in_for_are_named(self):
        self.write("a.ps", "/NoSuchFont findfont 9 scalefont setfont 9 9 moveto (x) show showpage\n")
        self.assertEqual(self.run_program("a.ps", "--report", "report").code, 0)
        self.assertEqual(self.records()[0]["fonts"], ["NoSuchFont"])

    @support.posix_only
    def test_names_that_are_no_text_can_be_made_again(self):
        name = b"caf\xe9 \"1\".ps"
        with open(os.path.join(self.folder.encode(), name), "w", encoding="ascii") as file:
            file.write(PAGE)
        self.assertEqual(self.run_program("--batch", "-", "--report", "report", stdin=name).code, 0)
        self.assertEqual(os.fsencode(self.records()[0]["job"]), name)

    def test_a_report_that_cannot_be_written_is_an_output_error_before_anything_is_written(self):
        self.write_jobs(1)
        result = self.run_program("--batch", "list", "--report", "none/report")
        self.assertEqual((result.code, self.pdfs()), (4, []))
        self.assertIn("none/report cannot be written", result.err)

    def test_a_report_without_room_leaves_no_job_undone(self):
        self.write_jobs(3)
        result = self.run_program("--batch", "list", "--report", "/dev/full")
        self.assertEqual((result.code, len(self.pdfs())), (4, 3))

    def test_standard_output_can_take_the_report(self):
        self.write_jobs(2)
        result = self.run_program("--batch", "list", "--report", "-")
        self.assertEqual([json.loads(line)["code"] for line in result.out.splitlines()], [0, 0])

    def test_a_new_run_replaces_the_report(self):
        self.write_jobs(2)
        for _ in range(2):
            self.run_program("--batch", "list", "--report", "report")
            self.assertEqual(len(self.records()), 2)

    def test_a_summary_is_said_when_jobs_fail(self):
        self.write("wrong.ps", "foo\n")
        self.write("good.ps", PAGE)
        result = self.run_program("wrong.ps", "good.ps", "--jobs", "2")
        self.assertEqual(result.code, 1)
        self.assertIn("2 jobs: 1 done, 0 with warnings, 1 with errors, 0 skipped", result.err)


class GoingOnTest(BatchTest):
    def test_jobs_whose_output_is_there_are_left_alone(self):
        self.write_jobs(3)
        self.write("job1.pdf", "before")
        self.assertEqual(self.run_program("--batch", "list", "--skip-existing").code, 0)
        self.assertEqual(self.read("job1.pdf"), b"before")
        self.assertEqual(len(self.pdfs()), 3)

    def test_a_run_that_goes_on_keeps_the_report_and_completes_it(self):
        self.write_jobs(3)
        go_on = ("--batch", "list", "--skip-existing", "--report", "report")
        self.assertEqual(self.run_program("job0.ps", *go_on[2:]).code, 0)
        self.write("job1.pdf", "before")
        # As a run leaves it that is ended while it writes a line.
        with open(self.path("report"), "a", encoding="ascii") as report:
            report.write('{"job":"job2.ps","out')
        self.assertEqual(self.run_program(*go_on).code, 0)
        records = self.records()
        self.assertEqual([record["output"] for record in records], ["job0.pdf", "job1.pdf", "job2.pdf"])
        self.assertEqual([record.get("skipped", False) for record in records], [False, True, False])
        self.assertEqual(self.run_program(*go_on).code, 0)
        self.assertEqual(self.records(), records)

    @support.posix_only
    def test_an_interrupted_run_goes_on(self):
        names = self.write_jobs(40)
        self.write("job20.ps", ENDLESS)
        process = self.start("--batch", "list", "-j1", "--report", "report")
        self.wait_for(lambda: self.lines_of_report() == 20)
        process.send_signal(signal.SIGINT)
        self.assertEqual(process.wait(support.SECONDS), -signal.SIGINT)
        self.assertEqual(len(self.records()), 20)
        self.write("job20.ps", PAGE)
        self.assertEqual(self.run_program("--batch", "list", "--skip-existing", "--report", "report").code, 0)
        self.assertEqual(len(self.pdfs()), 40)
        self.assertEqual(sorted(record["job"] for record in self.records()), sorted(names))

    @support.posix_only
    def test_workers_end_with_the_run(self):
        self.write("a.ps", ENDLESS)
        process = self.start("a.ps", "-j1")
        worker = self.wait_for(lambda: children_of(process.pid))[0]
        process.kill()
        process.wait(support.SECONDS)
        self.wait_for(lambda: not is_running(worker))


def children_of(process):
    """The processes that one has started."""
    try:
        text = pathlib.Path(f"/proc/{process}/task/{process}/children").read_text(encoding="ascii")
    except (FileNotFoundError, ProcessLookupError):
        return []
    return [int(word) for word in text.split()]


def is_running(process):
    try:
        state = pathlib.Path(f"/proc/{process}/stat").read_text(encoding="ascii").rsplit(")", 1)[1].split()[0]
    except (FileNotFoundError, ProcessLookupError):
        return False
    return state != "Z"


class WorkerTest(BatchTest):
    @support.posix_only
    def test_a_worker_that_is_killed_costs_its_own_job_only(self):
        self.write_jobs(30)
        self.write("job7.ps", ENDLESS)
        process = self.start("--batch", "list", "-j1", "--report", "report")
        self.wait_for(lambda: self.lines_of_report() == 7)
        # The next job is given out right after the line is written.
        time.sleep(0.2)
        os.kill(self.wait_for(lambda: children_of(process.pid))[0], signal.SIGKILL)
        self.assertEqual(process.wait(support.SECONDS), 1)
        self.assertIn(b"job7.ps: its worker was ended by signal 9: Killed", process.stderr.read())
        self.assertEqual(len(self.pdfs()), 29)
        failed = [record for record in self.records() if record["code"] != 0]
        self.assertEqual([record["job"] for record in failed], ["job7.ps"])
        self.assertIn("signal 9", failed[0]["message"])
        self.assertEqual(len(self.records()), 30)

    @support.posix_only
    def test_workers_killed_at_any_moment_cost_no_more_than_a_job_each(self):
        self.write_jobs(300)
        process = self.start("--batch", "list", "-j2", "--report", "report")
        killed = 0
        while process.poll() is None:
            workers = children_of(process.pid)
            # What runs after the last job is no worker: a build that looks for leaks starts its search then.
            if self.lines_of_report() == 300:
                break
            for worker in workers:
                try:
                    os.kill(worker, signal.SIGKILL)
                    killed += 1
                except ProcessLookupError:
                    pass
            time.sleep(0.02)
        process.wait(support.SECONDS)
        records = self.records()
        failed = [record for record in records if record["code"] != 0]
        self.assertEqual(len(records), 300)
        self.assertGreater(killed, 0)
        self.assertLessEqual(len(failed), killed)
        # One may have been killed between putting its PDF in its place and saying so.
        self.assertGreaterEqual(len(self.pdfs()), 300 - len(failed))

    def test_several_workers_give_the_same_bytes_as_one_run_each(self):
        text = "/Helvetica findfont {0} scalefont setfont 9 99 moveto (text {0}) show showpage\n"
        for number in range(1, 9):
            self.write(f"t{number}.ps", text.format(number))
        names = [f"t{number}" for number in range(1, 9)]
        self.assertEqual(self.run_program("-j2", *[name + ".ps" for name in names]).code, 0)
        for name in names:
            self.run_program(name + ".ps", "-o", "alone.pdf")
            self.assertEqual(self.read(name + ".pdf"), self.read("alone.pdf"))

    def test_a_worker_makes_room_for_a_fresh_one(self):
        self.write("list", "".join(f"a.ps\tout{number}.pdf\n" for number in range(510)))
        self.write("a.ps", PAGE)
        self.assertEqual(self.run_program("--batch", "list", "-j1").code, 0)
        self.assertEqual(len(self.pdfs()), 510)


if __name__ == "__main__":
    support.main()
