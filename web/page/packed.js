// Files that come along with the page: compressed, as text in scripts of their own, since a page
// opened from a folder may load scripts and nothing else.

// The script calls veltoPack(name, text) with its packed bytes (gzip, base64).
const arrived = {};
globalThis.veltoPack = (name, text) => { arrived[name] = text; };

function loadScript(path) {
  return new Promise((resolve, reject) => {
    const script = document.createElement('script');
    script.src = path;
    script.onload = resolve;
    script.onerror = () => reject(new Error(`the file ${path} beside this page is missing`));
    document.head.append(script);
  });
}

function bytesOfBase64(text) {
  return Uint8Array.from(atob(text), (letter) => letter.charCodeAt(0));
}

// The bytes of gzip data of one member.
export async function gunzip(bytes) {
  const unpacked = new Blob([bytes]).stream().pipeThrough(new DecompressionStream('gzip'));
  return new Uint8Array(await new Response(unpacked).arrayBuffer());
}

// The bytes of the file that `path` brings under `name`. To be asked once a name.
export async function packedFile(path, name) {
  await loadScript(path);
  const packed = bytesOfBase64(arrived[name]);
  delete arrived[name];
  return gunzip(packed);
}
