// The panel of the chosen item: its chapters, all metadata of a file, the request that gave them, and
// its upload status to be set.

import { address, mediaAddress, metadata, writeUploadStatus } from './camera.js';
import { element, sizeText, timeText } from './texts.js';

const NAMES = {
  cre: 'created', s: 'size', us: 'upload status', dur: 'seconds', hc: 'highlights', hi: 'highlights at ms',
  mahs: 'score', ct: 'content type', rot: 'rotation', fov: 'field of view', w: 'width', h: 'height',
  fps: 'frames', fps_denom: 'per seconds', cl: 'clip', ao: 'audio', gumi: 'identifier',
  pgumi: 'comes from', eis: 'stabilised', wdr: 'wide range', hdr: 'high range',
};
const VALUES = { cre: (value) => timeText(Number(value)), s: (value) => sizeText(Number(value)) };

function table(values) {
  return element('dl', {}, ...Object.entries(values).flatMap(([key, value]) => [
    element('dt', { className: 'soft', textContent: NAMES[key] ?? key }),
    element('dd', { textContent: VALUES[key]?.(value) ?? [value].flat().join(', ') }),
  ]));
}

export class Details {
  #panel;
  #asking = new AbortController();

  constructor(panel) {
    this.#panel = panel;
  }

  hide() {
    this.#asking.abort();
    this.#panel.hidden = true;
  }

  // chapter: which file of the item.
  async show(item, chapter = 0) {
    this.#asking.abort();
    this.#asking = new AbortController();
    const { signal } = this.#asking;
    const file = item.chapters[chapter];
    this.#panel.hidden = false;
    this.#panel.replaceChildren(
      element('h2', { textContent: file.path }),
      this.#chapters(item, chapter),
      element('p', {}, element('a', { href: mediaAddress(file), textContent: 'Open the file' })));
    try {
      const answer = await metadata(file.path, signal);
      this.#panel.append(table(answer.value), this.#uploadForm(item, file), this.#request(file, answer));
    } catch (error) {
      if (error.name !== 'AbortError') this.#say(error.message);
    }
  }

  #say(text) {
    this.#panel.append(element('p', { textContent: text, attributes: { role: 'alert' } }));
  }

  #chapters(item, chosen) {
    if (item.chapters.length < 2) return null;
    return element('p', {}, ...item.chapters.map((file, i) => {
      const button = element('button', { type: 'button', textContent: file.name, disabled: i === chosen });
      button.addEventListener('click', () => this.show(item, i));
      return button;
    }));
  }

  #uploadForm(item, file) {
    const status = element('input', { type: 'number', name: 'status', min: 0, max: 255,
      required: true, value: file.uploadStatus });
    const form = element('form', {}, element('label', { textContent: 'Upload status ' }, status),
      element('button', { textContent: 'Write' }));
    form.addEventListener('submit', async (event) => {
      event.preventDefault();
      try {
        file.uploadStatus = Number(await writeUploadStatus(file.path, status.value));
        if (file === item.chapters[0]) item.uploadStatus = file.uploadStatus;
        await this.show(item, item.chapters.indexOf(file));
      } catch (error) {
        this.#say(error.message);
      }
    });
    return form;
  }

  #request(file, answer) {
    const url = new URL(address('metadata', { t: 'v5info', p: file.path }), document.baseURI).href;
    const copy = element('button', { type: 'button', textContent: 'Copy the address' });
    copy.addEventListener('click', () => navigator.clipboard?.writeText(url));
    return element('details', {}, element('summary', { textContent: 'JSON' }),
      element('p', {}, element('a', { href: url, textContent: url }), ' ', copy),
      element('pre', { textContent: answer.text }));
  }
}
