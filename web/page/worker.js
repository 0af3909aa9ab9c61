// The worker of the page: predicts reads while the page stays alive.
//
// Messages in: { do: 'start', wasm }, { do: 'run', pack?, choices, bytes }, { do: 'stop' }, and
// { do: 'ask', number, what, value } with a function of Engine that is answered by
// { tell: 'answer', number, answer } or { ..., error }. Messages out of a run, in order:
// { tell: 'opened', reads }, { tell: 'learnt' }, { tell: 'rows', rows } again and again,
// { tell: 'finished', summary, stopped }; or { tell: 'failed', message } at any time.
import { Engine } from './engine.js';

let engine;  // a promise once started
let runs = 0;
let stopped = false;
let queue = Promise.resolve();  // runs, one after the other

// Lets messages in.
function breathe() {
  return new Promise((resume) => {
    const { port1, port2 } = new MessageChannel();
    port1.onmessage = resume;
    port2.postMessage(0);
  });
}

async function run({ pack, choices, bytes }, number) {
  const isWanted = () => number === runs && !stopped;
  try {
    const program = await engine;
    if (pack) program.loadModel(pack);
    let left = program.open(choices, bytes);
    postMessage({ tell: 'opened', reads: left });
    program.learn();
    postMessage({ tell: 'learnt' });
    await breathe();
    while (left > 0 && isWanted()) {
      const rows = program.predictNext();
      left -= rows.length;
      postMessage({ tell: 'rows', rows });
      await breathe();
    }
    postMessage({ tell: 'finished', summary: program.summary(), stopped: left > 0 });
  } catch (error) {
    postMessage({ tell: 'failed', message: error.message });
  }
}

async function answer({ number, what, value }) {
  try {
    postMessage({ tell: 'answer', number, answer: (await engine)[what](value) });
  } catch (error) {
    postMessage({ tell: 'answer', number, error: error.message });
  }
}

onmessage = ({ data }) => {
  if (data.do === 'start') engine = Engine.start(data.wasm);
  if (data.do === 'stop') stopped = true;
  if (data.do === 'ask') answer(data);
  if (data.do !== 'run') return;
  stopped = false;
  runs += 1;
  const number = runs;
  queue = queue.then(() => run(data, number));
};
