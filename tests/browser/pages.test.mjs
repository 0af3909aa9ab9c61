// Opens the pages of `velto show` and `velto scan --report` in Chromium, as people do.
// Environment: CHROMIUM, the browser; PAGES, the folder with show.html and report.html.
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { pathToFileURL } from 'node:url';
import { launchBrowser } from './browser.mjs';

const kPages = ['show.html', 'report.html'];
const kHostileName = '<script>document.title="broken"</script>';  // tools/test-pages.sh writes it
const kWidths = [390, 1280];

let browser;

before(async () => {
  browser = await launchBrowser();
});

after(async () => browser?.close());

// The page at this width, and what went wrong while it was read.
async function open(name, width, scheme = 'light') {
  const page = await browser.newPage();
  const troubles = [];
  page.on('console', (message) => troubles.push(`console: ${message.text()}`));
  page.on('pageerror', (error) => troubles.push(`error: ${error.message}`));
  page.on('dialog', (dialog) => troubles.push(`dialog: ${dialog.message()}`));
  const url = pathToFileURL(`${process.env.PAGES}/${name}`).href;
  page.on('request', (request) => {
    if (request.url() !== url) troubles.push(`request: ${request.url()}`);
  });
  await page.setViewport({ width, height: 900 });
  await page.emulateMediaFeatures([{ name: 'prefers-color-scheme', value: scheme }]);
  await page.goto(url);
  return { page, troubles };
}

for (const name of kPages) {
  for (const width of kWidths) {
    test(`${name} needs nothing else and fits ${width} pixels`, async () => {
      const { page, troubles } = await open(name, width);
      assert.deepEqual(troubles, []);
      assert.equal(await page.evaluate(() => document.scripts.length), 0);
      assert.equal(await page.evaluate(() => document.documentElement.scrollWidth), width);
      await page.close();
    });

    test(`${name} shows each drawing once at ${width} pixels, in readable letters`, async () => {
      const { page } = await open(name, width);
      const seen = await page.$$eval('figure:has(.velto-read)', (figures) => figures.map((figure) => {
        const shown = [...figure.querySelectorAll('svg')].filter((svg) => svg.clientWidth > 0);
        const text = shown[0].querySelector('text');
        const scale = shown[0].clientWidth / shown[0].viewBox.baseVal.width;
        return { shown: shown.length, size: parseFloat(getComputedStyle(text).fontSize) * scale };
      }));
      assert.ok(seen.length > 0);
      for (const { shown, size } of seen) {
        assert.equal(shown, 1);
        assert.ok(size >= 10, `letters of ${size} pixels`);
      }
      await page.close();
    });

    test(`${name} has no label on another one at ${width} pixels`, async () => {
      const { page } = await open(name, width);
      const overlaps = await page.$$eval('.velto-read, .velto-chart', (drawings) => drawings
        .filter((svg) => svg.clientWidth > 0)
        .flatMap((svg) => {
          const labels = [...svg.querySelectorAll('text:not(.acids)')]
            .map((text) => ({ words: text.textContent, box: text.getBoundingClientRect() }));
          return labels.flatMap((a, i) => labels.slice(i + 1)
            .filter((b) => a.box.left < b.box.right - 1 && b.box.left < a.box.right - 1 &&
                           a.box.top < b.box.bottom - 3 && b.box.top < a.box.bottom - 3)
            .map((b) => `${a.words} | ${b.words}`));
        }));
      assert.deepEqual(overlaps, []);
      await page.close();
    });

    test(`${name} keeps its drawings inside at ${width} pixels`, async () => {
      const { page } = await open(name, width);
      const outside = await page.$$eval('.velto-read text, .velto-chart text', (texts) => texts
        .filter((text) => text.getBoundingClientRect().width > 0)
        .filter((text) => {
          const box = text.getBoundingClientRect();
          const frame = text.ownerSVGElement.getBoundingClientRect();
          return box.left < frame.left - 1 || box.right > frame.right + 1 ||
                 box.top < frame.top - 1 || box.bottom > frame.bottom + 1;
        })
        .map((text) => text.textContent));
      assert.deepEqual(outside, []);
      await page.close();
    });
  }

  test(`${name} follows the choice of light or dark`, async () => {
    const backgrounds = [];
    for (const scheme of ['light', 'dark']) {
      const { page } = await open(name, 1280, scheme);
      backgrounds.push(await page.evaluate(() => getComputedStyle(document.body).backgroundColor));
      await page.close();
    }
    assert.deepEqual(backgrounds, ['rgb(255, 255, 255)', 'rgb(18, 22, 28)']);
  });

  test(`${name} shows hostile names as text`, async () => {
    const { page } = await open(name, 1280);
    assert.notEqual(await page.title(), 'broken');
    assert.ok((await page.evaluate(() => document.body.innerText)).includes(kHostileName));
    await page.close();
  });

  test(`${name} describes every drawing to a screen reader`, async () => {
    const { page } = await open(name, 1280);
    const ids = await page.$$eval('[id]', (elements) => elements.map((element) => element.id));
    assert.equal(new Set(ids).size, ids.length);
    const images = await page.$$eval('svg', (drawings) => drawings.map((svg) => ({
      role: svg.getAttribute('role'),
      words: svg.getAttribute('aria-labelledby').split(' ')
        .map((id) => document.getElementById(id)?.textContent ?? '').join(' '),
    })));
    assert.ok(images.length > 0);
    for (const { role, words } of images) {
      assert.equal(role, 'img');
      assert.ok(words.length > 20, words);
    }
    await page.close();
  });
}
