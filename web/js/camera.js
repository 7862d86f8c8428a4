// Asks the camera. Every failure is a CameraError with a sentence that says what to do.

import { byteString, escaped, text } from './bytes.js';

export class CameraError extends Error {
  constructor(message, status) {
    super(message);
    this.status = status;
  }
}

const REASONS = {
  400: 'The camera refused the query. This page and the camera’s programs may be of different versions: '
    + 'load the page again.',
  404: 'The card has no identity, or the file is gone. Is a card in the camera, and can it be written?',
  500: 'The media database does not answer. Is the database running? The page goes on by itself when it '
    + 'does; if it does not, restart the camera.',
  501: 'The camera has no such data for this kind of file.',
  503: 'The media database is not ready yet. Wait a moment; the page goes on by itself.',
};

// Addresses are relative: the page may lie below any folder of a server.
export function address(program, query) {
  return `${program}?${Object.entries(query).map(([key, value]) => `${key}=${escaped(value)}`).join('&')}`;
}

// Resolves to the answer's text and its value, of which all strings are byte strings.
async function ask(url, signal) {
  let answer;
  let bytes;
  try {
    answer = await fetch(url, { signal, cache: 'no-store' });
    bytes = byteString(new Uint8Array(await answer.arrayBuffer()));
  } catch (error) {
    if (error.name === 'AbortError') throw error;
    throw new CameraError('The camera cannot be reached. Is it on, and is this device in its network? The '
      + 'page goes on by itself when it is.');
  }
  if (!answer.ok) {
    throw new CameraError(REASONS[answer.status] ?? `The camera answered with ${answer.status}.`,
      answer.status);
  }
  try {
    return { text: text(bytes), value: JSON.parse(bytes) };
  } catch {
    throw new CameraError('The camera answered with something that is no JSON: is this its address?');
  }
}

async function list(query) {
  return (await ask(address('pagedlist', query))).value;
}

// The card and the database's session, with as few files as can be.
export function cardState() {
  return list({ count: 1, fields: 'n' });
}

// A piece is too long where files have many highlights or missing members: smaller ones follow, and at
// last a file without these.
const PIECES = [
  { count: 200, fields: 'n,cre,s,us,dur,mahs,hc,hi,g' },
  { count: 20, fields: 'n,cre,s,us,dur,mahs,hc,hi,g' },
  { count: 1, fields: 'n,cre,s,us,dur,mahs,hc,hi,g' },
  { count: 1, fields: 'n,cre,s,us,dur,mahs,hc' },
];

export async function listPiece(start) {
  for (const piece of PIECES) {
    try {
      return await list({ start, ...piece });
    } catch (error) {
      if (error.status !== 500) throw error;
      await cardState(); // fails where the database does
    }
  }
  throw new CameraError(`The list is too long at item ${start}, however few are asked for. `
    + '/medialist?fields=n may tell more.');
}

export function metadata(path, signal) {
  return ask(address('metadata', { t: 'v5info', p: path }), signal);
}

export async function writeUploadStatus(path, status) {
  return Number((await ask(address('metadata', { t: 'upload', p: path, status }))).value.us);
}

export function mediaAddress(path) {
  return `media/${escaped(path)}`;
}
