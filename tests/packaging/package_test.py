"""Makes the Debian package of the programs, holds it against the rules, and starts what it installs."""
import csv
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

import pyatspi

BUILD = pathlib.Path(sys.argv.pop(1))
SOURCE = pathlib.Path(sys.argv.pop(1))
VERSION = sys.argv.pop(1)

sys.path.insert(0, str(SOURCE / "tests" / "e2e"))
from person import Person  # noqa: E402

ICONS = ["scalable/apps/telmarion.svg"] + [
    f"{side}x{side}/apps/telmarion.png" for side in (16, 22, 24, 32, 48, 64, 128, 256)
]
FILES = {
    "usr/bin/telmarion",
    "usr/bin/telmarion-batch",
    "usr/libexec/telmarion/telmarion-decode",
    "usr/share/applications/telmarion.desktop",
    "usr/share/doc/telmarion/changelog.Debian.gz",
    "usr/share/doc/telmarion/changelog.gz",
    "usr/share/doc/telmarion/copyright",
    "usr/share/doc/telmarion/examples/hips.csv",
    "usr/share/doc/telmarion/examples/uncertain_hips.csv",
    "usr/share/doc/telmarion/examples/uncertainties.csv",
    "usr/share/man/man1/telmarion-batch.1.gz",
    "usr/share/man/man1/telmarion.1.gz",
    "usr/share/metainfo/org.example.telmarion.metainfo.xml",
    "usr/share/telmarion/Telmarion.hlp",
} | {f"usr/share/icons/hicolor/{icon}" for icon in ICONS}


def run(*command, **options):
    done = subprocess.run(
        [str(part) for part in command], capture_output=True, text=True, check=False, **options
    )
    if done.returncode != 0:
        raise AssertionError(f"{command}: {done.returncode}\n{done.stdout}{done.stderr}")
    return done.stdout


