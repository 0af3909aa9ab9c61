// What is to be predicted: the text of the field, or a file in its place.
import { byId, grouped } from './dom.js';
import { unpacked } from './gzip.js';

// More is for `velto scan`: the page holds all of it in memory, some times over.
const kMostBytes = 200_000_000;

export class Input {
  #file = null;
  #changed;

  // `changed` is called when a file was chosen.
  constructor(changed) {
    this.#changed = changed;
    byId('file-choose').addEventListener('click', () => byId('file-input').click());
    byId('file-input').addEventListener('change', ({ target }) => {
      if (target.files.length > 0) this.#take(target.files[0]);
      target.value = '';
    });
    byId('file-remove').addEventListener('click', () => {
      this.show('');
      byId('input').focus();
    });
    this.#takeDrops();
  }

  // Puts the text into the field, in place of a file too.
  show(text) {
    this.#file = null;
    byId('input').value = text;
    byId('input').hidden = false;
    byId('file').hidden = true;
  }

  get name() {
    return this.#file?.name ?? 'pasted text';
  }

  get isEmpty() {
    return this.#file === null && byId('input').value.trim() === '';
  }

  // Throws an Error for people.
  async bytes() {
    const source = this.#file ?? new Blob([byId('input').value]);
    this.#requireSize(source.size);
    const bytes = await unpacked(new Uint8Array(await source.arrayBuffer()));
    this.#requireSize(bytes.length);
    return bytes;
  }

  // Marks the line of pasted text, from 1.
  point(line) {
    if (this.#file !== null) return;
    const field = byId('input');
    const before = field.value.split('\n').slice(0, line - 1).join('\n').length;
    const begin = line > 1 ? before + 1 : 0;
    const end = field.value.indexOf('\n', begin);
    field.focus();
    field.setSelectionRange(begin, end < 0 ? field.value.length : end);
  }

  #requireSize(size) {
    if (size <= kMostBytes) return;
    throw new Error(`${this.name}: more than ${kMostBytes / 1e6} MB of text, which is too much for a page; use velto scan`);
  }

  #take(file) {
    this.#file = file;
    byId('file-name').textContent = file.name;
    byId('file-size').textContent = `${grouped(Math.ceil(file.size / 1000))} kB`;
    byId('input').hidden = true;
    byId('file').hidden = false;
    this.#changed();
  }

  #takeDrops() {
    const area = byId('drop');
    const isFile = (event) => event.dataTransfer?.types.includes('Files');
    document.addEventListener('dragover', (event) => {
      if (!isFile(event)) return;
      event.preventDefault();
      area.classList.add('over');
    });
    document.addEventListener('dragleave', (event) => {
      if (event.relatedTarget === null) area.classList.remove('over');
    });
    document.addEventListener('drop', (event) => {
      if (!isFile(event)) return;
      event.preventDefault();
      area.classList.remove('over');
      if (event.dataTransfer.files.length > 0) this.#take(event.dataTransfer.files[0]);
    });
  }
}
