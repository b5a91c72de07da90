"""What the installer and uninstall.command do, with stand-ins for the system's programs."""

import plistlib
import sys
import tempfile
import unittest
import xml.etree.ElementTree as xml
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

from stand_ins import StandIns  # noqa: E402

PACKAGING = Path(__file__).resolve().parents[2] / "packaging"
FOLDER = "Library/Application Support/Adobe/Common/Plug-ins/7.0/MediaCore"
HOSTS = (
    "/Applications/Adobe After Effects 2025/Adobe After Effects 2025.app/Contents/MacOS/After Effects",
    "/Applications/Adobe Premiere Pro 2025/Adobe Premiere Pro 2025.app/Contents/MacOS/Adobe Premiere Pro",
    "/Applications/Adobe After Effects 2025/aerendercore.app/Contents/MacOS/aerendercore",
    "/Applications/Adobe Premiere Pro 2025/Adobe Premiere Pro 2025.app/Contents/Helper.app/Contents/MacOS/Helper",
    "/Applications/Adobe Media Encoder 2025/Adobe Media Encoder 2025.app/Contents/MacOS/Adobe Media Encoder 2025",
    "/Applications/Adobe Premiere Pro (Beta).app/Contents/MacOS/Adobe Premiere Pro (Beta)",
)
OTHERS = "/sbin/launchd\n/Applications/Adobe Bridge.app/Contents/MacOS/Bridge\ngrep Premiere Pro\n"


class Case(unittest.TestCase):
    def setUp(self):
        work = tempfile.TemporaryDirectory()
        self.addCleanup(work.cleanup)
        self.volume = Path(work.name) / "a volume"
        self.plugin = self.volume / FOLDER / "Tintwell.plugin"
        (self.plugin / "Contents").mkdir(parents=True)
        (self.plugin / "Contents/old").write_text("")
        self.data = self.volume / "Users/me/Library/Application Support/Tintwell/effect.log"
        self.data.parent.mkdir(parents=True)
        self.data.write_text("kept")
        self.tools = StandIns(Path(work.name) / "stand-ins",
                              {"ps": f"printf '{OTHERS}'", "osascript": None, "sudo": '"$@"', "pkgutil": None})

    def run_host(self, host):
        self.tools.does("ps", f"printf '{OTHERS}{host}\\n'")

    def nothing_is_removed(self):
        self.assertTrue((self.plugin / "Contents/old").exists())


class Preinstall(Case):
    def preinstall(self, **settings):
        return self.tools.run([str(PACKAGING / "installer/scripts/preinstall"), "/tmp/Tintwell.pkg",
                               str(self.plugin.parent), str(self.volume), "/"], "/", **settings)

    def test_removes_the_older_build_and_nothing_else(self):
        (self.plugin.parent / "Another.plugin").mkdir()
        self.assertEqual(self.preinstall().returncode, 0)
        self.assertEqual([p.name for p in self.plugin.parent.iterdir()], ["Another.plugin"])
        self.assertTrue(self.data.exists())

    def test_is_content_without_an_older_build(self):
        self.preinstall()
        self.assertEqual(self.preinstall().returncode, 0)

    def test_refuses_while_a_host_runs(self):
        for host in HOSTS:
            self.run_host(host)
            done = self.preinstall()
            self.assertEqual(done.returncode, 1)
            self.assertEqual(done.stderr, "Tintwell was not installed: quit After Effects, Premiere Pro and Media "
                                          "Encoder, then install it again.\n")
            self.assertIn("osascript", [call[0] for call in self.tools.calls])
            self.nothing_is_removed()

    def test_refuses_when_the_older_build_stays(self):
        tools = StandIns(self.volume / "more", {"ps": None, "rm": "exit 1"})
        done = tools.run([str(PACKAGING / "installer/scripts/preinstall"), "", str(self.plugin.parent),
                          str(self.volume), "/"], "/")
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stderr, f"Tintwell was not installed: the older {self.plugin} cannot be "
                                      "removed.\n")


class Uninstall(Case):
    def uninstall(self):
        return self.tools.run([str(PACKAGING / "uninstall.command"), str(self.volume)], "/")

    def test_removes_the_plugin_and_its_receipt_and_keeps_the_data(self):
        done = self.uninstall()
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertFalse(self.plugin.exists())
        self.assertTrue(self.data.exists())
        self.assertEqual(self.tools.calls[-1], ["pkgutil", "--volume", str(self.volume), "--forget",
                                                "org.tintwell.effect.pkg"])
        self.assertIn("~/Library/Application Support/Tintwell", done.stdout.splitlines()[-1])

    def test_refuses_while_a_host_runs(self):
        for host in HOSTS:
            self.run_host(host)
            done = self.uninstall()
            self.assertEqual(done.returncode, 1)
            self.assertEqual(done.stderr, "Nothing was removed: quit After Effects, Premiere Pro and Media "
                                          "Encoder, then try again.\n")
            self.nothing_is_removed()

    def test_says_so_when_there_is_nothing_to_remove(self):
        self.uninstall()
        done = self.uninstall()
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stderr, f"Tintwell is not installed: there is no {self.plugin}.\n")

    def test_says_so_when_it_may_not(self):
        self.tools.does("sudo", "exit 1")
        done = self.uninstall()
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stderr, f"Tintwell is still there: {self.plugin} could not be removed.\n")
        self.nothing_is_removed()


class Descriptions(unittest.TestCase):
    def test_the_component_stays_where_it_is_put(self):
        with open(PACKAGING / "installer/components.plist", "rb") as file:
            [component] = plistlib.load(file)
        self.assertEqual(component["RootRelativeBundlePath"], "Tintwell.plugin")
        self.assertIs(component["BundleIsRelocatable"], False)
        self.assertIs(component["BundleIsVersionChecked"], False)

    def test_the_installer_shows_pages_that_exist_and_one_package(self):
        tree = xml.parse(PACKAGING / "installer/distribution.xml.in").getroot()
        self.assertTrue((PACKAGING / "installer" / tree.find("welcome").get("file")).exists())
        self.assertEqual(tree.find("license").get("file"), "LICENSE.txt")
        packages = {ref.get("id") for ref in tree.iter("pkg-ref")}
        self.assertEqual(packages, {"org.tintwell.effect.pkg"})
        self.assertEqual(tree.find(".//os-version").get("min"), "11.0")


if __name__ == "__main__":
    unittest.main()
