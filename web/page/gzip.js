// Files that may be gzipped, in one member or in the many blocks of bgzip.
import { gunzip } from './packed.js';

const kLongestBlock = 1 << 16;

export function isGzip(bytes) {
  return bytes[0] === 0x1f && bytes[1] === 0x8b;
}

// The size of the bgzip block that begins at `at`, from its extra field BC; 0 if it is none.
function blockSize(bytes, at) {
  const isBlock = bytes[at + 3] === 4 && bytes[at + 12] === 66 && bytes[at + 13] === 67;
  return isBlock ? bytes[at + 16] + 256 * bytes[at + 17] + 1 : 0;
}

async function unpackBlocks(bytes) {
  const parts = [];
  for (let at = 0; at < bytes.length;) {
    const size = isGzip(bytes.subarray(at)) ? blockSize(bytes, at) : 0;
    if (size === 0 || size > kLongestBlock || at + size > bytes.length) throw new Error();
    parts.push(await gunzip(bytes.subarray(at, at + size)));
    at += size;
  }
  return new Uint8Array(await new Blob(parts).arrayBuffer());
}

// The bytes, unpacked if they are packed.
export async function unpacked(bytes) {
  if (!isGzip(bytes)) return bytes;
  try {
    return await (blockSize(bytes, 0) > 0 ? unpackBlocks(bytes) : gunzip(bytes));
  } catch {
    throw new Error('the gzip data are damaged, or of several parts: unpack the file first');
  }
}
