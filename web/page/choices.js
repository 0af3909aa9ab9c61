// Model, strand and genetic code.
import { kModels } from 'site-models';
import { kGeneticCodes } from './genetic_codes.js';
import { byId, make } from './dom.js';

const kDecoderNames = { hmm: 'posterior decoder', vote: 'boosted vote' };

// Every decoder of every model, as "human/hmm".
export function fillChoices() {
  for (const { id, title, decoders } of kModels) {
    for (const decoder of decoders) {
      const words = `${title}, ${kDecoderNames[decoder] ?? decoder}`;
      byId('model').append(make('option', { value: `${id}/${decoder}` }, words));
    }
  }
  for (const [number, name] of kGeneticCodes) {
    byId('code').append(make('option', { value: number }, `${number}: ${name}`));
  }
}

export function chosen() {
  const [id, decoder] = byId('model').value.split('/');
  return {
    model: kModels.find((model) => model.id === id),
    decoder,
    strand: byId('strand').value,
    code: Number(byId('code').value),
  };
}

// Chooses by the values of the fields, as a link has them; values that there are not are passed
// over.
export function choose(values) {
  for (const field of ['model', 'strand', 'code']) {
    const options = [...byId(field).options];
    if (options.some(({ value }) => value === values[field])) byId(field).value = values[field];
  }
}
