#!/usr/bin/env python3
"""Writes what a run was made with: versions, commands, model and result checksums, counts."""
import argparse
import hashlib
import json
import pathlib
import platform
import subprocess


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout.strip()


def checksum(path):
    sha256 = hashlib.sha256()
    with open(path, "rb") as file:
        while block := file.read(1 << 20):
            sha256.update(block)
    return sha256.hexdigest()


def load(path):
    with open(path, encoding="utf-8") as file:
        return json.load(file)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    for name in ("velto", "command", "counts", "calibration"):
        parser.add_argument(f"--{name}", required=True)
    parser.add_argument("-o", "--output", required=True)
    parser.add_argument("found", nargs="+")
    options = parser.parse_args()
    learnt = load(options.calibration)
    model = pathlib.Path(learnt["model"])
    record = {
        "velto": output_of(options.velto, "--version"),
        "snakemake": output_of("snakemake", "--version"),
        "python": platform.python_version(),
        "command": options.command,
        "decoder": learnt["decoder"],
        "calibration": learnt["calibration"],
        "model_sha256": {str(path.relative_to(model)): checksum(path)
                         for path in sorted(model.rglob("*")) if path.is_file()},
        "found_sha256": {path: checksum(path) for path in options.found},
        **load(options.counts),
    }
    with open(options.output, "w", encoding="utf-8") as file:
        json.dump(record, file, indent=2)
        file.write("\n")


if __name__ == "__main__":
    main()
