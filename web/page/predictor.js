// The page's side of the worker: runs of predictions, questions about them.
import { packedFile } from './packed.js';

export class Predictor {
  #worker = null;     // a promise
  #wasm = null;       // a promise of its bytes
  #packs = new Map(); // [model] a promise of its files
  #loaded = '';       // the model that the worker has
  #questions = [];    // [number] what waits for an answer
  #hear = () => {};   // of the run

  // Predicts the reads of `bytes` by the model { id, path }. `hear` gets the worker's messages of
  // this run, and those of no earlier one.
  async run(model, choices, bytes, hear) {
    this.#hear = hear;
    try {
      const worker = await (this.#worker ??= this.#start());
      const pack = this.#loaded === model.id ? null : await this.#packOf(model);
      if (this.#hear !== hear) return;
      this.#loaded = model.id;
      worker.postMessage({ do: 'run', pack, choices, bytes });
    } catch (error) {
      hear({ tell: 'failed', message: error.message });
    }
  }

  // Ends the run after the reads that are being predicted, which it then tells as finished.
  async stop() {
    (await this.#worker)?.postMessage({ do: 'stop' });
  }

  // Ends the run at once; it tells no more, and nothing is left of it.
  async abandon() {
    this.#hear = () => {};
    const worker = await this.#worker;
    this.#worker = null;
    this.#loaded = '';
    worker?.terminate();
  }

  // A function of the engine: 'drawing', 'table', 'report'.
  async ask(what, value) {
    const worker = await this.#worker;
    return new Promise((resolve, reject) => {
      const number = this.#questions.push({ resolve, reject }) - 1;
      worker.postMessage({ do: 'ask', number, what, value });
    });
  }

  async #start() {
    this.#wasm ??= packedFile('engine.js', 'engine');
    const wasm = await this.#wasm;
    const code = URL.createObjectURL(new Blob([globalThis.veltoWorker], { type: 'text/javascript' }));
    const worker = new Worker(code);
    worker.onmessage = ({ data }) => this.#receive(data);
    worker.onerror = (event) => this.#hear({ tell: 'failed', message: event.message });
    worker.postMessage({ do: 'start', wasm });
    return worker;
  }

  #packOf({ id, path }) {
    if (!this.#packs.has(id)) this.#packs.set(id, packedFile(path, id));
    return this.#packs.get(id);
  }

  #receive(message) {
    if (message.tell !== 'answer') return this.#hear(message);
    const { resolve, reject } = this.#questions[message.number];
    delete this.#questions[message.number];
    return 'error' in message ? reject(new Error(message.error)) : resolve(message.answer);
  }
}
