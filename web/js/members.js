// What a tile of several files opens to: the chapters of a recording, the photos of a group.

import { picture } from './tile.js';
import { durationText, element } from './texts.js';

const AT_ONCE = 60;

function button(item, file, chosen, choose) {
  const made = element('button', { type: 'button', className: 'member' },
    picture(item.kind === 'video' ? 'video' : 'photo', file.path),
    element('span', { textContent: `${file.name}${file.marked ? ' ★' : ''}` }),
    file.duration ? element('span', { className: 'soft', textContent: durationText(file.duration) }) : null);
  if (file === chosen) made.setAttribute('aria-current', 'true');
  if (file.marked) made.setAttribute('aria-label', `${file.name}, highlight`);
  made.addEventListener('click', () => choose(file));
  return made;
}

// choose(file) is called when a member is chosen.
export function membersOf(item, chosen, choose) {
  const members = item.members();
  const place = element('div', { className: 'members',
    attributes: { role: 'group', 'aria-label': 'Members' } });
  const more = element('button', { type: 'button', className: 'more' });
  let shown = 0;
  const show = (end) => {
    more.remove();
    place.append(...members.slice(shown, end).map((file) => button(item, file, chosen, choose)));
    shown = end;
    if (shown < members.length) {
      more.textContent = `${members.length - shown} more`;
      place.append(more);
    }
  };
  more.addEventListener('click', () => {
    const last = place.children[shown - 1];
    show(shown + AT_ONCE);
    last.nextElementSibling.focus();
  });
  show(Math.max(AT_ONCE, members.indexOf(chosen) + 1));
  return place;
}
