#!/usr/bin/env python3
"""Runs the commands of README.md and compares the report that it shows: check_readme.py BUILD_DIR

Commands on files that the reader is to bring are not run; their options must be known all the same.
"""
import pathlib
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
BROUGHT = {"mrna.fa.gz", "ncrna.fa.gz", "other-mrna.fa.gz", "read.fa", "reads.fastq"}


def code_lines(text):
    """Lines indented by four blanks, without them."""
    return [line[4:] for line in text.splitlines() if line.startswith("    ")]


def commands(lines):
    """Commands of the built programs, the last of a chain counting alone."""
    last = [line.split("&&")[-1].strip() for line in lines]
    return [line for line in last if re.match(r"build/|VELTO\.exe |velto |head ", line)]


def run(command, directory):
    result = subprocess.run(command, shell=True, cwd=directory, capture_output=True, text=True,
                            check=False)
    if result.returncode != 0:
        sys.exit(f"README.md: '{command}' ends with {result.returncode}: {result.stderr}")
    return result.stdout


def check_options(command, directory):
    """Every option of a velto command must stand in its help."""
    words = command.split()
    if pathlib.Path(words[0]).name != "velto":
        return
    known = run(f"build/velto {words[1]} --help", directory)
    for option in (word for word in words if word.startswith("-")):
        if not re.search(rf"(^|[ ,]){option}\b", known, re.MULTILINE):
            sys.exit(f"README.md: '{command}': there is no option {option}")


def check_report(lines, report):
    """The report shown, "..." standing for lines left out, in the order of the true one."""
    first = next(i for i, line in enumerate(lines) if line.startswith("FASTA HEADER"))
    shown = lines[first:next(i for i, line in enumerate(lines) if i > first and "build/" in line)]
    rest = iter(report.splitlines())
    for line in shown:
        if line != "..." and line not in rest:
            sys.exit(f"README.md: the report has no line '{line}'")


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    lines = code_lines((ROOT / "README.md").read_text())
    found = commands(lines)
    with tempfile.TemporaryDirectory() as directory:
        pathlib.Path(directory, "build").symlink_to(build)
        for name in ("examples", "param-human", "sample.txt"):
            pathlib.Path(directory, name).symlink_to(ROOT / name)
        to_run = [command for command in found if not BROUGHT.intersection(command.split())]
        outputs = {command: run(command, directory) for command in to_run}
        for command in found:
            check_options(command, directory)
    check_report(lines, outputs["build/VELTO.exe"])
    print(f"{len(to_run)} of {len(found)} commands run, the report is as shown")


if __name__ == "__main__":
    main()
