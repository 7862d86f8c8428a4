// Joins the parts: reads the card, shows what the form chooses, tells how it goes.

import { Card } from './card.js';
import { CameraError } from './camera.js';
import { choose } from './choice.js';
import { Details } from './details.js';
import { Rows } from './rows.js';
import { countText } from './texts.js';

const AGAIN = 3000; // milliseconds until the camera is asked again after a failure
const form = document.getElementById('filter');
const state = document.getElementById('state');
const details = new Details(document.getElementById('details'));
const rows = new Rows(document.getElementById('list'), (item) => details.show(item));
let card = new Card();

function say(text, trouble = false) {
  state.textContent = text;
  state.classList.toggle('trouble', trouble);
}

function show() {
  const shown = choose(card.items, form);
  rows.show(shown);
  const part = shown.length === card.items.length ? '' : `${shown.length.toLocaleString('en')} of `;
  say(card.complete && !card.items.length
    ? 'The card is empty.'
    : `${part}${countText(card.items.length, 'item', 'items')}${card.complete ? '' : ', reading …'}`);
}

const pause = () => new Promise((resolve) => { setTimeout(resolve, AGAIN); });

// The card is read anew where it changed while it was read.
async function readCard() {
  let changed = false;
  for (;;) {
    card = new Card();
    try {
      if (changed) say('The card has changed; it is read anew.', true);
      if (await card.read(undefined, show)) return;
      changed = true;
      details.hide();
    } catch (error) {
      if (!(error instanceof CameraError)) throw error;
      say(error.message, true);
      await pause();
    }
  }
}

form.addEventListener('input', show);
form.addEventListener('submit', (event) => event.preventDefault());
document.addEventListener('keydown', (event) => {
  if (event.key === 'Escape') details.hide();
});
readCard();
