"""GNU parallel on two machines that share nothing but the network: two daemons of ssh, each with a folder of its own."""

import getpass
import os
import shutil
import socket
import subprocess

import scale_support
import support
from scale_support import EXAMPLES, PATH

HOSTS = ("one.example", "two.example")


def answers(port):
    with socket.socket() as client:
        return client.connect_ex(("127.0.0.1", port)) == 0


class MachinesTest(scale_support.ListOfJobsTest):
    def setUp(self):
        super().setUp()
        for program in ("sshd", "ssh", "ssh-keygen", "rsync", "parallel"):
            self.assertIsNotNone(shutil.which(program, path=PATH), f"{program}: scripts/setup installs it")
        if os.getuid() == 0:
            # Where the service's own script makes it.
            os.makedirs("/run/sshd", mode=0o755, exist_ok=True)
        subprocess.run(["ssh-keygen", "-q", "-t", "ed25519", "-N", "", "-f", self.path("key")], check=True,
                       timeout=support.SECONDS)
        client = ""
        for host in HOSTS:
            client += self.start_machine(host)
        self.write("ssh_config", client)

    def start_machine(self, host):
        """Returns what a client must know of it."""
        port = scale_support.free_port()
        os.mkdir(self.path(host))
        configuration = self.write(host + ".conf", f"""
ListenAddress 127.0.0.1
Port {port}
HostKey {self.path("key")}
AuthorizedKeysFile {self.path("key.pub")}
StrictModes no
PermitRootLogin yes
PasswordAuthentication no
PidFile none
MaxStartups 100
ForceCommand export HOME={self.path(host)}; cd && eval "$SSH_ORIGINAL_COMMAND"
""")
        self.start(shutil.which("sshd", path=PATH), "-D", "-e", "-f", configuration)
        self.wait_for("sshd", lambda: answers(port))
        return f"""
Host {host}
HostName 127.0.0.1
Port {port}
User {getpass.getuser()}
IdentityFile {self.path("key")}
IdentitiesOnly yes
StrictHostKeyChecking no
UserKnownHostsFile /dev/null
LogLevel ERROR
"""

    def test_jobs_go_to_two_machines_and_their_pdfs_come_back(self):
        hosts = ",".join("1/" + host for host in HOSTS)
        self.assert_fails_then_finishes(str(EXAMPLES / "parallel.sh"), "list", hosts,
                                        PARALLEL_SSH=f"ssh -F {self.path('ssh_config')}")
        lines = [line.split("\t") for line in self.read("list.done").decode().splitlines()[1:]]
        self.assertEqual({line[1] for line in lines}, set(HOSTS), lines)
        # Nothing stays behind.
        left = [name for host in HOSTS for name in os.listdir(self.path(host)) if not name.startswith(".")]
        self.assertEqual(left, [])


if __name__ == "__main__":
    support.main()
