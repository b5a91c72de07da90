// The Match task, as people do it: the pattern out, the graded one in, the look out.
import assert from 'node:assert/strict';
import { readFile, writeFile } from 'node:fs/promises';
import { join } from 'node:path';
import { test } from 'node:test';
import { deflateSync } from 'node:zlib';
import { loadEngine } from './support/module.mjs';
import { photograph, pictureOfPng, pngOf } from './support/pictures.mjs';
import { contentsOf, inTemporaryFolder } from './support/places.mjs';
import { chunkOf, headerOf, pngOfKind, SIGNATURE } from './support/png_kinds.mjs';
import { gradedByProgram, tintwellHost } from './support/program.mjs';
import { withDesk } from './support/with_desk.mjs';

const engine = await loadEngine();
const golden = contentsOf('examples/golden-hour.cube');
const vector = contentsOf('examples/panel/patterns/graded_3_280x160.png');

const at = withDesk();

async function askFor(steps, width, height) {
    await at.desk.fill('#steps', steps);
    await at.desk.fill('#frame-width', width);
    await at.desk.fill('#frame-height', height);
}

async function measured(name, contents, pattern) {
    const { desk } = at;
    await desk.tab('match');
    await desk.choose('#graded-file', name, contents);
    await desk.untilText('#measurement', pattern ?? new RegExp(name.replaceAll('.', '\\.')));
    await desk.until(() => !document.querySelector('#match-cube').disabled);
}

/** What the program writes for a measured picture, as .cube and as text. */
function measuredByProgram(contents, ...options) {
    return inTemporaryFolder(async (folder) => {
        await writeFile(join(folder, 'graded.png'), contents);
        const outs = ['look.cube', 'look.twlut'].map((name) => join(folder, name));
        for (const out of outs)
            await tintwellHost('measure', join(folder, 'graded.png'), ...options, '-o', out);
        return Promise.all(outs.map((out) => readFile(out)));
    });
}

async function copiedText() {
    const { desk } = at;
    await desk.page.click('#match-text');
    return desk.until(() => {
        const { tagName, value } = document.activeElement;
        return tagName === 'TEXTAREA' && value.startsWith('TWLUT') ? value : null;
    });
}

async function refuseClipboard() {
    await at.desk.devtools.send('Browser.setPermission', {
        permission: { name: 'clipboard-write' }, setting: 'denied' });
}

test('17 steps in a frame of 1920 x 1080 are offered first', async () => {
    const { desk } = at;
    await desk.tab('match');
    assert.deepEqual(await Promise.all(
        ['#steps', '#frame-width', '#frame-height'].map((field) => desk.value(field))),
                     ['17', '1920', '1080']);
    const { bytes } = await desk.savedBy('#save-pattern');
    const { data, width, height } = pictureOfPng(bytes);
    assert.deepEqual([width, height], [1920, 1080]);
    assert.ok(Buffer.from(data).equals(Buffer.from(engine.pattern(17, 1920, 1080))));
});

test('the pattern is saved as the program draws it', () => inTemporaryFolder(async (folder) => {
    const { desk } = at;
    await desk.tab('match');
    for (const [steps, width, height] of [[9, 160, 90], [5, 641, 359], [2, 17, 12]]) {
        await askFor(steps, width, height);
        const { bytes, name } = await desk.savedBy('#save-pattern');
        assert.match(name, new RegExp(`${steps}.*${width}x${height}\\.png$`));
        const out = join(folder, 'pattern.png');
        await tintwellHost('pattern', '--size', steps, '--frame', `${width}x${height}`, out);
        const told = pictureOfPng(await readFile(out));
        assert.deepEqual(pictureOfPng(bytes), told);
    }
}));

test('a pattern that there is not is not saved', async () => {
    const { desk } = at;
    await desk.tab('match');
    for (const wrong of [[1, 160, 90], [65, 160, 90], [9, 0, 90], [9, 160, 99999], [2.5, 160, 90],
                         ['', 160, 90], [2, 65535, 65535]]) {
        await askFor(...wrong);
        await desk.until(() => document.querySelector('#save-pattern').disabled);
    }
    await askFor(9, 160, 90);
    await desk.until(() => !document.querySelector('#save-pattern').disabled);
    assert.equal(pictureOfPng((await desk.savedBy('#save-pattern')).bytes).width, 160);
});

test('the look of a graded pattern is the one that the program measures', async () => {
    const { desk } = at;
    await refuseClipboard();
    await desk.tab('match');
    await desk.fill('#steps', 3);
    await measured('graded_3.png', vector);
    await desk.fill('#match-name', 'Köln "Dusk"');
    await desk.fill('#match-id', '9223372036854775807');
    const [cube, text] = await measuredByProgram(
        vector, '--size', 3, '--name', 'Köln "Dusk"', '--id', '9223372036854775807');
    const saved = await desk.savedBy('#match-cube');
    assert.match(saved.name, /^Köln .Dusk.\.cube$/);
    assert.ok(saved.bytes.equals(cube));
    assert.equal(`${await copiedText()}\n`, text.toString());
    const told = await desk.text('#measurement');
    for (const words of ['7 x 4', '40 x 40', '280 x 160'])
        assert.ok(told.includes(words), `${words} in ${told}`);
});

