#!/usr/bin/env python3
"""Compares the application with minimal programs (the floor); run by ./tools/bench on a private desktop.

    bench.py [--quick] BUILD-FOLDER

All programs are started and measured in the same way, alternately and one at a time. The service is the demo service in
an idle scenario. It is started separately, so that it doesn't count as a child process of the application.
"""
import argparse
import ctypes
import os
import pathlib
import shutil
import signal
import socket
import statistics
import subprocess
import sys
import tempfile
import threading
import time

import crowd
import xwatch

# Names of other Qt programs that were running during a memory measurement.
company = set()
service_pid = None
TICK = os.sysconf("SC_CLK_TCK")


def memory(pid, field="Pss"):
    """The process's proportional set size, or another field of smaps_rollup, in MiB."""
    for line in pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text().splitlines():
        if line.startswith(field + ":"):
            return int(line.split()[1]) / 1024
    raise ValueError(f"smaps_rollup has no {field}")


def used(pid):
    """CPU time in milliseconds and the number of context switches of all threads so far."""
    nanoseconds = switches = 0
    for task in pathlib.Path(f"/proc/{pid}/task").iterdir():
        nanoseconds += int((task / "schedstat").read_text().split()[0])
        for line in (task / "status").read_text().splitlines():
            if "ctxt_switches" in line:
                switches += int(line.split()[1])
    return nanoseconds / 1e6, switches


def ticks(pid):
    """CPU time in milliseconds by utime and stime, which count in coarse steps."""
    fields = pathlib.Path(f"/proc/{pid}/stat").read_text().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) * 1000 / TICK


def others_with_qt(measured):
    """Other processes that use Qt: they share its memory pages and so reduce the PSS of the measured process.

    The demo service does as well, but equally for all programs.
    """
    found = []
    for entry in pathlib.Path("/proc").iterdir():
        if entry.name.isdigit() and entry.name not in (str(measured), str(service_pid)):
            try:
                if "libQt6Core" in (entry / "maps").read_text():
                    found.append((entry / "comm").read_text().strip())
            except OSError:
                pass
    return found


def as_at_login():
    """Makes the next child process see an uptime of 30 s; returns False without the permission for it.

    The application decides by the uptime whether it was started at login and opens no window then. A new time namespace
    applies only to child processes, so each call can create another.
    """
    new_time_namespace = 0x80
    if ctypes.CDLL(None, use_errno=True).unshare(new_time_namespace) != 0:
        return False
    # This process stays in its own namespace, so /proc/uptime is the real uptime.
    uptime = float(pathlib.Path("/proc/uptime").read_text().split()[0])
    try:
        pathlib.Path("/proc/self/timens_offsets").write_text(f"boottime {30 - int(uptime)} 0\n")
    except OSError:
        return False
    return True


def share(pid):
    """The process's PSS in MiB; waits up to 60 s for other Qt programs to exit."""
    end = time.monotonic() + 60
    while (others := others_with_qt(pid)) and time.monotonic() < end:
        time.sleep(0.02)
    company.update(others)
    return memory(pid)


class Program:
    """A program under test: its command, and the class name of its windows."""

    def __init__(self, command, desktop):
        self.command, self.desktop = [str(part) for part in command], desktop
        self.name = pathlib.Path(command[0]).name.lower()
        self.process = self.icon = None

    def start(self):
        """Starts the program; returns the seconds until its icon is in the tray."""
        as_at_login()
        self.desktop.forget_events()
        begin = time.monotonic()
        self.process = subprocess.Popen(self.command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                        stderr=subprocess.DEVNULL)
        end, self.icon = self.desktop.wait_for_icon()
        return end - begin

    def stop(self):
        """Terminates the program; returns the seconds until it has exited."""
        begin = time.monotonic()
        self.process.send_signal(signal.SIGTERM)
        self.process.wait(20)
        return time.monotonic() - begin

    def idle(self, seconds):
        """CPU time in milliseconds, the same by ticks, and context switches within `seconds`."""
        pid = self.process.pid
        before, coarse = used(pid), ticks(pid)
        time.sleep(seconds)
        after = used(pid)
        return after[0] - before[0], ticks(pid) - coarse, after[1] - before[1]

    def toggle(self):
        """Clicks the icon; returns the seconds until the window shows its first frame, and the window."""
        begin = self.desktop.click(self.icon)
        end, window = self.desktop.wait_for_window(self.name)
        return end - begin, window

    def close(self):
        self.desktop.click(self.icon)
        self.desktop.wait_for_no_window(self.name)


