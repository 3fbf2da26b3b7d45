import collections
import os
import random
import signal
import subprocess
import threading
import time
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

    def use_disk_without_exchange(self, *wrapper):
        """Puts the bundle on a FUSE file system, which also keeps removed files until they are closed. `wrapper`: a command
        that runs the file system."""
        source, disk = self.folder / "source", self.folder / "disk"
        source.mkdir()
        disk.mkdir()
        server = subprocess.Popen([*wrapper, "bindfs", "-f", source, disk])
        self.addCleanup(server.wait)
        self.comes(lambda: os.path.ismount(disk) or server.poll() is not None)
        if server.returncode is not None:
            self.skipTest("FUSE isn't allowed here")
        self.addCleanup(subprocess.run, ["umount", "--lazy", disk], check=True)
        self.addCleanup(self.end_all, kills=True)  # the file system ends when nothing uses it
        self.bundle = disk / "Tunedeck.app"
        write_bundle(self.bundle, "1.4.0")

    def test_leaves_nothing_on_a_file_system_without_an_exchange(self):
        self.use_disk_without_exchange()
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

    def test_nightly_survives_a_hundred_kills_without_an_exchange(self):
        # Each rename takes 0.1 s longer, so that some of the kills hit the moment without a bundle.
        self.use_disk_without_exchange("strace", "-f", "--seccomp-bpf", "-o", "/dev/null",
                                       "-e", "trace=rename,renameat,renameat2",
                                       "-e", "inject=rename,renameat,renameat2:delay_exit=100000")
        seed = time.time_ns()
        chance = random.Random(seed)
        print("seed", seed)
        self.web.publish(self.archive("!"))
        old, fresh, other = self.folder / "old/Tunedeck.app", self.folder / "fresh/Tunedeck.app", "Other Tunedeck.app"
        write_bundle(old, "1.4.0")
        write_bundle(self.bundle.with_name(other), "1.4.0")
        ends = collections.Counter()
        for _ in range(100):
            self.start()
            self.comes(lambda: self.siblings() == [other, "Tunedeck.app"], "the start removes the leftovers")
            self.opens_with("Version 1.4.0")
            self.find_update()
            self.press("Update to 1.4.1")
            step = chance.choice(("lock", "update.zip", "unpacked", "home", "home"))  # of the update
            self.comes(lambda: list(self.bundle.parent.glob(".tunedeck-update-*/" + step)), step)
            time.sleep(chance.uniform(0, 0.6))
            kills_all = chance.random() < 0.5
            self.application.kill()
            self.application.wait()
            if not kills_all:  # what it has begun is completed
                time.sleep(0.5)
            self.end_all(kills=True)
            if not self.bundle.exists():
                self.assertTrue(kills_all, "the bundle is missing although only the application was killed")
                self.restore_from(other)
                ends["restored"] += 1
            matches = [subprocess.run(["diff", "-r", self.bundle, each], stdout=subprocess.DEVNULL, check=False).returncode
                       for each in (old, fresh)]
            self.assertIn(0, matches, "a whole bundle")
            ends["old" if matches[0] == 0 else "new"] += 1
            if matches[0] != 0:
                time.sleep(1.5)  # a shell may be about to start it
                self.end_all(kills=True)
                write_bundle(self.bundle, "1.4.0")
        print(ends)
        self.assertGreater(min(ends["old"], ends["new"]), 0, ends)

    def test_nightly_keeps_the_old_version_if_the_new_one_does_not_answer(self):
        self.archive()
        fresh = self.folder / "fresh/Tunedeck.app"
        (fresh / "Contents/MacOS/Tunedeck").write_text("#!/bin/sh\nyes\n")
        self.web.publish(web.zip_bundle(fresh, self.folder / "Tunedeck.zip"))
        self.start()
        self.opens_with("Version 1.4.0")
        self.find_update()
        begin = time.monotonic()
        self.press("Update to 1.4.1")
        self.sees("The download doesn't contain Tunedeck.")
        self.assertAlmostEqual(time.monotonic() - begin, 11, delta=3)
        self.assertEqual(self.siblings(), ["Tunedeck.app"])
        self.quit()
        self.assertEqual(self.run_program("--version").stdout, "Tunedeck 1.4.0\n")

    def restore_from(self, other):
        """Starts another bundle in the same folder, which moves the missing one back."""
        self.bundle, missing = self.bundle.with_name(other), self.bundle
        self.start()
        self.comes(missing.exists)
        self.quit()
        self.bundle = missing

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
