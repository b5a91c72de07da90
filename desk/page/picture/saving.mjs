// Saves the graded picture at full size.
import { call, listen } from '../engine_client.mjs';
import { save } from '../files.mjs';
import { hold } from '../kept.mjs';
import { complain, say } from '../message.mjs';

/**
 * @param {HTMLButtonElement} button
 * @param {HTMLProgressElement} progress
 * @param {() => object} wishNow  The picture and the grade, as the worker takes them.
 * @param {() => string} nameNow  The picture's, without its ending.
 */
export function startSaving(button, progress, wishNow, nameNow) {
    async function saveNow() {
        const fileName = `${nameNow()}-graded.png`;
        const wish = wishNow();
        const { look } = wish.grade;
        const hadFocus = document.activeElement === button;
        button.disabled = true;
        progress.value = 0;
        progress.hidden = false;
        hold('saving', look === null ? [] : [look]);
        try {
            const { file } = await call('savePicture', wish);
            save(file, fileName, 'image/png');
            say(`Saved ${fileName}.`);
        } catch (error) {
            complain(`cannot save the picture: ${error.message}`);
        }
        hold('saving', []);
        progress.hidden = true;
        button.disabled = false;
        // A disabled button loses it.
        if (hadFocus && document.activeElement === document.body) button.focus();
    }

    listen('picture.progress', ({ share }) => {
        progress.value = share;
    });
    button.addEventListener('click', saveNow);
}
