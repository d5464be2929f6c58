"""A list of jobs, one of them broken, that the examples for many jobs convert."""

import os
import pathlib
import socket
import subprocess
import time

import support

EXAMPLES = pathlib.Path(__file__).resolve().parents[2] / "examples" / "scale"
PAGE = "0 0 50 50 rectfill showpage\n"
# Daemons are where only root's path leads.
PATH = os.environ["PATH"] + ":/usr/sbin"


def free_port():
    with socket.socket() as listener:
        listener.bind(("127.0.0.1", 0))
        return listener.getsockname()[1]


class ListOfJobsTest(support.CommandLineTest):
    dialect = ()

    def setUp(self):
        super().setUp()
        self.names = [f"job{number}" for number in range(6)]
        for name in self.names:
            self.write(name + ".ps", PAGE)
        self.write("job3.ps", "nonsense\n")
        self.write("list", "".join(name + ".ps\n" for name in self.names))

    def run_example(self, *command, **environment):
        variables = {**os.environ, "QUILLPRESS": support.PROGRAM, "HOME": self.folder, **environment}
        process = subprocess.run(command, cwd=self.folder, env=variables, timeout=support.SECONDS,
                                 capture_output=True, text=True)
        self.said = process.stdout + process.stderr
        return process.returncode

    def pdfs(self):
        return [name[:-4] for name in self.files() if name.endswith(".pdf")]

    def assert_fails_then_finishes(self, *command, **environment):
        """All but one job are done; when that is put right, the same command does it, and nothing else."""
        self.assertNotEqual(self.run_example(*command, **environment), 0)
        self.assertEqual(self.pdfs(), [name for name in self.names if name != "job3"], self.said)
        self.write("job3.ps", PAGE)
        self.write("job0.pdf", "kept")
        self.assertEqual(self.run_example(*command, **environment), 0, self.said)
        self.assertEqual(self.pdfs(), self.names)
        self.assertEqual(self.read("job0.pdf"), b"kept")

    def start(self, *command):
        """A daemon in the foreground, which ends with the test; what it says goes to a file named after it."""
        name = os.path.basename(command[0])
        with open(self.path(name + ".said"), "ab") as said:
            process = subprocess.Popen([str(word) for word in command], stdout=said, stderr=said,
                                       env={**os.environ, "PATH": PATH}, start_new_session=True)
        self.addCleanup(process.wait, support.SECONDS)
        self.addCleanup(process.terminate)
        return process

    def wait_for(self, what, condition):
        end = time.monotonic() + support.SECONDS / 2
        while not condition():
            if time.monotonic() > end:
                logs = [name for name in self.files() if name.endswith((".said", ".log"))]
                texts = [f"{name}:\n{self.read(name).decode('utf-8', 'replace')}" for name in logs]
                self.fail("\n".join([what + " does not start", *texts]))
            time.sleep(0.1)
