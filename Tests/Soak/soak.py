#!/usr/bin/env python3
"""Runs the application at high speed while random events disturb it. Fails if it crashes, hangs, stops polling, or grows.

    soak.py BUILD-FOLDER [--minutes M] [--seed N] [--any-memory]

Needs a private desktop without a tray, a user manager and an empty home folder; tools/lib/soak provides them.
"""
import argparse
import collections
import os
import pathlib
import random
import select
import shutil
import socket
import statistics
import struct
import subprocess
import sys
import threading
import time

from gi.repository import GLib

import session
import web

HOME = pathlib.Path.home()
UNIT = "com.brightfold.tunedeck.service"
RESPONSE_TIMEOUT = 20  # seconds; what takes longer counts as a hang
SCENARIOS = ["lively", "lively", "pending", "tools-missing"]
SERVICE = '#!/bin/sh\nexec "$HOME/demo-service" --reset --speed 60 --scenario "$(cat "$HOME/scenario")"\n'


class Failure(Exception):
    """What the application did wrong."""


def systemctl(*arguments):
    subprocess.run(["systemctl", "--user", *arguments, UNIT], check=False)


def number_in(path, name):
    """The number after `name` in a file of /proc."""
    return int(path.read_text().split(name)[1].split()[0])


class Application:
    """The application under test, which takes commands on its standard input (Application.cpp)."""

    def __init__(self, program):
        self.process = subprocess.Popen([program], stdin=subprocess.PIPE, stdout=subprocess.PIPE, bufsize=0)

    def command(self, line):
        """The one-line response to a command."""
        try:
            self.process.stdin.write(line.encode() + b"\n")
        except BrokenPipeError:
            pass
        if not select.select([self.process.stdout], [], [], RESPONSE_TIMEOUT)[0]:
            raise Failure(f"hangs: no response to “{line}” within {RESPONSE_TIMEOUT} s")
        response = self.process.stdout.readline().decode()
        if not response:
            raise Failure(f"crashed or quit unexpectedly (status or signal {self.process.wait()})")
        return response.strip()

    def quit(self):
        self.process.stdin.write(b"quit\n")
        try:
            status = self.process.wait(RESPONSE_TIMEOUT)
        except subprocess.TimeoutExpired:
            raise Failure("does not quit") from None
        if status != 0:
            raise Failure(f"fails while it quits (status or signal {status})")

    def polls(self):
        return int(self.command("figures").split()[1])

    def figures(self):
        process = pathlib.Path(f"/proc/{self.process.pid}")
        descriptors = []
        for _ in range(10):  # the minimum leaves out requests in flight
            descriptors.append(len(os.listdir(process / "fd")))
            time.sleep(0.03)
        return {"heap (KiB)": int(self.command("figures").split()[0]),
                "private memory (KiB)": number_in(process / "smaps_rollup", "Private_Dirty:"),
                "descriptors": min(descriptors),
                "threads": number_in(process / "status", "Threads:")}


class Desktop:
    """A session bus with a tray and a notification server. start() starts what was stopped."""

    def __init__(self):
        self.address = os.environ["DBUS_SESSION_BUS_ADDRESS"] = f"unix:path={HOME}/bus"
        self.bus = self.tray = self.server = None
        self.posted = 0
        threading.Thread(target=GLib.MainLoop().run, daemon=True).start()

    def start(self):
        if not self.bus:
            self.bus = subprocess.Popen(session.bus_command(self.address), stdout=subprocess.PIPE)
            self.bus.stdout.readline()
        self.tray = self.tray or session.TrayHost(self.address)
        self.server = self.server or session.NotificationServer(self.address)

    def stop(self):
        self.stop_tray()
        self.stop_notifications()
        if self.bus:
            self.bus.kill()
            self.bus.communicate()
            self.bus = None

    def stop_tray(self):
        if self.tray:
            self.tray.close()
            self.tray = None

    def stop_notifications(self):
        if self.server:
            self.posted += len(self.server.posted)
            self.server.close()
            self.server = None

    def notifications(self):
        return self.posted + (len(self.server.posted) if self.server else 0)


