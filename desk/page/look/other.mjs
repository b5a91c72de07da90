// A second look beside the one in use.
import { app } from '../app.mjs';
import { call } from '../engine_client.mjs';
import { bytesOf, onFile } from '../files.mjs';
import { hold } from '../kept.mjs';
import { say } from '../message.mjs';
import { nameOf, spell } from '../words.mjs';
import { showOtherAxis } from './curves.mjs';

const input = document.querySelector('#other-file');
const difference = document.querySelector('#difference');
const remove = document.querySelector('#other-remove');

let other = null;

async function take(file) {
    say(`Reading ${file.name}.`);
    const bytes = await bytesOf(file);
    const { looks, refused } = await call('openLook', { bytes, name: file.name }, [bytes.buffer]);
    const usable = looks.filter(({ kind }) => kind === 'lut');
    if (refused) throw new Error(refused.findings[0].words);
    if (usable.length > 1) {
        await call('dropLooks', { keys: looks.map(({ key }) => key) });
        throw new Error(`it holds ${usable.length} looks; open it as the look file, and save ` +
                        'the one to compare with as a .cube file');
    }
    [other] = usable;
    hold('other', looks.map(({ key }) => key));
    const { axis } = await call('describeLook', { key: other.key });
    showOtherAxis(other, axis);
    remove.hidden = false;
    await compareAgain();
    say('');
}

function forget() {
    other = null;
    hold('other', []);
    showOtherAxis(null);
    input.value = '';
    difference.textContent = '';
    remove.hidden = true;
    input.focus();
}

function inWords({ largest, mean }, name) {
    if (largest === 0) return `${name} does the same to all colours.`;
    return `${name} differs by at most ${spell(largest)} steps of 8 bits, ` +
           `${spell(mean)} on average, over all colours.`;
}

/** When the look in use, or the second one, is another one. */
export async function compareAgain() {
    if (!other || !app.look) return;
    const [one, two] = [app.look, other];
    const found = await call('compareLooks', { one: one.key, other: two.key });
    if (app.look === one && other === two) difference.textContent = inWords(found, nameOf(two));
}

export function startOther() {
    onFile(input, document.querySelector('#other'), take);
    remove.addEventListener('click', forget);
}
