#!/usr/bin/env python3
"""Checks the macOS side and what both sides share, on Linux.

    check.py types JOBS             type-checks the sources in folders named MacOS, against GNUstep's headers and the
                                    folder declarations, and looks for what only Linux has in shared sources and tests
    check.py portable JOBS BUILD    compiles shared sources and tests of a compilation database against libc++

Prints the findings; exits with 1 if there are any.
"""
import concurrent.futures
import json
import pathlib
import re
import shlex
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
DECLARATIONS = ROOT / "tools/macos/declarations"
# What a Mac builds; of the tests, the folders and not their subfolders.
PRODUCT = ("TunedeckCore", "TunedeckMenu", "UpdateHelper", "DemoService")
TESTS = tuple(f"Tests/{name}" for name in ("Core", "Demo", "Helpers", "Menu", "Panel", "Support"))
# The C headers in shared sources: those of POSIX that macOS has, and those of the libraries.
KNOWN_HEADERS = re.compile(r"(arpa/inet|fcntl|gtest/gtest|netinet/in|poll|pwd|signal|unistd|"
                           r"sys/(file|socket|stat|statvfs|types|wait)|archive(_entry)?|curl/curl|httplib|libxml/.*|openssl/.*|plist/.*|qrencode|rapidjson/.*|"
                           r"unicode/.*|qpa/.*|QtQml/.*|QtQuick/private/.*)\.h")
LINUX_NAMES = re.compile(r"\b(accept4|close_range|epoll_\w+|eventfd|inotify_\w+|memfd_create|MSG_NOSIGNAL|O_PATH|O_TMPFILE|"
                         r"pidfd_\w+|pipe2|prctl|QDBus\w+|quick_exit|renameat2|signalfd|SOCK_(CLOEXEC|NONBLOCK)|syncfs|"
                         r"timerfd_\w+)\b|\"/proc/")


def type_check_command(file):
    headers = subprocess.run(["qmake6", "-query", "QT_INSTALL_HEADERS"], capture_output=True, text=True, check=True)
    qt = headers.stdout.strip()
    systems = [f"{qt}{part}" for part in ("", "/QtCore", "/QtGui", "/QtWidgets")]
    systems += ["/usr/include/qcoro6", "/usr/include/qcoro6/qcoro", "/usr/include/qcoro6/QCoro", "/usr/include/GNUstep"]
    # Objective-C methods name their parameters, used or not.
    language = ["-x", "objective-c++", "-fobjc-arc", "-fobjc-runtime=gnustep-2.0", "-Wno-unused-parameter",
                "-Wundeclared-selector", "-Wnullable-to-nonnull-conversion"] if file.suffix == ".mm" else ["-x", "c++"]
    return ["clang++-19", *language, "-std=c++23", "-fsyntax-only", "-fblocks", "-fPIC", "-Wall", "-Wextra", "-Wpedantic",
            "-Wno-nullability-extension", "-Wshadow", "-Wold-style-cast", "-Wconversion", "-Wno-sign-conversion",
            "-Wno-missing-field-initializers", "-Werror", "-DQT_NO_KEYWORDS", "-DQT_NO_CAST_FROM_ASCII",
            "-DQT_NO_CAST_TO_ASCII", "-include", str(DECLARATIONS / "Darwin.h"), f"-I{ROOT}", f"-I{DECLARATIONS}",
            *(f"-isystem{folder}" for folder in systems), str(file)]


def is_built_on_a_mac(file):
    name = file.relative_to(ROOT) if file.is_relative_to(ROOT) else file
    folder = name.parent.parent if name.parent.name == "MacOS" else name.parent
    return "Linux" not in name.parts and (name.parts[0] in PRODUCT or str(folder) in TESTS)


def own_files(*suffixes):
    listed = subprocess.run(["git", "-C", ROOT, "ls-files", "--cached", "--others", "--exclude-standard", *PRODUCT, *TESTS],
                            capture_output=True, text=True, check=True).stdout.splitlines()
    files = [ROOT / name for name in listed if name.endswith(suffixes)]
    return [file for file in files if file.is_file() and is_built_on_a_mac(file)]


def linux_only(file):
    """Findings about names in a shared source that macOS lacks."""
    findings = []
    for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
        included = re.match(r"\s*#include <([\w/.]+\.h)>", line)
        if included and not KNOWN_HEADERS.fullmatch(included[1]):
            findings.append(f"{file.relative_to(ROOT)}:{number}: <{included[1]}> isn't known to exist on macOS")
        if found := LINUX_NAMES.search(line.split("//")[0]):
            findings.append(f"{file.relative_to(ROOT)}:{number}: {found[0]} exists on Linux only")
    return findings


def portable_command(entry):
    words = shlex.split(entry["command"])
    position = words.index("-o")
    del words[position:position + 2]
    # Every libc++ of today has stop tokens, but that of clang 19 as an experiment; QCoro 0.8 forgets <exception>, and
    # Boost 1.74 doesn't know that result_of was removed.
    return [*words, "-fsyntax-only", "-stdlib=libc++", "-fexperimental-library", "-include", "exception",
            "-DBOOST_ASIO_HAS_STD_INVOKE_RESULT=1"]


def run(command, folder):
    ended = subprocess.run(command, cwd=folder, stdin=subprocess.DEVNULL, capture_output=True, text=True)
    return ended.stderr.replace(f"{ROOT}/", "") if ended.returncode != 0 else ""


def main():
    jobs = int(sys.argv[2])
    findings = []
    if sys.argv[1] == "types":
        sources = own_files(".cpp", ".mm", ".h")
        for file in sources:
            if "MacOS" not in file.parts:
                findings += linux_only(file)
        tasks = [(type_check_command(file), ROOT) for file in sources if "MacOS" in file.parts and file.suffix != ".h"]
    else:
        entries = json.loads((pathlib.Path(sys.argv[3]) / "compile_commands.json").read_text())
        shared = [entry for entry in entries if is_built_on_a_mac(pathlib.Path(entry["file"]))]
        tasks = [(portable_command(entry), entry["directory"]) for entry in shared]
    if not tasks:
        sys.exit("there are no sources to check")
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        findings += filter(None, pool.map(lambda task: run(*task), tasks))
    for finding in findings:
        print(finding)
    print(f"checked {len(tasks)} sources")
    sys.exit(bool(findings))


main()
