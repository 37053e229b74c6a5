#!/usr/bin/env python3
"""Rewrite project includes so that each names its layer: "core/lyric/Lyric.h", "gui/display/LRCView.h".

Idempotent; run from the repository root. A bare or folder-relative include is resolved by which
file exists: beside the including file first, then under src/core, then under src/gui.
"""
import os
import re
import sys

ROOT = os.path.abspath(os.path.dirname(__file__) + "/..")
SRC = os.path.join(ROOT, "src")
INCLUDE = re.compile(r'^(\s*#\s*include\s+)"([^"]+)"', re.M)
DIRS = ["src", "tools", "tests", "bench", "fuzz", "plugins"]


def resolve(path, name):
    if name.startswith(("core/", "gui/")):
        return None
    here = os.path.dirname(path)
    beside = os.path.normpath(os.path.join(here, name))
    if os.path.isfile(beside):
        rel = os.path.relpath(beside, SRC)
        return rel if rel.startswith(("core/", "gui/")) else None
    for layer in ("core", "gui"):
        if os.path.isfile(os.path.join(SRC, layer, name)):
            return f"{layer}/{name}"
    return None


def main():
    changed = 0
    for top in DIRS:
        for base, _, files in os.walk(os.path.join(ROOT, top)):
            for f in files:
                if not f.endswith((".h", ".cpp")):
                    continue
                path = os.path.join(base, f)
                text = open(path, encoding="utf-8").read()
                new = INCLUDE.sub(
                    lambda m: m.group(1) + '"' + (resolve(path, m.group(2)) or m.group(2)) + '"', text)
                if new != text:
                    open(path, "w", encoding="utf-8").write(new)
                    changed += 1
    print(f"{changed} files rewritten", file=sys.stderr)


if __name__ == "__main__":
    main()
