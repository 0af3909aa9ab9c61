#!/usr/bin/env python3
"""Splits FASTA or FASTQ files into consecutive pieces of about equally many bases.

A read is in one piece, and pieces one after another are the input. A piece may be empty.
"""
import argparse
import gzip
import itertools
import json

# velto scan learns from the reads up to the end of the batch that brings it to 4,096 reads or
# 4 million bases (batch/file_calibration.h); batches end at 128 reads or 65,536 bases, so that twice
# that holds it for sure.
HEAD_READS = 8_192
HEAD_BASES = 8_000_000


class InputError(Exception):
    pass


def opened(path):
    with open(path, "rb") as file:
        is_gzip = file.read(2) == b"\x1f\x8b"
    return gzip.open(path, "rb") if is_gzip else open(path, "rb")


def fastq_records(path, lines):
    for header in lines:
        if not header.strip():
            continue
        record = [header] + list(itertools.islice(lines, 3))
        lengths = [len(line.rstrip(b"\r\n")) for line in record]
        if (len(record) < 4 or header[:1] != b"@" or record[2][:1] != b"+"
                or lengths[1] != lengths[3]):
            raise InputError(f"{path}: a record is not the four lines of FASTQ: {header[:60]!r}")
        if not record[3].endswith(b"\n"):
            record[3] += b"\n"
        yield header, b"".join(record), lengths[1]


def fasta_records(path, lines):
    header, body = None, []
    for line in itertools.chain(lines, [b">"]):
        if line[:1] == b">":
            if header is not None:
                bases = sum(len(b"".join(part.split())) for part in body)
                text = header + b"".join(body)
                yield header, text if text.endswith(b"\n") else text + b"\n", bases
            header, body = line, []
        elif header is None:
            if line.strip():
                raise InputError(f"{path}: is neither FASTA nor FASTQ")
        else:
            body.append(line)


def records(paths):
    """(header line, text, bases) of all records."""
    formats = set()
    for path in paths:
        with opened(path) as lines:
            first = lines.peek(1)[:1]
            formats.add(first == b"@")
            if len(formats) > 1:
                raise InputError(f"{path}: FASTA and FASTQ in one run")
            yield from (fastq_records if first == b"@" else fasta_records)(path, lines)


def require_distinct(header, seen):
    """GFF3 tells repeated and missing names apart by their place among all reads of a run."""
    words = header[1:].split(None, 1)
    name = words[0] if words and not header[1:2].isspace() else b""
    if not name or name in seen:
        raise InputError(f"read names are missing or repeated, which pieces cannot see: {name!r}")
    seen.add(name)


def split(paths, piece_paths, head_path, distinct_names):
    total = sum(bases for _, _, bases in records(paths))
    pieces = [{"reads": 0, "bases": 0} for _ in piece_paths]
    before, reads, seen = 0, 0, set()
    files = [open(path, "wb") for path in piece_paths]
    with open(head_path, "wb") as head:
        for header, text, bases in records(paths):
            if distinct_names:
                require_distinct(header, seen)
            if reads < HEAD_READS and before < HEAD_BASES:
                head.write(text)
            k = min(len(files) - 1, before * len(files) // max(total, 1))
            files[k].write(text)
            pieces[k]["reads"] += 1
            pieces[k]["bases"] += bases
            before += bases
            reads += 1
    for file in files:
        file.close()
    return {"reads": reads, "bases": before, "pieces": pieces}


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--pieces", nargs="+", required=True, help="files to write")
    parser.add_argument("--head", required=True, help="reads that a run learns from")
    parser.add_argument("--counts", required=True, help="reads and bases, as JSON")
    parser.add_argument("--distinct-names", action="store_true", help="fail for repeated names")
    parser.add_argument("reads", nargs="+")
    options = parser.parse_args()
    try:
        counts = split(options.reads, options.pieces, options.head, options.distinct_names)
    except (InputError, OSError, EOFError) as error:
        parser.exit(1, f"split_reads.py: {error}\n")
    with open(options.counts, "w", encoding="utf-8") as file:
        json.dump({"inputs": options.reads, **counts}, file, indent=2)
        file.write("\n")


if __name__ == "__main__":
    main()
