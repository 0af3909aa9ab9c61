// The chosen read: its drawing, sentences and sequences.
import { byId, make } from './dom.js';

const kGroup = 10;  // letters set apart

function tableOf(titles, rows) {
  const head = make('tr', {}, ...titles.map((title) => make('th', { scope: 'col' }, title)));
  const body = rows.map((cells) => make('tr', {}, ...cells.map((cell) => make('td', {}, cell))));
  return make('table', {}, make('thead', {}, head), make('tbody', {}, ...body));
}

function shiftTable(shifts) {
  const isGiven = shifts.some(({ confidence }) => confidence !== '');
  const rows = shifts.map(({ position, kind, confidence }) => [
    String(position),
    kind === 'extra' ? 'this base is extra' : 'a base is missing before this one',
    ...(isGiven ? [confidence] : []),
  ]);
  return [make('h3', {}, 'Frameshifts'),
    tableOf(['Base', 'Frameshift', ...(isGiven ? ['Confidence'] : [])], rows)];
}

function copyButton(what, text) {
  const button = make('button', { type: 'button', 'aria-label': `Copy the ${what}` }, 'Copy');
  button.addEventListener('click', async () => {
    try {
      await navigator.clipboard.writeText(text);
      button.textContent = 'Copied';
    } catch {
      button.textContent = 'Not allowed by the browser';
    }
  });
  return button;
}

function sequenceOf(title, what, note, text) {
  const groups = text.match(new RegExp(`.{1,${kGroup}}`, 'g')).join(' ');
  const head = make('div', { className: 'sequence-head' }, make('h3', {}, title), copyButton(what, text));
  return make('section', {}, head, make('p', { className: 'soft' }, note),
    make('pre', { tabIndex: 0, 'aria-label': title }, groups));
}

function sequencesOf({ protein, cds }) {
  if (protein === '') return [];
  return [
    sequenceOf('Protein', 'protein', '* is a stop codon, X a codon with a missing base.', protein),
    sequenceOf('Coding sequence', 'coding sequence',
      'Corrected: extra bases left out, N for a missing one.', cds),
  ];
}

// Markup of the program's own drawings, as elements.
function elementsOf(markup) {
  const parsed = new DOMParser().parseFromString(markup, 'text/html');
  return [...parsed.body.children].map((element) => document.adoptNode(element));
}

export function showRead(read) {
  byId('view-name').textContent = read.name;
  byId('view-lead').textContent = read.lead;
  byId('view-more').textContent = read.sentences.join(' ');
  byId('figure').replaceChildren(...elementsOf(read.figure));
  byId('shifts').replaceChildren(...(read.shifts.length > 0 ? shiftTable(read.shifts) : []));
  byId('sequences').replaceChildren(...sequencesOf(read));
  byId('facts').replaceChildren(tableOf([], read.facts));
  byId('link-box').hidden = true;
  byId('view').hidden = false;
}
