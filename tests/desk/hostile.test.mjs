// Hostile files leave the page working, and each that is refused is told why.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { hostileFiles } from './support/hostile_files.mjs';
import { crossed33 } from './support/looks.mjs';
import { loadEngine } from './support/module.mjs';
import { choosePicture, useLook } from './support/picture_panel.mjs';
import { photograph, pictureOfPng, pngOf } from './support/pictures.mjs';
import { contentsOf } from './support/places.mjs';
import { jpegByProgram } from './support/program.mjs';
import { withDesk } from './support/with_desk.mjs';

const at = withDesk();
const jpeg = await jpegByProgram(pngOf(photograph(40, 30), { alpha: false }));
const files = hostileFiles(jpeg);

test('there are 200 of them, and they differ', () => {
    assert.equal(files.length, 200);
    assert.ok(new Set(files.map(({ contents }) => contents.toString('latin1'))).size >= 195);
});

/** What the page says when it has done with a file that is dropped on the panel. */
function outcomeOf(panel, { name, contents }) {
    return at.desk.page.evaluate(async (id, fileName, packed) => {
        const wait = (milliseconds) => new Promise((resolve) => setTimeout(resolve, milliseconds));
        const bytes = Uint8Array.from(atob(packed), (letter) => letter.charCodeAt(0));
        const dataTransfer = new DataTransfer();
        dataTransfer.items.add(new File([bytes], fileName));
        const target = document.querySelector(`#${id}`);
        const message = document.querySelector('#message');
        target.dispatchEvent(
            new DragEvent('drop', { dataTransfer, bubbles: true, cancelable: true }));
        const end = performance.now() + 20_000;
        do await wait(1); while (target.matches('[aria-busy]') && performance.now() < end);
        // What has been taken is drawn.
        if (!message.querySelector('[role=alert]')) {
            await wait(50);
            await new Promise((resolve) => requestAnimationFrame(() => setTimeout(resolve)));
        }
        return {
            done: !target.matches('[aria-busy]'),
            alert: message.querySelector('[role=alert]')?.textContent ?? null,
            text: message.textContent,
        };
    }, panel, name, contents.toString('base64'));
}

/** Gives the panel all files; how many were refused. */
async function giveAll(panel) {
    let refused = 0;
    for (const file of files) {
        const { done, alert, text } = await outcomeOf(panel, file);
        assert.ok(done, `${panel} has not done with ${file.name}`);
        assert.deepEqual(at.desk.takeProblems(), [], file.name);
        if (alert === null) continue;
        ++refused;
        const start = `cannot use '${file.name}': `;
        assert.ok(alert.startsWith(start), `${file.name}: ${text}`);
        assert.match(alert.slice(start.length), /^\S.{5,}[^.\s]$/s, file.name);
        assert.doesNotMatch(alert, /undefined|NaN|\[object|(Type|Range)Error|\bnull\b/, file.name);
    }
    return refused;
}

async function expectItWorks() {
    const { desk } = at;
    const picture = photograph(90, 60);
    await useLook(desk, 'crossed.cube', crossed33);
    await desk.tab('picture');
    await choosePicture(desk, 'good.png', pngOf(picture));
    const { bytes } = await desk.savedBy('#save-picture');
    const engine = await loadEngine();
    const graded = engine.grade(picture, engine.readCube(crossed33));
    assert.deepEqual([...pictureOfPng(bytes).data], [...graded]);
    await desk.tab('match');
    await desk.fill('#steps', 3);
    await desk.choose('#graded-file', 'graded.png',
                      contentsOf('examples/panel/patterns/graded_3_280x160.png'));
    await desk.untilText('#measurement', /graded\.png/);
}

// Some remain looks or pictures: a bit that nobody reads, a colour that is another one.
for (const [panel, least] of [['look', 120], ['picture', 150], ['match', 190]]) {
    test(`${panel} goes on after each`, async () => {
        await at.desk.tab(panel);
        const refused = await giveAll(panel);
        assert.ok(refused >= least, `only ${refused} were refused`);
        await expectItWorks();
    });
}
