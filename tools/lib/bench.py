#!/usr/bin/env python3
"""Measures the application against the floor programs; run by ./tools/bench on a private desktop.

    bench.py [--quick] BUILD-FOLDER

Both programs are started, watched and read in the same way, one at a time and by turns. The service is the demo service
with nothing going on, started apart from the application, so that its processes are nobody's.
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

# Programs with Qt that stayed while a share of memory was read.
company = set()
TICK = os.sysconf("SC_CLK_TCK")


def memory(pid, field="Pss"):
    """MiB of memory that are this process's share, or another figure of the kernel's."""
    for line in pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text().splitlines():
        if line.startswith(field + ":"):
            return int(line.split()[1]) / 1024
    raise ValueError(f"smaps_rollup names no {field}")


def used(pid):
    """Milliseconds of processor time and the number of context switches so far, of all threads."""
    nanoseconds = switches = 0
    for task in pathlib.Path(f"/proc/{pid}/task").iterdir():
        nanoseconds += int((task / "schedstat").read_text().split()[0])
        for line in (task / "status").read_text().splitlines():
            if "ctxt_switches" in line:
                switches += int(line.split()[1])
    return nanoseconds / 1e6, switches


def ticks(pid):
    """Milliseconds of processor time by the coarser count of utime and stime."""
    fields = pathlib.Path(f"/proc/{pid}/stat").read_text().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) * 1000 / TICK


def others_with_qt(measured=None):
    """Processes that share Qt's memory with the measured one, and so make its share look smaller."""
    found = []
    for entry in pathlib.Path("/proc").iterdir():
        if entry.name.isdigit() and entry.name != str(measured):
            try:
                if "libQt6Core" in (entry / "maps").read_text():
                    found.append((entry / "comm").read_text().strip())
            except OSError:
                pass
    return found


def as_at_login():
    """Lets the programs started next believe that the machine came up a moment ago.

    Started by hand the application opens its window, started at login it doesn't, and it tells the two by the machine's
    uptime. A new time namespace is for children only and can be had again for each. False when that isn't allowed.
    """
    new_time_namespace = 0x80
    if ctypes.CDLL(None, use_errno=True).unshare(new_time_namespace) != 0:
        return False
    # What /proc/uptime says is of the namespace that this process itself is in, and stays in.
    uptime = float(pathlib.Path("/proc/uptime").read_text().split()[0])
    try:
        pathlib.Path("/proc/self/timens_offsets").write_text(f"boottime {30 - int(uptime)} 0\n")
    except OSError:
        return False
    return True


def share(pid):
    """MiB of memory that are this process's share, in a moment when no other program has Qt, if one comes in time."""
    end = time.monotonic() + 60
    while (others := others_with_qt(pid)) and time.monotonic() < end:
        time.sleep(0.02)
    company.update(others)
    return memory(pid)


class Program:
    """One of the programs that are compared: how it is started, and the class name of its windows."""

    def __init__(self, command, desktop):
        self.command, self.desktop = [str(part) for part in command], desktop
        self.name = pathlib.Path(command[0]).name.lower()
        self.process = self.icon = None

    def start(self):
        """Starts it; seconds until the tray had its icon."""
        as_at_login()
        self.desktop.forget_events()
        begin = time.monotonic()
        self.process = subprocess.Popen(self.command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                        stderr=subprocess.DEVNULL)
        end, self.icon = self.desktop.wait_for_icon()
        return end - begin

    def stop(self):
        """Tells it to end; seconds until it was gone."""
        begin = time.monotonic()
        self.process.send_signal(signal.SIGTERM)
        self.process.wait(20)
        return time.monotonic() - begin

    def idle(self, seconds):
        """Milliseconds of processor time, the same by ticks, and context switches in that time."""
        pid = self.process.pid
        before, coarse = used(pid), ticks(pid)
        time.sleep(seconds)
        after = used(pid)
        return after[0] - before[0], ticks(pid) - coarse, after[1] - before[1]

    def toggle(self):
        """A click on the icon; seconds until the window had its first picture."""
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
        rows = [("what", "floor", "application", "ratio", "aim"), *self.rows]
        widths = [max(len(row[column]) for row in rows) for column in range(5)]
        lines = ["| " + " | ".join(cell.ljust(width) for cell, width in zip(row, widths)) + " |" for row in rows]
        lines.insert(1, "|" + "|".join("-" * (width + 2) for width in widths) + "|")
        return "\n".join(lines)


def start_times(table, programs, rounds):
    """Process start until the tray has the icon; by turns, after one start of each that warms the disk's cache."""
    times = {program: [] for program in programs}
    for turn in range(rounds + 1):
        for program in programs:
            took = program.start()
            program.stop()
            if turn:
                times[program].append(took * 1000)
    table.add("start until the icon is in the tray", "ms", *medians(times, programs), "1.5 x floor, 120 ms")


def medians(values, programs):
    """The medians of the floor and of the application; None for an application that isn't there."""
    found = [statistics.median(values[program]) for program in programs]
    return found + [None] * (2 - len(found))


def at_rest(table, programs, rounds, settle, idle):
    """Memory and work of the programs when nobody touches them."""
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
    table.add(f"processor in {idle} s idle", "ms", *medians(work, programs), "5 ms in 30 s")
    table.add(f"the same by utime + stime (steps of {1000 // TICK} ms)", "ms", *medians(coarse, programs))
    table.add("context switches a second, idle", "", *medians(switches, programs), "under 2")


