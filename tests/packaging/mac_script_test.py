"""scripts/mac on a copy of its own, with stand-ins for the system's programs and for what it builds."""

import importlib.machinery
import importlib.util
import re
import shutil
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path
from unittest import mock

sys.path.insert(0, str(Path(__file__).resolve().parent))

from stand_ins import PROGRAM, StandIns  # noqa: E402

ROOT = Path(__file__).resolve().parents[2]
JUNIT = """<testsuite>
<testcase name="A.passes" status="run"/><testcase name="B.passes" status="run"/>
<testcase name="C.is_left_out" status="notrun"><skipped message="X"/><system-out>
x.cpp:1: Skipped
no AVX-512
</system-out></testcase>
%s</testsuite>
"""
LOG = "Library/Application Support/Tintwell/effect.log"
TOOLS = {
    "uname": "echo Darwin", "sw_vers": "echo 15.2", "sysctl": 'echo "told of $2"',
    "system_profiler": 'printf "Chipset Model: Apple M9\\nChipset Model: Another\\n"',
    "xcrun": 'printf "clang 99\\nmore\\n"', "git": "echo abc",
    "brew": '[ "$1" != --prefix ] || echo "/brew/$2"',
    "cmake": 'echo "told of ${PKG_CONFIG_PATH:-}"; [ "$4" != all ] || :',
    "ctest": 'for word; do [ "${before:-}" != --output-junit ] || cp "$STAND_INS/junit" "$word";'
             ' before=$word; done',
    "codesign": '[ "$1" != --display ] || echo "Signature=adhoc"', "xattr": "exit 1",
}
BUILT = {
    "tests/gpu/metal_report": ("metal_report", 'printf "# The kernel on Apple M9\\n\\n## Picture\\n"'),
    "tests/platform/show_dialogs": ("show_dialogs", 'echo shown; : >"$TINTWELL_PICTURES/alert.png"'),
    "tests/host_sim/load_module": ("load_module", f'mkdir -p "$HOME/{Path(LOG).parent}"; '
                                   f'echo "a line" >"$HOME/{LOG}"; echo loaded'),
    "packaging/print_identity": ("print_identity", 'echo "{}"'),
}
# Homebrew's names of what CMake looks for.
FORMULAE = {"CLI11": "cli11", "nlohmann_json": "nlohmann-json", "TBB": "tbb", "PkgConfig": "pkg-config",
            "GTest": "googletest", "OpenImageIO": "openimageio", "libarchive": "libarchive", "expat": "expat",
            "cairo": "cairo", "cairo-svg": "cairo", "lcms2": "little-cms2"}


def script():
    """The script as a module."""
    loader = importlib.machinery.SourceFileLoader("mac", str(ROOT / "scripts/mac"))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader("mac", loader))
    with mock.patch.object(sys, "dont_write_bytecode", True):
        loader.exec_module(module)
    return module


def required(cmake):
    """What a CMakeLists.txt looks for and does not do without, but for clips."""
    for words in re.findall(r"(?:find_package|pkg_check_modules)\(([^)]*)\)", cmake):
        name, *rest = words.split()
        if "REQUIRED" in rest and name != "FFmpeg":
            modules = [word for word in rest if word not in ("REQUIRED", "GLOBAL", "IMPORTED_TARGET")]
            yield from modules or [name]


