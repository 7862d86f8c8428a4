// Joins the parts: reads as much of the card as is wanted, shows what the form chooses, tells how it goes.

import { Card, CardChanged } from './card.js';
import { CameraError } from './camera.js';
import { choose, wishOf } from './choice.js';
import { Details } from './details.js';
import { Rows } from './rows.js';
import { countText } from './texts.js';

const AGAIN = 3000; // milliseconds until the camera is asked again after a failure
const WATCH = 5000; // between two looks at whether the card has changed
const REDRAW = 250; // between two pictures of what was read
const TOLD = 20000; // that a change of the card stays told
const CHANGED = 'The card has changed; the list starts anew.';

const at = (id) => document.getElementById(id);
const form = at('filter');
const list = at('list');
let card = new Card();
let wish = wishOf(form);
let shown = []; // items
let shownAt = 0;
let wake = () => {};

const details = new Details(at('details'), { close: () => list.focus(), write: show });
const rows = new Rows(list, { choose: (item) => details.show(item), move: () => wake() });

function sleep(time) {
  return new Promise((resolve) => {
    const timer = setTimeout(() => resolve(true), time);
    wake = () => { clearTimeout(timer); resolve(false); };
  });
}

// Whatever hinders is told until it no longer does.
function tell(text, trouble) {
  const notice = at('notice');
  if (notice.textContent !== text) notice.textContent = text;
  notice.hidden = !text;
  notice.classList.toggle('trouble', Boolean(trouble));
}

function stateText() {
  const { items, total, read, complete } = card;
  const found = wish.filtered ? `${shown.length.toLocaleString('en')} of ` : '';
  if (complete) return `${found}${countText(items.length, 'item', 'items')}`;
  if (!total) return 'Reading the card …';
  const part = `${found}${read.toLocaleString('en')} of ${total.toLocaleString('en')} read`;
  return wantsMore() ? `${part}, reading …` : `${part}, more as you scroll`;
}

// A screen reader waits with what it says until the reading has ended.
function showState() {
  const text = stateText();
  at('state').setAttribute('aria-busy', String(wantsMore()));
  if (at('state').textContent !== text) at('state').textContent = text;
}

function show() {
  shownAt = Date.now();
  shown = choose(card.items, wish);
  const unread = wish.needsAll ? 0 : card.total - card.read;
  rows.show(shown, { grid: at('grid').checked, headings: wish.byFolder, unread });
  showState();
  const nothing = card.complete && shown.length === 0;
  at('nothing').hidden = !nothing;
  at('nothing-text').textContent = card.items.length
    ? 'No file matches the filters.'
    : 'The card is empty. What the camera records appears here.';
  at('clear').hidden = !card.items.length;
}

function wantsMore() {
  return !card.complete && (wish.needsAll || rows.wantsMore());
}

async function readAndWatch() {
  for (;;) {
    if (wantsMore()) {
      showState();
      await card.readMore();
      if (!wantsMore() || Date.now() - shownAt > REDRAW) show();
    } else if (await sleep(WATCH) && !document.hidden) {
      await card.check();
    } else {
      continue;
    }
    if (at('notice').classList.contains('trouble')) tell('');
  }
}

// Goes on where it stopped when the camera answers again; starts anew when its card is another one.
async function follow() {
  for (;;) {
    try {
      await readAndWatch();
    } catch (error) {
      if (error instanceof CardChanged) {
        card = new Card();
        details.hide();
        rows.startAnew();
        tell(CHANGED);
        setTimeout(() => { if (at('notice').textContent === CHANGED) tell(''); }, TOLD);
        show();
      } else if (error instanceof CameraError) {
        tell(error.message, true);
        await new Promise((resolve) => { setTimeout(resolve, AGAIN); });
      } else {
        throw error;
      }
    }
  }
}

function wishAgain() {
  wish = wishOf(form);
  show();
  wake();
}

form.addEventListener('input', wishAgain);
form.addEventListener('reset', () => setTimeout(wishAgain));
form.addEventListener('submit', (event) => event.preventDefault());
document.addEventListener('keydown', (event) => {
  if (event.key === 'Escape') details.close();
  if (event.key === '/' && !/^(INPUT|SELECT)$/.test(event.target.tagName)) {
    event.preventDefault();
    at('choices').open = true;
    form.elements.text.focus();
  }
});
if (matchMedia('(max-width: 640px)').matches) at('choices').open = false;
follow();
