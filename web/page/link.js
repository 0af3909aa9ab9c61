// Links that hold a read, with how it was predicted, behind the # sign.

// A longer link is cut off by some programs.
const kMostLetters = 30_000;

// The address of this page with `job`: { model, strand, code, calibration, record }; empty if the
// read is too long for one.
export function linkTo({ model, strand, code, calibration, record }) {
  const fields = new URLSearchParams({ model, strand, code, calibration, read: record });
  const address = `${location.href.split('#')[0]}#${fields}`;
  return address.length <= kMostLetters ? address : '';
}

// What the address of this page holds, or null if it holds no read.
export function linkedJob() {
  const fields = new URLSearchParams(location.hash.slice(1));
  if (!fields.has('read')) return null;
  return Object.fromEntries(['model', 'strand', 'code', 'calibration', 'read']
    .map((name) => [name, fields.get(name) ?? '']));
}
