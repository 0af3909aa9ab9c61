// The compiled program: texts in, texts out, as web/engine.cpp says.

// Formats of `velto scan` that the page offers, by their place in its table of formats.
const kTables = { tsv: 0, gff3: 1, bed: 2, cds: 3, protein: 4, json: 5 };

// The answer to whatever the program asks of a system, of which there is none.
const kNoSuchCall = 52;

function importsOf(module) {
  const imports = {};
  for (const { module: from, name } of WebAssembly.Module.imports(module)) {
    imports[from] ??= {};
    imports[from][name] = () => kNoSuchCall;
  }
  const end = () => { throw new Error('the program ended'); };
  imports.wasi_snapshot_preview1 = { ...imports.wasi_snapshot_preview1, proc_exit: end };
  return imports;
}

export class Engine {
  #exports;

  // `bytes` are those of engine.wasm.
  static async start(bytes) {
    const module = await WebAssembly.compile(bytes);
    const engine = new Engine();
    engine.#exports = (await WebAssembly.instantiate(module, importsOf(module))).exports;
    engine.#exports._initialize();
    return engine;
  }

  // `pack` holds the texts of a model's files by name, as JSON. Returns its decoders' names.
  loadModel(pack) {
    return JSON.parse(this.#call('loadModel', pack));
  }

  // `choices`: model, decoder, strand, code, calibration (JSON or empty) and name of the input,
  // whose bytes follow. Returns the number of reads.
  open(choices, bytes) {
    this.#call('choose', new TextEncoder().encode(JSON.stringify(choices)));
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
    return JSON.parse(this.#call('drawing', kNothing, place));
  }

  // The bytes of a file in a format of kTables.
  table(format) {
    return this.#callForBytes('table', kNothing, kTables[format]);
  }

  // The bytes of an HTML page.
  report(seconds) {
    return this.#callForBytes('report', kNothing, seconds);
  }

  style() {
    return this.#call('style');
  }

  #call(name, request, ...values) {
    return new TextDecoder().decode(this.#callForBytes(name, request, ...values));
  }

  #callForBytes(name, request = kNothing, ...values) {
    const room = this.#exports.requestRoom(request.length);
    new Uint8Array(this.#exports.memory.buffer).set(request, room);
    const done = this.#exports[name](...values);
    const from = this.#exports.answerText();
    const { buffer } = this.#exports.memory;
    const answer = new Uint8Array(buffer, from, this.#exports.answerBytes()).slice();
    if (!done) throw new Error(new TextDecoder().decode(answer));
    return answer;
  }
}

const kNothing = new Uint8Array();
