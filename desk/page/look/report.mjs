// What a look is, and what somebody ought to know about it, in words.
import { nameOf, spell, spellValue } from '../words.mjs';

const element = (id) => document.querySelector(`#${id}`);

const WEIGHTS = { fatal: 'Fatal', trap: 'Trap', note: 'Note' };

function itemOf({ weight, words, advice }) {
    const item = document.createElement('li');
    item.className = weight;
    const label = document.createElement('strong');
    label.textContent = WEIGHTS[weight];
    const sentence = document.createElement('span');
    sentence.textContent = words;
    item.append(label, ' ', sentence);
    if (advice) {
        const help = document.createElement('em');
        help.textContent = advice;
        item.append(' ', help);
    }
    return item;
}

function inWords({ largest, mean }) {
    return `The stored text keeps the file's values within ${spell(largest)} steps of 8 bits, ` +
           `${spell(mean)} on average.`;
}

/**
 * @param {string} origin  The file or look that was judged.
 * @param {import('../../engine/tintwell.mjs').Check} check
 */
export function showCheck(origin, check) {
    element('look-checked').hidden = false;
    element('look-checked-name').textContent = origin;
    const verdict = element('look-verdict');
    verdict.textContent = check.works ? 'works' : 'would not work';
    verdict.className = check.works ? 'works' : 'refused';
    element('look-findings').replaceChildren(...check.findings.map(itemOf));
    element('look-precision').textContent = check.precision ? inWords(check.precision) : '';
}

/** @param {import('../app.mjs').LookInfo} look */
export function showFacts(look, { range }) {
    element('look-facts').hidden = false;
    element('look-name').textContent = nameOf(look);
    element('look-id').textContent = look.id === '0' ? 'unknown' : look.id;
    element('look-size').textContent = `${look.size} points an axis`;
    element('look-range').textContent = range.map(spellValue).join(' to ');
}
