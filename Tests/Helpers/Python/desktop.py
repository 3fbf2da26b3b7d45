"""A private desktop whose parts can be stopped and started again, and what a user sees of it."""
import pathlib
import queue
import subprocess
import threading
import time

from gi.repository import Gio, GLib

import session

TOOLS = pathlib.Path(__file__).resolve().parents[3] / "tools/lib"
ACCESSIBILITY = "/usr/libexec/at-spi-bus-launcher"
TIMEOUT = 30  # seconds; generous, for slow machines
SHOWING = 1 << 25  # ATSPI_STATE_SHOWING of AtspiStateType


def eventually(condition):
    """Waits for a condition that depends on other processes; its last value."""
    end = time.monotonic() + TIMEOUT
    while not (value := condition()) and time.monotonic() < end:
        time.sleep(0.03)
    return value


def first_line(process):
    """The line that a process prints when it is ready. What it prints later is lost."""
    with process.stdout:
        return process.stdout.readline().decode().strip()


class Desktop:
    """An X server, a window manager, a session bus with accessibility, and a tray."""

    def __init__(self, folder, environment):
        self.environment = environment
        self.started = []
        server = self.start("Xvfb", "-displayfd", "1", "-nolisten", "tcp", "-noreset", "-screen", "0", "1280x940x24",
                            stdout=subprocess.PIPE)
        environment["DISPLAY"] = ":" + first_line(server)
        environment["DBUS_SESSION_BUS_ADDRESS"] = f"unix:path={folder}/bus"
        self.start_bus()
        self.window_manager = self.start("openbox", "--sm-disable")
        self.start_tray()
        threading.Thread(target=GLib.MainLoop().run, daemon=True).start()

    def start(self, *command, stdout=subprocess.DEVNULL):
        process = subprocess.Popen(command, env=self.environment, stdin=subprocess.DEVNULL, stdout=stdout,
                                   stderr=subprocess.DEVNULL)
        self.started.append(process)
        return process

    def start_bus(self):
        address = self.environment["DBUS_SESSION_BUS_ADDRESS"]
        self.bus = self.start(*session.bus_command(address), stdout=subprocess.PIPE)
        first_line(self.bus)
        self.start(ACCESSIBILITY, "--launch-immediately")
        self.screen = eventually(lambda: Screen.on(address))

    def start_tray(self):
        self.tray = self.start("trayer", "--edge", "top", "--align", "right", "--widthtype", "request", "--height", "26")

    def stop(self):
        for process in reversed(self.started):
            process.kill()
            process.wait()

    def output(self, *command):
        return subprocess.run(command, env=self.environment, capture_output=True, text=True, check=False).stdout

    def windows(self):
        """The titles of the application's windows."""
        lines = [line.split(None, 4) for line in self.output("wmctrl", "-lx").splitlines()]
        return [line[4] for line in lines if line[2] == "Tunedeck.Tunedeck"]

    def icons(self):
        """The number of the application's tray icons."""
        return self.output("xwininfo", "-name", "panel", "-tree").count('"Tunedeck": ')


class Screen:
    """Reads the accessibility tree of all programs, as a screen reader does. Nothing is cached."""

    def __init__(self, bus):
        self.bus = bus

    @staticmethod
    def on(session_address):
        """None while the accessibility bus isn't there."""
        try:
            bus = session.connect(session_address)
            address = bus.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None,
                                    Gio.DBusCallFlags.NONE, 2000, None)
            return Screen(session.connect(address[0]))
        except GLib.Error:
            return None

    def calls(self, requests):
        """The results of calls (program, path, interface, method, arguments) in parallel; None for those that fail."""
        results = queue.SimpleQueue()

        def finish(bus, task, index):
            try:
                results.put((index, bus.call_finish(task).unpack()[0]))
            except GLib.Error:
                results.put((index, None))

        for index, request in enumerate(requests):
            self.bus.call(*request, None, Gio.DBusCallFlags.NONE, 5000, None, finish, index)
        return [result for _, result in sorted((results.get() for _ in requests), key=lambda each: each[0])]

    def elements(self):
        """Name, program and path of each element in visible windows, also of those that are scrolled out of view."""
        accessible = "org.a11y.atspi.Accessible"
        name = GLib.Variant("(ss)", (accessible, "Name"))
        found = []
        level = [("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")]
        for depth in range(100):
            calls = []
            for program, path in level:
                calls += [(program, path, "org.freedesktop.DBus.Properties", "Get", name),
                          (program, path, accessible, "GetState", None),
                          (program, path, accessible, "GetChildren", None)]
            results = self.calls(calls)
            following = []
            for place, text, state, children in zip(level, results[0::3], results[1::3], results[2::3]):
                # The root and the programs have no state; hidden windows are left out.
                if depth != 2 or (state and state[0] & SHOWING):
                    found.append((text, *place))
                    following += children or []
            level = following
            if not level:
                break
        return found

    def texts(self):
        return [name for name, _, _ in self.elements() if name]

    def press(self, wanted):
        """Presses the control with this name; false if there is none."""
        action = GLib.Variant("(i)", (0,))
        return any(self.calls([(program, path, "org.a11y.atspi.Action", "DoAction", action)])[0]
                   for name, program, path in self.elements() if name == wanted)
