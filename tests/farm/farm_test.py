"""A sequence has the same bytes from a Slurm cluster, from GNU parallel and from one machine.

usage: farm_test.py tintwell-host [unittest's arguments]
"""

import os
import re
import shlex
import subprocess
import sys
import tempfile
import unittest
from hashlib import sha256
from pathlib import Path

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent.parent
sys.path.insert(0, str(HERE))

from slurm_cluster import Cluster  # noqa: E402

LOOK = ROOT / "examples/golden-hour.cube"
FRAMES = 48
CHUNK = 8
ENDED = {"COMPLETED", "FAILED", "CANCELLED", "TIMEOUT", "NODE_FAIL"}


def render(*arguments):
    subprocess.run([HOST, "render", *map(str, arguments)], check=True)


def files(folder):
    """Name -> hash of the contents."""
    return {file.name: sha256(file.read_bytes()).hexdigest()
            for file in sorted(Path(folder).iterdir())}


class Farm(unittest.TestCase):
    """The cluster, a sequence of different pictures, and what one machine makes of it."""

    @classmethod
    def setUpClass(cls):
        work = tempfile.TemporaryDirectory()
        cls.addClassCleanup(work.cleanup)
        cls.work = Path(work.name)
        for name in ("home", "cluster", "in", "alone"):
            (cls.work / name).mkdir()
        os.environ["HOME"] = str(cls.work / "home")
        os.environ["TINTWELL_HOST"] = str(HOST)
        for frame in range(1, FRAMES + 1):
            subprocess.run([HOST, "pattern", "--size", str(frame + 1), "--frame", "640x360",
                            str(cls.work / f"in/{frame:04}.png")], check=True)
        cls.sequence = cls.work / "in/%04d.png"
        render(cls.sequence, cls.work / "alone/%04d.tif", "--depth", "float", "--lut", LOOK)
        cls.expected = files(cls.work / "alone")
        assert len(set(cls.expected.values())) == FRAMES
        cls.cluster = cls.enterClassContext(Cluster(cls.work / "cluster"))

    def setUp(self):
        self.out = self.work / self.id().split(".")[-1]
        self.out.mkdir()
        self.logs = self.out.with_suffix(".logs")
        self.logs.mkdir()

    def submit(self, look=LOOK, frames=f"1-{FRAMES}:{CHUNK}"):
        return self.cluster.submit(
            f"--array={frames}", f"--chdir={self.logs}", ROOT / "examples/farm/slurm.sh",
            self.sequence, self.out / "%04d.tif", "--depth", "float", "--lut", look)

    def wait_for_end(self, job):
        self.cluster.wait_for(
            lambda: all(state in ENDED for state, _, _ in self.cluster.tasks(job).values()),
            300, f"job {job} to end")
        return self.cluster.tasks(job)

    def log(self):
        return "\n".join(file.read_text("utf-8") for file in sorted(self.logs.iterdir()))

    def test_three_nodes_give_the_bytes_of_one_machine(self):
        tasks = self.wait_for_end(self.submit())
        self.assertEqual({task[0] for task in tasks.values()}, {"COMPLETED"}, self.log())
        self.assertEqual(len(tasks), FRAMES // CHUNK)
        self.assertEqual(files(self.out), self.expected)

    def test_a_chunk_past_the_end_is_cut(self):
        tasks = self.wait_for_end(self.submit(frames=f"1-{FRAMES}:20"))
        self.assertEqual({task[0] for task in tasks.values()}, {"COMPLETED"}, self.log())
        self.assertEqual(files(self.out), self.expected)

    def test_the_work_of_a_killed_node_is_done_by_others(self):
        job = self.submit()
        self.cluster.wait_for(lambda: len(files(self.out)) > 3, 60, "the first frames")
        node = self.cluster.node_of(job)
        self.cluster.kill_node(node)
        self.addCleanup(self.cluster.start_node, node)
        tasks = self.wait_for_end(job)
        self.assertEqual({task[0] for task in tasks.values()}, {"COMPLETED"}, self.log())
        self.assertGreaterEqual(max(task[2] for task in tasks.values()), 1, "nothing was requeued")
        self.assertEqual(files(self.out), self.expected)

    def test_a_wrong_look_fails_once_and_says_why(self):
        broken = self.out.with_suffix(".cube")
        broken.write_text("LUT_3D_SIZE 2\n0 0 0\n", "ascii")
        tasks = self.wait_for_end(self.submit(look=broken, frames="1-8:8"))
        self.assertEqual(list(tasks.values()), [("FAILED", 1, 0)], self.log())
        self.assertEqual(len(re.findall(re.escape(f"cannot use '{broken}'"), self.log())), 1,
                         self.log())
        self.assertEqual(files(self.out), {})

    def test_two_workers_of_gnu_parallel_give_the_same_bytes(self):
        program, look, out = (shlex.quote(str(path)) for path in (HOST, LOOK, self.out))
        subprocess.run(
            ["parallel", "-j2", "--will-cite", "--halt", "now,fail=1",
             f"{program} render {self.sequence} {out}/%04d.tif --depth float --lut {look}"
             " --frames {}", ":::", *(f"{first}-{first + CHUNK - 1}"
                                      for first in range(1, FRAMES + 1, CHUNK))],
            check=True)
        self.assertEqual(files(self.out), self.expected)


if __name__ == "__main__":
    HOST = Path(sys.argv.pop(1)).resolve()
    unittest.main()
