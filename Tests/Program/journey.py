"""The real application with a private bundle, home, service manager and desktop, used as a person would."""
import os
import pathlib
import plistlib
import shutil
import signal
import subprocess
import tempfile
import unittest

import desktop
from desktop import TIMEOUT, eventually

UNIT = "com.brightfold.tunedeck.service"
BUNDLE = pathlib.Path(os.environ["TUNEDECK_BUNDLE"])
BUILD_ID = os.environ["TUNEDECK_BUILD_ID"].encode()
WEB = (os.environ["TUNEDECK_WEB_HOST"], int(os.environ["TUNEDECK_WEB_PORT"]))


def write_bundle(bundle, version, build=""):
    """Writes a bundle of this version. `build` replaces the last character of the build id in its programs."""
    shutil.rmtree(bundle, ignore_errors=True)
    shutil.copytree(BUNDLE, bundle, symlinks=True)
    shutil.copy(os.environ["TUNEDECK_PROGRAM"], bundle / "Contents/MacOS/Tunedeck")
    plist = bundle / "Contents/Info.plist"
    plist.write_bytes(plistlib.dumps(plistlib.loads(plist.read_bytes()) | {"CFBundleShortVersionString": version}))
    other_id = BUILD_ID[:-1] + build.encode() if build else BUILD_ID
    for program in (bundle / "Contents/MacOS/Tunedeck", *bundle.glob("Contents/PlugIns/*")):
        program.write_bytes(program.read_bytes().replace(BUILD_ID, other_id))
    with (bundle / "Contents/Helpers/tunedeck").open("ab") as service:
        service.write(other_id)  # ignored when the program is executed


class Journey(unittest.TestCase):
    """Has version 1.4.0 in `bundle`, which is the one that start() and run_program() execute."""

    def setUp(self):
        runtime = pathlib.Path(os.environ["XDG_RUNTIME_DIR"])
        self.assertTrue((runtime / "manager.log").exists(), "tools/lib/user-manager provides a private service manager")
        self.home = pathlib.Path.home()
        # In memory, so that syncing is fast.
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory(dir=runtime)))
        self.bundle = self.folder / "apps/Tunedeck.app"
        self.lock = runtime / "com.brightfold.tunedeck.menu.lock"
        self.replace_program("xdg-open", f"echo \"$1\" >> '{self.folder}/opened'")
        (self.folder / "opened").touch()
        self.environment = {name: value for name, value in os.environ.items()
                            if not name.startswith(("XDG_", "QT_")) and not name.endswith("_proxy")}
        self.environment |= {"XDG_RUNTIME_DIR": str(runtime), "LANG": "C.UTF-8", "QT_QPA_PLATFORM": "xcb",
                             "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
                             "PATH": f"{self.folder}/bin:{os.environ['PATH']}"}
        self.desktop = desktop.Desktop(self.folder, self.environment)
        self.addCleanup(self.desktop.stop)
        self.log = (self.folder / "log").open("ab")
        self.addCleanup(self.log.close)
        self.addCleanup(self.end_application)
        write_bundle(self.bundle, "1.4.0")

    def end_application(self):
        for process in self.processes():
            os.kill(process, signal.SIGKILL)
        subprocess.run(["systemctl", "--user", "disable", "--now", UNIT], check=False, stderr=subprocess.DEVNULL)
        print((self.folder / "log").read_text(errors="replace"), end="")

    def start(self):
        """Starts the application and waits for its icon."""
        shows_icon = self.desktop.tray.poll() is None
        self.assertTrue(eventually(lambda: not shows_icon or self.desktop.icons() == 0), "the previous icon is still there")
        self.application = subprocess.Popen([self.bundle / "Contents/MacOS/Tunedeck"], env=self.environment,
                                            stdout=self.log, stderr=self.log)
        self.assertTrue(eventually(lambda: not shows_icon or self.desktop.icons() == 1), "no icon appeared in the tray")

    def run_program(self, *arguments):
        """Runs the application until it exits."""
        return subprocess.run([self.bundle / "Contents/MacOS/Tunedeck", *arguments], env=self.environment, text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=TIMEOUT, check=False)

    def quit(self):
        """Quits the application as a user of the command line does."""
        self.assertEqual(self.run_program("--quit").returncode, 0)
        self.assertTrue(eventually(lambda: not self.processes()))

    def end(self, number):
        """Sends a signal to the application; it exits normally."""
        self.application.send_signal(number)
        self.assertEqual(self.application.wait(TIMEOUT), 0)

    def processes(self, wanted="MacOS/Tunedeck"):
        """The running processes of a program of the bundle, even if the file was moved or deleted."""
        found = []
        for entry in pathlib.Path("/proc").iterdir():
            try:
                program = os.readlink(entry / "exe") if entry.name.isdigit() else ""
            except OSError:
                continue
            if program.startswith(str(self.bundle.parent)) and "/Contents/" + wanted in program:
                found.append(int(entry.name))
        return found

    def is_replaced(self, old):
        """Whether another process has taken the place of these: it holds the lock and has an icon."""
        now = self.processes()
        try:
            holder = self.lock.read_text().split("\n")[0]
        except FileNotFoundError:
            return False
        return now != old and [holder] == [str(process) for process in now] and self.desktop.icons() == 1

    def service_pid(self):
        return int(self.desktop.output("systemctl", "--user", "show", "--property=MainPID", "--value", UNIT) or 0)

    def opens_with(self, text):
        """Starts the application again, which opens the window, and waits for the text."""
        second = self.run_program()
        self.assertEqual(second.returncode, 0, second.stdout)
        self.sees(text)

    def sees(self, text):
        """Waits until a text is on the screen."""
        self.assertTrue(eventually(lambda: any(text in each for each in self.desktop.screen.texts())),
                        f"“{text}” is not on the screen: {' | '.join(self.desktop.screen.texts())}")

    def press(self, name):
        """Waits for a control and presses it. Those of a dialog come before others with the same name."""
        self.assertTrue(eventually(lambda: self.desktop.screen.press(name)),
                        f"no “{name}” to press on the screen: {' | '.join(self.desktop.screen.texts())}")

    def comes(self, condition, message=None):
        """Waits for a condition, and fails if it doesn't come true."""
        self.assertTrue(eventually(condition), message)

    def siblings(self):
        """The entries of the bundle's parent folder."""
        return sorted(path.name for path in self.bundle.parent.iterdir())

    def replace_program(self, name, script):
        """Adds a shell script that replaces a program of the PATH."""
        path = self.folder / "bin" / name
        path.parent.mkdir(exist_ok=True)
        path.write_text(f"#!/bin/sh\n{script}\n")
        path.chmod(0o755)
        return path

    def remove_service_program(self):
        """Removes it from the bundle, so that none is installed. The test acts as the service."""
        (self.bundle / "Contents/Helpers/tunedeck").unlink()

    def write(self, relative, text):
        """Writes a file in the home."""
        path = self.home / relative
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)

    def use_service(self, server):
        """Directs the application to the test's own service."""
        self.write(".tunedeck/runtime.json", f'{{"port": {server.server_port}}}')
