"""Walks the first run and the panel on the desktop of the environment, and prints one row per check: its name, a tab and
"ok", "-" if this desktop doesn't have it, or what is wrong.

    walk.py DESKTOP BUNDLE-CONTENTS PICTURE-FOLDER
"""
import json
import os
import pathlib
import subprocess
import sys
import threading
import time

from gi.repository import GLib

import desktop
import session
import sight

UNIT = "com.brightfold.tunedeck.service"
SECONDS = 15
NONE = "-"


class Fault(Exception):
    """Something that a user would complain about."""


def eventually(condition, seconds=SECONDS):
    end = time.monotonic() + seconds
    while not (value := condition()) and time.monotonic() < end:
        time.sleep(0.1)
    return value


class Walk:
    def __init__(self, name, contents, pictures):
        self.name, self.pictures = name, pictures
        self.program = contents / "MacOS/Tunedeck"
        self.service = contents / "Helpers/tunedeck"
        is_sway = "SWAYSOCK" in os.environ
        self.view = sight.SwayDesktop() if is_sway else sight.XDesktop(shadow=32 if name == "weston" else 0)
        self.item = session.TrayItem(session.connect(os.environ["DBUS_SESSION_BUS_ADDRESS"]))
        self.screen = eventually(lambda: desktop.Screen.on(os.environ["DBUS_SESSION_BUS_ADDRESS"]))
        self.application = None

    # What is shared by the rows.

    def start(self, scenario, onboarded, **environment):
        subprocess.run(["systemctl", "--user", "stop", UNIT], check=False, stderr=subprocess.DEVNULL)
        subprocess.run([desktop.TOOLS / "scenario", self.service, scenario], check=True)
        settings = pathlib.Path.home() / ".tunedeck/settings.json"
        settings.parent.mkdir(exist_ok=True)
        settings.write_text(json.dumps({"onboarded": onboarded}))
        self.application = subprocess.Popen([self.program, "--show"], env=os.environ | environment)

    def quit(self):
        if self.application and self.application.poll() is None:
            subprocess.run([self.program, "--quit"], check=False, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            try:
                self.application.wait(SECONDS)
            except subprocess.TimeoutExpired:
                self.application.kill()
                raise Fault("doesn't quit") from None

    def is_running(self):
        return self.application.poll() is None

    def window(self, title):
        """The window with this title, once it has stopped moving."""
        def steady():
            before = [each for each in self.view.windows() if each.title == title]
            time.sleep(0.4)
            return before and before == [each for each in self.view.windows() if each.title == title] and before[0]
        if not (found := eventually(steady)):
            raise Fault("exited" if not self.is_running() else f"no window “{title}”")
        return found

    def picture(self, name):
        self.view.picture(str(self.pictures / f"{name}.png"))

    def check_fit(self, title, name):
        """The whole window is in the free area, and each of its controls in it, or where it scrolls."""
        window = self.window(title)
        self.picture(name)
        free = self.view.free_area()
        if not sight.contains(free, window.frame):
            raise Fault(f"{name}: {describe(window.frame)} isn't inside the free area {describe(free)}")
        for other, rect, controls in sight.controls(self.screen):
            if other != title:
                continue
            if rect.height > window.frame.height or rect.width > window.frame.width:
                raise Fault(f"{name}: draws {describe(rect)} in a window of {describe(window.frame)}")
            for control in controls:
                if not control.scrolls and not sight.contains(rect, control.rect):
                    raise Fault(f"{name}: “{control.name}” is outside of the window")

    def press(self, label):
        if not eventually(lambda: self.screen.press(label)):
            raise Fault(f"no “{label}” to press")

    def sees(self, text):
        if not eventually(lambda: any(text in each for each in self.screen.texts())):
            raise Fault(f"“{text}” isn't shown")

    # The tray.

    def icon(self):
        """Where to click on the icon; None if it is only known to the session bus."""
        if isinstance(self.view, sight.XDesktop):
            if (place := self.view.tray_window()) is not None:
                return place.x + place.width // 2, place.y + place.height // 2
            if self.name == "xfce" and self.item.item():
                return self.view.size.width - 14, 14  # the tray is at the right end of the bar
        return None

    def has_icon(self):
        return eventually(lambda: self.icon() or self.item.item())

    def click_icon(self):
        if place := self.icon():
            self.view.click(*place)
        else:
            self.item.activate()

    def popovers(self):
        return self.view.windows()

    def open_popover(self):
        time.sleep(0.6)  # it isn't the second press of a double click
        self.click_icon()
        if not eventually(self.popovers, 5):
            raise Fault("a click on the icon opens nothing")
        time.sleep(0.7)  # the window manager gives it the focus
        if not self.popovers():
            raise Fault("closes at once after it was opened")

    def close_popover(self, how):
        if not eventually(lambda: not self.popovers(), 3):
            raise Fault(f"still open after {how}")

    # The rows.

    def first_run(self):
        self.start("first-run", False)
        title = "Welcome to Tunedeck"
        for number, text in enumerate(("spotdl environment", "Find Rekordbox", "Pick where you'll ask for tracks."), 1):
            self.sees(text)
            self.check_fit(title, f"first-run-{number}")
            if number < 3:
                self.press("Continue")
        self.quit()

    def panel(self):
        self.start("lively", True)
        self.sees("Running")
        self.check_fit("Tunedeck", "window")

    def opens(self):
        if not self.has_icon():
            return NONE
        self.hide_window()
        for name in ("popover", "popover-again"):
            self.open_popover()
            self.check_fit("Tunedeck", name)
            self.click_icon()
            self.close_popover("a second click on the icon")
        return None

    def toggles(self):
        if not self.has_icon():
            return NONE
        for _ in range(2):
            if not self.popovers():
                self.open_popover()
            self.click_icon()
            self.close_popover("a second click on the icon")
            time.sleep(0.5)
            if self.popovers():
                raise Fault("opens again after a second click on the icon")
        return None

    def closes_elsewhere(self):
        if not self.has_icon():
            return NONE
        if self.name == "sway-native":
            return NONE  # the icon opens the window
        free = self.view.free_area()
        places = {"the empty desktop": (free.x + 20, free.y + free.height - 20)}
        if isinstance(self.view, sight.XDesktop):
            places["the empty area of the bar"] = (self.view.size.width // 2, 12)
        for name, place in places.items():
            self.open_popover()
            self.view.click(*place)
            self.close_popover(f"a click on {name}")
            time.sleep(0.5)
        self.open_popover()
        self.view.key("Escape")
        self.close_popover("Escape")
        return None

    def menu(self):
        if not self.has_icon():
            return NONE
        place = self.icon()
        if place is None:
            self.item.select("Quit Tunedeck")
        else:
            before = self.view.menus()
            for opens_first in (False, True):
                if opens_first:
                    self.open_popover()
                self.view.click(*place, sight.RIGHT)
                eventually(lambda: self.view.menus() > before, 4)
                time.sleep(0.7)
                self.picture("menu")
                if self.view.menus() == before:
                    raise Fault("a right click opens no menu" + (" while the popover is open" if opens_first else ""))
                if opens_first:
                    self.view.key("Up")  # to its last entry
                    self.view.key("Return")
                else:
                    self.view.key("Escape")
                    eventually(lambda: self.view.menus() == before, 4)
        if not eventually(lambda: not self.is_running()):
            raise Fault("the menu's Quit Tunedeck doesn't quit")
        return None

    def without_keyboard(self):
        if self.name != "weston":
            return NONE
        self.start("lively", True, QT_QPA_PLATFORM="wayland")
        self.sees("Running")
        self.quit()
        return None

    def hide_window(self):
        """Closes the main window with its keyboard shortcut."""
        while self.view.windows():
            window = self.view.windows()[0].frame
            self.view.click(window.x + window.width // 2, window.y + window.height - 3)
            self.view.key("Escape")
            if not eventually(lambda: not self.view.windows(), 5):
                raise Fault("Escape doesn't close the window")

    def run(self):
        rows = {"first run fits": self.first_run, "window fits": self.panel, "popover opens": self.opens,
                "toggles": self.toggles, "closes elsewhere": self.closes_elsewhere, "menu": self.menu,
                "no keyboard": self.without_keyboard}
        for name, check in rows.items():
            try:
                result = check() or "ok"
            except Fault as fault:
                self.picture("fault-" + name.replace(" ", "-"))
                result = str(fault)
            print(f"{name}\t{result}", flush=True)
            if name in ("first run fits", "menu"):
                self.quit()
        self.quit()


def describe(rect):
    return f"{rect.width}x{rect.height}+{rect.x}+{rect.y}"


if __name__ == "__main__":
    threading.Thread(target=GLib.MainLoop().run, daemon=True).start()
    walk = Walk(sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3]))
    try:
        walk.run()
    finally:
        if walk.application and walk.application.poll() is None:
            walk.application.kill()
