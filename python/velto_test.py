"""The module against the table of `velto scan`, and what its arguments and results promise."""

import ast
import csv
import inspect
import os
import pathlib
import subprocess
import threading

import numpy
import pytest

import velto
from velto import _velto

ROOT = pathlib.Path(__file__).resolve().parent.parent
READS = ROOT / "examples" / "reads.fastq"
MODEL = ROOT / "param-human"


def fastq_records():
    lines = READS.read_text().splitlines()
    return list(zip(lines[1::4], lines[3::4]))


def scan_rows(decoder):
    command = [os.environ["VELTO_PROGRAM"], "scan", "-d", MODEL, "--decoder", decoder, READS]
    done = subprocess.run(command, check=True, capture_output=True, text=True)
    return list(csv.DictReader(done.stdout.splitlines(), delimiter="\t"))


def positions(found, kind):
    return [s.position + 1 for s in found.frameshifts if s.kind == kind]


def number(value, digits):
    return "" if value is None else f"{value:.{digits}g}"


def confidences(found, kind):
    values = [s.confidence for s in found.frameshifts if s.kind == kind]
    return ",".join(number(v, 3) for v in values if v is not None)


def joined(values):
    return ",".join(str(value) for value in values)


def row_of(found):
    """The columns of the table that hold a prediction."""
    row = {
        "length": str(found.length),
        "gc": number(found.gc_percent, 6),
        "model": found.model,
        "strand": found.strand,
        "score": number(found.score, 5),
        "start": "",
        "stop": "",
        "insertions": joined(positions(found, "insertion")),
        "deletions": joined(positions(found, "deletion")),
        "type": found.coding_type or "",
        "cds_length": "",
        "status": found.status,
        "inner_stops": "",
        "probability": number(found.probability, 6),
        "insertion_confidences": confidences(found, "insertion"),
        "deletion_confidences": confidences(found, "deletion"),
    }
    if found.is_coding:
        row["start"] = str(found.start + 1)
        row["stop"] = str(found.stop + 1)
        row["cds_length"] = str(len(found.coding_sequence))
        row["inner_stops"] = str(found.inner_stops)
    return row


@pytest.fixture(scope="module")
def model():
    return velto.Model(MODEL)


@pytest.fixture(scope="module")
def coding(model):
    return next(p for p in model.predict_many(fastq_records(), scores=True) if p.is_coding)


@pytest.mark.parametrize("decoder", velto.Model(MODEL).decoders)
@pytest.mark.parametrize("threads", [1, 3])
def test_predictions_are_those_of_the_table(decoder, threads):
    model = velto.Model(MODEL, decoder=decoder).calibrated(fastq_records())
    rows = scan_rows(decoder)
    found = list(model.predict_many(fastq_records(), threads=threads))
    assert len(rows) == len(found) == 30
    for row, prediction in zip(rows, found):
        assert row_of(prediction) == {k: v for k, v in row.items() if k != "read"}


def test_one_read_is_predicted_as_many_are(model):
    for (bases, quality), found in zip(fastq_records(), model.predict_many(fastq_records())):
        assert row_of(model.predict(bases, quality)) == row_of(found)


def test_the_bundled_model_is_found_by_name():
    bases, quality = fastq_records()[0]
    by_path = velto.Model(MODEL).predict(bases, quality)
    assert row_of(velto.Model("human").predict(bases, quality)) == row_of(by_path)


def test_models_of_species_are_found_by_name():
    for folder in (ROOT / "models").iterdir():
        assert velto.Model(folder.name).decoders == velto.Model(folder).decoders


def test_many_reads_come_back_in_their_order_and_are_taken_lazily(model):
    taken = []

    def reads():
        for length in range(5000):
            taken.append(length)
            yield "A" * (length % 29)

    found = model.predict_many(reads(), threads=2)
    assert [next(found).length for _ in range(3)] == [0, 1, 2]
    assert len(taken) < 1000
    assert [p.length for p in found] == [n % 29 for n in range(3, 5000)]


def test_a_bad_read_among_many_is_an_error(model):
    with pytest.raises(ValueError, match="2 qualities for 4 bases"):
        list(model.predict_many([("ACGT", "II")]))


def test_start_and_stop_bound_the_frames(coding):
    frames = numpy.asarray(coding.frames)
    inside = numpy.flatnonzero(frames >= 0)
    assert inside[0] == coding.start
    assert inside[-1] == min(coding.stop, coding.length - 1)


