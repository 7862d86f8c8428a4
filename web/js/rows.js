// A list of any length of which only the lines in sight are there.

import { lineAt, layOut, neighbour } from './lines.js';
import { stamp, tile } from './tile.js';
import { element } from './texts.js';

const BEYOND = 400; // pixels kept ready above and below

export class Rows {
  #items = [];
  #options = { grid: false, headings: true, unread: 0 };
  #layout = layOut([], { width: 0 });
  #chosen = -1;
  #toEnd = false;
  #box;
  #space = element('div', { className: 'space', attributes: { role: 'presentation' } });
  #on;

  // on: { choose(item), move() }, called when an item is chosen and when others come in sight.
  constructor(box, on) {
    this.#box = box;
    this.#on = on;
    box.append(this.#space);
    box.addEventListener('scroll', () => { this.#draw(); on.move(); }, { passive: true });
    box.addEventListener('keydown', (event) => this.#key(event));
    new ResizeObserver(() => this.#lay()).observe(box);
  }

  // options: { grid, headings, unread }, with unread how many are still to be read.
  show(items, options) {
    const chosen = this.#items[this.#chosen];
    this.#items = items;
    this.#options = options;
    this.#chosen = chosen ? items.indexOf(chosen) : -1;
    this.#lay();
    if (this.#toEnd && options.unread === 0) this.#choose(items.length - 1);
  }

  // Forgets what was chosen.
  startAnew() {
    this.#toEnd = false;
    this.#chosen = -1;
    this.#box.scrollTop = 0;
  }

  // Whether items that are not read yet are wanted.
  wantsMore() {
    return this.#toEnd || this.#box.scrollTop + 2 * this.#box.clientHeight > this.#layout.height;
  }

  #lay() {
    const { clientWidth: width } = this.#box;
    this.#layout = layOut(this.#items, { width, ...this.#options });
    const { height, columns, lineHeight } = this.#layout;
    this.#space.style.height = `${height + Math.ceil(this.#options.unread / columns) * lineHeight}px`;
    this.#box.classList.toggle('grid', Boolean(this.#options.grid));
    this.#draw();
    this.#on.move();
  }

  #draw() {
    const { lines, columns } = this.#layout;
    const { scrollTop, clientHeight } = this.#box;
    const had = new Map([...this.#space.children].map((child) => [child.key, child]));
    const drawn = new Set();
    const place = (key, make, line, column, of) => {
      let child = had.get(key);
      if (!child || (child.stamp && child.stamp !== stamp(key))) {
        child = make();
        child.key = key;
        this.#space.append(child);
      }
      child.style.top = `${line.top}px`;
      child.style.height = `${line.height}px`;
      child.style.left = `${100 * column / of}%`;
      child.style.width = `${100 / of}%`;
      drawn.add(child);
      return child;
    };
    for (let i = lineAt(lines, scrollTop - BEYOND);
      i < lines.length && lines[i].top < scrollTop + clientHeight + BEYOND; i += 1) {
      const line = lines[i];
      if (line.folder !== undefined) {
        place(`/${line.folder}/${line.top}`, () => this.#heading(line.folder), line, 0, 1);
        continue;
      }
      for (let index = line.first; index < line.end; index += 1) {
        const item = this.#items[index];
        const option = place(item, () => this.#option(item), line, index - line.first, columns);
        option.id = `item-${index}`;
        option.setAttribute('aria-selected', String(index === this.#chosen));
        option.setAttribute('aria-posinset', String(index + 1));
        option.setAttribute('aria-setsize', String(this.#options.unread ? -1 : this.#items.length));
      }
    }
    for (const child of [...this.#space.children]) if (!drawn.has(child)) child.remove();
    if (this.#chosen < 0) this.#box.removeAttribute('aria-activedescendant');
    else this.#box.setAttribute('aria-activedescendant', `item-${this.#chosen}`);
  }

  #heading(folder) {
    return element('div', { className: 'folder', textContent: folder, attributes: { role: 'presentation' } });
  }

  #option(item) {
    const option = tile(item);
    option.stamp = stamp(item);
    option.addEventListener('click', () => this.#choose(this.#items.indexOf(item)));
    return option;
  }

  #choose(index) {
    if (index < 0 || index >= this.#items.length) return;
    this.#toEnd = false;
    this.#chosen = index;
    const line = this.#layout.lines[this.#layout.lineOf[index]];
    const top = index === 0 ? 0 : line.top;
    if (top < this.#box.scrollTop) this.#box.scrollTop = top;
    const below = line.top + line.height - this.#box.clientHeight;
    if (below > this.#box.scrollTop) this.#box.scrollTop = below;
    this.#draw();
    this.#on.choose(this.#items[index]);
  }

  // Where a key leads from the chosen item.
  #target(key) {
    const last = this.#items.length - 1;
    if (key === 'Home') return 0;
    if (key === 'End') return last;
    if (this.#chosen < 0) return 0;
    if (key === 'ArrowRight') return Math.min(last, this.#chosen + 1);
    if (key === 'ArrowLeft') return Math.max(0, this.#chosen - 1);
    let index = this.#chosen;
    const lines = key.startsWith('Page') ? Math.floor(this.#box.clientHeight / this.#layout.lineHeight) : 1;
    for (let i = 0; i < lines; i += 1) index = neighbour(this.#layout, index, key.endsWith('Up') ? -1 : 1);
    return index;
  }

  #key(event) {
    if (!/^(Arrow|Page)|^(Home|End)$/.test(event.key) || event.ctrlKey || event.altKey || event.metaKey) return;
    event.preventDefault();
    this.#toEnd = event.key === 'End' && this.#options.unread > 0;
    if (this.#toEnd) this.#on.move();
    else this.#choose(this.#target(event.key));
  }
}
