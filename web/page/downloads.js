// Files to keep.

const kEnds = {
  tsv: '.tsv', gff3: '.gff3', bed: '.bed', cds: '.cds.fa', protein: '.faa', json: '.jsonl',
  report: '.html',
};

// The name of the input without its ends, as in reads.fastq.gz.
function stemOf(name) {
  return name.replace(/(\.(fa|fasta|fna|ffn|fq|fastq|txt))?(\.gz)?$/i, '').replace(/\s+/g, '-') || 'reads';
}

export function keep(bytes, what, inputName) {
  const type = what === 'report' ? 'text/html' : 'text/plain';
  const address = URL.createObjectURL(new Blob([bytes], { type }));
  const anchor = document.createElement('a');
  anchor.href = address;
  anchor.download = stemOf(inputName) + kEnds[what];
  anchor.click();
  setTimeout(() => URL.revokeObjectURL(address), 60_000);
}
