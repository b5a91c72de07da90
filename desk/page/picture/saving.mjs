// Saves the graded picture at full size.
import { call, listen } from '../engine_client.mjs';
import { save } from '../files.mjs';
import { hold } from '../kept.mjs';
import { complain, say } from '../message.mjs';

/**
 * @param {HTMLButtonElement} button
 * @param {HTMLProgressElement} progress
 * @param {() => {look: number|null, amount: number}} gradeNow
 * @param {() => string} nameNow  The picture's, without its ending.
 */
export function startSaving(button, progress, gradeNow, nameNow) {
    function tell({ share }) {
        // When all is graded, how long it takes to pack it is not known.
        if (share < 1) progress.value = share;
        else progress.removeAttribute('value');
    }

    async function saveNow() {
        const fileName = `${nameNow()}-graded.png`;
        const grade = gradeNow();
        button.disabled = true;
        progress.value = 0;
        progress.hidden = false;
        hold('saving', grade.look === null ? [] : [grade.look]);
        try {
            const { bytes } = await call('savePicture', { grade });
            save(bytes, fileName, 'image/png');
            say(`Saved ${fileName}.`);
        } catch (error) {
            complain(`cannot save the picture: ${error.message}`);
        }
        hold('saving', []);
        progress.hidden = true;
        button.disabled = false;
    }

    listen('picture.progress', tell);
    button.addEventListener('click', saveNow);
}
