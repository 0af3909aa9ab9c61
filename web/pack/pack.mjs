// Makes the folder BUILD/site from the page's sources, BUILD/engine.wasm and the models of the tree:
//   node web/pack/pack.mjs BUILD
// Scripts bring what a page opened from disk could not fetch: the program and the models, packed.
import { execFileSync } from 'node:child_process';
import fs from 'node:fs';
import path from 'node:path';
import { fileURLToPath } from 'node:url';
import { gzipSync } from 'node:zlib';
import { Engine } from '../page/engine.js';

const build = process.argv[2];
const site = path.join(build, 'site');
const root = fileURLToPath(new URL('../..', import.meta.url));
const page = path.join(root, 'web/page');

// ---- Models

// The folders of models: param-NAME, and those in models/.
function modelFolders() {
  const own = fs.readdirSync(root).filter((name) => name.startsWith('param-'));
  const further = fs.existsSync(path.join(root, 'models')) ? fs.readdirSync(path.join(root, 'models')) : [];
  return [...own, ...further.map((name) => path.join('models', name))]
    .filter((folder) => fs.existsSync(path.join(root, folder, 'model.json')));
}

// The texts of its files by their names in the folder.
function filesOf(folder) {
  const files = {};
  for (const entry of fs.readdirSync(path.join(root, folder), { recursive: true }).sort()) {
    const file = path.join(root, folder, entry);
    if (fs.statSync(file).isFile()) files[entry] = fs.readFileSync(file, 'latin1');
  }
  return files;
}

// Of models whose folder has no name for people.
const kTitles = { celegans: 'C. elegans' };

function packScript(name, bytes) {
  return `veltoPack(${JSON.stringify(name)},"${gzipSync(bytes, { level: 9 }).toString('base64')}");\n`;
}

function modelOf(folder, engine) {
  const id = path.basename(folder).replace(/^param-/, '');
  const pack = Buffer.from(JSON.stringify(filesOf(folder)));
  const decoders = engine.loadModel(pack);
  fs.writeFileSync(path.join(site, `models/${id}.js`), packScript(id, pack));
  return { id, title: kTitles[id] ?? id[0].toUpperCase() + id.slice(1), path: `models/${id}.js`, decoders };
}

// ---- Scripts

function bundle(entry, out, ...options) {
  execFileSync('esbuild', [path.join(page, entry), '--bundle', '--minify', '--format=iife',
    '--target=es2022', '--charset=utf8', '--log-level=warning', `--outfile=${out}`, ...options]);
}

// ---- The folder

fs.rmSync(site, { recursive: true, force: true });
fs.mkdirSync(path.join(site, 'models'), { recursive: true });
for (const file of ['index.html', 'style.css', 'icon.svg']) fs.copyFileSync(path.join(page, file), path.join(site, file));

const wasm = fs.readFileSync(path.join(build, 'engine.wasm'));
const engine = await Engine.start(wasm);
fs.writeFileSync(path.join(site, 'drawing.css'), engine.style());

const models = modelFolders().map((folder) => modelOf(folder, engine));
const version = /VERSION ([0-9.]+)/.exec(fs.readFileSync(path.join(root, 'CMakeLists.txt'), 'utf8').replace(/^cmake_minimum.*$/m, ''))[1];
// What the page imports as site-models.
const made = path.join(build, 'models.js');
fs.writeFileSync(made, `export const kModels = ${JSON.stringify(models)};\nexport const kVersion = "${version}";\n`);

bundle('worker.js', path.join(build, 'worker.js'));
const worker = JSON.stringify(fs.readFileSync(path.join(build, 'worker.js'), 'utf8'));
fs.writeFileSync(path.join(site, 'engine.js'), `veltoWorker=${worker};\n${packScript('engine', wasm)}`);
bundle('main.js', path.join(site, 'velto.js'), '--loader:.txt=text', '--loader:.fastq=text', `--alias:site-models=${path.resolve(made)}`);

for (const file of fs.readdirSync(site, { recursive: true })) {
  const bytes = path.join(site, file);
  if (fs.statSync(bytes).isDirectory()) continue;
  console.log(`${file}: ${fs.statSync(bytes).size} bytes, ${gzipSync(fs.readFileSync(bytes)).length} gzipped`);
}