class Package(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.folder.cleanup)
        cls.work = pathlib.Path(cls.folder.name)
        run("cpack", "--config", BUILD / "CPackConfig.cmake", "-B", cls.work / "made", cwd=cls.work)
        (cls.package,) = (cls.work / "made").glob("telmarion_*.deb")
        cls.root = cls.work / "root"
        run("dpkg-deb", "--extract", cls.package, cls.root)

    def field(self, name):
        return run("dpkg-deb", "--field", self.package, name).strip()

    def depends(self):
        return {re.split(r"[ (]", part.strip())[0] for part in self.field("Depends").split(",")}

    def installed(self, name):
        (path,) = self.root.glob(f"usr/**/{name}")
        return path

    def program(self, name):
        (path,) = [self.root / file for file in FILES if re.fullmatch(f"usr/(bin|libexec/.*)/{name}", file)]
        return path

    def test_debian_has_nothing_to_say(self):
        tags = run("lintian", "--allow-root", "--fail-on", "error,warning", self.package)
        self.assertEqual(tags, "")

    def test_desktop_entry_is_valid_and_claims_no_file_type(self):
        entry = self.installed("telmarion.desktop")
        self.assertEqual(run("desktop-file-validate", "--warn-kde", entry), "")
        self.assertNotIn("MimeType", entry.read_text())

    def test_software_centres_can_show_it(self):
        metainfo = self.installed("*.metainfo.xml")
        run("appstreamcli", "validate", "--no-net", "--strict", metainfo)
        self.assertIn("not a certified medical device", metainfo.read_text())

    def test_screenshots_are_pictures_of_the_documentation(self):
        shots = re.findall(r"<image [^>]*>[^<]*/(pictures/[^<]+)<",
                           self.installed("*.metainfo.xml").read_text())
        self.assertEqual(len(shots), 3)
        for picture in shots:
            self.assertTrue((SOURCE / "docs" / picture).is_file(), picture)

    def test_one_version_everywhere(self):
        self.assertRegex(self.field("Version"), rf"^{re.escape(VERSION)}-")
        changelog = SOURCE / "packaging" / "debian" / "changelog"
        latest = run("dpkg-parsechangelog", "--file", changelog, "--show-field", "Version").strip()
        self.assertEqual(latest, self.field("Version"))
        news = re.findall(r"^## (\d\S*)", (SOURCE / "CHANGELOG.md").read_text(), re.MULTILINE)
        self.assertEqual(news[0], VERSION)
        releases = re.findall(r'<release version="([^"]+)"', self.installed("*.metainfo.xml").read_text())
        self.assertEqual(releases[0], VERSION)

    def test_contents_and_modes(self):
        paths = [path for path in self.root.rglob("*")]
        self.assertEqual(
            {str(path.relative_to(self.root)) for path in paths if path.is_file()}, FILES
        )
        for line in run("dpkg-deb", "--contents", self.package).splitlines():
            mode, owner, path = line.split()[0], line.split()[1], line.split()[5]
            self.assertEqual(owner, "root/root", line)
            open_to_run = path.endswith("/") or path.startswith(("./usr/bin/", "./usr/libexec/"))
            self.assertEqual(mode[1:], "rwxr-xr-x" if open_to_run else "rw-r--r--", line)

    def test_checksums_name_every_file(self):
        run("dpkg-deb", "--control", self.package, self.work / "control")
        sums = self.work / "control" / "md5sums"
        self.assertEqual({line.split()[1] for line in sums.read_text().splitlines()}, FILES)
        run("md5sum", "--check", "--strict", sums, cwd=self.root)

    def test_dependencies(self):
        for package in ["libqt6widgets6", "libqt6help6", "libqt6printsupport6", "libqt6svg6"]:
            self.assertIn(package, self.depends())
        # These are loaded by name.
        for package in ["libqt6sql6-sqlite", "qt6-image-formats-plugins", "fonts-liberation2", "fonts-dejavu-core"]:
            self.assertIn(package, self.depends())
        self.assertIn("qt6-wayland", self.field("Recommends"))

    def test_programs_are_hardened_and_stripped(self):
        for name in ["telmarion", "telmarion-batch", "telmarion-decode"]:
            program = self.program(name)
            facts = run("readelf", "--wide", "--file-header", "--dynamic", "--segments", "--sections",
                        program)
            for mark in ["DYN (Position-Independent", "GNU_RELRO", "BIND_NOW"]:
                self.assertTrue(mark in facts, f"{name}: {mark}")
            for mark in ["RPATH", "RUNPATH", ".symtab", ".debug_info"]:
                self.assertFalse(mark in facts, f"{name}: {mark}")
            content = program.read_bytes()
            self.assertTrue(b"__stack_chk_fail" in content, name)
            self.assertFalse(bytes(SOURCE) in content, f"{name} names the folder it was built in")

    def test_only_the_decoder_loads_the_libraries_of_foreign_pictures(self):
        def needs(name):
            return run("readelf", "--wide", "--dynamic", self.program(name))

        for library in ["libdcmdata", "libopenjp2"]:
            self.assertIn(library, needs("telmarion-decode"))
            self.assertNotIn(library, needs("telmarion"))

    def test_icons_have_their_sizes(self):
        for icon in ICONS[1:]:
            side = icon.split("x")[0]
            size = run("identify", "-format", "%w %h", self.root / "usr/share/icons/hicolor" / icon)
            self.assertEqual(size, f"{side} {side}")

    def test_removes_cleanly(self):
        """Installed and purged by dpkg in a root of its own: nothing stays."""
        root = self.work / "dpkg"
        for part in ["info", "updates"]:
            (root / "var/lib/dpkg" / part).mkdir(parents=True)
        (root / "var/lib/dpkg/status").touch()
        dpkg = ["fakeroot", "dpkg", "--force-not-root", "--force-depends", f"--root={root}"]
        environment = dict(os.environ, PATH=os.environ["PATH"] + ":/usr/sbin:/sbin")

        def files():
            return {str(path.relative_to(root)) for path in root.glob("usr/**/*") if path.is_file()}

        run(*dpkg, "--install", self.package, env=environment)
        self.assertEqual(files(), FILES)
        run(*dpkg, "--purge", "telmarion", env=environment)
        self.assertFalse((root / "usr").exists())
        self.assertEqual(list((root / "var/lib/dpkg/info").glob("telmarion*")), [])

    def test_installed_cohort_program_computes(self):
        table = self.installed("hips.csv")
        rows = list(csv.DictReader(run(self.root / "usr/bin/telmarion-batch", table).splitlines()))
        self.assertGreaterEqual(len(rows), 12)
        self.assertEqual({row["status"].split(":")[0] for row in rows}, {"ok", "refused"})
        self.assertAlmostEqual(float(rows[0]["rWb"]), 2.812, places=3)

    def test_installed_program_finds_its_help(self):
        person = Person(str(self.root / "usr/bin/telmarion"), str(self.work), "en_GB.UTF-8")
        self.addCleanup(person.leave)
        window = person.find("frame", "TELMARION")
        person.wait(
            lambda: window.getState().contains(pyatspi.STATE_ACTIVE), "the window to be in front"
        )
        person.keys("F1")
        help_window = person.find("frame", "TELMARION Help")
        page = person.find("label", "Page", help_window)
        person.wait(
            lambda: page.queryText().getText(0, -1).startswith("A first case, step by step"),
            "the help on starting",
        )
        person.screenshot(str(BUILD / "packaging" / "installed-help.png"))


if __name__ == "__main__":
    unittest.main(verbosity=2)
