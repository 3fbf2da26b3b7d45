import os
import pathlib
import shutil
import signal
import socket
import subprocess
import time
import unittest

import session
import web
from journey import TIMEOUT, Journey, write_bundle


class StartUpJourney(Journey):
    """The test acts as the service. The first run is already done."""

    def setUp(self):
        super().setUp()
        self.remove_service_program()
        self.write(".tunedeck/settings.json", '{"onboarded": true}')

    def use_no_service(self):
        """Directs the application to a port without a service, so that it waits for one."""
        server = web.Server()
        server.stop()
        self.use_service(server)

    def test_starts_with_files_that_are_something_else(self):
        defaults, report = self.home / ".config/Brightfold/Tunedeck.conf", self.home / ".tunedeck/menu-bar.json"
        pipe = self.folder / "pipe"
        os.mkfifo(pipe)
        defaults.parent.mkdir(parents=True)
        report.symlink_to(pipe)
        for create in (lambda: os.mkfifo(defaults), lambda: defaults.symlink_to(pipe),
                       lambda: (defaults.touch(), os.truncate(defaults, 30 * 1024 ** 3))):
            defaults.unlink(missing_ok=True)
            create()
            self.start()
            self.opens_with("Version 1.4.0")
            self.quit()
            self.assertEqual(self.run_program("--checkup").returncode, 1)
        self.assertEqual(defaults.stat().st_size, 30 * 1024 ** 3)
        self.assertTrue(pipe.is_fifo())
        self.assertTrue(report.is_symlink())

    def test_terminates_within_half_a_second_in_every_step(self):
        steps = (  # reply to the status, the request after which it is terminated, whether the window is open
            ("waiting for the status", web.hang, "/local/status", False),
            ("waiting for the links", web.answer(web.STATUS), "/local/links", False),
            ("waiting for the tools with the window open", web.answer(web.STATUS), "/local/toolbox", True),
            ("between two attempts to reach the service", web.answer("", 503), "/local/status", False))
        for name, status, last_request, opens_window in steps:
            fastest = 100
            for _ in range(3):  # a busy machine may delay one
                service = web.Server()
                service.behaviours.update({"/local/status": status, "*": web.hang})
                self.use_service(service)
                self.start()
                if opens_window:
                    self.assertEqual(self.run_program().returncode, 0)
                self.comes(lambda: last_request in service.requested, name)
                begin = time.monotonic()
                self.end(signal.SIGTERM)
                fastest = min(fastest, time.monotonic() - begin)
                if fastest < 0.5:
                    break
            self.assertLess(fastest, 0.5, name)

    def test_terminates_during_the_installation_and_the_first_run_without_losing_settings(self):
        hung = self.folder / "hung"
        systemctl = self.replace_program("systemctl", f"echo $$ > '{hung}'; exec sleep 1000")
        write_bundle(self.bundle, "1.4.0")
        self.write(".tunedeck/settings.json", "{}")
        self.start()
        self.comes(lambda: hung.exists() and hung.read_text())
        self.end(signal.SIGTERM)
        child = pathlib.Path("/proc", hung.read_text().strip())
        self.comes(lambda: not child.exists(), "its child process still runs")
        systemctl.unlink()

        self.remove_service_program()
        service = web.Server()
        service.behaviours.update({"/local/status": web.answer(web.STATUS), "*": web.hang})
        self.use_service(service)
        self.start()
        self.opens_with("Install the tools")
        self.press("Continue")
        self.sees("Find Rekordbox")
        self.press("Continue")
        self.press("Claude")
        self.sees("Making your private link…")
        self.end(signal.SIGINT)
        self.assertEqual((self.home / ".tunedeck/settings.json").read_text(), "{}")
        self.start()
        self.opens_with("Install the tools")  # the first run starts over

    def test_shows_the_icon_in_a_late_tray_and_survives_the_loss_of_the_bus(self):
        self.use_no_service()
        self.desktop.tray.kill()
        self.desktop.tray.wait()
        self.start()
        self.comes(self.lock.exists)
        self.assertEqual(self.run_program().returncode, 0)  # it replies, so it has already looked for a tray
        self.desktop.start_tray()
        self.comes(lambda: self.desktop.icons() == 1)
        self.desktop.bus.kill()
        self.assertEqual(self.run_program().returncode, 1, "the window isn't reported as shown without a bus")
        self.comes(lambda: self.desktop.windows() == ["Tunedeck"] and self.desktop.icons() == 1)
        self.desktop.start_bus()
        self.comes(lambda: self.desktop.icons() == 1)
        self.quit()

    def test_names_the_package_that_a_wayland_session_lacks(self):
        plugins = subprocess.run(["/usr/lib/qt6/bin/qmake", "-query", "QT_INSTALL_PLUGINS"], text=True, check=True,
                                 stdout=subprocess.PIPE).stdout.strip()
        for name in ("DISPLAY", "QT_QPA_PLATFORM"):
            del self.environment[name]
        self.environment["WAYLAND_DISPLAY"] = "wayland-0"
        hide = f"mount -t tmpfs tmpfs '{plugins}/platforms' && exec '{self.bundle}/Contents/MacOS/Tunedeck'"
        started = subprocess.run(["unshare", "-m", "sh", "-c", hide], env=self.environment, text=True, check=False,
                                 stderr=subprocess.PIPE, timeout=TIMEOUT)
        self.assertEqual(started.returncode, 1)
        self.assertIn("qt6-wayland", started.stderr)

    def test_writes_to_the_journal(self):
        address = pathlib.Path("/run/systemd/journal/socket")  # private, as the service manager's
        address.parent.mkdir(exist_ok=True)
        with socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM) as journal:
            journal.bind(str(address))
            journal.settimeout(TIMEOUT)
            self.start()
            entry = []
            while "MESSAGE=service install: notBundled" not in entry:  # the first entries may be about the desktop
                entry = journal.recv(65536).decode().splitlines()
        for field in ("PRIORITY=6", "SYSLOG_IDENTIFIER=Tunedeck", "SUBSYSTEM=com.brightfold.tunedeck.menu", "CATEGORY=app"):
            self.assertIn(field, entry)

    def test_restarts_after_an_upgrade_of_its_bundle_and_reports_a_missing_one(self):
        self.use_no_service()
        self.start()  # no window yet, so its module isn't loaded
        old = self.processes()
        write_bundle(self.folder / "upgrade", "1.4.1", "!")
        shutil.rmtree(self.bundle)
        (self.folder / "upgrade").rename(self.bundle)
        self.remove_service_program()
        self.assertIn("Tunedeck was updated or moved while it was running.", self.run_program("--checkup").stdout)
        self.assertEqual(self.run_program().returncode, 0)
        self.comes(lambda: self.is_replaced(old))
        self.sees("Version 1.4.1")
        self.quit()

        notifications = session.NotificationServer(self.environment["DBUS_SESSION_BUS_ADDRESS"])
        self.start()
        running = self.processes()
        installed, self.bundle = self.bundle, self.bundle.rename(self.folder / "removed.app")  # as if by the user
        self.assertEqual(self.run_program().returncode, 0)
        self.bundle = self.bundle.rename(installed)
        self.comes(lambda: notifications.posted)
        self.assertIn("is missing", notifications.posted[0][1])
        self.assertEqual(self.processes(), running)
        self.opens_with("Version 1.4.1")


if __name__ == "__main__":
    unittest.main()
