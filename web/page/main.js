// The browser page: from reads to what a model says of them.
//
// 1. Parts  2. State of a run  3. Results  4. One read  5. Links  6. Start
import kManyReads from '../../examples/reads.fastq';
import kOneRead from '../../sample.txt';
import { choose, chosen, fillChoices } from './choices.js';
import { byId, grouped, make, percent, plural } from './dom.js';
import { keep } from './downloads.js';
import { Input } from './input.js';
import { linkTo, linkedJob } from './link.js';
import { kVersion } from 'site-models';
import { Predictor } from './predictor.js';
import { ReadList } from './read_list.js';
import { showRead } from './read_view.js';

// ---- 1. Parts

const predictor = new Predictor();
const list = new ReadList(openRead);
const input = new Input(() => predict());

// The latest: { name, model, choices, begin, phase, reads, done, record, and once it is finished
// seconds, summary }.
let run = null;

// ---- 2. State of a run

function speak(words) {
  byId('spoken').textContent = words;
}

function showNotice(id, words) {
  byId(id).textContent = words;
  byId(id).hidden = words === '';
}

function showProgress(words, share) {
  byId('progress').hidden = words === '';
  byId('progress-text').textContent = words;
  if (share === null) byId('bar').removeAttribute('value');
  else byId('bar').value = share;
}

function clearResults() {
  showNotice('error', '');
  showNotice('warning', '');
  list.clear();
  for (const id of ['results', 'view', 'list']) byId(id).hidden = true;
}

function fail(message) {
  run = null;
  showProgress('', null);
  clearResults();
  showNotice('error', message);
  const line = /^pasted text: record \d+, line (\d+):/.exec(message);
  if (line) input.point(Number(line[1]));
}

// `calibration` is what a link says of the reads, else empty.
async function predict(calibration = '') {
  if (input.isEmpty) {
    fail('There is nothing to predict yet: paste a read, or choose a file.');
    byId('input').focus();
    return;
  }
  if (run && run.phase !== 'finished') await predictor.abandon();
  const { model, decoder, strand, code } = chosen();
  const choices = { model: model.title, decoder, strand, code, calibration, name: input.name };
  const mine = { name: input.name, choices, model: `${model.id}/${decoder}`, phase: 'opening', done: 0, begin: performance.now() };
  run = mine;
  clearResults();
  showProgress('Reading …', null);
  try {
    const bytes = await input.bytes();
    if (run !== mine) return;
    await predictor.run(model, choices, bytes, (message) => run === mine && kHear[message.tell](message));
  } catch (error) {
    if (run === mine) fail(error.message);
  }
}

// What the worker tells of the run.
const kHear = {
  opened({ reads }) {
    run.reads = reads;
    run.phase = 'learning';
    showProgress(`${plural(reads, 'read')}: learning their error rates …`, null);
    if (reads > 1) speak(`${plural(reads, 'read')} to predict`);
  },
  learnt() {
    run.phase = 'predicting';
    showProgress(`0 of ${plural(run.reads, 'read')}`, 0);
  },
  rows({ rows }) {
    list.add(rows);
    run.done += rows.length;
    byId('results').hidden = false;
    showProgress(`${grouped(run.done)} of ${plural(run.reads, 'read')}`, run.done / run.reads);
    showLead(`${plural(run.done, 'read')} so far`);
    if (list.length === rows.length) openRead(0, false);
  },
  finished({ summary, stopped }) {
    run.phase = 'finished';
    run.summary = summary;
    run.seconds = (performance.now() - run.begin) / 1000;
    showProgress('', null);
    showSummary(summary, stopped);
  },
  failed({ message }) {
    fail(message);
  },
};

function cancel() {
  if (!run) return;
  if (run.phase === 'predicting') {
    predictor.stop();
    return;
  }
  run = null;
  predictor.abandon();
  showProgress('', null);
  speak('Cancelled');
  byId('predict').focus();
}

// ---- 3. Results

function showLead(words) {
  byId('results-lead').textContent = words;
}

function tile(number, words) {
  return make('div', { className: 'tile' }, make('b', {}, number), make('span', {}, words));
}

