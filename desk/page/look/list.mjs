// The looks of a file that holds several.
import { app } from '../app.mjs';
import { counted, nameOf } from '../words.mjs';

const element = (id) => document.querySelector(`#${id}`);

let buttons = new Map();

function part(className, text) {
    const span = document.createElement('span');
    span.className = className;
    span.textContent = text;
    return span;
}

function partsOf(look) {
    return [
        part('name', nameOf(look)), ' ',
        part('id', look.id === '0' ? 'no match' : look.id), ' ',
        part('size', counted(look.size, 'point')), ' ',
        part('count', counted(look.count, 'time')),
    ];
}

function buttonOf(look, use) {
    const button = document.createElement('button');
    button.type = 'button';
    button.append(...partsOf(look));
    button.addEventListener('click', () => use(look));
    buttons.set(look.key, button);
    return button;
}

/** Texts without a LUT lie in projects too; they are told, and cannot be used. */
function lineOf({ kind, steps, count }) {
    const what = kind === 'pattern' ? `calibration pattern, ${steps} steps` : 'no look';
    return part('unusable', `${what}, ${counted(count, 'time')}`);
}

function markUsed() {
    for (const [key, button] of buttons)
        button.setAttribute('aria-pressed', String(key === app.look?.key));
}

function restOf({ unreadable, beyond }) {
    const rest = unreadable.map(({ words }) => `Unreadable: ${words}.`);
    if (beyond) rest.push(`And ${counted(beyond, 'text')} of further looks.`);
    return rest.join(' ');
}

/**
 * @param {object} opened  What the worker's openLook gave.
 * @param {(look: object) => void} use
 */
export function showFound(opened, use) {
    const { looks } = opened;
    const rest = restOf(opened);
    buttons = new Map();
    element('look-found').hidden = looks.length < 2 && !rest;
    element('look-list').replaceChildren(...looks.map((look) => {
        const item = document.createElement('li');
        item.append(look.kind === 'lut' ? buttonOf(look, use) : lineOf(look));
        return item;
    }));
    element('look-unread').textContent = rest;
    markUsed();
}

app.addEventListener('look', markUsed);
