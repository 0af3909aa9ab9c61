#!/usr/bin/env python3
"""Makes up a small genome and its annotation: make_genome.py GENOME.fa GENES.gtf

Three hundred genes on both strands of five chromosomes: two in three code, in codons that this species
prefers, with introns and untranslated regions; the others do not. The same bytes on every run.
"""
import random
import sys

DRAW = random.Random(20261122)
STOPS = ("TAA", "TAG", "TGA")
SENSE = [a + b + c for a in "ACGT" for b in "ACGT" for c in "ACGT" if a + b + c not in STOPS]
PREFERENCE = [DRAW.expovariate(1.0) for _ in SENSE]
GENES, CHROMOSOMES = 300, 5


def bases(count):
    return "".join(DRAW.choices("ACGT", k=count))


def coding_transcript(codons):
    """Bases, and the region from the start codon up to the stop codon, which it leaves out."""
    region = "ATG" + "".join(DRAW.choices(SENSE, PREFERENCE, k=codons))
    before = bases(DRAW.randint(60, 200))
    after = DRAW.choice(STOPS) + bases(DRAW.randint(150, 500))
    return before + region + after, (len(before), len(before) + len(region))


def exons_of(length):
    """Cuts a transcript into two to four exons: pairs of first base and end."""
    cuts = sorted(DRAW.sample(range(50, length - 50), DRAW.randint(1, 3)))
    return list(zip([0] + cuts, cuts + [length]))


def with_introns(transcript, exons):
    """The gene, and where each exon begins in it."""
    gene, starts = "", []
    for first, end in exons:
        gene += "GT" + bases(DRAW.randint(60, 150)) + "AG" if gene else ""
        starts.append(len(gene))
        gene += transcript[first:end]
    return gene, starts


def reverse_complement(letters):
    return letters[::-1].translate(str.maketrans("ACGT", "TGCA"))


def features_of(exons, starts, region):
    """Exons and the coding parts in them: kind, first base in the gene, end, phase."""
    for (first, end), start in zip(exons, starts):
        yield "exon", start, start + end - first, "."
    if region is None:
        return
    for (first, end), start in zip(exons, starts):
        begin, stop = max(first, region[0]), min(end, region[1])
        if begin < stop:
            yield "CDS", start + begin - first, start + stop - first, (region[0] - begin) % 3


def make_gene(number):
    """Letters along the plus strand, strand, and features along it."""
    transcript, region = bases(DRAW.randint(500, 1500)), None
    if number % 3 != 0:
        transcript, region = coding_transcript(1000 if number % 10 == 1 else DRAW.randint(100, 500))
    exons = exons_of(len(transcript))
    gene, starts = with_introns(transcript, exons)
    features = list(features_of(exons, starts, region))
    if DRAW.random() < 0.5:
        return gene, "+", features
    turned = [(kind, len(gene) - end, len(gene) - first, phase) for kind, first, end, phase in features]
    return reverse_complement(gene), "-", sorted(turned, key=lambda feature: feature[1])


def main():
    with open(sys.argv[1], "w") as genome, open(sys.argv[2], "w") as annotation:
        for chromosome in range(1, CHROMOSOMES + 1):
            letters = bases(300)
            for number in range(chromosome, GENES + 1, CHROMOSOMES):
                gene, strand, features = make_gene(number)
                names = f'gene_id "G{number}"; transcript_id "G{number}.1";'
                for kind, first, end, phase in features:
                    row = (f"chr{chromosome}", "made_up", kind, len(letters) + first + 1,
                           len(letters) + end, ".", strand, phase, names)
                    print(*row, sep="\t", file=annotation)
                letters += gene + bases(300)
            print(f">chr{chromosome}", letters, sep="\n", file=genome)


main()
