#!/usr/bin/env python3
"""Runs the examples of a page: run_examples.py PAGE COMMAND FOLDER

A block "sh" or "python" is run in a copy of FOLDER, with the folder of COMMAND in the path. Its output must be that of
the block "text" behind it. Words behind the language name what the example needs: programs, or modules of Python.
Where these are missing, the example is left out; with ZEB5XML_ALL_EXAMPLES in the environment that is a fault.
"""

import importlib.util
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

BLOCK = re.compile(r"^```(sh|python)([^\n]*)\n(.*?)^```\n```text\n(.*?)^```$", re.DOTALL | re.MULTILINE)


def is_there(language, need):
    return importlib.util.find_spec(need) if language == "python" else shutil.which(need)


def main():
    page, command, folder = sys.argv[1:]
    path = f"{pathlib.Path(command).resolve().parent}{os.pathsep}{os.environ['PATH']}"
    blocks = BLOCK.findall(pathlib.Path(page).read_text())
    faults = 0 if blocks else 1
    with tempfile.TemporaryDirectory() as work:
        shutil.copytree(folder, work, dirs_exist_ok=True)
        for language, needs, code, expected in blocks:
            missing = [need for need in needs.split() if not is_there(language, need)]
            if missing:
                faults += "ZEB5XML_ALL_EXAMPLES" in os.environ
                print(f"left out, as there is no {', '.join(missing)}:\n{code}")
                continue
            shell = ["bash", "-eu", "-c"] if language == "sh" else [sys.executable, "-c"]
            done = subprocess.run([*shell, code], cwd=work, env={**os.environ, "PATH": path}, text=True,
                                  capture_output=True)
            if done.returncode != 0 or done.stdout != expected:
                faults += 1
                print(f"{code}exit status {done.returncode}\n{done.stderr}printed:\n{done.stdout}expected:\n{expected}")
    sys.exit(bool(faults))


if __name__ == "__main__":
    main()
