// The browser page as people use it, opened from disk with the network off.
// Environment: CHROMIUM, the browser; SITE, the page's folder; WORK, the folder with inputs and,
// for each decoder and format, what velto scan wrote of them.
//
// 1. Helpers  2. Reads  3. Many reads  4. What cannot be read  5. Links  6. Files  7. Use  8. Looks
import assert from 'node:assert/strict';
import fs from 'node:fs';
import http from 'node:http';
import path from 'node:path';
import { after, afterEach, before, beforeEach, test } from 'node:test';
import { pathToFileURL } from 'node:url';
import { gzipSync } from 'node:zlib';
import { launchBrowser } from './browser.mjs';

const { SITE, WORK } = process.env;
const kAddress = pathToFileURL(path.join(SITE, 'index.html')).href;
const kSample = fs.readFileSync(path.join(WORK, 'sample.txt'), 'utf8');

let browser;
let page;
let troubles;   // what must not happen
let downloads;  // the folder

// ---- 1. Helpers

before(async () => { browser = await launchBrowser(); });
after(async () => browser?.close());

beforeEach(async () => {
  troubles = [];
  downloads = fs.mkdtempSync(path.join(WORK, 'downloads-'));
  await open(kAddress);
});

afterEach(async () => {
  assert.deepEqual(troubles, []);
  await page.close();
});

async function open(address, width = 1280, scheme = 'light') {
  const home = address.replace(/index\.html.*/, '');
  await page?.close().catch(() => {});
  page = await browser.newPage();
  page.on('console', (message) => troubles.push(`console: ${message.text()}`));
  page.on('pageerror', (error) => troubles.push(`error: ${error.message}`));
  page.on('dialog', (dialog) => troubles.push(`dialog: ${dialog.message()}`));
  page.on('request', (request) => {
    const isOwn = request.url().startsWith(home) || request.url().startsWith('blob:');
    if (!isOwn) troubles.push(`request: ${request.url()}`);
  });
  await page.setOfflineMode(home.startsWith('file:'));
  await page.setViewport({ width, height: 900 });
  await page.emulateMediaFeatures([{ name: 'prefers-color-scheme', value: scheme }]);
  const session = await page.createCDPSession();
  await session.send('Browser.setDownloadBehavior', { behavior: 'allow', downloadPath: downloads });
  await page.goto(address);
}

function textOf(selector) {
  return page.$eval(selector, (element) => element.textContent);
}

function paste(text) {
  return page.$eval('#input', (field, value) => { field.value = value; }, text);
}

async function finished() {
  await page.waitForSelector('#results:not([hidden]), #error:not([hidden])');
  await page.waitForSelector('#progress[hidden]');
}

async function predict(text) {
  await paste(text);
  await page.click('#predict');
  await finished();
}

async function choose(name) {
  const field = await page.$('#file-input');
  await field.uploadFile(path.join(WORK, name));
  await finished();
}

async function download(format, end) {
  const before = new Set(fs.readdirSync(downloads));
  await page.click(`[data-table=${format}]`);
  for (let waited = 0; waited < 100; ++waited) {
    const name = fs.readdirSync(downloads).find((entry) => entry.endsWith(end) && !before.has(entry));
    if (name) return fs.readFileSync(path.join(downloads, name));
    await new Promise((resume) => { setTimeout(resume, 100); });
  }
  throw new Error(`no ${end} came`);
}

function scanned(input, decoder, format) {
  return fs.readFileSync(path.join(WORK, `${input}.${decoder}.${format}`));
}

// What the page says of the example reads, of which velto scan calls so many.
function exampleCount() {
  const rows = scanned('reads.fastq', 'hmm', 'tsv').toString().split('\n');
  return `${rows.filter((row) => row.split('\t').includes('coding')).length} of 30 reads`;
}

// The columns of the first read in the table of velto scan, by their names.
function columnsOf(tsv) {
  const [names, values] = tsv.toString().split('\n').map((line) => line.split('\t'));
  return Object.fromEntries(names.map((name, i) => [name, values[i]]));
}

// A block of bgzip: a gzip member that tells its size in the extra field BC.
function bgzipBlock(bytes) {
  const packed = gzipSync(bytes).subarray(10);  // deflated bytes, CRC-32 and size
  const head = Buffer.from([0x1f, 0x8b, 8, 4, 0, 0, 0, 0, 0, 255, 6, 0, 66, 67, 2, 0, 0, 0]);
  head.writeUInt16LE(head.length + packed.length - 1, 16);
  return Buffer.concat([head, packed]);
}

