// The panel of the chosen item: its members, all metadata of a file, the request that gave them, and
// its upload status to be set.

import { address, mediaAddress, metadata, writeUploadStatus } from './camera.js';
import { membersOf } from './members.js';
import { highlightLine, partsText, picture } from './tile.js';
import { durationText, element, sizeText, timeText } from './texts.js';

const PAUSE = 120; // milliseconds: who steps through the list asks for the last file only

const NAMES = {
  cre: 'created', s: 'size', us: 'upload status', dur: 'length', hc: 'highlights', hi: 'highlights at',
  mahs: 'score', ct: 'content type', rot: 'rotation', fov: 'field of view', w: 'width', h: 'height',
  fps: 'frames a second', cl: 'clip', ao: 'audio', gumi: 'identifier',
  pgumi: 'comes from', eis: 'stabilised', wdr: 'wide range', hdr: 'high range', prog: 'progressive',
  subsample: 'subsampled',
};
const yesOrNo = (value) => (value === '0' ? 'no' : 'yes');
const VALUES = {
  ...Object.fromEntries(['cl', 'eis', 'wdr', 'hdr', 'raw', 'prog', 'subsample'].map((key) => [key, yesOrNo])),
  cre: (value) => timeText(Number(value)),
  s: (value) => sizeText(Number(value)),
  dur: (value) => durationText(Number(value)),
  hi: (times) => times.map((time) => durationText(time / 1000)).join(', ') || 'none',
};

function table({ fps, fps_denom: seconds, ...values }) {
  if (Number(fps) && Number(seconds)) values.fps = `${(fps / seconds).toFixed(2)} (${fps} in ${seconds} s)`;
  return element('dl', {}, ...Object.entries(values).flatMap(([key, value]) => [
    element('dt', { className: 'soft', textContent: NAMES[key] ?? key, title: key }),
    element('dd', { textContent: VALUES[key]?.(value) ?? String(value), title: String(value) }),
  ]));
}

function requestOf(file, answer) {
  const url = new URL(address('metadata', { t: 'v5info', p: file.path }), document.baseURI).href;
  const field = element('input', { className: 'url', readOnly: true, value: url,
    attributes: { 'aria-label': 'Address of the request' } });
  const copy = element('button', { type: 'button', textContent: 'Copy' });
  // A camera's page has no clipboard of its own: it comes without TLS.
  copy.addEventListener('click', () => {
    field.select();
    copy.textContent = document.execCommand('copy') ? 'Copied' : 'Selected';
  });
  return element('details', {}, element('summary', { textContent: 'JSON' }),
    element('p', { className: 'pair' }, field, copy), element('pre', { textContent: answer.text }));
}

export class Details {
  #panel;
  #onClose;
  #onWrite;
  #asking = new AbortController();

  // on: { close(), write(item) }, called when the panel was closed and an upload status was written.
  constructor(panel, on) {
    this.#panel = panel;
    this.#onClose = on.close;
    this.#onWrite = on.write;
  }

  close() {
    if (this.#panel.hidden) return;
    this.hide();
    this.#onClose();
  }

  hide() {
    this.#asking.abort();
    this.#panel.hidden = true;
  }

  // file: which one of the item's.
  async show(item, file = item.members()[0] ?? item) {
    this.#asking.abort();
    this.#asking = new AbortController();
    const { signal } = this.#asking;
    const close = element('button', { type: 'button', className: 'close', textContent: '✕',
      attributes: { 'aria-label': 'Close' } });
    close.addEventListener('click', () => this.close());
    const parts = partsText(item);
    const kind = item.kind === 'video' ? 'video' : 'photo';
    this.#panel.hidden = false;
    this.#panel.scrollTop = 0;
    this.#panel.replaceChildren(...[
      element('header', {}, element('h2', { textContent: file.name }), close),
      element('p', { className: 'soft', textContent: [item.folder, parts].filter(Boolean).join(' · ') }),
      element('div', { className: 'large' }, picture(kind, file.path)),
      highlightLine(file),
      parts && membersOf(item, file, (other) => {
        this.show(item, other);
        this.#panel.querySelector('.member[aria-current]').focus();
      }),
      element('p', {}, element('a', { href: mediaAddress(file.path), target: '_blank', rel: 'noopener',
        textContent: 'Open the file' }))].filter(Boolean));
    if (matchMedia('(max-width: 640px)').matches) close.focus(); // the list is covered
    try {
      await new Promise((resolve) => { setTimeout(resolve, PAUSE); });
      signal.throwIfAborted();
      const answer = await metadata(file.path, signal);
      this.#panel.append(this.#uploadForm(item, file, answer.value), table(answer.value),
        requestOf(file, answer));
    } catch (error) {
      if (error.name !== 'AbortError') this.#say(error.message);
    }
  }

  #say(text) {
    this.#panel.querySelector('[role=alert]')?.remove();
    this.#panel.append(element('p', { className: 'trouble', textContent: text,
      attributes: { role: 'alert' } }));
  }

  #uploadForm(item, file, { us }) {
    const status = element('input', { type: 'number', name: 'status', min: 0, max: 4294967295, required: true,
      value: us });
    const said = element('span', { className: 'soft', attributes: { role: 'status' } });
    const form = element('form', { className: 'pair' },
      element('label', {}, 'Upload status ', status), element('button', { textContent: 'Write' }), said);
    form.addEventListener('submit', async (event) => {
      event.preventDefault();
      try {
        file.uploadStatus = await writeUploadStatus(file.path, status.value);
        if (item.members().indexOf(file) < 1) item.uploadStatus = file.uploadStatus;
        said.textContent = `The camera has ${file.uploadStatus} now.`;
        this.#onWrite(item);
      } catch (error) {
        this.#say(error.message);
      }
    });
    return form;
  }
}
