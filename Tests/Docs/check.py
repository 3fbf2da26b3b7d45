#!/usr/bin/env python3
"""Compares the documents with the project: check.py PROJECT TUNEDECK. Prints what isn't true and fails.

In the guide, words in bold are those on the screen; "…" in them stands for what differs.
"""

import pathlib
import re
import subprocess
import sys
import urllib.parse

project, tunedeck = pathlib.Path(sys.argv[1]).resolve(), sys.argv[2]
faults = []


def text_of(*globs):
    return "\n".join(path.read_text(encoding="utf-8") for glob in globs for path in sorted(project.glob(glob)))


documents = {path: path.read_text(encoding="utf-8") for path in [*project.glob("*.md"), *project.glob("docs/*.md")]}
guide = {path: text for path, text in documents.items() if path.parent == project / "docs"}
sources = text_of("Tunedeck*/**/*.cpp", "Tunedeck*/**/*.h", "Tunedeck*/**/*.qml", "DemoService/**/*.cpp")
cmake = text_of("CMakeLists.txt", "*/CMakeLists.txt", "cmake/*.cmake")


def fault(path, sentence):
    faults.append(f"{path.relative_to(project)}: {sentence}")


# Texts of the screen. Literals that stand side by side are one.
string = r'"(?:[^"\\\n]|\\.)*"'
literals = {
    "".join(re.findall(r'"((?:[^"\\\n]|\\.)*)"', run)) for run in re.findall(rf"{string}(?:\s*{string})*", sources)
}
for path, text in guide.items():
    if path.name in ("threat-model.md", "release.md"):
        continue
    for quoted in re.findall(r"\*\*(.+?)\*\*", text, re.DOTALL):
        quoted = " ".join(quoted.split())
        if quoted.startswith("Words in bold"):
            continue
        pattern = re.compile(".*".join(map(re.escape, quoted.split("…"))))
        if quoted not in literals and not ("…" in quoted and any(map(pattern.fullmatch, literals))):
            fault(path, f"no text of the panel is “{quoted}”")

# Options, both ways.
offered = set(re.findall(r"--[a-z]+", subprocess.run([tunedeck, "--help"], capture_output=True, text=True, check=True).stdout))
page = project / "docs/command-line.md"
told = set(re.findall(r"^\| `(--[a-z]+)`", documents[page], re.MULTILINE))
for option in sorted(offered ^ told):
    fault(page, f"{option} is {'in --help but not here' if option in offered else 'here but not in --help'}")

for path, text in guide.items():
    # Our own commands, with their options.
    for command, rest in re.findall(r"(?:\./)?(tools/[a-z/-]*[a-z]|\.ci/run)((?: +[^\n`]*)?)", text.replace("\\\n", " ")):
        if not (project / command).exists():
            fault(path, f"there is no {command}")
            continue
        on_a_mac = project / command.replace("tools/", "tools/macos/")
        scripts = "".join(file.read_text() for file in (project / command, on_a_mac) if file.is_file())
        for option in re.findall(r"--[a-z-]+", rest) if scripts else []:
            if option.lstrip("-") not in scripts:
                fault(path, f"{command} has no {option}")
    # Files of the project, names of the build, places in the home.
    for name in re.findall(r"`((?:Tunedeck(?:Core|Menu)|DemoService|UpdateHelper|packaging|Tests)/[^` ]*)`", text):
        if not (project / name).exists():
            fault(path, f"there is no {name}")
    for name in set(re.findall(r"TUNEDECK_[A-Z_]+", text)) - set(re.findall(r"TUNEDECK_[A-Z_]+", cmake)):
        fault(path, f"the build knows no {name}")
    for name in re.findall(r"(?:--target|--preset) ([a-z]+)", text):
        if name not in cmake + (project / "CMakePresets.json").read_text():
            fault(path, f"there is no target or preset {name}")
    for place in re.findall(r"~/([\w./-]+)", text):
        last = place.rstrip("/").rsplit("/", 1)[-1]
        stem = last.removesuffix(".service").removesuffix(".conf")
        if last not in sources and stem not in sources + cmake:
            fault(path, f"nothing in the program knows ~/{place}")


def anchors(text):
    heads = re.findall(r"^#+ (.*)$", text, re.MULTILINE)
    return {re.sub(r"[^\w -]", "", head.lower()).replace(" ", "-") for head in heads}


# Links and pictures, both ways.
pictures = set()
for path, text in documents.items():
    for target in re.findall(r"\]\(([^)]+)\)", text):
        if re.match(r"[a-z]+:", target):
            continue
        name, _, anchor = urllib.parse.unquote(target).partition("#")
        file = (path.parent / name).resolve() if name else path
        if not file.exists():
            fault(path, f"the link {target} leads nowhere")
        elif anchor and anchor not in anchors(file.read_text(encoding="utf-8")):
            fault(path, f"{file.name} has no heading #{anchor}")
        pictures.add(file)
for picture in sorted(project.glob("docs/pictures/*")):
    if picture.resolve() not in pictures:
        fault(picture, "no document shows this picture")

print("\n".join(faults) or f"{len(documents)} documents are true to the project")
sys.exit(bool(faults))