function leadOf({ reads, coding, codingMinus }, stopped) {
  const begin = stopped ? `Stopped after ${plural(reads, 'read')} of ${grouped(run.reads)}: ` : '';
  if (reads === 1 && !stopped) return '';
  return `${begin}${grouped(coding)} of ${plural(reads, 'read')} ${coding === 1 ? 'has' : 'have'} a coding region, ${grouped(codingMinus)} of them on the reverse strand.`;
}

function showSummary(summary, stopped) {
  const { reads, coding, noncoding, refused } = summary;
  const isOne = reads === 1 && !stopped;
  showLead(leadOf(summary, stopped));
  byId('tiles').replaceChildren(...(isOne ? [] : [
    tile(grouped(reads), 'reads'), tile(percent(reads > 0 ? coding / reads : 0), 'with a coding region'),
    tile(grouped(noncoding), 'without'), tile(grouped(refused), 'too short or empty'),
  ]));
  byId('learnt').textContent = summary.learnt === '' ? '' : `Errors of these reads: ${summary.learnt}.`;
  showNotice('warning', summary.warning);
  (isOne ? byId('share') : byId('results')).append(byId('downloads'));
  byId('results-title').hidden = isOne;
  byId('results').hidden = false;
  speak(isOne ? byId('view-lead').textContent : leadOf(summary, stopped));
}

async function download(what) {
  if (!run) return;
  const bytes = what === 'report'
    ? await predictor.ask('report', (run.seconds ?? 0))
    : await predictor.ask('table', what);
  keep(bytes, what, run.name);
}

// ---- 4. One read

// `byHand`: the user picked it, and wants to read it.
async function openRead(place, byHand = true) {
  if (!run || place < 0) return;
  const mine = run;
  const read = await predictor.ask('drawing', place);
  if (run !== mine) return;
  run.record = read.record;
  showRead(read);
  list.mark(place);
  const isMany = list.length > 1;
  for (const [id, step] of [['previous', -1], ['next', 1]]) {
    byId(id).hidden = !isMany;
    byId(id).disabled = list.neighbour(step) < 0;
  }
  if (!byHand) return;
  byId('view-name').focus();
  byId('view').scrollIntoView({ block: 'start' });
}

// ---- 5. Links

async function showLink() {
  if (run?.phase !== 'finished') return;
  const { model, choices, summary, record } = run;
  const address = linkTo({
    model, strand: choices.strand, code: choices.code,
    calibration: JSON.stringify(summary.calibration), record,
  });
  byId('link-box').hidden = false;
  byId('link-text').hidden = address === '';
  byId('link-text').value = address;
  if (address === '') {
    byId('link-said').textContent = 'The read is too long for a link.';
    return;
  }
  byId('link-text').select();
  try {
    await navigator.clipboard.writeText(address);
    byId('link-said').textContent = 'copied';
  } catch {
    byId('link-said').textContent = 'ready to be copied';
  }
}

// Predicts the read that the address holds, if it holds one.
function followLink() {
  const job = linkedJob();
  if (!job) return;
  choose(job);
  input.show(job.read);
  predict(job.calibration);
}

// ---- 6. Start

function example(text) {
  input.show(text);
  predict();
}

function listen() {
  byId('form').addEventListener('submit', (event) => {
    event.preventDefault();
    predict();
  });
  byId('input').addEventListener('keydown', (event) => {
    if (event.key === 'Enter' && (event.ctrlKey || event.metaKey)) predict();
  });
  byId('example-one').addEventListener('click', () => example(kOneRead));
  byId('example-many').addEventListener('click', () => example(kManyReads));
  byId('cancel').addEventListener('click', cancel);
  byId('link').addEventListener('click', showLink);
  byId('previous').addEventListener('click', () => openRead(list.neighbour(-1)));
  byId('next').addEventListener('click', () => openRead(list.neighbour(1)));
  for (const button of document.querySelectorAll('[data-table]')) {
    button.addEventListener('click', () => download(button.dataset.table));
  }
  for (const id of ['model', 'strand', 'code']) {
    byId(id).addEventListener('change', () => run?.phase === 'finished' && predict());
  }
  addEventListener('hashchange', followLink);
}

if (typeof WebAssembly === 'undefined' || typeof DecompressionStream === 'undefined') {
  fail('This browser is too old for the page; one of 2023 or later will do.');
} else {
  fillChoices();
  byId('version').textContent = `Version ${kVersion}.`;
  listen();
  followLink();
}
