// The card's files as items, read piece by piece. Numbers that the camera writes as strings become
// numbers here, once.

import { listPiece } from './camera.js';

const number = (text) => Number(text ?? 0);

function kindOf(file) {
  if (file.g !== undefined) return 'group';
  return /\.(MP4|360)$/i.test(file.n) ? 'video' : 'photo';
}

// Of a photo group, how many photos it has.
function filesOf(file) {
  return file.g === undefined ? 1 : number(file.l) - number(file.b) + 1 - file.m.length;
}

function itemOf(folder, file) {
  return {
    folder,
    name: file.n,
    path: `${folder}/${file.n}`,
    kind: kindOf(file),
    files: filesOf(file),
    created: number(file.cre),
    size: number(file.s),
    duration: number(file.dur),
    score: number(file.mahs),
    uploadStatus: number(file.us),
    highlights: file.hi ?? [],
    highlightCount: number(file.hc ?? Object.keys(file.ghc ?? {}).length),
  };
}

// Files of one recording, VXMF0012, VX020012 and so on, or VH010012, VH020012, are one item that holds
// its chapters; highlights count from its start.
function chapterKey(item) {
  const match = /^V([A-Z])(?:MF|\d\d)(\d{4})\.(MP4|360)$/i.exec(item.name);
  return item.kind === 'video' && match ? `${item.folder}/${match[1]}${match[2]}.${match[3]}` : null;
}

export class Card {
  items = [];
  session = null;
  total = 0;
  complete = false;
  #recordings = new Map();

  // Reads the whole card; changed() is called after each piece. Resolves to false where the card
  // changed meanwhile: indices of the earlier pieces mean something else then.
  async read(signal, changed) {
    for (let start = 0; start !== undefined;) {
      const piece = await listPiece(start, signal);
      if (this.session !== null && piece.session !== this.session) return false;
      this.session = piece.session;
      this.total = number(piece.total);
      for (const { d, fs } of piece.media) fs.forEach((file) => this.#add(itemOf(d, file)));
      start = piece.next;
      this.complete = start === undefined;
      changed();
    }
    return true;
  }

  #add(item) {
    const key = chapterKey(item);
    const recording = key && this.#recordings.get(key);
    if (recording) {
      recording.chapters.push(item);
      recording.highlights.push(...item.highlights.map((time) => time + 1000 * recording.duration));
      recording.files += 1;
      recording.size += item.size;
      recording.duration += item.duration;
      recording.highlightCount += item.highlightCount;
      return;
    }
    const entry = { ...item, highlights: [...item.highlights], chapters: [item] };
    if (key) this.#recordings.set(key, entry);
    this.items.push(entry);
  }
}
