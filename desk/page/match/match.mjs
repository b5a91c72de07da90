// The Match task: a pattern goes out, comes back graded, and becomes a look.
import { app } from '../app.mjs';
import { call } from '../engine_client.mjs';
import { bytesOf, onFile } from '../files.mjs';
import { hold } from '../kept.mjs';
import { complain, say } from '../message.mjs';
import { copyText, saveCube } from '../output.mjs';
import { showTab } from '../tabs.mjs';
import { nameOf } from '../words.mjs';
import { describeMeasurement } from './measurement.mjs';
import { patternNow, startPattern } from './pattern.mjs';
import { whyNoPattern } from './plan.mjs';

const element = (id) => document.querySelector(`#${id}`);

let measured = null;
let named = null;

async function measure(file) {
    const { steps, width, height } = patternNow();
    const reason = whyNoPattern({ steps, width, height });
    if (reason) throw new Error(reason);
    say(`Measuring ${file.name}.`);
    const bytes = await bytesOf(file);
    const result = await call(
        'measureMatch', { bytes, steps, frame: { width, height } }, [bytes.buffer]);
    measured = result.look;
    named = null;
    hold('match', [measured.key]);
    element('measurement').replaceChildren(describeMeasurement(file.name, result));
    element('copied-match').hidden = true;
    for (const id of ['use-match', 'match-cube', 'match-text']) element(id).disabled = false;
    say(`Measured ${file.name}.`);
}

/** The measured look under what the fields say now. */
async function lookNow() {
    const name = element('match-name').value.trim();
    const id = element('match-id').value.trim() || '0';
    if (named?.name === name && named.id === id) return named;
    const of = measured;
    const { look } = await call('nameMatch', { key: of.key, name, id });
    hold('match', [measured.key, look.key]);
    // Another picture may have been measured meanwhile.
    if (measured !== of) return lookNow();
    named = look;
    return named;
}

function withLook(act) {
    return async () => {
        try {
            await act(await lookNow());
        } catch (error) {
            complain(`cannot use the match: ${error.message}`);
        }
    };
}

function useMatch(look) {
    app.useLook(look);
    showTab('picture');
    say(`In use: ${nameOf(look)}.`);
}

export function startMatch() {
    startPattern();
    onFile(element('graded-file'), element('match'), measure);
    element('use-match').addEventListener('click', withLook(useMatch));
    element('match-cube').addEventListener('click', withLook(saveCube));
    element('match-text').addEventListener(
        'click', withLook((look) => copyText(look, element('copied-match'))));
}
