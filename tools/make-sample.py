#!/usr/bin/env python3
"""Makes a one-read FASTA file from a transcript: a fragment with one lost and one inserted base.

  make-sample.py TRANSCRIPTS.fa.gz NAME FIRST LAST LOST INSERTED BASE > sample.txt

FIRST to LAST is the fragment, LOST the base left out, INSERTED the base before which BASE is put
in; all are 1-based positions of the transcript NAME, LOST before INSERTED.
"""
import gzip
import sys


def transcript(path, name):
    """Header words and bases of one record."""
    words, lines = None, []
    with gzip.open(path, "rt") as records:
        for line in records:
            if line.startswith(">"):
                if words:
                    break
                found = line[1:].split()
                words = found if found[0] == name else None
            elif words:
                lines.append(line.strip())
    if not words:
        sys.exit(f"{path}: no record {name}")
    return words, "".join(lines)


def main():
    path, name, first, last, lost, inserted, base = sys.argv[1:]
    first, last, lost, inserted = int(first), int(last), int(lost), int(inserted)
    words, bases = transcript(path, name)
    read = (bases[first - 1:lost - 1] + bases[lost:inserted - 1] + base + bases[inserted - 1:last])
    print(f">{name}:{first}-{last} {' '.join(words[1:])} lost={lost} inserted={base}@{inserted}")
    for i in range(0, len(read), 60):
        print(read[i:i + 60])


if __name__ == "__main__":
    main()
