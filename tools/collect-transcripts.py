#!/usr/bin/env python3
"""Picks the transcripts of a table of data/ out of FASTA files and verifies them.

  collect-transcripts.py collect TABLE FASTA... -o OUT.fa
  collect-transcripts.py describe FASTA... -o TABLE

`collect` looks in FASTA files that you have downloaded (plain or gzip) for the sequences of TABLE,
by their checksums, whatever they are called there, and writes them in the order of the table, with
the headers that velto reads. Transcripts not found go to standard output, one a line: "missing", or
"differs" when a record of that accession, its version aside, has another sequence. Exit status: 0
when all were found, 1 when some were not or a file is damaged, 2 for a wrong command line.

`describe` writes the table of FASTA files whose headers look like ">NM_1 CDS=108-2036 chr1".

A table is tab-separated, plain or gzip, with a header line: accession; cds, 1-based and inclusive
through the stop codon, empty for a non-coding transcript; group, the chromosome or gene by which
training holds data back; length in bases; md5, the first 16 digits of the MD5 of the upper-case
sequence with T for U.
"""
import argparse
import collections
import gzip
import hashlib
import io
import re
import sys
import zlib

COLUMNS = ["accession", "cds", "group", "length", "md5"]
FASTA_LINE = 80  # letters

Fact = collections.namedtuple("Fact", COLUMNS)


class DataError(Exception):
    """A file that cannot be used: the message names it, and the line."""


def open_to_read(path):
    """A text file, plain or gzip by its content."""
    with open(path, "rb") as file:
        is_gzip = file.read(2) == b"\x1f\x8b"
    opener = gzip.open if is_gzip else open
    return opener(path, "rt", encoding="utf-8", errors="replace")


def open_to_write(path):
    """A text file, gzip (the same bytes at any time) if its name ends in .gz."""
    if not path.endswith(".gz"):
        return open(path, "w", encoding="utf-8")
    return io.TextIOWrapper(gzip.GzipFile(path, "wb", mtime=0), encoding="utf-8")


def fasta_records(path):
    """Yields header and upper-case sequence, with T for U, of every record."""
    header, parts = None, []
    with open_to_read(path) as lines:
        for number, line in enumerate(lines, 1):
            line = line.strip()
            if line.startswith(">"):
                if header is not None:
                    yield header, "".join(parts).upper().replace("U", "T")
                header, parts = line[1:], []
            elif header is not None:
                parts.append(line)
            elif line:
                raise DataError(f"{path}:{number}: not FASTA")
    if header is not None:
        yield header, "".join(parts).upper().replace("U", "T")


def checksum(sequence):
    """The column md5 of a sequence."""
    return hashlib.md5(sequence.encode()).hexdigest()[:16]


def accession_of(header):
    """First word of a header; of GENCODE's "ENST..|ENSG..|..." its first field."""
    words = header.split()
    return words[0].split("|")[0] if words else ""


def without_version(accession):
    """"NM_1.2" and "NM_1" are versions of one transcript."""
    return re.sub(r"\.\d+$", "", accession)


def fact_of(path, header, sequence):
    """The row of a record whose header is an accession, CDS=a-b or not, and the group."""
    words = header.split()
    region = words.pop(1)[4:] if len(words) > 1 and words[1].startswith("CDS=") else ""
    if len(words) != 2:
        raise DataError(f"{path}: '>{header}' is not an accession, a coding region and a group")
    return Fact(words[0], region, words[1], len(sequence), checksum(sequence))


def parse_row(place, line):
    """The fact in a line of a table; `place` is its file and number."""
    fields = line.rstrip("\n").split("\t")
    if len(fields) != len(COLUMNS):
        raise DataError(f"{place}: expected {len(COLUMNS)} columns, found {len(fields)}")
    fact = Fact(*fields)
    region = re.fullmatch(r"(\d+)-(\d+)", fact.cds)
    if not fact.length.isdecimal() or not re.fullmatch(r"[0-9a-f]{16}", fact.md5):
        raise DataError(f"{place}: no length or no checksum")
    if fact.cds and not (region and 1 <= int(region[1]) <= int(region[2]) <= int(fact.length)):
        raise DataError(f"{place}: coding region '{fact.cds}' is not inside the transcript")
    return fact._replace(length=int(fact.length))


def read_table(path):
    """All facts of a table."""
    with open_to_read(path) as lines:
        if lines.readline().rstrip("\n").split("\t") != COLUMNS:
            raise DataError(f"{path}:1: not the header line of a table of transcripts")
        return [parse_row(f"{path}:{number}", line) for number, line in enumerate(lines, 2)]


def find(facts, paths):
    """Sequences found, by checksum, and accessions seen without version."""
    wanted = {fact.md5: fact.length for fact in facts}
    sequences, seen = {}, set()
    for path in paths:
        for header, sequence in fasta_records(path):
            seen.add(without_version(accession_of(header)))
            md5 = checksum(sequence)
            if wanted.get(md5) == len(sequence):
                sequences[md5] = sequence
    return sequences, seen


def header_of(fact):
    """The header that velto reads."""
    region = f" CDS={fact.cds}" if fact.cds else ""
    return f">{fact.accession}{region} {fact.group}"


def collect(table, paths, output):
    """Writes what the files have of a table. True if that is all of it."""
    facts = read_table(table)
    sequences, seen = find(facts, paths)
    found = [fact for fact in facts if fact.md5 in sequences]
    with open_to_write(output) as out:
        for fact in found:
            sequence = sequences[fact.md5]
            print(header_of(fact), file=out)
            for start in range(0, len(sequence), FASTA_LINE):
                print(sequence[start:start + FASTA_LINE], file=out)
    counts = collections.Counter()
    for fact in facts:
        if fact.md5 not in sequences:
            reason = "differs" if without_version(fact.accession) in seen else "missing"
            counts[reason] += 1
            print(reason, fact.accession, sep="\t")
    print(f"{len(found)} of {len(facts)} transcripts found, {counts['differs']} differ, "
          f"{counts['missing']} are missing", file=sys.stderr)
    return len(found) == len(facts)


def describe(paths, output):
    """Writes the table of FASTA files."""
    facts = [fact_of(path, *record) for path in paths for record in fasta_records(path)]
    with open_to_write(output) as out:
        print(*COLUMNS, sep="\t", file=out)
        for fact in facts:
            print(*fact, sep="\t", file=out)
    return True


def parse_arguments():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    commands = parser.add_subparsers(dest="command", required=True)
    for name in ("collect", "describe"):
        command = commands.add_parser(name)
        if name == "collect":
            command.add_argument("table", metavar="TABLE")
        command.add_argument("fasta", metavar="FASTA", nargs="+")
        command.add_argument("-o", "--output", metavar="FILE", required=True)
    return parser.parse_args()


def main():
    arguments = parse_arguments()
    try:
        if arguments.command == "describe":
            complete = describe(arguments.fasta, arguments.output)
        else:
            complete = collect(arguments.table, arguments.fasta, arguments.output)
    except (DataError, OSError, EOFError, zlib.error) as error:
        sys.exit(f"collect-transcripts.py: {error}")
    sys.exit(0 if complete else 1)


if __name__ == "__main__":
    main()
