// A look as a .cube file and as a TWLUT text.
import { call } from './engine_client.mjs';
import { save } from './files.mjs';
import { complain, say } from './message.mjs';
import { fileNameOf } from './words.mjs';

/** @param {import('./app.mjs').LookInfo} look */
export async function saveCube(look) {
    try {
        const { bytes } = await call('cubeOf', { key: look.key });
        const fileName = fileNameOf(look, '.cube');
        save(bytes, fileName);
        say(`Saved ${fileName}.`);
    } catch (error) {
        complain(`cannot save the look: ${error.message}`);
    }
}

async function copied(text) {
    try {
        await navigator.clipboard.writeText(text);
        return true;
    } catch {
        return false;
    }
}

/**
 * Copies the text of a look; where the browser refuses, shows it selected in `box`.
 * @param {import('./app.mjs').LookInfo} look
 * @param {HTMLElement} box  Holds a textarea.
 */
export async function copyText(look, box) {
    try {
        const { text } = await call('textOf', { key: look.key });
        box.hidden = await copied(text);
        if (box.hidden) {
            say('Copied the TWLUT text.');
            return;
        }
        const area = box.querySelector('textarea');
        area.value = text;
        area.focus();
        area.select();
        say('The browser does not let a page copy here: the text is selected, copy it yourself.');
    } catch (error) {
        complain(`cannot copy the look: ${error.message}`);
    }
}
