#!/usr/bin/env python3
"""A study made over ssh by a machine that is this one: ssh_sweep_test.py CORVANE_SWEEP MILL. Skipped
(77) where sshd or GNU parallel is not there or does not start."""

import getpass
import os
import pathlib
import shutil
import socket
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, str(pathlib.Path(__file__).parent))
from study_results import rows, write_study

PATIENCE = 60  # seconds until sshd answers

CONFIGURATION = """ListenAddress 127.0.0.1
HostKey {folder}/host_key
AuthorizedKeysFile {folder}/user_key.pub
PidFile none
UsePAM no
StrictModes no
PasswordAuthentication no
PermitRootLogin prohibit-password
"""


class Sshd:
    """An sshd on a free port with keys of its own. `login` is a line for GNU parallel."""

    def __init__(self, program, folder):
        for name in ("host_key", "user_key"):
            subprocess.run(["ssh-keygen", "-q", "-t", "ed25519", "-N", "", "-f", folder / name],
                           check=True)
        (folder / "sshd_config").write_text(CONFIGURATION.format(folder=folder))
        with socket.socket() as free:
            free.bind(("127.0.0.1", 0))
            self.port = free.getsockname()[1]
        self.log = folder / "sshd.log"
        self.process = subprocess.Popen(
            [program, "-D", "-f", folder / "sshd_config", "-p", str(self.port), "-E", self.log])
        options = f"-i {folder}/user_key -o StrictHostKeyChecking=no -o UserKnownHostsFile=/dev/null"
        self.command = f"ssh -p {self.port} {options} -o LogLevel=ERROR"
        self.login = f"2/{self.command} {getpass.getuser()}@127.0.0.1\n"

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait()

    def answers(self):
        deadline = time.monotonic() + PATIENCE
        while self.process.poll() is None and time.monotonic() < deadline:
            words = [*self.command.split(), "-o", "BatchMode=yes",
                     f"{getpass.getuser()}@127.0.0.1", "true"]
            if subprocess.run(words, stderr=subprocess.DEVNULL).returncode == 0:
                return True
            time.sleep(0.1)
        return False

    def logins(self):
        return self.log.read_text().count("Accepted publickey")


def check(program, mill, folder, sshd):
    study = folder / "some.study"
    write_study(study, os.path.abspath(mill), ["seed = 1..3"])
    logins = folder / "machines"
    logins.write_text(sshd.login)
    subprocess.run([program, study, "-o", folder / "here"], check=True, stdout=subprocess.DEVNULL)
    before = sshd.logins()
    subprocess.run([program, study, "-o", folder / "there", "--sshloginfile", logins], check=True,
                   stdout=subprocess.DEVNULL)
    made = sshd.logins() - before
    if made < 1 or rows(folder / "there") != rows(folder / "here"):
        print(f"FAILED: {made} logins\n{rows(folder / 'here')}\n{rows(folder / 'there')}")
        return 1
    print(f"{made} logins, and the same table as made here")
    return 0


def main():
    program, mill = sys.argv[1:]
    sshd = shutil.which("sshd", path=os.environ.get("PATH", "") + ":/usr/sbin")
    if sshd is None or shutil.which("parallel") is None:
        print("skipped: there is no sshd or no GNU parallel")
        return 77
    if os.getuid() == 0:
        # Where root's sshd locks itself in; its service makes it at every start.
        pathlib.Path("/run/sshd").mkdir(mode=0o755, exist_ok=True)
    with tempfile.TemporaryDirectory(prefix="corvane-sweep-") as name:
        folder = pathlib.Path(name)
        with Sshd(sshd, folder) as server:
            if not server.answers():
                print("skipped: sshd does not start\n" + server.log.read_text(errors="replace"))
                return 77
            return check(program, mill, folder, server)


if __name__ == "__main__":
    sys.exit(main())
