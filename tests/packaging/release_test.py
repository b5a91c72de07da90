"""scripts/release on a copy of what it reads, with stand-ins for Apple's tools."""

import shutil
import stat
import sys
import tempfile
import unittest
import zipfile
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

from stand_ins import StandIns  # noqa: E402

ROOT = Path(__file__).resolve().parents[2]
VERSION = "7.3"
OUT = f"build/release/Tintwell-{VERSION}"
LAST = 'for last; do :; done; '
TOOLS = {
    "uname": "echo Darwin",
    "cmake": '[ "$1" != --build ] || { mkdir -p build/macos/Tintwell.plugin/Contents;'
             ' echo code >build/macos/Tintwell.plugin/Contents/code; }',
    "ctest": None,
    "codesign": None,
    "pkgbuild": LAST + 'echo component >"$last"',
    "productbuild": LAST + 'echo installer >"$last"',
    "xcrun": 'case $1.$2 in notarytool.submit) echo \'{"id": "1-2", "status": "Accepted"}\' ;;'
             ' stapler.staple) echo ticket >>"$3/Contents/ticket" 2>/dev/null || echo ticket >>"$3" ;; esac',
    "spctl": None,
    "pkgutil": None,
    "shasum": 'shift 2; for file; do echo "sum  $file"; done',
}
SETTINGS = {
    "TINTWELL_SIGN_APPLICATION": "Developer ID Application: Somebody (TEAM)",
    "TINTWELL_SIGN_INSTALLER": "Developer ID Installer: Somebody (TEAM)",
    "TINTWELL_NOTARY_PROFILE": "a profile",
}
KEY = {"TINTWELL_NOTARY_PROFILE": "", "TINTWELL_NOTARY_KEY": "very secret",
       "TINTWELL_NOTARY_KEY_ID": "ID", "TINTWELL_NOTARY_ISSUER": "ISSUER"}


class Case(unittest.TestCase):
    def setUp(self):
        work = tempfile.TemporaryDirectory()
        self.addCleanup(work.cleanup)
        self.tree = Path(work.name) / "a tree"
        self.tree.mkdir()
        for name in ("scripts/release", "LICENSE", "NOTICES.md"):
            (self.tree / name).parent.mkdir(exist_ok=True)
            shutil.copy(ROOT / name, self.tree / name)
        shutil.copytree(ROOT / "packaging", self.tree / "packaging",
                        ignore=shutil.ignore_patterns("__pycache__"))
        (self.tree / "CMakeLists.txt").write_text(f"project(Tintwell VERSION {VERSION} LANGUAGES CXX)\n")
        (self.tree / "CHANGELOG.md").write_text(
            f"# Changelog\n\n## Unreleased\n\n- Later.\n\n## {VERSION}\n\n- New here.\n\n## 7.2\n\n- Old.\n")
        self.tools = StandIns(Path(work.name) / "stand-ins", TOOLS)

    def release(self, *arguments, fail_at=None, **settings):
        return self.tools.run(["scripts/release", *arguments], self.tree, fail_at,
                              **{**SETTINGS, **settings})

    def nothing_is_left(self):
        left = [p for p in (self.tree / "build").glob("*") if p.name != "macos"]
        self.assertEqual([p for p in left if p.name != "release" or any(p.iterdir())], [])

    def refused(self, sentence, *arguments, **settings):
        done = self.release(*arguments, **settings)
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stderr.splitlines()[-1], "release: " + sentence)
        self.nothing_is_left()
        return done


