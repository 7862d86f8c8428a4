// Where items lie: in lines of one or of several beside each other, below a heading for each directory.

const HEADING = 34;
const ROW = 64;
const TILE = { width: 172, height: 196 };

// Returns { lines, lineOf, height, columns, lineHeight }: a line is { top, height, first, end } of items, or
// a heading { top, height, folder }; lineOf tells each item's line.
export function layOut(items, { width, grid, headings }) {
  const columns = grid ? Math.max(1, Math.floor(width / TILE.width)) : 1;
  const lineHeight = grid ? TILE.height : ROW;
  const lines = [];
  const lineOf = [];
  let top = 0;
  for (let i = 0; i < items.length;) {
    const { folder } = items[i];
    if (headings && (i === 0 || folder !== items[i - 1].folder)) {
      lines.push({ top, height: HEADING, folder });
      top += HEADING;
    }
    const first = i;
    while (i < items.length && i < first + columns && (!headings || items[i].folder === folder)) {
      lineOf.push(lines.length);
      i += 1;
    }
    lines.push({ top, height: lineHeight, first, end: i });
    top += lineHeight;
  }
  return { lines, lineOf, height: top, columns, lineHeight };
}

// The index of the last line that starts at or above a position.
export function lineAt(lines, position) {
  let low = 0;
  let high = lines.length;
  while (low < high) {
    const middle = (low + high) >> 1;
    if (lines[middle].top <= position) low = middle + 1;
    else high = middle;
  }
  return Math.max(0, low - 1);
}

// The item above (by -1) or below (by 1) another one.
export function neighbour({ lines, lineOf }, index, by) {
  const column = index - lines[lineOf[index]].first;
  let line = lineOf[index] + by;
  while (lines[line]?.folder !== undefined) line += by;
  return lines[line] ? Math.min(lines[line].first + column, lines[line].end - 1) : index;
}
