// The card's files as items, read piece by piece. Numbers that the camera writes as strings become
// numbers here, once.

import { readable } from './bytes.js';
import { cardState, listPiece } from './camera.js';

const number = (text) => Number(text ?? 0);
const KINDS = { b: 'burst', t: 'time lapse', n: 'night lapse', c: 'series' };

function fileOf(folder, file) {
  return {
    name: readable(file.n),
    path: `${folder}/${file.n}`,
    duration: number(file.dur),
    size: number(file.s),
    uploadStatus: number(file.us),
    highlights: file.hi ?? [],
  };
}

// The members of a photo group have the name of its first one but for the number. Each is a file of
// which nothing else is known.
function membersOf(folder, file) {
  const missing = new Set(file.m.map(Number));
  const members = [];
  for (let i = number(file.b); i <= number(file.l); i += 1) {
    const name = `${file.n.slice(0, 4)}${String(i).padStart(4, '0')}${file.n.slice(8)}`;
    if (!missing.has(i)) {
      members.push({ name: readable(name), path: `${folder}/${name}`, marked: file.ghc?.[i] !== undefined });
    }
  }
  return members;
}

function itemOf(folder, file) {
  const group = file.g !== undefined;
  const own = fileOf(folder, file);
  const video = /\.(MP4|360)$/i.test(file.n);
  let members = null;
  return {
    ...own,
    folder: readable(folder),
    label: readable(own.path),
    kind: video ? 'video' : group ? 'group' : 'photo',
    series: KINDS[file.t],
    created: number(file.cre),
    score: number(file.mahs),
    highlightCount: number(file.hc ?? Object.keys(file.ghc ?? {}).length),
    count: group ? number(file.l) - number(file.b) + 1 - file.m.length : 1,
    // What it opens to; [] for a single file.
    members: () => (members ??= group ? membersOf(folder, file) : []),
  };
}

// Files of one recording, VXMF0012, VX020012 and so on, or VH010012, VH020012, share this.
function recordingKey(folder, name) {
  const match = /^V([A-Z])(?:MF|\d\d)(\d{4})\.(MP4|360)$/i.exec(name);
  return match && `${folder}/${match[1]}${match[2]}.${match[3]}`;
}

// Highlights of a further chapter count from the recording's start.
function addChapter(item, file) {
  if (item.count === 1) {
    const chapters = [{ ...item }];
    item.members = () => chapters;
    item.highlights = [...item.highlights];
  }
  item.members().push(file);
  item.highlights.push(...file.highlights.map((time) => time + 1000 * item.duration));
  item.count += 1;
  item.size += file.size;
  item.duration += file.duration;
}

export class CardChanged extends Error {}

export class Card {
  items = [];
  read = 0;
  total = 0;
  complete = false;
  #recordings = new Map();
  #state = null;

  // Indices of earlier pieces mean something else when the card has changed.
  #check({ id, session, total }) {
    const state = `${id} ${session} ${total}`;
    this.#state ??= state;
    if (state !== this.#state) throw new CardChanged();
  }

  // Whether it still is the card that was read; throws CardChanged where it is not.
  async check() {
    this.#check(await cardState());
  }

  // Reads the next piece.
  async readMore() {
    const piece = await listPiece(this.read);
    this.#check(piece);
    this.total = number(piece.total);
    for (const { d, fs } of piece.media) fs.forEach((file) => this.#add(d, file));
    this.complete = piece.next === undefined;
    this.read = this.complete ? this.total : number(piece.next);
  }

  #add(folder, file) {
    const key = recordingKey(folder, file.n);
    const recording = key && this.#recordings.get(key);
    if (recording) {
      addChapter(recording, fileOf(folder, file));
      recording.highlightCount += number(file.hc);
      return;
    }
    const item = itemOf(folder, file);
    if (key) this.#recordings.set(key, item);
    this.items.push(item);
  }
}