def panel(table, floor, application, openings, settle, idle):
    """The panel: how long it takes to open, what it costs while open, and whether it leaves anything behind."""
    floor.start()
    floor.desktop.wait_for_window(floor.name)
    time.sleep(settle)
    floor_memory = share(floor.process.pid)
    floor.stop()

    application.start()
    time.sleep(settle)
    first, window = application.toggle()
    table.add("click until the first picture, first time", "ms", None, first * 1000, "150 ms")
    time.sleep(settle)
    table.add("PSS with the panel open", "MiB", floor_memory, share(application.process.pid), "48 MiB")
    frames_before = used(application.process.pid)[0]
    frames = len(application.desktop.frames(window, idle))
    table.add(f"frames in {idle} s with the panel open", "", None, frames, "none")
    table.add(f"processor in {idle} s with the panel open", "ms", None,
              used(application.process.pid)[0] - frames_before, "30 ms in 30 s")
    application.close()

    later = []
    for _ in range(10):
        later.append(application.toggle()[0] * 1000)
        application.close()
    table.add("click until the first picture, later", "ms", None, statistics.median(later), "50 ms")
    time.sleep(settle)
    before = share(application.process.pid), memory(application.process.pid, "Private_Dirty")
    for _ in range(openings):
        application.toggle()
        application.close()
    time.sleep(settle)
    after = share(application.process.pid), memory(application.process.pid, "Private_Dirty")
    for word, begin, end in zip(("PSS", "memory of its own"), before, after):
        table.add(f"{word} grown by {openings} openings", "MiB", None, end - begin, "2 MiB after 200")
    application.stop()


def crowded_panel(table, application, home, settle, idle):
    """The same with twelve links and sixty backups, and what is drawn when one job of three changes."""
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
    table.add("crowded: click until the first picture, first time", "ms", None, statistics.median(first), "150 ms")
    time.sleep(settle)
    before = used(application.process.pid)[0]
    frames = len(application.desktop.frames(window, idle))
    table.add(f"crowded: frames in {idle} s with the panel open", "", None, frames, "none")
    table.add(f"crowded: processor in {idle} s with the panel open", "ms", None,
              used(application.process.pid)[0] - before, "30 ms in 30 s")
    service.change_one_job()
    drawn = application.desktop.frames(window, 5)
    size = window.get_geometry()
    top, bottom = min(area.y for area in drawn), max(area.y + area.height for area in drawn)
    table.add("crowded: height drawn anew for one changed job", "px", None, bottom - top, f"a row, of {size.height}")
    application.close()
    later = []
    for _ in range(10):
        later.append(application.toggle()[0] * 1000)
        application.close()
    table.add("crowded: click until the first picture, later", "ms", None, statistics.median(later), "50 ms")
    application.stop()
    service.close()


def hanging_quit(table, application, home, rounds):
    """Ends the application while the service holds an answer back."""
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
            raise TimeoutError("the application asked the service nothing")
        times.append(application.stop() * 1000)
    listener.close()
    table.add("quit while a request hangs", "ms", None, statistics.median(times), "500 ms")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--quick", action="store_true")
    parser.add_argument("build", type=pathlib.Path)
    options = parser.parse_args()
    rounds, settle, idle, openings = (3, 2, 5, 10) if options.quick else (15, 10, 30, 200)

    home = pathlib.Path(os.environ["HOME"])
    (home / ".tunedeck").mkdir(exist_ok=True)
    # Seen through: no first-run window, whose place the panel's would have to share.
    (home / ".tunedeck/settings.json").write_text('{"onboarded": true}')
    desktop, table, service = xwatch.Desktop(), Table(), None
    floor = Program([options.build / "Tests/Benchmarks/floor-tray"], desktop)
    floor_panel = Program([options.build / "Tests/Benchmarks/floor-panel"], desktop)
    programs = [floor]
    with tempfile.TemporaryDirectory() as scratch:
        bundle = options.build / "Tunedeck.app"
        if (bundle / "Contents/MacOS/Tunedeck").exists():
            # Without the service in its bundle the application installs nothing, and talks to the one that runs.
            mine = pathlib.Path(scratch) / "Tunedeck.app"
            shutil.copytree(bundle, mine, symlinks=True)
            (mine / "Contents/Helpers/tunedeck").unlink()
            programs.append(Program([mine / "Contents/MacOS/Tunedeck"], desktop))
            service = subprocess.Popen([bundle / "Contents/Helpers/tunedeck", "--scenario", "quiet"],
                                       stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            for _ in range(100):
                if (home / ".tunedeck/runtime.json").exists():
                    break
                time.sleep(0.1)
        try:
            start_times(table, programs, rounds)
            at_rest(table, programs, 1 if options.quick else 3, settle, idle)
            if len(programs) == 2:
                panel(table, floor_panel, programs[1], openings, settle, idle)
                crowded_panel(table, programs[1], home, settle, idle)
                hanging_quit(table, programs[1], home, min(rounds, 5))
        finally:
            if service:
                service.terminate()
                service.wait()
    print("\n" + table.text())
    if len(programs) == 1:
        print("There is no application in this build; only the floor was measured.")
    if not as_at_login():
        print("Only root can make it look like a login: the application opened its window at each start.")
    if company:
        print(f"Other programs with Qt ran meanwhile and make memory look smaller: {', '.join(sorted(company))}")
    print(f"Load: {os.getloadavg()[0]:.2f}, processors: {os.cpu_count()}")
    return 0


sys.exit(main())
