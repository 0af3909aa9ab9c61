// The list of the reads that were predicted.
import { byId, grouped, make, percent } from './dom.js';

const kPageRows = 12;

const kFound = {
  noncoding: 'no coding region',
  short: 'too short',
  empty: 'no bases',
};

const kFilters = {
  all: () => true,
  coding: (row) => row.status === 'coding',
  shifted: (row) => row.insertions !== '' || row.deletions !== '',
  other: (row) => row.status !== 'coding',
};

function countOf(positions) {
  return positions === '' ? 0 : positions.split(',').length;
}

function shiftWords(row) {
  const extra = countOf(row.insertions);
  const missing = countOf(row.deletions);
  return [missing && `${missing} missing`, extra && `${extra} extra`].filter(Boolean).join(', ');
}

function valueCell(row) {
  if (row.probability === null) return make('td', { className: 'number' }, row.score?.toPrecision(4) ?? '');
  const bar = make('meter', { min: 0, max: 1, value: row.probability, 'aria-hidden': 'true' });
  return make('td', { className: 'number' }, percent(row.probability), bar);
}

export class ReadList {
  #rows = [];
  #shown = [];   // places of the rows that pass the filters
  #first = 0;    // of the page, among these
  #chosen = -1;  // place
  #choose;

  // `choose` is called with the place of a read that is picked.
  constructor(choose) {
    this.#choose = choose;
    byId('filter').addEventListener('change', () => this.#filter());
    byId('search').addEventListener('input', () => this.#filter());
    byId('before').addEventListener('click', () => this.#turn(-kPageRows));
    byId('after').addEventListener('click', () => this.#turn(kPageRows));
  }

  clear() {
    this.#rows = [];
    this.#chosen = -1;
    byId('filter').value = 'all';
    byId('search').value = '';
    this.#filter();
  }

  get length() {
    return this.#rows.length;
  }

  add(rows) {
    const wasFull = this.#shown.length >= this.#first + kPageRows;
    for (const row of rows) {
      if (this.#passes(row)) this.#shown.push(this.#rows.length);
      this.#rows.push(row);
    }
    byId('list').hidden = this.#rows.length < 2;
    if (wasFull) this.#showRange();
    else this.#draw();
  }

  // Marks the read and turns to the page that has it.
  mark(place) {
    this.#chosen = place;
    const at = this.#shown.indexOf(place);
    if (at >= 0) this.#first = at - (at % kPageRows);
    this.#draw();
  }

  // The place of the read before (-1) or behind (1) the marked one among those shown, or -1.
  neighbour(step) {
    return this.#shown[this.#shown.indexOf(this.#chosen) + step] ?? -1;
  }

  #passes(row) {
    const part = byId('search').value.trim().toLowerCase();
    return kFilters[byId('filter').value](row) && row.name.toLowerCase().includes(part);
  }

  #filter() {
    this.#shown = [...this.#rows.keys()].filter((place) => this.#passes(this.#rows[place]));
    this.#first = 0;
    this.#draw();
  }

  #turn(rows) {
    this.#first += rows;
    this.#draw();
  }

  #draw() {
    const places = this.#shown.slice(this.#first, this.#first + kPageRows);
    byId('rows').replaceChildren(...places.map((place) => this.#rowOf(place)));
    const isVote = this.#rows.length > 0 && this.#rows.every((row) => row.probability === null);
    byId('value-title').textContent = isVote ? 'Score' : 'Probability';
    this.#showRange();
  }

  #showRange() {
    const last = Math.min(this.#first + kPageRows, this.#shown.length);
    byId('range').textContent = `${grouped(this.#first + 1)} to ${grouped(last)} of ${grouped(this.#shown.length)}`;
    byId('range').parentElement.hidden = this.#shown.length <= kPageRows;
    byId('before').disabled = this.#first === 0;
    byId('after').disabled = last === this.#shown.length;
    const filtered = this.#shown.length < this.#rows.length;
    byId('found').textContent = filtered ? `${grouped(this.#shown.length)} of ${grouped(this.#rows.length)} reads` : '';
  }

  #rowOf(place) {
    const row = this.#rows[place];
    const name = make('button', { type: 'button', className: 'name' }, row.name || `read ${place + 1}`);
    name.addEventListener('click', () => this.#choose(place));
    const found = row.status === 'coding' ? `${grouped(row.acids)} amino acids` : kFound[row.status];
    const region = row.start === null ? '' : `${row.start}–${row.stop}`;
    const element = make('tr', { className: row.status },
      make('th', { scope: 'row' }, name), make('td', {}, found),
      make('td', { className: 'more' }, row.strand === '-' ? '−' : row.strand ?? ''),
      make('td', { className: 'more number' }, region),
      make('td', { className: 'more' }, shiftWords(row)), valueCell(row));
    if (place === this.#chosen) element.setAttribute('aria-current', 'true');
    return element;
  }
}
