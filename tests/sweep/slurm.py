"""A Slurm of one node that lives as long as a test: its own munged, slurmctld and slurmd."""

import os
import pathlib
import pwd
import shutil
import socket
import subprocess
import tempfile
import time

PATIENCE = 60  # seconds for the daemons to be ready: nothing is expected to take long
PROGRAMS = ("munged", "slurmctld", "slurmd", "sbatch", "sinfo", "squeue", "scancel")

CONFIGURATION = """ClusterName=test
SlurmctldHost={host}(127.0.0.1)
SlurmUser={user}
SlurmdUser={user}
SlurmctldPort={controller}
SlurmdPort={daemon}
AuthType=auth/munge
AuthInfo=socket={folder}/munge.socket
CredType=cred/munge
StateSaveLocation={folder}/state
SlurmdSpoolDir={folder}/spool
SlurmctldPidFile={folder}/slurmctld.pid
SlurmdPidFile={folder}/slurmd.pid
SlurmctldLogFile={folder}/slurmctld.log
SlurmdLogFile={folder}/slurmd.log
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
SwitchType=switch/none
MpiDefault=none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
SchedulerParameters=batch_sched_delay=0,sched_min_interval=0
ReturnToService=2
NodeName={host} NodeAddr=127.0.0.1 CPUs={processors} State=UNKNOWN
PartitionName=test Nodes=ALL Default=YES State=UP
"""


class NotHere(Exception):
    """Slurm cannot be had on this machine, and why."""


def path_with_daemons():
    return os.environ.get("PATH", "") + ":/usr/sbin:/sbin"


def free_ports(count):
    sockets = [socket.socket() for _ in range(count)]
    for one in sockets:
        one.bind(("127.0.0.1", 0))
    ports = [one.getsockname()[1] for one in sockets]
    for one in sockets:
        one.close()
    return ports


class Slurm:
    """`environment` is what its clients need. Raises NotHere where it cannot be started."""

    def __init__(self):
        for program in PROGRAMS:
            if shutil.which(program, path=path_with_daemons()) is None:
                raise NotHere(f"there is no {program} (packages slurm-wlm and munge)")
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="corvane-slurm-"))
        self.environment = dict(os.environ, PATH=path_with_daemons(),
                                SLURM_CONF=str(self.folder / "slurm.conf"))
        self.daemons = []
        try:
            self._configure()
            self._start()
        except BaseException:
            self.close()
            raise

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        """Ends its jobs and its daemons, whatever state they are in."""
        if len(self.daemons) > 1:
            self.cancel()
        for daemon in reversed(self.daemons):
            daemon.terminate()
            try:
                daemon.wait(10)
            except subprocess.TimeoutExpired:
                daemon.kill()
                daemon.wait()
        shutil.rmtree(self.folder, ignore_errors=True)

    def client(self, *words):
        return subprocess.run(words, env=self.environment, capture_output=True, text=True).stdout

    def cancel(self):
        """Takes all jobs out, and waits until none is there."""
        user = pwd.getpwuid(os.getuid()).pw_name
        self.client("scancel", "--user", user)
        self._wait(lambda: not self.client("squeue", "--noheader").strip(), "its jobs do not end")

    def _configure(self):
        controller, daemon = free_ports(2)
        for name in ("state", "spool"):
            (self.folder / name).mkdir()
        key = self.folder / "munge.key"
        key.write_bytes(os.urandom(128))
        key.chmod(0o600)
        (self.folder / "slurm.conf").write_text(CONFIGURATION.format(
            host=socket.gethostname().split(".")[0], user=pwd.getpwuid(os.getuid()).pw_name,
            controller=controller, daemon=daemon, folder=self.folder,
            processors=os.cpu_count() or 1))

    def _start(self):
        files = [f"--{name}-file={self.folder}/munge.{name}" for name in ("key", "pid", "log", "seed")]
        self._daemon("munged", "--foreground", "--force", f"--socket={self.folder}/munge.socket",
                     *files)
        self._wait((self.folder / "munge.socket").exists, "munged does not start")
        self._daemon("slurmctld", "-D", "-c")
        self._daemon("slurmd", "-D")
        self._wait(lambda: self.client("sinfo", "--noheader", "--format=%T").strip() == "idle",
                   "slurmctld and slurmd do not start")

    def _daemon(self, *words):
        self.daemons.append(subprocess.Popen(
            words, env=self.environment, stdin=subprocess.DEVNULL,
            stdout=(self.folder / f"{words[0]}.out").open("w"), stderr=subprocess.STDOUT))

    def _wait(self, is_so, complaint):
        deadline = time.monotonic() + PATIENCE
        while not is_so():
            ended = [daemon for daemon in self.daemons if daemon.poll() is not None]
            if ended or time.monotonic() > deadline:
                raise NotHere(complaint + "\n" + self._last_words())
            time.sleep(0.1)

    def _last_words(self):
        texts = [path.read_text(errors="replace") for pattern in ("*.out", "*.log")
                 for path in sorted(self.folder.glob(pattern))]
        return "\n".join("\n".join(text.splitlines()[-3:]) for text in texts if text.strip())
