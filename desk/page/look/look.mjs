// The Look task: opens looks and shows what the one in use does.
import { app } from '../app.mjs';
import { call } from '../engine_client.mjs';
import { bytesOf, onFile } from '../files.mjs';
import { hold } from '../kept.mjs';
import { complain, say } from '../message.mjs';
import { copyText, saveCube } from '../output.mjs';
import { nameOf } from '../words.mjs';
import { showCloud } from './cloud.mjs';
import { showAxis } from './curves.mjs';
import { showFound } from './list.mjs';
import { compareAgain, startOther } from './other.mjs';
import { showCheck, showFacts } from './report.mjs';

const element = (id) => document.querySelector(`#${id}`);

async function open(bytes, name, origin) {
    const choice = app.beginChoice();
    const opened = await call('openLook', { bytes, name }, [bytes.buffer]);
    if (opened.refused) {
        showCheck(origin, opened.refused);
        throw new Error(opened.refused.findings[0].words);
    }
    hold('list', opened.looks.map(({ key }) => key));
    showFound(opened, useAndSay);
    const first = opened.looks.find(({ kind }) => kind === 'lut');
    if (!useAndSay(first, choice)) say(`Read ${origin}.`);
}

function useAndSay(look, choice) {
    const isUsed = app.useLook(look, choice);
    if (isUsed) say(`In use: ${nameOf(look)}.`);
    return isUsed;
}

async function openFile(file) {
    say(`Reading ${file.name}.`);
    await open(await bytesOf(file), file.name, file.name);
}

async function takeText() {
    const text = element('look-text').value.trim();
    if (!text) {
        complain('Paste a TWLUT text first.');
        return;
    }
    try {
        await open(new TextEncoder().encode(text), '', 'the text');
    } catch (error) {
        complain(`cannot use the text: ${error.message}`);
    }
}

async function describe(look) {
    const description = await call('describeLook', { key: look.key });
    if (app.look !== look) return;
    element('look-none').hidden = true;
    element('look-plots').hidden = false;
    showFacts(look, description);
    showCheck(nameOf(look), description.check);
    showAxis(look, description.axis);
    showCloud(description.samples, look.size);
    await compareAgain();
}

function showLook() {
    const { look } = app;
    hold('in use', [look.key]);
    element('in-use').textContent = nameOf(look);
    element('copied-text').hidden = true;
    describe(look).catch((error) => complain(`cannot show the look: ${error.message}`));
}

export function startLook() {
    onFile(element('look-file'), element('look'), openFile);
    element('look-take-text').addEventListener('click', takeText);
    element('save-cube').addEventListener('click', () => saveCube(app.look));
    element('copy-text').addEventListener('click',
                                          () => copyText(app.look, element('copied-text')));
    startOther();
    app.addEventListener('look', showLook);
}