class Made(Case):
    def test_leaves_all_that_is_handed_out(self):
        done = self.release(f"v{VERSION}")
        self.assertEqual(done.returncode, 0, done.stderr)
        out = self.tree / OUT
        names = {f"Tintwell-{VERSION}.pkg", f"Tintwell-{VERSION}.zip", "LICENSE", "NOTICES.md",
                 "SHA256SUMS", "notes.md"}
        self.assertEqual({p.name for p in out.iterdir()}, names)
        self.assertEqual((out / "notes.md").read_text().strip(), "- New here.")
        self.assertEqual((out / f"Tintwell-{VERSION}.pkg").read_text(), "installer\nticket\n")
        sums = (out / "SHA256SUMS").read_text().split()
        self.assertEqual(sums[1::2], [f"Tintwell-{VERSION}.pkg", f"Tintwell-{VERSION}.zip"])
        with zipfile.ZipFile(out / f"Tintwell-{VERSION}.zip") as archive:
            self.assertIn("Tintwell.plugin/Contents/ticket", archive.namelist())
            self.assertIn("uninstall.command", archive.namelist())
        self.assertEqual([p.name for p in (self.tree / "build").glob("release.*")], [])

    def test_packs_what_everybody_can_read_whatever_the_umask(self):
        self.tools.does("cmake", "umask 077; " + TOOLS["cmake"])
        self.tools.does("pkgbuild", 'find "$2" ! -perm -go=r >"$STAND_INS/unreadable"; ' + TOOLS["pkgbuild"])
        done = self.tools.run(["bash", "-c", "umask 077; exec scripts/release"], self.tree, **SETTINGS)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual((self.tools.folder / "unreadable").read_text(), "")

    def test_calls_the_tools_in_order_with_their_arguments(self):
        self.release()
        work = next(word for call in self.tools.calls for word in call
                    if word.endswith("/payload/Tintwell.plugin"))[:-len("/payload/Tintwell.plugin")]
        bundle, package = "WORK/payload/Tintwell.plugin", f"WORK/out/Tintwell-{VERSION}.pkg"
        application, installer = list(SETTINGS.values())[:2]
        self.assertEqual([[word.replace(work, "WORK") for word in call] for call in self.tools.calls], [
            ["uname"],
            ["cmake", "--preset", "macos", "-DCMAKE_COMPILE_WARNING_AS_ERROR=ON",
             "-DTINTWELL_SIGN_IDENTITY=-"],
            ["cmake", "--build", "--preset", "macos", "--target", "all"],
            ["ctest", "--preset", "macos", "--no-tests=error"],
            ["codesign", "--force", "--timestamp", "--sign", application, bundle],
            ["codesign", "--verify", "--strict", "--verbose=2", bundle],
            ["pkgbuild", "--root", "WORK/payload",
             "--component-plist", "packaging/installer/components.plist",
             "--scripts", "packaging/installer/scripts",
             "--identifier", "org.tintwell.effect.pkg", "--version", VERSION, "--install-location",
             "/Library/Application Support/Adobe/Common/Plug-ins/7.0/MediaCore",
             "WORK/Tintwell-component.pkg"],
            ["productbuild", "--distribution", "WORK/distribution.xml", "--package-path", "WORK",
             "--resources", "WORK/resources", "--sign", installer, "--timestamp", package],
            ["xcrun", "notarytool", "submit", package, "--keychain-profile", "a profile", "--wait",
             "--output-format", "json"],
            ["xcrun", "stapler", "staple", package],
            ["xcrun", "stapler", "staple", bundle],
            ["spctl", "--assess", "--type", "install", "--verbose=2", package],
            ["pkgutil", "--check-signature", package],
            ["xcrun", "stapler", "validate", package],
            ["xcrun", "stapler", "validate", bundle],
            ["codesign", "--verify", "--strict", "--verbose=2", bundle],
            ["shasum", "-a", "256", f"Tintwell-{VERSION}.pkg", f"Tintwell-{VERSION}.zip"],
        ])

    def test_the_installer_is_described_with_the_version(self):
        self.tools.does("productbuild", 'cp "$2" "$STAND_INS/seen.xml"; ls "$6" >"$STAND_INS/seen.ls"; '
                        + TOOLS["productbuild"])
        self.release()
        seen = (self.tools.folder / "seen.xml").read_text()
        self.assertIn(f"<title>Tintwell {VERSION}</title>", seen)
        self.assertNotIn("@", seen)
        self.assertEqual((self.tools.folder / "seen.ls").read_text().split(), ["LICENSE.txt", "welcome.html"])

    def test_a_key_from_the_environment_is_no_argument_and_leaves_no_file(self):
        self.tools.does("xcrun", '[ "$1" != notarytool ] || { cat "$5"; ls -l "$5" | cut -c1-10; } '
                        '>"$STAND_INS/key"; ' + TOOLS["xcrun"])
        done = self.release(**KEY)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertFalse(any("very secret" in word for call in self.tools.calls for word in call))
        submit = next(call for call in self.tools.calls if "submit" in call)
        self.assertEqual(submit[4], "--key")
        self.assertEqual(submit[6:10], ["--key-id", "ID", "--issuer", "ISSUER"])
        self.assertEqual((self.tools.folder / "key").read_text(), "very secret\n-rw-------\n")
        self.assertFalse(Path(submit[5]).exists())


