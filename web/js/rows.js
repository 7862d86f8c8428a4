// A list of any length of which only the rows in sight are there.

import { mediaAddress } from './camera.js';
import { countText, durationText, element, sizeText, timeText } from './texts.js';

const ROW = 64;
const BEYOND = 6; // rows kept ready above and below
const SIGNS = { video: '▶', photo: '▢', group: '▣' };

function picture(item) {
  const place = element('div', { className: 'picture', textContent: SIGNS[item.kind] });
  place.setAttribute('aria-hidden', 'true');
  if (item.kind !== 'video') {
    const image = element('img', { loading: 'lazy', alt: '', src: mediaAddress(item) });
    image.addEventListener('load', () => place.replaceChildren(image));
  }
  return place;
}

function highlightLine(item) {
  if (!item.duration || !item.highlights.length) return null;
  return element('div', { className: 'line' }, ...item.highlights.map((time) => {
    const mark = element('i');
    mark.style.left = `${Math.min(100, time / item.duration / 10)}%`;
    return mark;
  }));
}

function facts(item) {
  return [
    timeText(item.created),
    item.files > 1 ? countText(item.files, 'file', item.kind === 'video' ? 'chapters' : 'photos') : null,
    item.highlightCount ? countText(item.highlightCount, 'highlight', 'highlights') : null,
    item.score ? `score ${item.score}` : null,
    item.uploadStatus ? `upload status ${item.uploadStatus}` : null,
  ].filter(Boolean).join(' · ');
}

export class Rows {
  #items = [];
  #chosen = -1;
  #box;
  #space = element('div', { className: 'space' });
  #onChoose;

  constructor(box, onChoose) {
    this.#box = box;
    this.#onChoose = onChoose;
    box.append(this.#space);
    box.addEventListener('scroll', () => this.#draw(), { passive: true });
    box.addEventListener('keydown', (event) => this.#key(event));
    new ResizeObserver(() => this.#draw()).observe(box);
  }

  show(items) {
    const chosen = this.#items[this.#chosen];
    this.#items = items;
    this.#chosen = chosen ? items.indexOf(chosen) : -1;
    this.#space.style.height = `${items.length * ROW}px`;
    this.#draw();
  }

  #draw() {
    const first = Math.max(0, Math.floor(this.#box.scrollTop / ROW) - BEYOND);
    const last = Math.min(this.#items.length,
      Math.ceil((this.#box.scrollTop + this.#box.clientHeight) / ROW) + BEYOND);
    const kept = new Map([...this.#space.children].map((row) => [row.item, row]));
    const rows = [];
    for (let i = first; i < last; i += 1) {
      const item = this.#items[i];
      const row = kept.get(item) ?? this.#row(item);
      row.style.top = `${i * ROW}px`;
      row.id = `row-${i}`;
      row.setAttribute('aria-selected', String(i === this.#chosen));
      row.setAttribute('aria-posinset', String(i + 1));
      row.setAttribute('aria-setsize', String(this.#items.length));
      rows.push(row);
    }
    this.#space.replaceChildren(...rows);
    this.#box.setAttribute('aria-activedescendant', this.#chosen >= 0 ? `row-${this.#chosen}` : '');
  }

  #row(item) {
    const row = element('div', { className: 'row', attributes: { role: 'option' } },
      picture(item),
      element('div', {},
        element('div', { className: 'name', textContent: item.path }),
        element('div', { className: 'soft', textContent: facts(item) }),
        highlightLine(item)),
      element('div', { className: 'right' },
        element('div', { textContent: sizeText(item.size) }),
        element('div', { className: 'soft', textContent: item.duration ? durationText(item.duration) : '' })));
    row.item = item;
    row.addEventListener('click', () => this.#choose(this.#items.indexOf(item)));
    return row;
  }

  #choose(index) {
    if (index < 0 || index >= this.#items.length) return;
    this.#chosen = index;
    const top = index * ROW;
    if (top < this.#box.scrollTop) this.#box.scrollTop = top;
    const bottom = top + ROW - this.#box.clientHeight;
    if (bottom > this.#box.scrollTop) this.#box.scrollTop = bottom;
    this.#draw();
    this.#onChoose(this.#items[index]);
  }

  #key(event) {
    const page = Math.max(1, Math.floor(this.#box.clientHeight / ROW) - 1);
    const steps = { ArrowDown: 1, ArrowUp: -1, PageDown: page, PageUp: -page,
      Home: -this.#items.length, End: this.#items.length };
    const step = steps[event.key];
    if (step === undefined) return;
    event.preventDefault();
    this.#choose(Math.min(this.#items.length - 1, Math.max(0, this.#chosen + step)));
  }
}
