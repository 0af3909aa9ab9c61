#!/usr/bin/env python3
"""Tests tools/collect-transcripts.py as a process."""
import gzip
import pathlib
import subprocess
import sys
import tempfile
import unittest

TOOL = pathlib.Path(__file__).parent / "collect-transcripts.py"

# Checksums: md5sum of the sequences.
TABLE = ("accession\tcds\tgroup\tlength\tmd5\n"
         "NM_1\t3-14\tchr1\t16\tcf75ddff7f99fd48\n"
         "NM_2.3\t\tgene=G\t4\tf1f8f4bf413b16ad\n")
FASTA = ">NM_1 CDS=3-14 chr1\nCCATGAAAGGGTAGTT\n>NM_2.3 gene=G\nACGT\n"


class CollectTranscripts(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.directory = pathlib.Path(directory.name)
        self.write("table.tsv", TABLE)

    def write(self, name, text):
        (self.directory / name).write_text(text)

    def read(self, name):
        return (self.directory / name).read_text()

    def run_tool(self, *arguments):
        return subprocess.run([sys.executable, TOOL, *arguments], cwd=self.directory,
                              capture_output=True, text=True, check=False)

    def collect(self, *fasta):
        return self.run_tool("collect", "table.tsv", *fasta, "-o", "out.fa")

    def test_sequences_are_found_under_other_names_in_other_order_and_case(self):
        self.write("a.fa", ">x|y|z\nac\ngu\n")
        self.write("b.fa", ">other\nTTTT\n>NM_1.7 Homo sapiens\nCCATGAAAGG\r\nGTAGTT\n")
        result = self.collect("a.fa", "b.fa")
        self.assertEqual((result.returncode, result.stdout), (0, ""))
        self.assertIn("2 of 2 transcripts found, 0 differ, 0 are missing", result.stderr)
        self.assertEqual(self.read("out.fa"), FASTA)

    def test_missing_and_differing_transcripts_are_told_apart(self):
        self.write("a.fa", ">NM_1.2\nCCATGAAAGGGTAGTA\n")
        result = self.collect("a.fa")
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stdout, "differs\tNM_1\nmissing\tNM_2.3\n")
        self.assertEqual(self.read("out.fa"), "")

    def test_part_of_a_table_is_written_all_the_same(self):
        self.write("a.fa", ">NM_2.9|gene\nACGT\n")
        result = self.collect("a.fa")
        self.assertEqual((result.returncode, result.stdout), (1, "missing\tNM_1\n"))
        self.assertEqual(self.read("out.fa"), ">NM_2.3 gene=G\nACGT\n")

    def test_describe_makes_the_table_that_collect_takes(self):
        self.write("in.fa", FASTA)
        self.assertEqual(self.run_tool("describe", "in.fa", "-o", "made.tsv").returncode, 0)
        self.assertEqual(self.read("made.tsv"), TABLE)

    def test_compressed_files_are_read_and_written(self):
        with gzip.open(self.directory / "in.fa.gz", "wt") as out:
            out.write(FASTA)
        self.assertEqual(self.run_tool("describe", "in.fa.gz", "-o", "t.tsv.gz").returncode, 0)
        result = self.run_tool("collect", "t.tsv.gz", "in.fa.gz", "-o", "out.fa.gz")
        self.assertEqual(result.returncode, 0)
        with gzip.open(self.directory / "out.fa.gz", "rt") as text:
            self.assertEqual(text.read(), FASTA)

    def test_long_sequences_are_wrapped(self):
        self.write("in.fa", ">a chr1\n" + "ACGT" * 50 + "\n")
        self.run_tool("describe", "in.fa", "-o", "table.tsv")
        self.collect("in.fa")
        self.assertEqual([len(line) for line in self.read("out.fa").split("\n")], [7, 80, 80, 40, 0])

    def test_damaged_files_are_named_with_their_line(self):
        row = "NM_1\t3-14\tchr1\t16\tcf75ddff7f99fd48\n"
        header = TABLE.split("\n", maxsplit=1)[0] + "\n"
        self.write("in.fa", FASTA)
        for text, message in [("", "table.tsv:1: not the header line"),
                              (header + "NM_1\t16\n", "table.tsv:2: expected 5 columns, found 2"),
                              (header + row.replace("3-14", "3-17"), "table.tsv:2: coding region"),
                              (header + row.replace("3-14", "x"), "table.tsv:2: coding region"),
                              (header + row.replace("\t16", "\t-1"), "table.tsv:2: no length"),
                              (header + row.replace("cf", "zz"), "table.tsv:2: no length")]:
            self.write("table.tsv", text)
            result = self.collect("in.fa")
            self.assertEqual(result.returncode, 1, text)
            self.assertIn(message, result.stderr)

    def test_files_that_are_no_fasta_or_cut_off_fail(self):
        self.write("text.fa", "ACGT\n")
        self.assertIn("text.fa:1: not FASTA", self.collect("text.fa").stderr)
        whole = gzip.compress(FASTA.encode())
        (self.directory / "cut.fa.gz").write_bytes(whole[:-9])
        self.assertEqual(self.collect("cut.fa.gz").returncode, 1)
        self.assertIn("collect-transcripts.py: ", self.collect("cut.fa.gz").stderr)
        self.assertIn("none.fa", self.collect("none.fa").stderr)

    def test_headers_without_group_are_refused_by_describe(self):
        self.write("in.fa", ">NM_1 CDS=3-14\nCCATGAAAGGGTAGTT\n")
        result = self.run_tool("describe", "in.fa", "-o", "made.tsv")
        self.assertEqual(result.returncode, 1)
        self.assertIn("in.fa: '>NM_1 CDS=3-14' is not", result.stderr)

    def test_wrong_command_lines_are_usage_errors(self):
        for arguments in [(), ("collect",), ("collect", "table.tsv", "-o", "x"), ("nosuch",)]:
            self.assertEqual(self.run_tool(*arguments).returncode, 2, arguments)


class Tables(unittest.TestCase):
    def test_every_table_of_the_project_is_whole(self):
        tables = sorted((TOOL.parent.parent / "data").glob("*.tsv.gz"))
        self.assertGreaterEqual(len(tables), 16)
        for table in tables:
            with tempfile.TemporaryDirectory() as directory:
                empty = pathlib.Path(directory) / "empty.fa"
                empty.write_text("")
                result = subprocess.run(
                    [sys.executable, TOOL, "collect", table, empty, "-o", empty.with_name("o.fa")],
                    capture_output=True, text=True, check=False)
            self.assertIn(" 0 differ", result.stderr, table)
            self.assertGreater(len(result.stdout.splitlines()), 400, table)


if __name__ == "__main__":
    unittest.main()
