#!/usr/bin/env python3
"""The code in README.md and docs/ works as it stands: C++ compiles against an installation, and what is marked "sh" runs
from the top of a source tree that is built, one shell for each document. zavractl.md has a test of its own.

Usage: guides.py SOURCES BUILD PREFIX LIBRARY_DIRECTORY COMPILER [--compile-only]
"""
import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
from pathlib import Path

sources, build, prefix = (Path(argument).resolve() for argument in sys.argv[1:4])
libraries, compiler = prefix / sys.argv[4], sys.argv[5]
compile_only = "--compile-only" in sys.argv

top = Path(tempfile.mkdtemp())
environment = dict(os.environ, HOME=str(top / "home"), TMPDIR=str(top / "home"), PKG_CONFIG_PATH=str(libraries / "pkgconfig"),
                   LD_LIBRARY_PATH=str(libraries), PATH=f"{top}/stubs:{os.environ['PATH']}")
# A target of make is looked for, not made; what needs sudo is left out.
stubs = {"make": f'exec {shutil.which("make")} -n "$@" >/dev/null', "sudo": "exit 0"}


def set_up():
    for entry in sources.iterdir():
        if entry.name != "build":
            (top / entry.name).symlink_to(entry)
    for directory in "build", "home", "stubs":
        (top / directory).mkdir()
    (top / "build/dev").symlink_to(build)
    for name, body in stubs.items():
        (top / "stubs" / name).write_text(f"#!/bin/sh\n{body}\n")
        (top / "stubs" / name).chmod(0o755)


def compiles(code):
    if "int main" in code:
        (top / "application.cpp").write_text(code)  # so that what follows finds it
    inside = '"simulator/' in code
    packages = ["velm_zavra", "eigen3"] if inside else ["velm_zavra"]
    flags = subprocess.check_output(["pkg-config", "--cflags", *packages], env=environment, text=True).split()
    flags += ["-std=c++20", f"-I{sources}"] if inside else ["-std=c++11"]
    return subprocess.run([compiler, "-Wall", "-Wextra", "-Wpedantic", "-Werror", *flags, "-fsyntax-only", "-x", "c++", "-"],
                          input=code, text=True).returncode == 0


def runs(script):
    shell = subprocess.Popen(["bash", "-euxc", script], cwd=top, env=environment, stdin=subprocess.DEVNULL,
                             start_new_session=True)
    try:
        return shell.wait(timeout=200) == 0
    finally:
        try:
            os.killpg(shell.pid, signal.SIGTERM)  # what was started in the background
        except ProcessLookupError:
            pass


def main():
    failed, counts = [], {"cpp": 0, "sh": 0}
    for document in [sources / "README.md", *sorted((sources / "docs").glob("*.md"))]:
        script = ""
        for block in re.finditer(r"^```(cpp|sh)\n(.*?)^```$", document.read_text(), re.M | re.S):
            counts[block[1]] += 1
            if block[1] == "sh":
                script += block[2]
            elif not compiles(block[2]):
                failed.append(f"{document.name}: {block[2]}")
        if script and not compile_only and not runs(script):
            failed.append(f"{document.name}: its shell blocks, of which the last line above failed")
    print(f"{counts['cpp']} blocks of C++, {counts['sh']} of shell")
    print(*failed, sep="\n", file=sys.stderr)
    return 1 if failed or min(counts.values()) < 5 else 0


try:
    set_up()
    sys.exit(main())
finally:
    shutil.rmtree(top)
