#!/usr/bin/env python3
"""What check_commands.py lets pass, and what it does not: check_commands_test.py BUILD"""
import pathlib
import subprocess
import sys
import tempfile

CHECK = pathlib.Path(__file__).resolve().parent / "check_commands.py"
FINE = {
    "a command that runs": "```sh\nvelto scan -o found.tsv reads.fq.gz\nhead -n 1 found.tsv\n```\n",
    "a command marked as not run": "<!-- not run: slow -->\n```sh\nvelto scan -o x no.fa\n```\n",
    "lines that are printed": "<!-- printed by: printf '1\\n2\\n3\\n' -->\n```text\n1\n...\n3\n```\n",
}
WRONG = {
    "a command that fails": "```sh\nvelto scan -o found.tsv no-such-file.fa\n```\n",
    "an unknown option of a command not run":
        "<!-- not run: slow -->\n```sh\nvelto scan --no-such-option no.fa\n```\n",
    "a line that is not printed": "<!-- printed by: printf '1\\n2\\n' -->\n```text\n3\n```\n",
    "lines in another order": "<!-- printed by: printf '1\\n2\\n' -->\n```text\n2\n1\n```\n",
    "a command in a block of another language": "```text\nvelto scan read.fa\n```\n",
    "a command that is indented": "Text\n\n    build/velto scan read.fa\n",
}


def passes(build, text):
    with tempfile.NamedTemporaryFile("w", suffix=".md") as page:
        page.write(text)
        page.flush()
        command = [sys.executable, CHECK, build, page.name]
        return subprocess.run(command, capture_output=True, check=False).returncode == 0


def main():
    build = sys.argv[1]
    for texts, expected in ((FINE, True), (WRONG, False)):
        for name, text in texts.items():
            if passes(build, text) != expected:
                sys.exit(f"{name}: {'does not pass' if expected else 'passes'}")


if __name__ == "__main__":
    main()
