#!/usr/bin/env python3
"""Runs the commands of README.md and docs/*.md with the built programs: check_commands.py BUILD [PAGE...]

Each page gets a scratch folder, in which its blocks of `sh` are run one after another. What a comment
before a block says:

    <!-- not run: REASON -->       the block is only listed; options of `velto` must exist all the same
    <!-- needs: PROGRAM -->        the block is run where the program is installed
    <!-- printed by: COMMAND -->   the block is what COMMAND prints; "..." stands for lines left out

Blocks of `python` make one script a page, which is run where the Python package is built. Files that a
reader is to bring are made up. Commands in a block without a language, or indented, are refused.
"""
import gzip
import os
import pathlib
import random
import re
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
PROGRAMS = r"(build/)?(velto|VELTO\.exe) "
FENCE = re.compile(r"(?:<!-- ([^\n]*) -->\n)?^```(\w*)\n(.*?)^```$", re.MULTILINE | re.DOTALL)


class Failure(Exception):
    pass


def made_up_transcripts(count, coding):
    """FASTA text of random transcripts, with a coding region each if asked."""
    draw = random.Random(1)
    bases = lambda n: "".join(draw.choices("ACGT", k=n))
    codons = [a + b + c for a in "ACGT" for b in "ACGT" for c in "ACGT"]
    sense = [codon for codon in codons if codon not in ("TAA", "TAG", "TGA")]
    records = []
    for k in range(count):
        region = "ATG" + "".join(draw.choices(sense, k=200)) + "TAA" if coding else ""
        header = f">t{k} gene=g{k}" + (f" CDS=101-{100 + len(region)}" if coding else "")
        records.append(f"{header}\n{bases(100)}{region}{bases(200)}\n")
    return "".join(records)


def bring_files(folder, build):
    """The checkout and what readers bring."""
    for name in ("examples", "models", "param-human", "sample.txt", "workflow"):
        (folder / name).symlink_to(ROOT / name)
    (folder / "build").symlink_to(build)
    reads = (ROOT / "examples/reads.fastq").read_text()
    (folder / "reads.fastq").write_text(reads)
    for name in ("reads.fq.gz", "a.fq.gz"):
        (folder / name).write_bytes(gzip.compress(reads.encode()))
    renamed = re.sub(r"^@r", "@s", reads, flags=re.MULTILINE)
    (folder / "b.fq.gz").write_bytes(gzip.compress(renamed.encode()))
    shutil.copy(ROOT / "sample.txt", folder / "read.fa")
    shutil.copytree(ROOT / "param-human", folder / "my-model")
    for name, coding in (("mrna", True), ("other-mrna", True), ("ncrna", False)):
        text = made_up_transcripts(60, coding)
        (folder / f"{name}.fa.gz").write_bytes(gzip.compress(text.encode()))


def run(command, folder, build, **options):
    environment = {**os.environ, "PATH": f"{build}:{os.environ['PATH']}", **options}
    done = subprocess.run(["bash", "-euo", "pipefail", "-c", command], cwd=folder, env=environment,
                          capture_output=True, text=True, check=False)
    if done.returncode != 0:
        raise Failure(f"'{command}' ends with {done.returncode}: {done.stdout}{done.stderr}")
    return done.stdout


def lines_of(script):
    """Lines, those ended by a backslash joined with the next."""
    return re.sub(r"\\\n *", "", script).splitlines()


def check_options(script, folder, build):
    """Every option of a velto command must stand in its help."""
    for line in lines_of(script):
        found = re.search(r"(?:^|\| )(?:build/)?velto (\S+)(.*)", line)
        if not found or found[1].startswith("-"):
            continue
        known = run(f"velto {found[1]} --help", folder, build)
        for option in re.findall(r"(?<= )--?[a-z][a-z0-9-]*", found[2]):
            if not re.search(rf"(^|[ ,]){option}\b", known, re.MULTILINE):
                raise Failure(f"'{line}': there is no option {option}")


def check_printed(shown, printed):
    """The lines shown must be among those printed, in their order."""
    rest = iter(line.rstrip() for line in printed.splitlines())
    for line in shown.splitlines():
        if line.rstrip() not in ("...", "") and line.rstrip() not in rest:
            raise Failure(f"the command does not print '{line}'")


def check_block(mark, language, text, folder, build):
    """Runs a block; gives its mark if that keeps it from being run."""
    word, _, value = (mark or "").partition(": ")
    if word == "printed by":
        check_printed(text, run(value, folder, build))
    elif language == "sh":
        check_options(text, folder, build)
        if word == "not run" or word == "needs" and not shutil.which(value):
            return mark
        run(text, folder, build)
    elif re.search(rf"^{PROGRAMS}", text, re.MULTILINE):
        raise Failure(f"commands in a block that is not marked as sh: {text}")
    return None


def check_page(path, build):
    """What was not run, and why."""
    text = path.read_text()
    if re.search(rf"^(    |\t){PROGRAMS}", text, re.MULTILINE):
        raise Failure("commands in an indented block")
    skipped = []
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        bring_files(folder, build)
        script = ""
        for mark, language, body in FENCE.findall(text):
            script += body if language == "python" else ""
            reason = check_block(mark, language, body, folder, build)
            if reason:
                skipped.append(f"{reason}: {body.splitlines()[0]}")
        if script and list((build / "python/velto").glob("_velto*.so")):
            (folder / "page.py").write_text(script)
            run(f"{sys.executable} page.py", folder, build, PYTHONPATH=str(build / "python"))
        elif script:
            skipped.append("needs: the Python package: blocks of python")
    return skipped


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    pages = [pathlib.Path(page) for page in sys.argv[2:]]
    for page in pages or [ROOT / "README.md", *sorted((ROOT / "docs").glob("*.md"))]:
        try:
            for reason in check_page(page, build):
                print(f"{page.name}: {reason}")
        except Failure as failure:
            sys.exit(f"{page}: {failure}")


if __name__ == "__main__":
    main()
