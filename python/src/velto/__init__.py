"""Protein-coding regions and frameshifts of error-prone cDNA reads.

    model = velto.Model("human")
    found = model.predict("ACGTTAGC...")
    if found.is_coding:
        print(found.start, found.stop, found.strand, found.protein)

All positions are 0-based and count along the predicted strand.
"""

from __future__ import annotations

import collections
import concurrent.futures
import itertools
import os
import pathlib
from collections.abc import Iterable, Iterator, Sequence
from typing import Union

from ._velto import Error, Frameshift, ModelError, Options, Prediction, Predictor, decoders

__all__ = ["Error", "Frameshift", "Model", "ModelError", "Prediction"]

Bases = Union[str, bytes]
Quality = Union[str, bytes, Sequence[int]]
Read = Union[Bases, tuple[Bases, Union[Quality, None]]]

_MODELS = pathlib.Path(__file__).parent / "models"
_READS_PER_TASK = 64  # enough that handing them over costs little


class Model:
    """A decoder of a model, ready to predict. Constant; threads may share it."""

    def __init__(self, path_or_name: str | os.PathLike[str] = "human", decoder: str | None = None):
        """Loads a model.

        path_or_name: the folder of a model, or the name of one that comes with the package: "human",
            or a species of `velto models`; a name that holds a path separator is always a folder.
        decoder: one of `decoders`; by default the model's own choice.

        Raises ModelError for a model that cannot be used or that lacks the decoder.
        """
        self._folder = _folder_of(path_or_name)
        self._predictor = Predictor(self._folder, decoder or "")

    @property
    def decoder(self) -> str:
        """Name of the decoder."""
        return self._predictor.decoder

    @property
    def decoders(self) -> list[str]:
        """Names of the decoders that the model has files for, the default one first."""
        return decoders(self._folder)

    @property
    def uses_calibration(self) -> bool:
        """True if the decoder makes use of what `calibrated` learns."""
        return self._predictor.uses_calibration

    def predict(
        self,
        seq: Bases,
        quality: Quality | None = None,
        *,
        strand: str = "both",
        code: int = 1,
        scores: bool = False,
        min_probability: float | None = None,
    ) -> Prediction:
        """Predicts one read, of any length. Other threads of Python run meanwhile.

        seq: bases in either case, U as T; every other ASCII letter is an unknown base.
        quality: one value a base: Phred values from 0 to 255 (bytes, or a sequence of integers),
            or a str as in FASTQ (character code = Phred value + 33).
        strand: "plus", "minus", or "both" for the one that scores better.
        code: genetic code of the protein, a number of the NCBI list.
        scores: fill Prediction.scores, which takes longer.
        min_probability: reads that code with a smaller probability are not called coding, 0 to 1;
            by default the decoder's own threshold.

        Raises ValueError for arguments out of range and for qualities that are not as many as the
        bases.
        """
        options = Options(strand, code, scores, min_probability)
        return self._predictor.predict_all([_pair(seq, quality)], options)[0]

    def predict_many(
        self,
        reads: Iterable[Read],
        *,
        threads: int = 1,
        strand: str = "both",
        code: int = 1,
        scores: bool = False,
        min_probability: float | None = None,
    ) -> Iterator[Prediction]:
        """Predicts reads as `predict` does, yields the predictions in the order of the reads.

        reads: sequences, or pairs of sequence and quality. They are taken as they are needed, some
            hundred per thread ahead, so that they may be more than memory holds.
        threads: how many of them predict, 1 or more.
        """
        if threads < 1:
            raise ValueError("threads must be 1 or more")
        options = Options(strand, code, scores, min_probability)
        return self._predictions(iter(reads), threads, options)

    def calibrated(self, reads: Iterable[Read], *, strand: str = "both") -> Model:
        """The model adapted to reads like these, a sample of a file (1000 reads are plenty).

        A decoder without calibration is left as it is.
        """
        options = Options(strand, 1, False, None)
        model = object.__new__(Model)
        model._folder = self._folder
        model._predictor = self._predictor.calibrated([_pair_of(r) for r in reads], options)
        return model

    def _predictions(
        self, reads: Iterator[Read], threads: int, options: Options
    ) -> Iterator[Prediction]:
        with concurrent.futures.ThreadPoolExecutor(threads) as pool:
            tasks: collections.deque[concurrent.futures.Future[list[Prediction]]]
            tasks = collections.deque()
            while chunk := [_pair_of(r) for r in itertools.islice(reads, _READS_PER_TASK)]:
                tasks.append(pool.submit(self._predictor.predict_all, chunk, options))
                if len(tasks) > 2 * threads:
                    yield from tasks.popleft().result()
            while tasks:
                yield from tasks.popleft().result()


def _folder_of(path_or_name: str | os.PathLike[str]) -> str:
    name = os.fspath(path_or_name)
    bundled = _MODELS / name
    return str(bundled) if os.path.basename(name) == name and bundled.is_dir() else name


def _pair_of(read: Read) -> tuple[bytes, bytes]:
    return _pair(read, None) if isinstance(read, (str, bytes)) else _pair(*read)


def _pair(seq: Bases, quality: Quality | None) -> tuple[bytes, bytes]:
    bases = seq.encode("ascii") if isinstance(seq, str) else bytes(seq)
    values = b"" if quality is None else _phred_values(quality)
    if quality is not None and len(values) != len(bases):
        raise ValueError(f"{len(values)} qualities for {len(bases)} bases")
    return bases, values


def _phred_values(quality: Quality) -> bytes:
    if not isinstance(quality, str):
        return bytes(quality)
    if quality and not ("!" <= min(quality) and max(quality) <= "~"):
        raise ValueError("a quality character is not one of '!' to '~'")
    return bytes(ord(character) - 33 for character in quality)
