#!/usr/bin/env python3
"""Runs the shell scripts of the Nextflow module without Nextflow: nextflow_module_test.py BUILD

What Nextflow puts in for variables is put in here; each output that the module declares must be made,
by the script and by its stub.
"""
import os
import pathlib
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
MODULE = ROOT / "workflow/nf-core/velto/scan/main.nf"
VARIABLES = {
    "args": "--strand both",
    "model_option": f"--model {ROOT / 'param-human'}",
    "prefix": "sample",
    "reads": str(ROOT / "examples/reads.fastq"),
    "task.cpus": "2",
    "task.process": "VELTO_SCAN",
}


def shell_of(text):
    """A script as Nextflow hands it to the shell."""
    lines = re.sub(r"(?<!\\)\$\{([a-z_.]+)\}", lambda found: VARIABLES[found[1]], text).splitlines()
    # Nextflow takes away the common indentation, which the here-document's end depends on.
    return "\n".join(line.removeprefix("    ") for line in lines).replace("\\\\", "\\").replace(r"\$", "$")


def main():
    text = MODULE.read_text()
    scripts = re.findall(r'"""\n(.*?)"""', text, re.DOTALL)
    outputs = re.findall(r'path\(?\s*"([^"]+)"', text)
    assert len(scripts) == 2 and len(outputs) == 7, (len(scripts), outputs)
    environment = {**os.environ, "PATH": f"{pathlib.Path(sys.argv[1]).resolve()}:{os.environ['PATH']}"}
    for script in scripts:
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run(["bash", "-euo", "pipefail", "-c", shell_of(script)], cwd=folder,
                           env=environment, check=True)
            for pattern in outputs:
                assert list(pathlib.Path(folder).glob(pattern)), f"no {pattern}"
            versions = pathlib.Path(folder, "versions.yml").read_text()
            assert re.fullmatch(r'"VELTO_SCAN":\n    velto: \d+\.\d+\.\d+\n', versions), versions


if __name__ == "__main__":
    main()