test('a picture that is measured while a look is named takes its place', async () => {
    const { desk } = at;
    await desk.tab('match');
    await askFor(3, 280, 160);
    const { bytes: pattern } = await desk.savedBy('#save-pattern');
    await measured('graded_3.png', vector);
    const [worker] = desk.page.workers();
    // The name's answer stays away until the other picture's is there.
    await worker.evaluate(() => {
        const send = self.postMessage.bind(self);
        self.postMessage = (data, transfer) => {
            const isName = data.result?.look && !data.result.report;
            if (!isName) return send(data, transfer);
            self.postMessage = send;
            self.letGo = () => send(data, transfer);
        };
    });
    const saving = desk.savedBy('#match-cube');
    while (!await worker.evaluate(() => Boolean(self.letGo)));
    await measured('plain.png', pattern);
    await worker.evaluate(() => self.letGo());
    const [cube] = await measuredByProgram(pattern, '--size', 3);
    assert.ok((await saving).bytes.equals(cube));
    assert.ok((await desk.savedBy('#match-cube')).bytes.equals(cube));
});

test('from the pattern to the look, and on to the picture', async () => {
    const { desk } = at;
    await desk.tab('match');
    await askFor(9, 640, 360);
    const { bytes: pattern } = await desk.savedBy('#save-pattern');
    const [graded] = await gradedByProgram([pattern], golden, 100);
    const contents = pngOf(graded);
    await desk.drop('#match', 'graded.png', contents);
    await desk.untilText('#measurement', /graded\.png/);
    await desk.fill('#match-name', 'Found');
    await desk.page.click('#use-match');
    await desk.until(() => !document.querySelector('#picture').hidden);
    await desk.untilText('#in-use', /^Found$/);
    await desk.tab('look');
    await desk.untilText('#look-name', /^Found$/);
    const [cube] = await measuredByProgram(contents, '--size', 9, '--name', 'Found');
    assert.ok((await desk.savedBy('#save-cube')).bytes.equals(cube));
});

test('with the keyboard alone', async () => {
    const { desk } = at;
    await desk.tabTo('#tab-look');
    await desk.press('End');
    await desk.tabTo('#steps');
    await desk.press('ArrowUp', 'ArrowUp');
    assert.equal(await desk.value('#steps'), '19');
    await desk.fill('#steps', 3);
    await desk.tabTo('#save-pattern');
    const { name } = await desk.saved(() => desk.press('Enter'));
    assert.match(name, /1920x1080/);
    await desk.choose('#graded-file', 'graded_3.png', vector);
    await desk.untilText('#measurement', /graded_3/);
    await desk.tabTo('#match-name');
    await desk.page.keyboard.type('Keys');
    await desk.tabTo('#use-match');
    await desk.press('Enter');
    await desk.untilText('#in-use', /^Keys$/);
});

test('a pattern of 16 bits is measured in all of them', async () => {
    const { desk } = at;
    await refuseClipboard();
    // Each patch is a lattice point, at a third of its level and some.
    const levels = [321, 21845, 60123];
    const contents = pngOfKind({
        width: 280, height: 160, depth: 16, colours: 2,
        sampleAt: (x, y, channel) => {
            const patch = Math.floor(x / 40) + Math.floor(y / 40) * 7;
            return patch < 27 ? levels[Math.floor(patch / 3 ** channel) % 3] : levels[0];
        } });
    await desk.tab('match');
    await desk.fill('#steps', 3);
    await measured('deep.png', contents);
    assert.match(await desk.text('#measurement'), /16 bits/);
    await desk.fill('#match-name', 'deep');
    const [cube, text] = await measuredByProgram(contents, '--size', 3, '--name', 'deep');
    assert.ok((await desk.savedBy('#match-cube')).bytes.equals(cube));
    assert.equal(`${await copiedText()}\n`, text.toString());
});

test('a picture that is no pattern is refused with the reason, and the match stays', async () => {
    const { desk } = at;
    await desk.tab('match');
    await desk.fill('#steps', 3);
    await measured('graded_3.png', vector);
    const bomb = Buffer.concat([
        SIGNATURE, headerOf({ width: 16000, height: 12000, depth: 8, colours: 2 }),
        chunkOf('IDAT', deflateSync(Buffer.alloc(1000))), chunkOf('IEND', Buffer.alloc(0))]);
    const grey = pngOf({ data: new Uint8Array(280 * 160 * 4).fill(128), width: 280, height: 160 });
    for (const [name, contents, words] of [
        ['grey.png', grey, 'it is of one colour, or nearly so: that is no calibration pattern'],
        ['photograph.png', pngOf(photograph(280, 160)), 'its patches|none, or cropped|too much'],
        ['text.png', 'no picture', '.'],
        ['bomb.png', bomb, '.'],
    ]) {
        await desk.choose('#graded-file', name, contents);
        await desk.untilMessage(new RegExp(`^cannot use '${name}': .*(${words})`));
        assert.equal(await desk.page.$eval('#match-cube', (button) => button.disabled), false);
    }
    await desk.fill('#steps', 4);
    await desk.choose('#graded-file', 'graded_3.png', vector);
    await desk.untilMessage(/it shows a pattern of 3 steps, not of 4/);
});

test('a name or match that no text holds is refused', async () => {
    const { desk } = at;
    await desk.tab('match');
    await desk.fill('#steps', 3);
    await measured('graded_3.png', vector);
    for (const [name, id, words] of [['-', '1', /cannot be named/], ['x', '1.5', /64 bits/],
                                     ['x', '9223372036854775808', /64 bits/],
                                     ['x'.repeat(400), '1', /too long/]]) {
        await desk.page.$eval('#match-name', (field, value) => { field.value = value; }, name);
        await desk.fill('#match-id', id);
        await desk.page.click('#use-match');
        await desk.untilMessage(words);
        assert.notEqual(await desk.page.$('#message [role=alert]'), null);
    }
    assert.match(await desk.text('#in-use'), /none/);
});