class Refused(Case):
    def test_elsewhere_than_on_a_mac(self):
        self.tools.does("uname", "echo Linux")
        self.refused("Apple's tools are needed: run this on a Mac.")

    def test_without_a_certificate_or_a_notary(self):
        self.refused("TINTWELL_SIGN_APPLICATION names no certificate.", TINTWELL_SIGN_APPLICATION="")
        self.refused("TINTWELL_SIGN_INSTALLER names no certificate.", TINTWELL_SIGN_INSTALLER="")
        nobody = ("TINTWELL_NOTARY_PROFILE names no profile, nor TINTWELL_NOTARY_KEY with its id and "
                  "issuer a key.")
        self.refused(nobody, TINTWELL_NOTARY_PROFILE="")
        self.refused(nobody, **{**KEY, "TINTWELL_NOTARY_ISSUER": ""})
        self.assertEqual([call[0] for call in self.tools.calls], ["uname"])

    def test_a_tag_of_another_version(self):
        self.refused(f"the tag v7.2 is not v{VERSION}, the version of CMakeLists.txt.", "v7.2")

    def test_a_version_without_notes(self):
        (self.tree / "CHANGELOG.md").write_text(f"# Changelog\n\n## {VERSION}\n\n## 7.2\n\n- Old.\n")
        self.refused(f'CHANGELOG.md has no section "## {VERSION}".')

    def test_a_version_that_is_there_already(self):
        (self.tree / OUT).mkdir(parents=True)
        kept = self.tree / OUT / "kept"
        kept.write_text("")
        done = self.release()
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stderr, f"release: {OUT} is there already: "
                                      "remove it to make that version again.\n")
        self.assertTrue(kept.exists())

    def test_an_installer_that_the_notary_finds_bad(self):
        self.tools.does("xcrun", 'echo \'{"id": "1-2", "status": "Invalid"}\'')
        done = self.refused('the notary refused the installer; "xcrun notarytool log" with the id above '
                            "says why.")
        self.assertIn('"id": "1-2"', done.stderr)

    def test_every_call_that_fails_ends_it_with_a_sentence(self):
        self.release()
        calls = list(self.tools.calls)
        shutil.rmtree(self.tree / "build")
        seen = set()
        for number, call in enumerate(calls, 1):
            with self.subTest(call=call):
                done = self.release(fail_at=number)
                self.assertEqual(done.returncode, 1)
                sentence = done.stderr.splitlines()[-1]
                self.assertRegex(sentence, r"^release: .+\.$")
                self.assertEqual(len(self.tools.calls), number)
                self.nothing_is_left()
                seen.add(sentence)
        self.assertEqual(len(seen), len(calls))


class InTheTree(unittest.TestCase):
    def test_the_scripts_can_be_run(self):
        for name in ("scripts/release", "packaging/uninstall.command",
                     "packaging/installer/scripts/preinstall"):
            self.assertTrue((ROOT / name).stat().st_mode & stat.S_IXUSR, name)


if __name__ == "__main__":
    unittest.main()
