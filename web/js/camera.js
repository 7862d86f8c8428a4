// Asks the camera. Every failure is a CameraError with a sentence that says what to do.

export class CameraError extends Error {}

const REASONS = {
  400: 'The camera refused the query.',
  404: 'The camera knows no such file, or its card has no identity: is a card in it?',
  500: 'The media database does not answer, or the answer is too long: is the database running?',
  501: 'The camera has no such data for this kind of file.',
  503: 'The media database is not ready yet: try again in a moment.',
};

// Addresses are relative: the page may lie below any folder of a server.
export function address(program, query) {
  return `${program}?${new URLSearchParams(query)}`;
}

// Bytes that are no UTF-8 become the replacement character.
async function ask(url, signal) {
  let answer;
  try {
    answer = await fetch(url, { signal, cache: 'no-store' });
  } catch (error) {
    if (error.name === 'AbortError') throw error;
    throw new CameraError('The camera cannot be reached: is it on, and its network joined?');
  }
  if (!answer.ok) {
    throw new CameraError(REASONS[answer.status] ?? `The camera answered with ${answer.status}.`);
  }
  const text = await answer.text();
  try {
    return { text, value: JSON.parse(text) };
  } catch {
    throw new CameraError('The camera answered with something that is no JSON.');
  }
}

const PIECE = 200;
const FIELDS = 'n,mod,cre,s,us,cl,dur,mahs,hc,hi,g';

export async function listPiece(start, signal) {
  return (await ask(address('pagedlist', { start, count: PIECE, fields: FIELDS }), signal)).value;
}

export function metadata(path, signal) {
  return ask(address('metadata', { t: 'v5info', p: path }), signal);
}

export async function writeUploadStatus(path, status) {
  return (await ask(address('metadata', { t: 'upload', p: path, status }))).value.us;
}

export function mediaAddress(item) {
  return `media/${encodeURIComponent(item.folder)}/${encodeURIComponent(item.name)}`;
}