// ---- 2. Reads

for (const decoder of ['hmm', 'vote']) {
  test(`a pasted read shows the numbers of velto scan (${decoder})`, async () => {
    await page.select('#model', `human/${decoder}`);
    await predict(kSample);
    const row = columnsOf(scanned('sample.txt', decoder, 'tsv'));
    assert.equal(row.status, 'coding');
    const lead = await textOf('#view-lead');
    assert.ok(lead.startsWith(`Bases ${row.start} to ${row.stop} code for a protein of `), lead);
    assert.ok(lead.includes(`missing before ${row.deletions}`), lead);
    assert.ok(lead.includes(`extra at ${row.insertions}`), lead);
    const sequence = (await page.$eval('#sequences section:last-child pre', (element) => element.textContent)).replaceAll(' ', '');
    assert.equal(sequence.length, Number(row.cds_length));
    assert.ok(scanned('sample.txt', decoder, 'cds').toString().includes(sequence));
    assert.ok((await download('tsv', '.tsv')).equals(scanned('sample.txt', decoder, 'tsv')));
  });
}

test('a sequence without header is predicted', async () => {
  await predict(kSample.slice(kSample.indexOf('\n')));
  assert.equal(await textOf('#view-name'), 'unnamed read');
  assert.match(await textOf('#view-lead'), /^Bases 91 to 702 /);
});

test('the example read is that of the manual', async () => {
  await page.select('#model', 'human/vote');
  await page.click('#example-one');
  await finished();
  assert.equal(await textOf('#view-lead'), 'Bases 91 to 702 code for a protein of 203 amino acids; one base is missing before 297 and one is extra at 522.');
});

test('another choice predicts anew', async () => {
  await page.select('#model', 'human/vote');
  await predict(kSample);
  await page.select('#strand', 'minus');
  await page.waitForFunction(() => !document.querySelector('#view-lead').textContent.startsWith('Bases 91'));
  assert.doesNotMatch(await textOf('#view-lead'), /^Bases 91 to 702/);
});

test('models of other species take their turns', async () => {
  for (const [model, scan] of [['human/hmm', 'hmm'], ['celegans/hmm', 'celegans'], ['human/hmm', 'hmm']]) {
    await page.select('#model', model);
    await predict(kSample);
    assert.ok((await download('tsv', '.tsv')).equals(scanned('sample.txt', scan, 'tsv')), model);
    for (const entry of fs.readdirSync(downloads)) fs.rmSync(path.join(downloads, entry));
  }
});

test('hostile headers are shown as text', async () => {
  await choose('hostile.fa');
  assert.notEqual(await page.title(), 'broken');
  const names = await page.$$eval('#rows .name', (buttons) => buttons.map((button) => button.textContent));
  assert.equal(names[0], '<script>document.title="broken"</script>');
  assert.equal(names[1], '<img');
  for (const name of names) assert.doesNotMatch(name, /[\u0000-\u001f\u202e]/);
  const count = await page.evaluate(() => document.querySelectorAll('#view script, #rows script, #view img, #rows img').length);
  assert.equal(count, 0);
  await page.click('#rows .name');
  assert.equal(await textOf('#view-name'), '<script>document.title="broken"</script>');
});

// ---- 3. Many reads

test('the example reads give the files of velto scan', async () => {
  await choose('reads.fastq');
  for (const [format, end] of [['tsv', '.tsv'], ['gff3', '.gff3'], ['bed', '.bed'], ['cds', '.cds.fa'], ['protein', '.faa'], ['json', '.jsonl']]) {
    assert.ok((await download(format, `reads${end}`)).equals(scanned('reads.fastq', 'hmm', format)), format);
  }
  assert.ok((await textOf('#results-lead')).startsWith(`${exampleCount()} have a coding region`));
  assert.match((await download('report', '.html')).toString(), /<title>Coding regions of 30 reads/);
});

