"""A Slurm cluster on this machine: one controller and some nodes of one processor each, all on the
loopback, with a folder and ports of their own. Needs root, and Debian's slurm-wlm and munge.
"""

import contextlib
import os
import re
import signal
import socket
import subprocess
import time
from pathlib import Path

# A job that is queued again waits for as long as its credentials live: two minutes by default.
CONFIGURATION = """\
ClusterName=tintwell
SlurmctldHost={host}(127.0.0.1)
SlurmctldPort={ports[0]}
SlurmUser=root
SlurmdUser=root
AuthType=auth/munge
AuthInfo=socket={folder}/munge.socket,cred_expire=10
StateSaveLocation={folder}/state
SlurmctldPidFile={folder}/slurmctld.pid
SlurmdPidFile={folder}/slurmd-%n.pid
SlurmdSpoolDir={folder}/spool-%n
SlurmctldLogFile={folder}/slurmctld.log
SlurmdLogFile={folder}/slurmd-%n.log
ProctrackType=proctrack/pgid
TaskPlugin=task/none
SelectType=select/cons_tres
SelectTypeParameters=CR_Core
SchedulerParameters=sched_interval=5
MpiDefault=none
JobRequeue=1
ReturnToService=2
SlurmdTimeout=10
NodeName=n[1-{nodes}] NodeAddr=127.0.0.1 NodeHostname={host} Port=[{ports[1]}-{ports[2]}] CPUs=1
PartitionName=farm Nodes=ALL Default=YES MaxTime=INFINITE State=UP
"""


class ClusterError(Exception):
    """A cluster that does not come up, or a command that fails, in words."""


def free_ports(count):
    """The first of `count` neighbouring ports that nobody listens on."""
    for first in range(21000, 60000, 100):
        with contextlib.ExitStack() as held:
            try:
                for port in range(first, first + count):
                    sock = held.enter_context(socket.socket())
                    sock.bind(("127.0.0.1", port))
                return first
            except OSError:
                continue
    raise ClusterError("no free ports")


def processes_of(node):
    """All processes of jobs on a node, and the ones of Slurm itself that watch over them."""
    mark = f"SLURMD_NODENAME={node}".encode()
    found = []
    for process in Path("/proc").glob("[0-9]*"):
        with contextlib.suppress(OSError):
            if mark not in (process / "environ").read_bytes().split(b"\0"):
                continue
            found.append(int(process.name))
            parent = re.search(r"PPid:\s*(\d+)", (process / "status").read_text("utf-8"))[1]
            if Path(f"/proc/{parent}/comm").read_text("utf-8").startswith("slurmstepd"):
                found.insert(0, int(parent))
    return found


class Cluster:
    """Up within the `with`; `folder` is its own and holds every log."""

    def __init__(self, folder, nodes=3):
        self.folder = Path(folder)
        self.nodes = [f"n{number + 1}" for number in range(nodes)]
        self.daemons = {}
        self.environment = {**os.environ, "SLURM_CONF": str(self.folder / "slurm.conf")}

    def __enter__(self):
        try:
            self._configure()
            self._start_munge()
            self._start("slurmctld", ["slurmctld", "-D", "-f", self.folder / "slurm.conf"])
            for node in self.nodes:
                self.start_node(node)
            self.wait_for(lambda: self.states() == {node: "idle" for node in self.nodes},
                          60, "the nodes to come up")
        except BaseException:
            self._stop()
            raise
        return self

    def __exit__(self, *_):
        self._stop()

    def start_node(self, node):
        self._start(node, ["slurmd", "-D", "-N", node, "-f", self.folder / "slurm.conf"])

    def kill_node(self, node):
        """As when its power fails: the daemon and all that it runs."""
        daemon = self.daemons.pop(node)
        daemon.kill()
        for pid in processes_of(node):
            with contextlib.suppress(ProcessLookupError):
                os.kill(pid, signal.SIGKILL)
        daemon.wait()

    def run(self, *command):
        """The output of a Slurm command."""
        done = subprocess.run([str(word) for word in command], env=self.environment, text=True,
                              capture_output=True, check=False)
        if done.returncode != 0:
            raise ClusterError(f"{command[0]}: {done.stderr.strip()}")
        return done.stdout

    def submit(self, *command):
        """Submits a batch job; its number."""
        return self.run("sbatch", "--parsable", *command).strip()

    def states(self):
        """Node -> "idle", "mixed", "down" and so on."""
        lines = self.run("sinfo", "--noheader", "--Node", "--format=%N %T").splitlines()
        return {node: state.rstrip("*") for node, state in (line.split() for line in lines)}

    def tasks(self, job):
        """Task of an array job -> its state, its exit code and how often it was started again. Only
        those that the controller still knows: it forgets them five minutes after their end."""
        found = {}
        for record in self.run("scontrol", "--oneliner", "show", "job", job).splitlines():
            fields = dict(field.split("=", 1) for field in record.split() if "=" in field)
            found[fields.get("ArrayTaskId", "0")] = (
                fields["JobState"], int(fields["ExitCode"].split(":")[0]), int(fields["Restarts"]))
        return found

    def node_of(self, job):
        """A node that a task of the job runs on."""
        return self.run("squeue", "--noheader", f"--jobs={job}", "--states=RUNNING",
                        "--format=%N").split()[0]

    def wait_for(self, is_true, seconds, what):
        end = time.monotonic() + seconds
        while not is_true():
            if time.monotonic() > end:
                raise ClusterError(f"waited {seconds} s for {what}; nodes: {self.states()}")
            time.sleep(0.2)

    def _configure(self):
        first = free_ports(1 + len(self.nodes))
        (self.folder / "state").mkdir()
        for node in self.nodes:
            (self.folder / f"spool-{node}").mkdir()
        (self.folder / "slurm.conf").write_text(CONFIGURATION.format(
            host=socket.gethostname().split(".")[0], folder=self.folder, nodes=len(self.nodes),
            ports=(first, first + 1, first + len(self.nodes))), "utf-8")

    def _start_munge(self):
        key = self.folder / "munge.key"
        key.write_bytes(os.urandom(1024))
        key.chmod(0o400)
        self._start("munged", [
            "munged", "--force", "--foreground", f"--key-file={key}",
            *(f"--{kind}={self.folder}/munge.{kind.split('-')[0]}"
              for kind in ("socket", "pid-file", "log-file", "seed-file"))])
        self.wait_for_file(self.folder / "munge.socket")

    def wait_for_file(self, path):
        end = time.monotonic() + 20
        while not path.exists():
            if time.monotonic() > end:
                raise ClusterError(f"{path} does not appear")
            time.sleep(0.1)

    def _start(self, name, command):
        log = (self.folder / f"{name}.out").open("ab")
        with log:
            self.daemons[name] = subprocess.Popen(
                [str(word) for word in command], env=self.environment, stdin=subprocess.DEVNULL,
                stdout=log, stderr=log, start_new_session=True)

    def _stop(self):
        for process in self.daemons.values():
            process.terminate()
        for process in self.daemons.values():
            try:
                process.wait(20)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
