#!/usr/bin/env python3
"""Runs clang-tidy in parallel on the project's sources in a compilation database.

    tidy.py BUILD-FOLDER JOBS [FILE ...]      exits with 1 if there are findings

Skips a file if nothing has changed since it last passed: the file, the project's headers that it includes, its compile
command and .clang-tidy. The build folder stores a digest of these.
"""
import concurrent.futures
import hashlib
import json
import pathlib
import re
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
FOLDERS = ("TunedeckCore", "TunedeckMenu", "DemoService", "UpdateHelper", "Tests", "cmake")
INCLUDE = re.compile(rb'^\s*#\s*include\s+"([^"]+)"', re.M)


def with_headers(source, seen):
    """The file and all project headers that it includes, directly or indirectly."""
    if source in seen or not source.is_file():
        return seen
    seen.add(source)
    for name in INCLUDE.findall(source.read_bytes()):
        for base in (ROOT, source.parent):
            with_headers((base / name.decode()).resolve(), seen)
    return seen


def digest(entry, settings):
    value = hashlib.sha256(settings + entry["command"].encode())
    for name in sorted(with_headers(pathlib.Path(entry["file"]), set())):
        value.update(name.read_bytes())
    return value.hexdigest()


def findings(output, known):
    """New findings in clang-tidy's output: findings in a header are reported for every file that includes it."""
    parts = re.split(r"^(?=\S+:\d+:\d+: (?:error|warning):)", output.replace(f"{ROOT}/", ""), flags=re.M)
    new = [part for part in parts if part.strip() and part.split("\n")[0] not in known]
    known.update(part.split("\n")[0] for part in new)
    return "".join(new)


def check(build, entry):
    run = subprocess.run(["clang-tidy-19", "--quiet", "-p", build, entry["file"]], stdin=subprocess.DEVNULL,
                         stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    # Without findings, standard error has only the number of suppressed warnings.
    problem = run.stdout or (run.stderr if run.returncode else "")
    return "" if run.returncode == 0 and not run.stdout.strip() else problem


def main():
    build, jobs = pathlib.Path(sys.argv[1]), int(sys.argv[2])
    chosen = {pathlib.Path(name).resolve() for name in sys.argv[3:]}
    entries = {}
    for entry in json.loads((build / "compile_commands.json").read_text()):
        source = pathlib.Path(entry["file"])
        ours = ROOT in source.parents and source.relative_to(ROOT).parts[0] in FOLDERS
        if ours and (not chosen or source in chosen):
            entries.setdefault(source, entry)

    memory = build / "tidy-passed.json"
    passed = json.loads(memory.read_text()) if memory.exists() else {}
    settings = b"".join(name.read_bytes() for name in sorted(ROOT.glob(".clang-tidy")) + sorted(ROOT.glob("*/.clang-tidy")))
    digests = {source: digest(entry, settings) for source, entry in entries.items()}
    todo = [source for source in entries if passed.get(str(source)) != digests[source]]
    start, failed, known = time.monotonic(), 0, set()
    pool = concurrent.futures.ThreadPoolExecutor(jobs)
    runs = {pool.submit(check, str(build), entries[source]): source for source in todo}
    try:
        for run in concurrent.futures.as_completed(runs):
            source = runs[run]
            if run.result():
                failed += 1
                print(findings(run.result(), known), end="", flush=True)
            else:
                passed[str(source)] = digests[source]
    finally: # also after Ctrl+C
        pool.shutdown(cancel_futures=True)
        memory.write_text(json.dumps(passed, indent=1, sort_keys=True))
    print(f"clang-tidy: {len(todo)} of {len(entries)} files checked in {time.monotonic() - start:.0f} s, "
          f"{failed} with findings")
    return 1 if failed else 0


sys.exit(main())
