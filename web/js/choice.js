// Which items are shown, and in which order.

const ORDERS = {
  newest: (a, b) => b.created - a.created,
  oldest: (a, b) => a.created - b.created,
  largest: (a, b) => b.size - a.size,
  longest: (a, b) => b.duration - a.duration,
  score: (a, b) => b.score - a.score,
};

// A day of the form as seconds since 1970; the camera's times have no zone.
function day(text, end) {
  return text ? Date.parse(`${text}T${end ? '23:59:59' : '00:00:00'}Z`) / 1000 : null;
}

function isKind(item, kind) {
  return kind === item.kind || kind === item.series
    || (kind === 'chapters' && item.kind === 'video' && item.count > 1);
}

// What the form asks for. byFolder: in the card's order; needsAll: what is chosen is known only when the
// whole card is.
export function wishOf(form) {
  const wish = Object.fromEntries(new FormData(form));
  wish.text = wish.text.trim().toLowerCase();
  wish.byFolder = wish.order === 'card';
  wish.filtered = Boolean(wish.text || wish.kind || wish.upload || wish.marked || wish.from || wish.to);
  wish.needsAll = wish.filtered || !wish.byFolder;
  return wish;
}

export function choose(items, wish) {
  if (!wish.needsAll) return items;
  const from = day(wish.from, false) ?? -Infinity;
  const to = day(wish.to, true) ?? Infinity;
  const chosen = items.filter((item) =>
    (!wish.text || item.label.toLowerCase().includes(wish.text))
    && (!wish.kind || isKind(item, wish.kind))
    && (!wish.upload || (item.uploadStatus === 0) === (wish.upload === 'open'))
    && (!wish.marked || item.highlightCount > 0)
    && item.created >= from && item.created <= to);
  return wish.byFolder ? chosen : chosen.sort(ORDERS[wish.order]);
}
