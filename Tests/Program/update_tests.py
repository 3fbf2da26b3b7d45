import os
import signal
import subprocess
import threading
import unittest

import web
from journey import WEB, Journey, write_bundle

SETTINGS = '{"download_dir": "/tmp/Music", "onboarded": true, "somebody": {"else": 1.50}}'
INSTALLING = "Installing the update… Tunedeck restarts when it's done."


class UpdateJourney(Journey):
    """The test acts as the web endpoint."""

    def setUp(self):
        super().setUp()
        self.write(".tunedeck/settings.json", SETTINGS)
        self.web = web.Endpoint(WEB)
        self.addCleanup(self.web.stop)
        self.release = threading.Event()

    def archive(self, build="", empty_files=0):
        """The archive of version 1.4.1, whose bundle stays in the folder "fresh"."""
        fresh = self.folder / "fresh/Tunedeck.app"
        write_bundle(fresh, "1.4.1", build)
        return web.zip_bundle(fresh, self.folder / "Tunedeck.zip", empty_files)

    def publish(self, empty_files=0):
        """Publishes version 1.4.1. The second half of its archive is sent once it is released."""
        archive = self.archive("!", empty_files)
        content = archive.read_bytes()

        def deliver(request):
            request.send_response(200)
            request.send_header("Content-Length", str(len(content)))
            request.end_headers()
            request.wfile.write(content[:len(content) // 2])
            self.release.wait()
            request.wfile.write(content[len(content) // 2:])

        self.web.publish(archive, deliver)

    def find_update(self):
        self.press("Check for Updates")
        self.sees("Tunedeck 1.4.1 is available.")
        self.sees("Faster.")

    def begin_update(self):
        """Starts the update and waits for the half that was sent."""
        self.release.clear()
        self.find_update()
        self.press("Update to 1.4.1")
        self.sees("50 %")

    def begin_unpacking(self):
        """Starts the update and waits until it unpacks; this may already be over."""
        old = self.processes()
        self.release.set()
        self.find_update()
        self.press("Update to 1.4.1")
        self.comes(lambda: list(self.bundle.parent.glob(".tunedeck-update-*/unpacked")) or self.processes() != old)

    def test_restarts_with_the_new_version_and_its_service(self):
        self.start()
        self.opens_with("Version 1.4.0")
        self.comes(self.service_pid)
        old_service, old = self.service_pid(), self.processes()
        self.publish()
        self.begin_update()
        self.sees(INSTALLING)
        self.release.set()
        self.comes(lambda: self.is_replaced(old))
        self.opens_with("Version 1.4.1")
        self.sees("/tmp/Music")
        self.assertEqual(self.desktop.windows(), ["Tunedeck"])
        self.assertEqual(self.siblings(), ["Tunedeck.app"])
        self.assertEqual((self.home / ".tunedeck/settings.json").read_text(), SETTINGS)
        self.comes(lambda: self.service_pid() not in (0, old_service))
        self.quit()
        self.assertGreater(self.service_pid(), 0)

    def test_keeps_the_old_version_on_a_full_or_read_only_disk(self):
        archive = self.archive()
        disk = self.folder / "disk"
        disk.mkdir()
        size = archive.stat().st_size * 3 // 2  # room for one bundle, but not for two
        subprocess.run(["mount", "-t", "tmpfs", "-o", f"size={size}", "tmpfs", disk], check=True)
        self.addCleanup(subprocess.run, ["umount", "--lazy", disk], check=True)
        self.bundle = disk / "Tunedeck.app"
        write_bundle(self.bundle, "1.4.0")
        self.start()
        self.opens_with("Version 1.4.0")
        self.web.publish(archive)
        self.find_update()
        self.press("Update to 1.4.1")
        self.sees("No space left on device")
        self.assertEqual(self.siblings(), ["Tunedeck.app"])

        subprocess.run(["mount", "-o", "remount,ro", disk], check=True)
        self.find_update()
        self.press("Update to 1.4.1")
        self.comes(lambda: (self.folder / "opened").read_text() == self.web.url("/download/Tunedeck-latest.dmg\n"))
        self.sees("Tunedeck 1.4.1 is available.")
        self.assertEqual(len(self.processes()), 1)
        self.quit()
        self.assertEqual(self.run_program("--version").stdout, "Tunedeck 1.4.0\n")

    def test_leaves_nothing_on_a_file_system_without_an_exchange(self):
        source, disk = self.folder / "source", self.folder / "disk"
        source.mkdir()
        disk.mkdir()
        if subprocess.run(["bindfs", source, disk], check=False).returncode != 0:
            self.skipTest("FUSE isn't allowed here")
        self.addCleanup(subprocess.run, ["umount", "--lazy", disk], check=True)
        self.bundle = disk / "Tunedeck.app"
        write_bundle(self.bundle, "1.4.0")
        self.start()
        self.opens_with("Version 1.4.0")
        old = self.processes()
        self.web.publish(web.zip_bundle(self.bundle, self.folder / "Tunedeck.zip"))
        self.find_update()
        self.press("Update to 1.4.1")
        self.sees("version 1.4.0, expected 1.4.1")
        self.assertEqual(self.siblings(), ["Tunedeck.app"])
        self.web.publish(self.archive("!"))
        self.find_update()
        self.press("Update to 1.4.1")
        self.comes(lambda: self.is_replaced(old))
        self.opens_with("Version 1.4.1")
        self.comes(lambda: self.siblings() == ["Tunedeck.app"], self.siblings())

    def test_is_checked_by_the_checkup_only_on_request(self):
        def finds(text, *arguments):
            self.comes(lambda: text in self.run_program("--checkup", *arguments).stdout, text)

        self.publish()
        finds("Not checked yet; Tunedeck can update itself.")
        self.assertEqual(self.web.requested, [])
        self.web.behaviours["/download/appcast.json.sig"] = web.answer("x")
        finds("✗ Update feed      The update feed isn't signed", "--online")
        self.start()
        self.opens_with("Version 1.4.0")
        self.press("Check for Updates")
        self.sees("The update feed isn't signed by Tunedeck.")
        finds("Not checked yet")
        self.publish()
        self.find_update()
        finds("✓ Updates          Last checked ")
        finds("! Update feed      Version 1.4.1 is available.", "--online")
        self.bundle, installed = self.folder / "fresh/Tunedeck.app", self.bundle
        finds("✓ Update feed      This is the latest version.", "--online")
        self.bundle = installed

    def test_keeps_one_bundle_when_killed_or_quit_during_the_update(self):
        self.publish(empty_files=10_000)  # so that unpacking takes a while
        for begin, kills in ((self.begin_update, True), (self.begin_unpacking, True), (self.begin_update, False),
                             (self.begin_unpacking, False)):
            write_bundle(self.bundle, "1.4.0")
            self.start()
            self.opens_with("Version 1.4.0")
            begin()
            self.end_all(kills)
            self.start()
            version = self.run_program("--version").stdout.split()[1]
            self.assertIn(version, ("1.4.0", "1.4.1") if begin == self.begin_unpacking else ("1.4.0",))
            self.opens_with("Version " + version)
            self.press("Check for Updates")
            self.sees("Tunedeck 1.4.1 is available." if version == "1.4.0" else "Up to date")
            self.assertEqual(self.siblings(), ["Tunedeck.app"], "a check removes the leftovers first")
            self.quit()
        self.start()  # at last, quit during a check
        self.opens_with("Version " + version)
        self.web.behaviours["/download/appcast.json"] = web.hang
        self.press("Check for Updates")
        self.comes(lambda: self.processes("Helpers/tunedeck-update"))
        self.end_all(kills=False)

    def end_all(self, kills):
        """Ends the application, also when the new version has taken its place."""
        def ended():
            for process in self.processes():
                os.kill(process, signal.SIGKILL) if kills else self.run_program("--quit")
            return not self.processes("Helpers/tunedeck-update") and not self.processes()

        self.comes(ended)
        self.release.set()


if __name__ == "__main__":
    unittest.main()