test('gzipped files are unpacked, those of bgzip too', async () => {
  const bytes = fs.readFileSync(path.join(WORK, 'reads.fastq'));
  const parts = [bytes.subarray(0, 10_000), bytes.subarray(10_000), Buffer.alloc(0)];
  fs.writeFileSync(path.join(WORK, 'packed.fastq.gz'), gzipSync(bytes));
  fs.writeFileSync(path.join(WORK, 'blocks.fastq.gz'), Buffer.concat(parts.map(bgzipBlock)));
  for (const name of ['packed.fastq.gz', 'blocks.fastq.gz']) {
    await choose(name);
    assert.ok((await download('tsv', '.tsv')).equals(scanned('reads.fastq', 'hmm', 'tsv')), name);
    for (const entry of fs.readdirSync(downloads)) fs.rmSync(path.join(downloads, entry));
  }
});

test('a thousand reads show their progress and come out as velto scan writes them', async () => {
  await page.evaluate(() => {
    window.progress = [];
    new MutationObserver(() => window.progress.push(document.querySelector('#progress-text').textContent))
      .observe(document.querySelector('#progress-text'), { childList: true });
  });
  await choose('thousand.fastq');
  const progress = (await page.evaluate(() => window.progress)).filter((words) => words.includes(' of '));
  assert.ok(progress.length >= 10, `${progress.length} steps`);
  assert.equal(progress.at(-1), '1\u202f000 of 1\u202f000 reads');
  assert.ok((await download('tsv', 'thousand.tsv')).equals(scanned('thousand.fastq', 'hmm', 'tsv')));
});

test('a run that is cancelled keeps the reads that are done', async () => {
  const field = await page.$('#file-input');
  await field.uploadFile(path.join(WORK, 'thousand.fastq'));
  await page.waitForFunction(() => document.querySelectorAll('#rows tr').length > 0);
  await page.click('#cancel');
  await finished();
  const [, done] = /^Stopped after ([\d\u202f]+) reads of 1\u202f000: /.exec(await textOf('#results-lead'));
  const rows = (await download('tsv', '.tsv')).toString();
  assert.equal(rows.trimEnd().split('\n').length - 1, Number(done.replace('\u202f', '')));
  assert.ok(scanned('thousand.fastq', 'hmm', 'tsv').toString().startsWith(rows));
  await page.click('#file-remove');
  await predict(kSample);
  assert.match(await textOf('#view-lead'), /^Bases 91 to 702/);
});

test('a run can be cancelled before the first read too', async () => {
  const field = await page.$('#file-input');
  await field.uploadFile(path.join(WORK, 'thousand.fastq'));
  await page.waitForFunction(() => document.querySelector('#progress-text').textContent.includes('learning'));
  await page.click('#cancel');
  await page.waitForSelector('#progress[hidden]');
  assert.equal(await page.$eval('#results', (element) => element.hidden), true);
  await page.click('#file-remove');
  await predict(kSample);
  assert.match(await textOf('#view-lead'), /^Bases 91 to 702/);
});

test('the list filters, turns pages and opens reads', async () => {
  await choose('reads.fastq');
  assert.equal((await page.$$('#rows tr')).length, 12);
  await page.click('#after');
  assert.equal(await textOf('#rows tr .name'), 'r13');
  await page.select('#filter', 'coding');
  assert.equal(await textOf('#found'), exampleCount());
  await page.type('#search', 'r12');
  assert.equal((await page.$$('#rows tr')).length, 1);
  await page.click('#rows .name');
  await page.waitForFunction(() => document.querySelector('#view-name').textContent === 'r12');
  assert.match(await textOf('#view-lead'), /^Bases 3 to 579 /);
});

// ---- 4. What cannot be read

for (const [what, text, words] of [
  ['nothing', '  \n', 'There is nothing to predict yet'],
  ['digits', '>a\nACGT\n>b\nACG7ACGT\n', "pasted text: record 2, line 4: '7' within a sequence"],
  ['digits without header', 'ACGT\n12', "pasted text: record 1, line 2: '1' within a sequence"],
  ['FASTQ that is cut off', '@a\nACGT\n+\nII', 'pasted text: record 1, line 4: FASTQ quality of length 2 for 4 bases'],
]) {
  test(`${what}: an error says where`, async () => {
    await predict(text);
    assert.ok((await textOf('#error')).startsWith(words), await textOf('#error'));
    assert.equal(await page.$eval('#results', (element) => element.hidden), true);
  });
}

test('the line of an error is marked in the field', async () => {
  await predict('>a\nACGT\nAC7T\nACGT\n');
  const marked = await page.$eval('#input', (field) => field.value.slice(field.selectionStart, field.selectionEnd));
  assert.equal(marked, 'AC7T');
});

