#!/usr/bin/env python3
"""Fails when an include crosses the layers.

- Every project include names its layer: "core/<subsystem>/..." or "gui/<folder>/...".
- The core never includes the GUI; a core subsystem includes only the subsystems below it.
- A plug-in includes no application header but the plug-in contract.
"""
import os
import re
import sys

ROOT = os.path.abspath(os.path.join(os.path.dirname(__file__), ".."))
BELOW = {
    "foundation": [], "platform": [],
    "lyric": ["foundation"], "http": ["foundation"], "settings": ["foundation"],
    "text": ["foundation"],
    "store": ["lyric"], "online": ["lyric"], "display": ["lyric"],
    "audiofile": ["store"],
    "sources": ["http", "lyric", "platform", "settings", "store"],
    "preferences": ["settings"],
    "reading": ["display", "text", "settings"],
    "editor": ["foundation"], "publish": ["foundation"],
}
BELOW["app"] = list(BELOW)
CONTRACT = "core/app/LrcFetcherProtocol.h"
# Built into the lrcserver plug-in's protocol library from core files, not into the plug-in.
PROTOCOL_FACADE = "plugins/lrcserver/LyricServerProtocol.cpp"
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.M)


def reachable(name):
    seen, todo = set(), [name]
    while todo:
        for below in BELOW[todo.pop()]:
            if below not in seen:
                seen.add(below)
                todo.append(below)
    return seen | {name}


def sources(top):
    for base, _, files in os.walk(os.path.join(ROOT, top)):
        for f in files:
            if f.endswith((".h", ".cpp")):
                path = os.path.join(base, f)
                yield os.path.relpath(path, ROOT), open(path, encoding="utf-8").read()


def problems():
    for rel, text in sources("src"):
        here = os.path.dirname(os.path.join(ROOT, rel))
        for name in INCLUDE.findall(text):
            layer = name.split("/")[0]
            if layer not in ("core", "gui"):
                if rel.startswith(("src/core/", "src/gui/")) and os.path.isfile(os.path.join(here, name)) or any(
                        os.path.isfile(os.path.join(ROOT, "src", l, name)) for l in ("core", "gui")):
                    yield f'{rel}: "{name}" does not name its layer'
                continue
            if rel.startswith("src/core/"):
                if layer == "gui":
                    yield f'{rel}: the core includes the GUI ("{name}")'
                    continue
                mine, theirs = rel.split("/")[2], name.split("/")[1]
                if theirs not in reachable(mine):
                    yield f'{rel}: {mine} may not include {theirs} ("{name}")'
    for rel, text in sources("plugins"):
        if rel == PROTOCOL_FACADE:
            continue
        for name in INCLUDE.findall(text):
            if name.startswith(("core/", "gui/")) and name != CONTRACT:
                yield f'{rel}: a plug-in includes "{name}"; only "{CONTRACT}" is allowed'


def main():
    found = list(problems())
    for line in found:
        print(line, file=sys.stderr)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
