// Names of the card are bytes, and not all are UTF-8. They are kept as strings of which each character
// is one byte, so that they go back to the camera as they came.

const decoder = new TextDecoder();
const LARGEST = 8192; // arguments of one call

export function byteString(bytes) {
  let text = '';
  for (let i = 0; i < bytes.length; i += LARGEST) {
    text += String.fromCharCode(...bytes.subarray(i, i + LARGEST));
  }
  return text;
}

export function text(byteText) {
  return decoder.decode(Uint8Array.from(byteText, (byte) => byte.charCodeAt(0)));
}

// A name as people read it: bytes that are no UTF-8 become the replacement character, control characters
// and those that turn the direction of writing become visible.
export function readable(byteText) {
  return text(byteText)
    .replace(/[\0-\x1f]/g, (control) => String.fromCharCode(0x2400 + control.charCodeAt(0)))
    .replace(/[\x7f-\x9f\u200e\u200f\u2028-\u202e\u2066-\u2069]/g, '\ufffd');
}

// For an address.
export function escaped(byteText) {
  return String(byteText).replace(/[^\w.,/-]/g,
    (byte) => `%${byte.charCodeAt(0).toString(16).padStart(2, '0').toUpperCase()}`);
}
