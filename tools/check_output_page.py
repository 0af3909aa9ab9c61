#!/usr/bin/env python3
"""Every column, key and attribute that velto scan writes must stand in docs/output-files.md:
check_output_page.py BUILD"""
import json
import pathlib
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent


def keys_of(value):
    """Keys of JSON objects inside each other."""
    if isinstance(value, list):
        return set().union(*map(keys_of, value))
    if isinstance(value, dict):
        return set(value).union(*map(keys_of, value.values()))
    return set()


def written_names(velto):
    names = set()
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        for decoder in ("vote", "hmm"):
            subprocess.run([velto, "scan", "--quiet", "-d", ROOT / "param-human", "--decoder", decoder,
                            "-o", "t.tsv", "--gff3", "t.gff3", "--json", "t.json", "--summary",
                            "s.json", ROOT / "examples/reads.fastq"], cwd=folder, check=True)
            names.update((folder / "t.tsv").read_text().splitlines()[0].split("\t"))
            names.update(re.findall(r"[\t;](\w+)=", (folder / "t.gff3").read_text()))
            for line in (folder / "t.json").read_text().splitlines():
                names.update(json.loads(line))
            names.update(keys_of(json.loads((folder / "s.json").read_text())))
    return names


def main():
    page = (ROOT / "docs/output-files.md").read_text()
    explained = set(re.findall(r"\w+", " ".join(re.findall(r"`[^`\n]+`", page))))
    missing = written_names(pathlib.Path(sys.argv[1]).resolve() / "velto") - explained
    if missing:
        sys.exit(f"docs/output-files.md does not explain {sorted(missing)}")


if __name__ == "__main__":
    main()