class Table:
    def __init__(self):
        self.rows = []

    def add(self, what, unit, floor, application, aim=""):
        ratio = f"{application / floor:.2f}" if floor and application is not None else ""
        number = lambda value: "" if value is None else f"{value:.1f} {unit}"
        self.rows.append((what, number(floor), number(application), ratio, aim))
        print(f"    {what}: floor {number(floor) or '-'}, application {number(application) or '-'} {ratio}", flush=True)

    def text(self):
        rows = [("measurement", "floor", "application", "ratio", "target"), *self.rows]
        widths = [max(len(row[column]) for row in rows) for column in range(5)]
        lines = ["| " + " | ".join(cell.ljust(width) for cell, width in zip(row, widths)) + " |" for row in rows]
        lines.insert(1, "|" + "|".join("-" * (width + 2) for width in widths) + "|")
        return "\n".join(lines)


def start_times(table, programs, rounds):
    """Time from process start to the icon in the tray; a first start of each program warms the disk cache."""
    times = {program: [] for program in programs}
    for number in range(rounds + 1):
        for program in programs:
            took = program.start()
            program.stop()
            if number:
                times[program].append(took * 1000)
    table.add("start until the icon is in the tray", "ms", *medians(times, programs), "1.5 x floor, 120 ms")


def medians(values, programs):
    """The medians of the floor and of the application."""
    return [statistics.median(values[program]) for program in programs]


def at_rest(table, programs, rounds, settle, idle):
    """Memory and CPU use of the idle programs."""
    shares, work, coarse, switches = ({program: [] for program in programs} for _ in range(4))
    for _ in range(rounds):
        for program in programs:
            program.start()
            time.sleep(settle)
            shares[program].append(share(program.process.pid))
            milliseconds, by_ticks, switched = program.idle(idle)
            work[program].append(milliseconds)
            coarse[program].append(by_ticks)
            switches[program].append(switched / idle)
            program.stop()
    table.add("PSS after start", "MiB", *medians(shares, programs), "1.2 x floor, 26 MiB")
    table.add(f"CPU time in {idle} s idle", "ms", *medians(work, programs), "5 ms in 30 s")
    table.add(f"CPU time by utime + stime (steps of {1000 // TICK} ms)", "ms", *medians(coarse, programs))
    table.add("context switches per second, idle", "", *medians(switches, programs), "under 2")


def panel(table, floor, application, openings, settle, idle):
    """The panel: time to open, cost while open, and memory growth after many openings."""
    floor.start()
    floor.desktop.wait_for_window(floor.name)
    time.sleep(settle)
    floor_memory = share(floor.process.pid)
    floor.stop()

    application.start()
    time.sleep(settle)
    first, window = application.toggle()
    table.add("click until the first frame, first time", "ms", None, first * 1000, "150 ms")
    time.sleep(settle)
    table.add("PSS with the panel open", "MiB", floor_memory, share(application.process.pid), "48 MiB")
    frames_before = used(application.process.pid)[0]
    frames = len(application.desktop.frames(window, idle))
    table.add(f"frames in {idle} s with the panel open", "", None, frames, "none")
    table.add(f"CPU time in {idle} s with the panel open", "ms", None,
              used(application.process.pid)[0] - frames_before, "30 ms in 30 s")
    application.close()

    later = []
    for _ in range(10):
        later.append(application.toggle()[0] * 1000)
        application.close()
    table.add("click until the first frame, later", "ms", None, statistics.median(later), "50 ms")
    time.sleep(settle)
    before = share(application.process.pid), memory(application.process.pid, "Private_Dirty")
    for _ in range(openings):
        application.toggle()
        application.close()
    time.sleep(settle)
    after = share(application.process.pid), memory(application.process.pid, "Private_Dirty")
    for word, begin, end in zip(("PSS", "private memory"), before, after):
        table.add(f"{word} growth after {openings} openings", "MiB", None, end - begin, "2 MiB after 200")
    application.stop()