test('protein: a warning says where', async () => {
  await predict('>d\nACGTACGTAC\n>p\nMSGQRVDVKVVMLGKEYVGKTSLVERYVHDRFLVGPYQNTIGAAFVAKVMSVGDRT\n');
  const warning = await textOf('#warning');
  assert.match(warning, /1 of 2 reads have more unknown than known bases .*protein\?/);
  assert.match(warning, /record 2, line 3\.$/);
});

test('a file of another format is named', async () => {
  fs.writeFileSync(path.join(WORK, 'reads.bam'), Buffer.from('BAM\x01\0\0\0\0', 'latin1'));
  fs.writeFileSync(path.join(WORK, 'cut.fastq.gz'), gzipSync('@a\nACGT').subarray(0, 20));
  await choose('reads.bam');
  assert.match(await textOf('#error'), /^reads\.bam: record 1, line 1: BAM is not read here/);
  await choose('cut.fastq.gz');
  assert.match(await textOf('#error'), /gzip data are damaged/);
});

// ---- 5. Links

test('a link holds the read, its choices and what was learnt', async () => {
  await choose('reads.fastq');
  await page.click('#rows tr:nth-child(12) .name');
  await page.waitForFunction(() => document.querySelector('#view-name').textContent === 'r12');
  const figure = await page.$eval('#figure', (element) => element.innerHTML);
  await page.click('#link');
  await page.waitForFunction(() => document.querySelector('#link-text').value !== '');
  const address = await page.$eval('#link-text', (field) => field.value);
  assert.ok(address.startsWith(`${kAddress}#model=human%2Fhmm&`), address);
  await open(address);
  await finished();
  assert.equal(await textOf('#view-name'), 'r12');
  assert.equal(await page.$eval('#figure', (element) => element.innerHTML), figure);
});

test('a link may be written by hand, and anything in it is survived', async () => {
  await open(`${kAddress}#read=${encodeURIComponent(kSample)}`);
  await finished();
  assert.match(await textOf('#view-lead'), /^Bases 91 to 702/);
  await open(`${kAddress}#model=../../x&code=99&strand=%00&calibration={bad&read=%3E%3Cimg%20src=x%20onerror=alert(1)%3E%0AACGT`);
  await finished();
  assert.match(await textOf('#error'), /^the link: holds no calibration/);
});

// ---- 6. Files

test('the page asks for nothing but its own files', async () => {
  const policy = await page.$eval('meta[http-equiv=Content-Security-Policy]', (meta) => meta.content);
  assert.match(policy, /^default-src 'none'; /);
  assert.doesNotMatch(policy, /connect-src|https?:|unsafe-inline|'unsafe-eval'/);
  const isBlocked = await page.evaluate(async () => {
    try { await fetch('https://example.org/'); return false; } catch { return true; }
  });
  assert.ok(isBlocked);
  assert.ok(troubles.some((words) => words.includes("violates the document's Content Security Policy") || words.includes('violates the following Content Security Policy')), troubles.join());
  troubles = [];
});

const kTypes = { '.html': 'text/html', '.js': 'text/javascript', '.css': 'text/css', '.svg': 'image/svg+xml' };

test('a plain web server is enough', async () => {
  const server = http.createServer(({ url }, response) => {
    const file = path.join(SITE, path.normalize(new URL(url, 'http://x').pathname));
    response.setHeader('Content-Type', kTypes[path.extname(file)] ?? 'application/octet-stream');
    fs.createReadStream(file).on('error', () => response.writeHead(404).end()).pipe(response);
  });
  await new Promise((resume) => { server.listen(0, '127.0.0.1', resume); });
  try {
    await open(`http://127.0.0.1:${server.address().port}/index.html#read=${encodeURIComponent(kSample)}`);
    await finished();
    assert.match(await textOf('#view-lead'), /^Bases 91 to 702/);
    assert.ok((await download('tsv', '.tsv')).equals(scanned('sample.txt', 'hmm', 'tsv')));
  } finally {
    server.close();
    server.closeAllConnections();
  }
});

// ---- 7. Use

