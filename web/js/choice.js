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

export function choose(items, form) {
  const wanted = Object.fromEntries(new FormData(form));
  const text = wanted.text.trim().toLowerCase();
  const from = day(wanted.from, false) ?? -Infinity;
  const to = day(wanted.to, true) ?? Infinity;
  const chosen = items.filter((item) =>
    (!text || item.path.toLowerCase().includes(text))
    && (!wanted.kind || item.kind === wanted.kind)
    && (!wanted.upload || (item.uploadStatus === 0) === (wanted.upload === 'open'))
    && (!wanted.marked || item.highlightCount > 0)
    && item.created >= from && item.created <= to);
  const order = ORDERS[wanted.order];
  return order ? chosen.sort(order) : chosen;
}