class MacScript(unittest.TestCase):
    def setUp(self):
        work = tempfile.TemporaryDirectory()
        self.addCleanup(work.cleanup)
        self.tree = Path(work.name) / "a tree"
        (self.tree / "scripts").mkdir(parents=True)
        shutil.copy(ROOT / "scripts/mac", self.tree / "scripts/mac")
        (self.tree / "packaging").mkdir()
        (self.tree / "packaging/check_bundle.py").write_text("print('agree')\n")
        hardened = {f"{name}": "echo loaded" for name in
                    ("with-the-library-validation-exception", "without-it")}
        self.tools = StandIns(Path(work.name) / "stand-ins",
                              {**TOOLS, **hardened, **dict(BUILT.values())})
        (self.tools.folder / "junit").write_text(JUNIT % "")
        for path, (name, _) in BUILT.items():
            program = self.tree / "build/macos-tests" / path
            program.parent.mkdir(parents=True, exist_ok=True)
            program.write_text(PROGRAM)
            program.chmod(0o755)

    def run_script(self, *arguments, **settings):
        done = self.tools.run([sys.executable, "scripts/mac", *arguments], self.tree, **settings)
        report = self.tree / "build/mac-report.md"
        self.report = report.read_text() if report.exists() else ""
        return done

    def test_reports_on_every_part(self):
        done = self.run_script()
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr + self.report)
        for words in ("Everything went as it should.", "| System | 15.2 |", "| GPU | Apple M9<br>Another |",
                      "| Compiler | clang 99 |", "| bundle built | done,", "| passed | 2 |", "| failed | 0 |",
                      "| 1 skipped | no AVX-512 |", "### The kernel on Apple M9", "### Picture",
                      "![alert](mac-pictures/alert.png)", "a line", "| Signed by |", "Signature=adhoc",
                      "| Quarantine | none |", "| with the library-validation exception | loaded |",
                      "| without it | loaded |"):
            self.assertIn(words, self.report)

    def test_signs_one_host_with_the_exception_and_one_without(self):
        self.run_script()
        signed = [call for call in self.tools.calls if call[:2] == ["codesign", "--force"]]
        common = ["codesign", "--force", "--options", "runtime"]
        folder = str(self.tree / "build/mac-hardened")
        self.assertEqual(signed, [
            common + ["--entitlements", "packaging/host.entitlements", "--sign", "-",
                      f"{folder}/with-the-library-validation-exception"],
            common + ["--sign", "-", f"{folder}/without-it"]])
        self.assertTrue((ROOT / "packaging/host.entitlements").exists())

    def test_installs_nothing_when_told_so(self):
        self.run_script()
        self.assertIn(["brew", "install"], [call[:2] for call in self.tools.calls])
        self.run_script("--no-install")
        self.assertNotIn(["brew", "install"], [call[:2] for call in self.tools.calls])

    def test_installs_what_the_build_cannot_do_without(self):
        for file in ("tintwell_host/CMakeLists.txt", "tests/CMakeLists.txt"):
            for name in required((ROOT / file).read_text()):
                self.assertIn(name, FORMULAE, file)
                self.assertIn(FORMULAE[name], script().LIBRARIES, file)

    def test_leaves_a_cmake_that_is_there(self):
        self.run_script()
        installed = next(call for call in self.tools.calls if call[:2] == ["brew", "install"])
        self.assertIn("tbb", installed)
        self.assertNotIn("cmake", installed)

    def test_shows_pkg_config_what_homebrew_keeps_to_itself(self):
        self.run_script(PKG_CONFIG_PATH="/own")
        log = next((self.tree / "build/mac-logs").glob("*-configuring-the-tests.log"))
        self.assertEqual(log.read_text(), "told of /brew/libarchive/lib/pkgconfig:"
                                          "/brew/expat/lib/pkgconfig:/own\n")

    def test_ends_what_takes_too_long_and_keeps_its_output(self):
        mac = script()
        mac.LOGS = self.tree
        begun = self.tree / "begun"
        wait_for_end = subprocess.Popen.communicate

        def lose_patience(process, *arguments, timeout=None, **more):
            if timeout is None:
                return wait_for_end(process, *arguments, **more)
            while not begun.exists():
                time.sleep(0.01)
            raise subprocess.TimeoutExpired(process.args, timeout)

        with mock.patch.object(subprocess.Popen, "communicate", lose_patience):
            run = mac.Report().run("sleeping", "bash", "-c",
                                   f"echo begun; (sleep 20; echo 'still here') & :>'{begun}'; wait")
        self.assertNotEqual(run.status, 0)
        self.assertRegex(run.output, r"\Abegun\nCommand .* timed out after 3600 seconds\n\Z")
        self.assertEqual((self.tree / "01-sleeping.log").read_text(), run.output)

    def test_names_tests_that_failed(self):
        (self.tools.folder / "junit").write_text(JUNIT % '<testcase name="D.fails" status="fail"/>')
        self.run_script()
        self.assertIn("| failed | D.fails |", self.report)

    def test_a_program_that_does_not_build_is_told_and_the_rest_goes_on(self):
        (self.tree / "build/macos-tests/tests/gpu/metal_report").unlink()
        done = self.run_script()
        self.assertEqual(done.returncode, 1)
        self.assertRegex(self.report, r"- the kernel on the Metal device failed \(127\): .*No such file")
        self.assertIn("| without it | loaded |", self.report)

    def test_a_missing_log_is_told(self):
        self.tools.does("load_module", "echo loaded")
        done = self.run_script()
        self.assertEqual(done.returncode, 1)
        self.assertIn("- The log is not where it belongs: ", self.report)

    def test_every_step_that_fails_is_told_and_none_stops_the_others(self):
        self.run_script()
        calls = self.tools.calls
        # Without the exception a refusal is an answer, and what describes the machine may be missing.
        answers = {"uname", "sw_vers", "sysctl", "system_profiler", "xcrun", "git", "xattr", "without-it"}
        done = self.run_script(FAIL=" ".join({call[0] for call in calls} - {"uname"}))
        self.assertEqual(self.tools.calls, calls)
        self.assertEqual(done.returncode, 1)
        wrong = [call for call in calls
                 if call[0] not in answers and not {"--display", "--prefix"} & set(call)]
        self.assertEqual(self.report.count(" failed (7): "), len(wrong), self.report)
        self.assertIn("- The log is not where it belongs: ", self.report)
        self.assertIn("None was run.", self.report)

    def test_is_for_a_mac_and_takes_one_option(self):
        self.assertEqual(self.run_script("--everything").stderr, "usage: scripts/mac [--no-install]\n")
        self.tools.does("uname", "echo Linux")
        done = self.run_script()
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stderr, "mac: this is for a Mac; on Linux there is scripts/bundle\n")


if __name__ == "__main__":
    unittest.main()
