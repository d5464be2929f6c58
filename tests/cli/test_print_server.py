"""A print server with the installed filter: jobs that clients print arrive as PDF files."""

import os
import pathlib
import pwd
import shutil
import socket
import subprocess
import tempfile
import time
import unittest

BUILD = os.environ["QUILLPRESS_BUILD"]
CMAKE = os.environ["CMAKE_COMMAND"]
SECONDS = 60
PATH = os.environ["PATH"] + ":/usr/sbin"

PROGRAM = """%!PS-Adobe-3.0
/Helvetica findfont 20 scalefont setfont
72 72 moveto (Words of the first page) show showpage
72 72 moveto (Words of the second page) show showpage
"""


def text_of(path):
    return subprocess.run(["pdftotext", path, "-"], capture_output=True, text=True, timeout=SECONDS).stdout


class Server:
    """A cupsd of its own in a folder: nothing of the machine's configuration, no discovery, no bus."""

    FOLDERS = ("root", "requests", "cache", "state", "tmp")

    def __init__(self, folder, prefix):
        self.folder = folder
        with socket.socket() as free:
            free.bind(("127.0.0.1", 0))
            self.address = f"127.0.0.1:{free.getsockname()[1]}"
        for name in self.FOLDERS:
            (folder / name).mkdir()
        user = "lp" if os.getuid() == 0 else pwd.getpwuid(os.getuid()).pw_name
        self.write("cups-files.conf", f"""
            ServerRoot {folder}/root
            ServerBin {prefix}/lib/cups
            DataDir /usr/share/cups
            RequestRoot {folder}/requests
            CacheDir {folder}/cache
            StateDir {folder}/state
            TempDir {folder}/tmp
            AccessLog {folder}/access_log
            ErrorLog {folder}/error_log
            PageLog {folder}/page_log
            User {user}
            Group {"lp" if user == "lp" else os.getgid()}
            SystemGroup root
            FileDevice Yes
            """)
        self.write("cupsd.conf", f"""
            Listen {self.address}
            LogLevel debug
            Browsing No
            WebInterface No
            DefaultAuthType None
            PageLogFormat %p %u %j %P %C
            <Location />
              Order allow,deny
              Allow all
            </Location>
            <Policy default>
              <Limit All>
                Order deny,allow
                Allow all
              </Limit>
            </Policy>
            """)
        shutil.copy(prefix / "share/cups/mime/quillpress.convs", folder / "root")
        self.process = subprocess.Popen(
            ["cupsd", "-f", "-c", folder / "cupsd.conf", "-s", folder / "cups-files.conf"],
            env={**os.environ, "PATH": PATH}, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
        self.wait_for("the server", self.answers)

    def write(self, name, text):
        (self.folder / name).write_text("".join(line.strip() + "\n" for line in text.splitlines()))

    def log(self):
        path = self.folder / "error_log"
        if not path.exists():
            return "(it has written no log)"
        lines = path.read_text(errors="replace").splitlines()
        return "\n".join(line for line in lines if "[Job " in line or line.startswith(("E ", "W ", "X ")))

    def answers(self):
        if self.process.poll() is not None:
            raise AssertionError(f"cupsd does not start here: {self.process.stderr.read()}\n{self.log()}")
        return subprocess.run(["lpstat", "-h", self.address, "-r"], capture_output=True, text=True,
                              timeout=SECONDS).stdout.startswith("scheduler is running")

    def wait_for(self, what, condition):
        end = time.monotonic() + SECONDS
        while time.monotonic() < end:
            if condition():
                return
            time.sleep(0.05)
        raise AssertionError(f"{what}: nothing after {SECONDS} seconds\n{self.log()}")

    def ask(self, program, *arguments, **options):
        process = subprocess.run([program, "-h", self.address, *arguments], capture_output=True, text=True,
                                 timeout=SECONDS, env={**os.environ, "PATH": PATH}, **options)
        if process.returncode != 0:
            raise AssertionError(f"{program} {arguments}: {process.stderr}\n{self.log()}")
        return process.stdout

    def jobs(self, which):
        return [line.split()[0] for line in self.ask("lpstat", "-W", which, "-o").splitlines()]

    def stop(self):
        self.process.terminate()
        self.process.communicate(timeout=SECONDS)


class PrintServerTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        for program in ("cupsd", "lp", "lpadmin", "cancel", "pdftotext"):
            if shutil.which(program, path=PATH) is None:
                raise AssertionError(f"{program} is missing: scripts/setup installs it")
        folder = tempfile.TemporaryDirectory(prefix="quillpress-test-")
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)
        # Filters run as another user.
        cls.folder.chmod(0o755)
        prefix = cls.folder / "prefix"
        for component in ("library", "program"):
            subprocess.run([CMAKE, "--install", BUILD, "--prefix", prefix, "--strip", "--component", component],
                           check=True, timeout=SECONDS, stdout=subprocess.DEVNULL, umask=0o022)
        # By which the server starts filters.
        (prefix / "lib/cups/daemon").symlink_to("/usr/lib/cups/daemon")
        cls.server = Server(cls.folder, prefix)
        cls.addClassCleanup(cls.server.stop)
        cls.printed = cls.folder / "printed.pdf"
        cls.server.ask("lpadmin", "-p", "pdf", "-E", "-v", f"file:{cls.printed}", "-P",
                       prefix / "share/ppd/quillpress/quillpress.ppd")

    def start(self, job, *options):
        answer = self.server.ask("lp", "-U", "alice", "-d", "pdf", *options, "-", input=job)
        # "request id is pdf-1 (0 file(s))"
        return answer.split()[3]

    def print_job(self, job, *options):
        name = self.start(job, *options)
        self.server.wait_for(name, lambda: name in self.server.jobs("completed"))
        return name

    def test_the_words_arrive(self):
        name = self.print_job(PROGRAM, "-t", "Report", "-n", "2")
        text = text_of(self.printed)
        self.assertIn("Words of the first page", text, self.server.log())
        self.assertIn("Words of the second page", text)
        information = subprocess.run(["pdfinfo", self.printed], capture_output=True, text=True, timeout=SECONDS).stdout
        self.assertRegex(information, "Title: +Report\n")
        self.assertRegex(information, "Author: +alice\n")
        number = name.split("-")[1]
        pages = [line for line in (self.folder / "page_log").read_text().splitlines() if f" {number} " in line]
        self.assertEqual(pages, [f"pdf alice {number} total 4"])

    def test_options_reach_the_filter(self):
        self.print_job(PROGRAM, "-o", "page-ranges=2-2", "-o", "media=Letter")
        self.assertEqual(text_of(self.printed).strip(), "Words of the second page")

    def test_jobs_of_windows_drivers(self):
        """Those begin with what tells a printer its language."""
        self.print_job("\x1b%-12345X@PJL JOB\r\n@PJL ENTER LANGUAGE=POSTSCRIPT \r\n" + PROGRAM + "\x04\x1b%-12345X")
        self.assertIn("Words of the first page", text_of(self.printed), self.server.log())

    def test_a_job_with_an_error_is_stopped_and_the_queue_goes_on(self):
        name = self.start("%!PS\nnonsense\n")
        stopped = f"[Job {name.split('-')[1]}] Job stopped due to filter errors"
        self.server.wait_for(name, lambda: stopped in self.server.log())
        self.assertRegex(self.server.log(), "undefined: nonsense")
        self.print_job(PROGRAM)
        self.assertIn("Words of the first page", text_of(self.printed))

    def test_a_job_is_cancelled(self):
        name = self.start("%!PS\nshowpage {} loop\n")
        self.server.wait_for("the filter", lambda: f"[Job {name.split('-')[1]}] pstopdf-quillpress" in self.server.log())
        self.server.ask("cancel", name)
        self.server.wait_for(name, lambda: name not in self.server.jobs("not-completed"))
        self.server.wait_for("the end of the filter", lambda: "terminated normally with signal 15" in self.server.log()
                             or "stopped with status 15" in self.server.log())
        self.print_job(PROGRAM)
        self.assertIn("Words of the first page", text_of(self.printed))


if __name__ == "__main__":
    unittest.main()