def crowded_panel(table, application, home, settle, idle):
    """The panel with twelve links and sixty backups, and the repainted area when one job of three changes."""
    service = crowd.Crowd()
    (home / ".tunedeck/runtime.json").write_text('{"port": %d}' % service.server_port)
    first = []
    for _ in range(3):
        application.start()
        time.sleep(settle)
        took, window = application.toggle()
        first.append(took * 1000)
        if len(first) < 3:
            application.stop()
    table.add("crowded: click until the first frame, first time", "ms", None, statistics.median(first), "150 ms")
    time.sleep(settle)
    before = used(application.process.pid)[0]
    frames = len(application.desktop.frames(window, idle))
    table.add(f"crowded: frames in {idle} s with the panel open", "", None, frames, "none")
    table.add(f"crowded: CPU time in {idle} s with the panel open", "ms", None,
              used(application.process.pid)[0] - before, "30 ms in 30 s")
    service.change_one_job()
    drawn = application.desktop.frames(window, 5)
    size = window.get_geometry()
    top, bottom = min(area.y for area in drawn), max(area.y + area.height for area in drawn)
    table.add("crowded: height repainted for one changed job", "px", None, bottom - top, f"a row, of {size.height}")
    application.close()
    later = []
    for _ in range(10):
        later.append(application.toggle()[0] * 1000)
        application.close()
    table.add("crowded: click until the first frame, later", "ms", None, statistics.median(later), "50 ms")
    application.stop()
    service.close()


def hanging_quit(table, application, home, rounds):
    """Time to quit while the service withholds a response."""
    asked = threading.Event()
    listener = socket.create_server(("127.0.0.1", 0))
    held = []

    def hold():
        while True:
            try:
                held.append(listener.accept()[0])
            except OSError:
                return
            held[-1].recv(1)
            asked.set()

    threading.Thread(target=hold, daemon=True).start()
    (home / ".tunedeck/runtime.json").write_text('{"port": %d}' % listener.getsockname()[1])
    times = []
    for _ in range(rounds):
        asked.clear()
        application.start()
        if not asked.wait(30):
            raise TimeoutError("the application sent no request")
        times.append(application.stop() * 1000)
    listener.close()
    table.add("quit during a hanging request", "ms", None, statistics.median(times), "500 ms")


def main():
    global service_pid
    parser = argparse.ArgumentParser()
    parser.add_argument("--quick", action="store_true")
    parser.add_argument("build", type=pathlib.Path)
    options = parser.parse_args()
    rounds, settle, idle, openings = (3, 2, 5, 10) if options.quick else (15, 10, 30, 200)

    home = pathlib.Path(os.environ["HOME"])
    (home / ".tunedeck").mkdir(exist_ok=True)
    # No first-run window: the measurements expect the panel to be the only window.
    (home / ".tunedeck/settings.json").write_text('{"onboarded": true}')
    desktop, table = xwatch.Desktop(), Table()
    floor = Program([options.build / "Tests/Benchmarks/floor-tray"], desktop)
    floor_panel = Program([options.build / "Tests/Benchmarks/floor-panel"], desktop)
    with tempfile.TemporaryDirectory() as scratch:
        bundle = options.build / "Tunedeck.app"
        # Without a service in its bundle, the application installs nothing and uses the running service.
        copy = pathlib.Path(scratch) / "Tunedeck.app"
        shutil.copytree(bundle, copy, symlinks=True)
        (copy / "Contents/Helpers/tunedeck").unlink()
        application = Program([copy / "Contents/MacOS/Tunedeck"], desktop)
        service = subprocess.Popen([bundle / "Contents/Helpers/tunedeck", "--scenario", "quiet"],
                                   stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        service_pid = service.pid
        try:
            for _ in range(100):
                if (home / ".tunedeck/runtime.json").exists():
                    break
                time.sleep(0.1)
            start_times(table, [floor, application], rounds)
            at_rest(table, [floor, application], 1 if options.quick else 3, settle, idle)
            panel(table, floor_panel, application, openings, settle, idle)
            crowded_panel(table, application, home, settle, idle)
            hanging_quit(table, application, home, min(rounds, 5))
        finally:
            service.terminate()
            service.wait()
    print("\n" + table.text())
    if not as_at_login():
        print("Without root, starts can't be simulated as at login: the application opened its window each time.")
    if company:
        print(f"Other Qt programs were running and reduced the measured PSS: {', '.join(sorted(company))}")
    print(f"Load: {os.getloadavg()[0]:.2f}, processors: {os.cpu_count()}")
    return 0


sys.exit(main())