def test_coding_sequence_and_protein_follow_from_letters_and_frameshifts(coding):
    bases = ""
    for p in range(coding.start, min(coding.stop + 1, coding.length)):
        kinds = [s.kind for s in coding.frameshifts if s.position == p]
        bases += "N" if kinds == ["deletion"] else ""
        bases += "" if kinds == ["insertion"] else coding.letters[p]
    assert coding.coding_sequence == bases[: len(bases) // 3 * 3]
    assert len(coding.protein) == len(coding.coding_sequence) // 3


def test_numpy_takes_frames_and_scores_without_a_copy(coding):
    frames = numpy.asarray(coding.frames)
    assert frames.dtype == numpy.int8 and frames.shape == (coding.length,)
    assert numpy.shares_memory(frames, numpy.asarray(coding.frames))
    assert len(coding.scores) == 3
    for scores in coding.scores:
        array = numpy.asarray(scores)
        assert array.dtype == numpy.float64 and array.shape == (coding.length,)
        assert not array.flags.writeable and not array.flags.owndata
    again = coding.scores
    assert numpy.shares_memory(numpy.asarray(coding.scores[2]), numpy.asarray(again[2]))


def test_memory_outlives_the_prediction(model):
    bases, quality = fastq_records()[0]
    found = model.predict(bases, quality, scores=True)
    view = found.scores[1]
    before = bytes(view)
    del found
    for other, _ in fastq_records():
        model.predict(other, scores=True)
    assert bytes(view) == before


def test_scores_are_none_unless_asked_for(model):
    assert model.predict(fastq_records()[0][0]).scores is None


def test_qualities_are_phred_values_or_text_of_fastq():
    assert velto._phred_values("!I~") == bytes([0, 40, 93])
    assert velto._phred_values([0, 40, 93]) == bytes([0, 40, 93])
    assert velto._phred_values(numpy.array([0, 40], dtype=numpy.uint8)) == bytes([0, 40])


@pytest.mark.parametrize("quality", ["I I I", [256] * 5, [-1] * 5, "IIII", "", b"1234"])
def test_qualities_out_of_range_or_number_are_refused(model, quality):
    with pytest.raises(ValueError):
        model.predict("ACGTA", quality)


@pytest.mark.parametrize(
    "options",
    [{"strand": "up"}, {"code": 7}, {"min_probability": 1.5}, {"min_probability": float("nan")}],
)
def test_options_out_of_range_are_refused(model, options):
    with pytest.raises(ValueError):
        model.predict("ACGT" * 10, **options)


def test_letters_outside_ascii_are_refused(model):
    with pytest.raises(ValueError):
        model.predict("ACGTÄ")


def test_no_threads_are_refused(model):
    with pytest.raises(ValueError, match="threads"):
        model.predict_many([], threads=0)


def test_a_strand_is_predicted_as_the_plus_strand_of_its_complement(model):
    bases = fastq_records()[0][0]
    turned = bases.translate(str.maketrans("ACGT", "TGCA"))[::-1]
    minus = model.predict(bases, strand="minus")
    plus = model.predict(turned, strand="plus")
    assert (minus.strand, plus.strand) == ("-", "+")
    assert (minus.start, minus.stop, minus.protein) == (plus.start, plus.stop, plus.protein)
    assert minus.letters == turned


def test_the_code_decides_the_protein(model, coding):
    bases = coding.letters
    standard = model.predict(bases, strand="plus").protein
    assert model.predict(bases, strand="plus", code=1).protein == standard
    assert model.predict(bases, strand="plus", code=2).protein != standard


def test_short_and_empty_reads_are_not_predicted(model):
    assert model.predict("").status == "empty"
    short = model.predict(b"ACGT")
    assert (short.status, short.start, short.stop, short.protein) == ("short", None, None, "")
    assert numpy.asarray(short.frames).size == 0


def test_a_missing_model_and_an_unknown_decoder_are_errors(tmp_path):
    with pytest.raises(velto.ModelError, match="cannot be opened"):
        velto.Model(tmp_path / "nowhere")
    with pytest.raises(velto.Error, match="no decoder 'guess'"):
        velto.Model(MODEL, decoder="guess")


def test_other_threads_run_while_a_read_is_predicted(model):
    """A long read takes far longer than the interpreter's switch interval of 5 ms."""
    bases = "".join(bases for bases, _ in fastq_records()) * 50
    ended = threading.Event()

    def predict():
        model.predict(bases)
        ended.set()

    thread = threading.Thread(target=predict)
    thread.start()
    turns = 0
    while not ended.wait(0.001):
        turns += 1
    thread.join()
    assert turns > 3


def test_stubs_name_all_that_the_compiled_part_has():
    stub = ast.parse((pathlib.Path(velto.__file__).parent / "_velto.pyi").read_text())
    for node in stub.body:
        if isinstance(node, ast.ClassDef):
            named = {part.name for part in node.body if isinstance(part, ast.FunctionDef)}
            real = getattr(_velto, node.name)
            public = {name for name in vars(real) if not name.startswith("_")}
            assert {n for n in named if not n.startswith("_")} == public, node.name


def test_everything_public_is_described():
    for name in velto.__all__:
        thing = getattr(velto, name)
        if issubclass(thing, Exception):
            continue
        assert inspect.getdoc(thing)
        for attribute, value in vars(thing).items():
            if not attribute.startswith("_"):
                assert inspect.getdoc(value), f"{name}.{attribute}"
