// One item as people see it: a picture, its name, what is worth knowing and its highlights in time.

import { mediaAddress } from './camera.js';
import { countText, durationText, element, sizeText, timeText } from './texts.js';

const SHAPES = {
  video: 'M4 5h24v16H4zM13 9v8l7-4z',
  photo: 'M4 5h24v16H4zM6 19l7-8 5 5 3-3 5 6M22 8.5a1.5 1.5 0 1 0 .1 0z',
  group: 'M8 9h20v13H8zM6 19H4V5h20v2M10 20l5-6 4 4 2-2 5 4',
};

function drawing(kind) {
  const svg = document.createElementNS('http://www.w3.org/2000/svg', 'svg');
  svg.setAttribute('viewBox', '0 0 32 26');
  const path = document.createElementNS('http://www.w3.org/2000/svg', 'path');
  path.setAttribute('d', SHAPES[kind]);
  svg.append(path);
  return svg;
}

// A drawing, and over it the picture where the file is one that the browser shows.
export function picture(kind, path) {
  const place = element('div', { className: 'picture', attributes: { 'aria-hidden': 'true' } }, drawing(kind));
  if (kind !== 'video') {
    const image = element('img', { loading: 'lazy', decoding: 'async', alt: '' });
    image.addEventListener('error', () => image.remove());
    image.src = mediaAddress(path);
    place.append(image);
  }
  return place;
}

export function highlightLine(item) {
  if (!item.duration || !item.highlights?.length) return null;
  return element('div', { className: 'line' }, ...item.highlights.map((time) => {
    const mark = element('i', { title: durationText(time / 1000) });
    mark.style.left = `${Math.min(100, time / item.duration / 10)}%`;
    return mark;
  }));
}

export function partsText(item) {
  if (item.count === 1) return null;
  return item.kind === 'video'
    ? `${item.count} chapters`
    : `${item.series}, ${countText(item.count, 'photo', 'photos')}`;
}

function facts(item) {
  return [
    timeText(item.created),
    partsText(item),
    item.highlightCount ? countText(item.highlightCount, 'highlight', 'highlights') : null,
    item.score ? `score ${item.score}` : null,
    item.uploadStatus ? `upload status ${item.uploadStatus}` : null,
  ].filter(Boolean).join(' · ');
}

// Tells whether a tile that was made still shows its item.
export function stamp(item) {
  return `${item.count} ${item.uploadStatus}`;
}

export function tile(item) {
  const size = [item.duration ? durationText(item.duration) : null, sizeText(item.size)].filter(Boolean);
  const more = facts(item);
  return element('div', {
    className: `tile ${item.count > 1 ? 'many' : ''}`,
    attributes: { role: 'option', 'aria-label': [item.label, item.kind, ...size, more].join(', ') },
  },
  element('div', { className: 'frame' }, picture(item.kind, item.path),
    item.count > 1
      ? element('span', { className: 'count', textContent: item.count.toLocaleString('en') })
      : null),
  element('div', { className: 'about' },
    element('div', { className: 'name', textContent: item.name }),
    element('div', { className: 'soft facts', textContent: more, title: more }),
    highlightLine(item)),
  element('div', { className: 'soft measures', textContent: size.join(' · ') }));
}