def reset(request):
    request.wfile.write(b"HTTP/1.1 200 OK\r\n")
    request.connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))


def drip(request):
    while True:
        request.wfile.write(b"x")
        time.sleep(0.02)


def flood(request):
    request.wfile.write(b"HTTP/1.1 200 OK\r\n\r\n")
    for _ in range(100):
        request.wfile.write(b"x" * 1_000_000)


def cut(request):
    request.wfile.write(b"HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{")


BAD_RESPONSES = [web.answer("{}", 500), web.answer({"version": 7, "cloud": None}), cut, reset, drip, flood, web.hang]


class Disturber:
    """Causes random events around the application."""

    def __init__(self, application, desktop, chance):
        self.application, self.desktop, self.random = application, desktop, chance
        self.begin = time.monotonic()
        self.repair_at = self.bad_server = None
        self.service_is_broken = False
        self.events = collections.deque(maxlen=30)
        command = application.command
        self.kinds = {  # with weights, all together 100
            "press a control": (47, self.press_control),
            "click the tray icon": (8, lambda: desktop.tray and desktop.tray.click()),
            "click a notification": (4, lambda: desktop.server and desktop.server.click_last()),
            "toggle the popover": (4, lambda: command("popover")),
            "open the window": (4, lambda: command("window")),
            "open the first-run window": (2, lambda: command("onboarding")),
            "close the windows": (5, lambda: command("close")),
            "crash the service": (3, lambda: self.break_service("kill", "--signal=KILL")),
            "terminate the service": (2, lambda: self.break_service("kill")),
            "suspend the service": (3, lambda: self.break_service("kill", "--signal=STOP")),
            "stop the service": (2, lambda: self.break_service("stop", "--no-block")),
            "serve bad responses": (6, self.serve_bad_responses),
            "stop the session bus": (2, desktop.stop),
            "stop the notification server": (2, desktop.stop_notifications),
            "stop the tray": (3, desktop.stop_tray),
            "suspend the machine": (3, lambda: command(f"suspend {self.random.randint(5, 605)}")),
        }

    def disturb(self):
        """Causes one event, and repairs what an earlier one broke when its time has come."""
        weights = [weight for weight, _ in self.kinds.values()]
        name = self.random.choices(list(self.kinds), weights)[0]
        now = time.monotonic()
        self.events.append(f"{now - self.begin:8.2f} s  {name}")
        self.kinds[name][1]()
        self.repair_at = self.repair_at or now + self.random.uniform(0.1, 5)
        time.sleep(self.random.uniform(0.03, 0.43))
        if time.monotonic() >= self.repair_at:
            self.repair()

    def repair(self):
        self.repair_at = None
        self.desktop.start()
        if self.service_is_broken:
            self.service_is_broken = False
            (HOME / "scenario").write_text(self.random.choice(SCENARIOS))
            systemctl("restart", "--no-block")
        if self.bad_server:
            self.bad_server.stop()
            self.bad_server = None

    def press_control(self):
        name = self.application.command(f"press {self.random.randrange(1_000_000)}")
        self.events[-1] += ": " + name
        if not name:
            self.application.command("popover")

    def break_service(self, *arguments):
        systemctl(*arguments)
        self.service_is_broken = True

    def serve_bad_responses(self):
        """Directs the application to a server that misbehaves."""
        if not self.bad_server:
            self.bad_server = web.Server()
        self.bad_server.behaviours["*"] = self.random.choice(BAD_RESPONSES)
        (HOME / ".tunedeck/runtime.json").write_text(f'{{"port": {self.bad_server.server_port}}}')
        self.service_is_broken = True


