#!/usr/bin/env python3
"""Joins the outputs of pieces in their order, with one header, if no read was lost."""
import argparse
import json
import shutil

HAS_HEADER = {"tsv", "gff3"}


def load(path):
    with open(path, encoding="utf-8") as file:
        return json.load(file)


def join(paths, kind, output):
    """Writes the joined file; rows of each piece of a table, of other kinds none."""
    rows = []
    with open(output, "wb") as out:
        for k, path in enumerate(paths):
            with open(path, "rb") as piece:
                if kind in HAS_HEADER:
                    header = piece.readline()
                    if k == 0:
                        first = header
                        out.write(header)
                    elif header != first:
                        raise ValueError(f"{path}: another header than that of {paths[0]}")
                if kind == "tsv":
                    count = 0
                    for count, line in enumerate(piece, start=1):
                        out.write(line)
                    rows.append(count)
                else:
                    shutil.copyfileobj(piece, out)
    return rows


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--counts", required=True, help="as split_reads.py writes it")
    parser.add_argument("--summaries", nargs="+", required=True, help="of the runs of the pieces")
    parser.add_argument("--kind", required=True, help="tsv, gff3, bed, cds or protein")
    parser.add_argument("-o", "--output", required=True)
    parser.add_argument("pieces", nargs="+")
    options = parser.parse_args()

    expected = [piece["reads"] for piece in load(options.counts)["pieces"]]
    scanned = [load(path)["reads"] for path in options.summaries]
    if scanned != expected:
        parser.exit(1, f"gather.py: reads of the pieces {expected}, but scanned {scanned}\n")
    try:
        rows = join(options.pieces, options.kind, options.output)
    except ValueError as error:
        parser.exit(1, f"gather.py: {error}\n")
    if options.kind == "tsv" and rows != expected:
        parser.exit(1, f"gather.py: reads of the pieces {expected}, but rows {rows}\n")


if __name__ == "__main__":
    main()