test('the keyboard alone is enough', async () => {
  const press = (...keys) => keys.reduce((done, key) => done.then(() => page.keyboard.press(key)), Promise.resolve());
  const focused = () => page.evaluate(() => document.activeElement.id || document.activeElement.textContent);
  await press('Tab');
  assert.equal(await focused(), 'Skip to the reads');
  await press('Enter');
  assert.equal(await focused(), 'input');
  await page.keyboard.type(`>one\n${kSample.split('\n').slice(1).join('')}\n>two\nACGT\n`);
  await page.keyboard.down('Control');
  await press('Enter');
  await page.keyboard.up('Control');
  await finished();
  for (let tabs = 0; await focused() !== 'two' && tabs < 40; ++tabs) await press('Tab');
  await press('Enter');
  await page.waitForFunction(() => document.activeElement.id === 'view-name' && document.activeElement.textContent === 'two');
  assert.match(await textOf('#view-lead'), /4 bases; reads of fewer than 30/);
  await press('Tab');
  assert.equal(await focused(), 'previous');
  await press('Enter');
  await page.waitForFunction(() => document.querySelector('#view-name').textContent === 'one');
});

test('every control has a name, and what happens is spoken', async () => {
  await choose('reads.fastq');
  assert.ok((await textOf('#spoken[role=status]')).startsWith(exampleCount()));
  const tree = await page.accessibility.snapshot({ interestingOnly: true });
  const nameless = [];
  const look = (node) => {
    const isControl = ['button', 'combobox', 'textbox', 'searchbox', 'link', 'progressbar', 'image', 'img'].includes(node.role);
    if (isControl && !node.name) nameless.push(node);
    node.children?.forEach(look);
  };
  look(tree);
  assert.deepEqual(nameless, []);
  const ids = await page.$$eval('[id]', (elements) => elements.map((element) => element.id));
  assert.equal(new Set(ids).size, ids.length);
});

// ---- 8. Looks

for (const width of [390, 1280]) {
  test(`nothing is wider than ${width} pixels`, async () => {
    await open(kAddress, width);
    const widthOf = () => page.evaluate(() => document.documentElement.scrollWidth);
    assert.equal(await widthOf(), width);
    await choose('hostile.fa');
    assert.equal(await widthOf(), width);
    await page.click('#link');
    await page.waitForSelector('#link-box:not([hidden])');
    assert.equal(await widthOf(), width);
    await choose('reads.fastq');
    assert.equal(await widthOf(), width);
    const size = await page.$$eval('#figure svg', (drawings) => drawings
      .filter((svg) => svg.clientWidth > 0)
      .map((svg) => parseFloat(getComputedStyle(svg.querySelector('text')).fontSize) * svg.clientWidth / svg.viewBox.baseVal.width));
    assert.equal(size.length, 1);
    assert.ok(size[0] >= 10, `letters of ${size[0]} pixels`);
  });
}

// Contrast of text and ground by WCAG 2, at least 4.5.
test('letters stand out in light and dark', async () => {
  for (const scheme of ['light', 'dark']) {
    await open(kAddress, 1280, scheme);
    await choose('reads.fastq');
    const faint = await page.evaluate(() => {
      const canvas = document.createElement('canvas').getContext('2d', { willReadFrequently: true });
      const rgba = (colour) => {
        canvas.clearRect(0, 0, 1, 1);
        canvas.fillStyle = colour;
        canvas.fillRect(0, 0, 1, 1);
        return [...canvas.getImageData(0, 0, 1, 1).data];
      };
      const light = (colour) => {
        const [r, g, b] = rgba(colour).map((c) => (c / 255 <= 0.04045 ? c / 255 / 12.92 : ((c / 255 + 0.055) / 1.055) ** 2.4));
        return 0.2126 * r + 0.7152 * g + 0.0722 * b;
      };
      const ground = (element) => {
        for (let at = element; at; at = at.parentElement) {
          const colour = getComputedStyle(at).backgroundColor;
          if (rgba(colour)[3] > 0) return colour;
        }
        return 'white';
      };
      return [...document.querySelectorAll('body *')]
        .filter((element) => element.checkVisibility() && !element.closest('svg, .hidden, .skip, :disabled'))
        .filter((element) => [...element.childNodes].some((node) => node.nodeType === 3 && node.data.trim() !== ''))
        .map((element) => {
          const [a, b] = [light(getComputedStyle(element).color), light(ground(element))];
          return { words: element.textContent.slice(0, 30), ratio: (Math.max(a, b) + 0.05) / (Math.min(a, b) + 0.05) };
        })
        .filter(({ ratio }) => ratio < 4.5);
    });
    assert.deepEqual(faint, [], scheme);
  }
});
