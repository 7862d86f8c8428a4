// Values as people read them, and elements with texts in them. Texts of the card are only ever set as
// text: nothing in a name is markup.

export function sizeText(bytes) {
  const units = ['B', 'kB', 'MB', 'GB', 'TB'];
  let unit = 0;
  for (; bytes >= 1000 && unit < units.length - 1; unit += 1) bytes /= 1000;
  return `${bytes < 10 && unit > 0 ? bytes.toFixed(1) : Math.round(bytes)} ${units[unit]}`;
}

export function durationText(duration) {
  const seconds = Math.round(duration);
  const parts = [Math.floor(seconds / 3600), Math.floor(seconds / 60) % 60, seconds % 60];
  return parts.slice(parts[0] ? 0 : 1).map((part, i) => (i ? String(part).padStart(2, '0') : part)).join(':');
}

export function timeText(seconds) {
  return seconds ? new Date(seconds * 1000).toISOString().slice(0, 16).replace('T', ' ') : 'no date';
}

export function countText(count, one, many) {
  return `${count.toLocaleString('en')} ${count === 1 ? one : many}`;
}

export function element(tag, properties = {}, ...children) {
  const made = document.createElement(tag);
  const { attributes = {}, ...rest } = properties;
  Object.assign(made, rest);
  Object.entries(attributes).forEach(([name, value]) => made.setAttribute(name, value));
  made.append(...children.filter((child) => child !== null));
  return made;
}
