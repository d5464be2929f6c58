"""An array of Slurm's on a cluster of one machine, started for the test and ended with it."""

import getpass
import json
import os
import shutil
import socket
import subprocess

import scale_support
import support
from scale_support import EXAMPLES, PAGE, PATH


class ArrayTest(scale_support.ListOfJobsTest):
    def setUp(self):
        super().setUp()
        for program in ("munged", "slurmctld", "slurmd", "sbatch"):
            self.assertIsNotNone(shutil.which(program, path=PATH), f"{program}: scripts/setup installs it")
        # Every process of the cluster must reach the socket.
        os.chmod(self.folder, 0o755)
        self.start_authentication()
        self.start_cluster()

    def start_authentication(self):
        os.mkdir(self.path("munge"), 0o755)
        key = self.write("munge/key", os.urandom(128))
        os.chmod(key, 0o400)
        places = [f"--{kind}-file={self.path('munge/' + kind)}" for kind in ("pid", "log", "seed", "key")]
        # It refuses to run as root, and below folders of others, unless it is told that this is meant.
        self.start(shutil.which("munged", path=PATH), "--foreground", "--force", *places,
                   f"--socket={self.path('munge/socket')}")
        self.wait_for("munged", lambda: os.path.exists(self.path("munge/socket")))

    def start_cluster(self):
        name = socket.gethostname().split(".")[0]
        for folder in ("state", "spool"):
            os.mkdir(self.path(folder))
        self.configuration = self.write("slurm.conf", f"""
ClusterName=one
SlurmctldHost={name}(127.0.0.1)
SlurmctldPort={scale_support.free_port()}
SlurmdPort={scale_support.free_port()}
SlurmUser={getpass.getuser()}
SlurmdUser={getpass.getuser()}
AuthType=auth/munge
AuthInfo=socket={self.path("munge/socket")}
StateSaveLocation={self.path("state")}
SlurmdSpoolDir={self.path("spool")}
SlurmctldPidFile={self.path("slurmctld.pid")}
SlurmdPidFile={self.path("slurmd.pid")}
SlurmctldLogFile={self.path("slurmctld.log")}
SlurmdLogFile={self.path("slurmd.log")}
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
JobAcctGatherType=jobacct_gather/none
AccountingStorageType=accounting_storage/none
SwitchType=switch/none
MpiDefault=none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
# The example asks for processors that this machine need not have.
SlurmdParameters=config_overrides
NodeName={name} NodeAddr=127.0.0.1 CPUs=8
PartitionName=all Nodes=ALL Default=YES
""")
        self.start(shutil.which("slurmctld", path=PATH), "-D", "-i", "-f", self.configuration)
        self.start(shutil.which("slurmd", path=PATH), "-D", "-f", self.configuration, "-N", name)
        self.wait_for("the cluster", self.is_idle)

    def is_idle(self):
        process = subprocess.run(["sinfo", "--noheader", "--format=%T"], capture_output=True, text=True,
                                 env={**os.environ, "SLURM_CONF": self.configuration}, timeout=support.SECONDS)
        return process.stdout.strip() == "idle"

    def run_array(self):
        return self.run_example("sbatch", "--wait", "--array=1-2", str(EXAMPLES / "array.sh"), "list",
                                SLURM_CONF=self.configuration)

    def test_a_failed_job_fails_its_task_and_the_array_finishes_the_rest(self):
        self.assertEqual(self.run_array(), 1, self.said)
        self.assertEqual(self.pdfs(), [name for name in self.names if name != "job3"], self.said)
        self.write("job3.ps", PAGE)
        self.write("job0.pdf", "kept")
        self.assertEqual(self.run_array(), 0, self.said)
        self.assertEqual(self.pdfs(), self.names)
        self.assertEqual(self.read("job0.pdf"), b"kept")
        for task, jobs in (("1", ["job0", "job2", "job4"]), ("2", ["job1", "job3", "job5", "job3"])):
            records = [json.loads(line) for line in self.read("list.report." + task).splitlines()]
            self.assertCountEqual([record["job"] for record in records], [job + ".ps" for job in jobs])


if __name__ == "__main__":
    support.main()
