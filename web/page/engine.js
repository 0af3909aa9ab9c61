// The compiled program: texts in, texts out. See web/engine.cpp.

// Formats of `velto scan` that the page offers, by their place in its table of formats.
export const kTables = { tsv: 0, gff3: 1, bed: 2, cds: 3, protein: 4, json: 5 };

// What the program may ask of a system; there is none, so that all of it fails, but for the clock
// of its memory and the end of the program.
const kNoSuchCall = 52;

function importsOf(module) {
  const imports = {};
  for (const { module: from, name, kind } of WebAssembly.Module.imports(module)) {
    if (kind !== 'function') throw new Error(`unknown import ${name}`);
    imports[from] ??= {};
    imports[from][name] = name === 'proc_exit'
      ? () => { throw new Error('the program ended'); }
      : () => kNoSuchCall;
  }
  return imports;
}

export class Engine {
  #exports;

  constructor(instance) {
    this.#exports = instance.exports;
    this.#exports._initialize?.();
  }

  // `bytes` are those of engine.wasm.
  static async start(bytes) {
    const module = await WebAssembly.compile(bytes);
    return new Engine(await WebAssembly.instantiate(module, importsOf(module)));
  }

  // `files` are the texts of a model's files by name. Returns the names of its decoders.
  loadModel(files) {
    return JSON.parse(this.#call('loadModel', JSON.stringify(files)));
  }

  // `choices`: model, decoder, strand, code, calibration (JSON or empty), name; `bytes` are those
  // of the input. Returns the number of reads.
  open(choices, bytes) {
    this.#call('choose', JSON.stringify(choices));
    return Number(this.#call('openReads', bytes));
  }

  learn() {
    this.#call('learn');
  }

  predictNext() {
    return JSON.parse(this.#call('predictNext'));
  }

  summary() {
    return JSON.parse(this.#call('summary'));
  }

  drawing(place) {
    return JSON.parse(this.#call('drawing', '', place));
  }

  // The bytes of a file in a format of kTables.
  table(format) {
    return this.#callForBytes('table', '', kTables[format]);
  }

  // The bytes of an HTML page.
  report(seconds) {
    return this.#callForBytes('report', '', seconds);
  }

  style() {
    return this.#call('style');
  }

  #call(name, request, ...values) {
    return new TextDecoder().decode(this.#callForBytes(name, request, ...values));
  }

  #callForBytes(name, request = '', ...values) {
    const bytes = typeof request === 'string' ? new TextEncoder().encode(request) : request;
    const room = this.#exports.requestRoom(bytes.length);
    new Uint8Array(this.#exports.memory.buffer).set(bytes, room);
    const done = this.#exports[name](...values);
    const from = this.#exports.answerText();
    const answer =
      new Uint8Array(this.#exports.memory.buffer, from, this.#exports.answerBytes()).slice();
    if (!done) throw new Error(new TextDecoder().decode(answer));
    return answer;
  }
}