def prepare_home(build):
    """Installs the application and the demo service; returns the program to start."""
    contents = HOME / "Applications/Tunedeck.app/Contents"
    shutil.copytree(build / "Tunedeck.app", contents.parent, symlinks=True)
    shutil.copy(build / "Tests/Soak/soak-application", contents / "MacOS/Tunedeck")
    service = contents / "Helpers/tunedeck"
    service.rename(HOME / "demo-service")  # the application copies only the script
    service.write_text(SERVICE)
    service.chmod(0o755)
    (HOME / "scenario").write_text("lively")
    (HOME / ".tunedeck").mkdir()
    (HOME / ".tunedeck/settings.json").write_text('{"onboarded": true}')
    (HOME / "bin").mkdir()
    (HOME / "bin/xdg-open").symlink_to("/bin/true")  # no browser opens on a developer's machine
    os.environ["PATH"] = f"{HOME}/bin:/usr/bin:/bin"
    os.environ.pop("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", None)
    return contents / "MacOS/Tunedeck"


def sample(application, disturber):
    """Waits until everything has settled, then measures."""
    disturber.repair()
    application.command("close")
    time.sleep(1.2)
    before, end = application.polls(), time.monotonic() + RESPONSE_TIMEOUT
    while application.polls() < before + 3:
        if time.monotonic() > end:
            raise Failure("no longer polls the service")
        time.sleep(0.02)
    figures = application.figures()
    print(f"{(time.monotonic() - disturber.begin) / 60:5.1f} min: "
          + ", ".join(f"{name} {value}" for name, value in figures.items())
          + f", {disturber.desktop.notifications()} notifications", flush=True)
    return figures


def check_growth(samples, minutes, limits_memory):
    """Compares the last third of the samples with the first third after the warm-up."""
    # The memory reaches its size after about ten minutes; a shorter run is all warm-up.
    memory = (2048 if minutes >= 40 else 4096) if limits_memory and minutes >= 10 else float("inf")
    settled = samples[len(samples) // 4:]
    third = len(settled) // 3
    if third < 2:
        raise Failure("ran too briefly to measure growth")
    for name, limit in zip(samples[0], (memory, memory, 0, 0)):
        # The lower quartile ignores the peaks of windows and lists that happen to be open.
        early, late = (statistics.quantiles([each[name] for each in part], n=4, method="inclusive")[0]
                       for part in (settled[:third], settled[-third:]))
        change = f"{name}: {early:.0f}, later {late:.0f}"
        print(change)
        if late - early > limit:
            raise Failure("uses more and more: " + change)


def run(options):
    """The exit status."""
    program = prepare_home(options.build)
    desktop = Desktop()
    desktop.start()
    application = Application(program)
    disturber = Disturber(application, desktop, random.Random(options.seed))
    samples, next_sample = [], 0
    try:
        for view in ("window", "onboarding", "popover"):
            time.sleep(1)
            application.command(view)  # loads everything that is loaded on demand
        while (elapsed := time.monotonic() - disturber.begin) < options.minutes * 60:
            disturber.disturb()
            if elapsed >= next_sample:
                next_sample = elapsed + min(max(options.minutes, 4), 60)
                samples.append(sample(application, disturber))
        application.quit()
        check_growth(samples, options.minutes, not options.any_memory)
        if desktop.notifications() == 0:
            raise Failure("posted no notification")
        print(f"Passed (seed {options.seed}).")
        return 0
    except Failure as failure:
        print("\nLatest events:", *disturber.events, sep="\n  ")
        print(f"FAILED: the application {failure}")
        print(f"Repeat with: ./tools/soak --minutes {options.minutes:g} --seed {options.seed}")
        return 1
    finally:
        application.process.kill()
        application.process.wait()
        desktop.stop()


def main():
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("--minutes", type=float, default=60)
    parser.add_argument("--seed", type=int, default=random.randrange(1_000_000))
    parser.add_argument("--any-memory", action="store_true")
    options = parser.parse_args()
    if (HOME / ".tunedeck").exists():
        print("soak: the home folder is in use; run ./tools/soak", file=sys.stderr)
        return 2
    return run(options)


sys.exit(main())
