#!/usr/bin/env python3
"""Measures the parts of an update beside the programs that others have for them; run by ./tools/bench.

    bench_update.py [--quick] BUILD-FOLDER

Every figure is of a whole process, the contenders by turns, all on the same files. What it writes goes to a temporary
folder (1.5 GB at a time) and is removed.
"""
import argparse
import functools
import hashlib
import http.server
import os
import pathlib
import random
import shutil
import statistics
import subprocess
import tempfile
import threading
import time
import zipfile

IDENTIFIER = "com.example.bench"
VERSION = "1.4.1"


def run(*command):
    """Runs a program to its end; gives its seconds and what it printed."""
    began = time.monotonic()
    ended = subprocess.run([str(word) for word in command], stdout=subprocess.PIPE)
    seconds = time.monotonic() - began
    if ended.returncode != 0:
        raise SystemExit(f"{command[0]} ended with {ended.returncode}")
    return seconds, ended.stdout


def by_turns(rounds, contenders):
    """Each contender's median of seconds; a contender is a function that makes one run."""
    runs = {name: [] for name in contenders}
    for _ in range(rounds):
        for name, once in contenders.items():
            runs[name].append(once()[0])
    return {name: statistics.median(seconds) for name, seconds in runs.items()}


def line(what, value, aim):
    print(f"{what:<62} {value:>10}   {aim}", flush=True)


def fill(path, size):
    """A file of so many bytes that don't repeat within a megabyte."""
    block = random.Random(1).randbytes(1 << 20)
    with open(path, "wb") as file:
        for _ in range(size >> 20):
            file.write(block)


def make_archive(path, megabytes, files):
    """An application of so many files, in an archive of about that size."""
    source = random.Random(2)
    info = f"""<?xml version="1.0" encoding="UTF-8"?><plist version="1.0"><dict>
<key>CFBundleIdentifier</key><string>{IDENTIFIER}</string>
<key>CFBundleShortVersionString</key><string>{VERSION}</string></dict></plist>"""
    each = (megabytes << 20) // files
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as archive:
        archive.writestr("Bench.app/Contents/Info.plist", info)
        for number in range(files):
            # Half of it can't be compressed, and the other is a pattern of its own that can.
            pieces = [source.randbytes(64) + bytes([number & 0xFF]) * 64 for _ in range(each // 60)]
            archive.writestr(f"Bench.app/Contents/Resources/{number % 40}/{number}.bin", b"".join(pieces))
    return path


def into_empty(folder, *command):
    """One run that unpacks, with the folder emptied before, which isn't measured."""
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir()
    os.sync()
    return run(*command)


def hashing(parts, work, rounds, size):
    large = work / "large"
    fill(large, size)
    figures = by_turns(rounds, {
        "ours": lambda: run(parts, "hash", large),
        "openssl": lambda: run("openssl", "dgst", "-sha256", large)})
    peak, start = (int(run(parts, *words)[1]) / 1024 for words in (("hash", large), ("start",)))
    large.unlink()
    line(f"sha256Hex of {size >> 20} MiB: speed, of openssl dgst", f"{figures['openssl'] / figures['ours']:.2f}",
         f">= 0.95 (ours {figures['ours']:.3f} s)")
    line("  memory above start", f"{peak - start:.1f} MiB", "< 5 MiB")


def unpacking(parts, work, rounds, megabytes):
    archive, folder = make_archive(work / "unpack.zip", megabytes, 2000), work / "to"
    figures = by_turns(rounds, {
        "ours": lambda: into_empty(folder, parts, "unpack", archive, folder),
        "unzip": lambda: into_empty(folder, "unzip", "-q", archive, "-d", folder),
        "bsdtar": lambda: into_empty(folder, "bsdtar", "-xf", archive, "-C", folder)})
    quicker = min(figures["unzip"], figures["bsdtar"])
    line(f"unpack of {archive.stat().st_size >> 20} MiB in 2,000 files: time, of the quicker of",
         f"{figures['ours'] / quicker:.2f}",
         f"<= 1.1 (ours {figures['ours']:.2f}, unzip {figures['unzip']:.2f}, bsdtar {figures['bsdtar']:.2f} s)")
    archive.unlink()
    shutil.rmtree(folder)


class Quiet(http.server.SimpleHTTPRequestHandler):
    """Serves files and keeps silent about it."""

    def log_message(self, *_):
        pass


def whole_update(parts, helper, work, rounds, megabytes):
    served = work / "served"
    served.mkdir()
    archive = make_archive(served / "a.zip", megabytes, 1000)
    digest = hashlib.sha256(archive.read_bytes()).hexdigest()
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), functools.partial(Quiet, directory=served))
    threading.Thread(target=server.serve_forever, daemon=True).start()
    url = f"http://127.0.0.1:{server.server_port}/a.zip"
    folder, bundle, got = work / "to", work / "installed" / "Bench.app", work / "got.zip"

    def install():
        shutil.rmtree(bundle, ignore_errors=True)
        bundle.mkdir(parents=True)
        os.sync()
        return run(parts, "install", helper, url, digest, bundle, IDENTIFIER, VERSION)

    def transfer():
        got.unlink(missing_ok=True)
        os.sync()
        return run(parts, "transfer", helper, url, got)

    figures = by_turns(rounds, {
        "whole": install,
        "transfer": transfer,
        "hash": lambda: run(parts, "hash", archive),
        "unpack": lambda: into_empty(folder, parts, "unpack", archive, folder)})
    server.shutdown()
    total = sum(figures[name] for name in ("transfer", "hash", "unpack"))
    line(f"whole update, {archive.stat().st_size >> 20} MiB: time, of transfer, hash and unpack",
         f"{figures['whole'] / total:.2f}",
         f"<= 1.3 (whole {figures['whole']:.2f} s, " +
         ", ".join(f"{name} {figures[name]:.2f}" for name in ("transfer", "hash", "unpack")) + ")")


def main():
    options = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    options.add_argument("--quick", action="store_true", help="small files and two rounds, to try the script itself")
    options.add_argument("build", type=pathlib.Path)
    arguments = options.parse_args()
    parts = arguments.build / "Tests/Benchmarks/update-parts"
    helper = arguments.build / "Tunedeck.app/Contents/Helpers/tunedeck-fetch"
    rounds, scale = (2, 16) if arguments.quick else (7, 1)
    with tempfile.TemporaryDirectory(prefix="tunedeck-bench-") as name:
        work = pathlib.Path(name)
        hashing(parts, work, rounds, (1 << 30) // scale)
        unpacking(parts, work, rounds, 200 // scale)
        whole_update(parts, helper, work, rounds, 100 // scale)


main()
