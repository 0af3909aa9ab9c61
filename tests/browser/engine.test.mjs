// The program as WebAssembly, run by Node, writes the files of `velto scan`.
// Environment: SITE_BUILD, the folder with engine.wasm; MODEL, a model's folder; WORK, the folder
// with inputs and, for each decoder and format, what velto scan wrote of them.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import path from 'node:path';
import { before, test } from 'node:test';

const { SITE_BUILD, MODEL, WORK, PAGE } = process.env;
const { Engine } = await import(path.join(PAGE, 'engine.js'));
const kInputs = ['sample.txt', 'reads.fastq', 'hostile.fa', 'thousand.fastq'];
const kFormats = ['tsv', 'gff3', 'bed', 'cds', 'protein', 'json'];

let engine;

before(async () => {
  engine = await Engine.start(fs.readFileSync(path.join(SITE_BUILD, 'engine.wasm')));
  const files = {};
  for (const name of fs.readdirSync(MODEL, { recursive: true })) {
    const file = path.join(MODEL, name);
    if (fs.statSync(file).isFile()) files[name] = fs.readFileSync(file, 'latin1');
  }
  engine.loadModel(Buffer.from(JSON.stringify(files)));
});

for (const decoder of ['hmm', 'vote']) {
  for (const input of kInputs) {
    test(`${decoder} writes of ${input} what velto scan writes`, () => {
      const choices = { model: 'human', decoder, strand: 'both', code: 1, calibration: '', name: input };
      const reads = engine.open(choices, fs.readFileSync(path.join(WORK, input)));
      engine.learn();
      for (let done = 0; done < reads;) done += engine.predictNext().length;
      for (const format of kFormats) {
        const expected = fs.readFileSync(path.join(WORK, `${input}.${decoder}.${format}`));
        assert.ok(expected.equals(engine.table(format)), `${format} differs`);
      }
    });
  }
}
