// The graded picture that the page saves has every pixel that the program writes.
import assert from 'node:assert/strict';
import { readFile, writeFile } from 'node:fs/promises';
import { join } from 'node:path';
import { after, before, test } from 'node:test';
import { crossed33 } from './support/looks.mjs';
import { choosePicture, setAmount, useLook } from './support/picture_panel.mjs';
import { cutout, photograph, pictureOfPng, pngOf, randomNumbers } from './support/pictures.mjs';
import { contentsOf, makeTemporaryFolder } from './support/places.mjs';
import { pngOfKind } from './support/png_kinds.mjs';
import { gradedByProgram, tintwellHost } from './support/program.mjs';
import { withDesk } from './support/with_desk.mjs';

const at = withDesk();
const looks = {
    'golden-hour.cube': contentsOf('examples/golden-hour.cube'),
    'bleach-bypass.cube': contentsOf('examples/bleach-bypass.cube'),
    'crossed.cube': Buffer.from(crossed33),
};
let folder;
const inFolder = (name) => join(folder.path, name);

before(async () => {
    folder = await makeTemporaryFolder();
    for (const [name, contents] of Object.entries(looks)) await writeFile(inFolder(name), contents);
});
after(() => folder.remove());

function expectSame(found, told, what) {
    assert.deepEqual([found.width, found.height], [told.width, told.height], what);
    const differing = found.data.findIndex((value, index) => value !== told.data[index]);
    assert.equal(differing, -1, `${what}: byte ${differing} is ${found.data[differing]} and not ` +
                                `${told.data[differing]}`);
}

/** Saves what the page shows, and compares with the program's picture of the same file. */
async function expectSavedAsByProgram(name, look, amount) {
    const { bytes, name: saved } = await at.desk.savedBy('#save-picture');
    assert.equal(saved, name.replace(/\.\w+$/, '-graded.png'));
    const out = inFolder(`${amount}-${saved}`);
    const told = await gradedByProgram({
        picture: inFolder(name), look: inFolder(look), amount, out });
    expectSame(pictureOfPng(bytes), told, `${name}, ${look}, ${amount} %`);
    return bytes;
}

for (const [name, contents] of Object.entries({
    'photograph.png': pngOf(photograph(), { alpha: false }),
    'cutout.png': pngOf(cutout()),
})) {
    test(`${name} through three looks and five Amounts`, async () => {
        const { desk } = at;
        await writeFile(inFolder(name), contents);
        await desk.tab('picture');
        await choosePicture(desk, name, contents);
        for (const look of Object.keys(looks)) {
            await useLook(desk, look, looks[look]);
            await desk.tab('picture');
            for (const amount of [0, 1, 37, 50, 100]) {
                await setAmount(desk, amount);
                await expectSavedAsByProgram(name, look, amount);
            }
        }
    });
}

const random = randomNumbers(5);
const noise = Uint16Array.from({ length: 1 << 14 }, () => random());
const sampleOf = (depth) => (x, y, channel) =>
    noise[(x * 7 + y * 131 + channel * 977) & 0x3fff] & (2 ** depth - 1);
const palette = (colours) => Array.from({ length: colours * 3 }, (_, index) => noise[index] & 255);

const kinds = {
    'grey of 1 bit': { depth: 1, colours: 0 },
    'grey of 2 bits': { depth: 2, colours: 0 },
    'grey of 4 bits': { depth: 4, colours: 0 },
    'grey': { depth: 8, colours: 0 },
    'grey of 16 bits': { depth: 16, colours: 0 },
    'grey with alpha': { depth: 8, colours: 4 },
    'grey with alpha of 16 bits': { depth: 16, colours: 4 },
    'a palette of 2': { depth: 1, colours: 3, palette: palette(2) },
    'a palette of 16': { depth: 4, colours: 3, palette: palette(16) },
    'a palette of 256': { depth: 8, colours: 3, palette: palette(256) },
    'a palette with alpha': { depth: 2, colours: 3, palette: palette(4), transparent: [0, 90, 255] },
    'colours of 16 bits': { depth: 16, colours: 2 },
    'colours with alpha of 16 bits': { depth: 16, colours: 6 },
    'interlaced colours': { depth: 8, colours: 2, interlaced: true },
    'interlaced colours with alpha': { depth: 8, colours: 6, interlaced: true },
};

test('PNG files of every kind', async () => {
    const { desk } = at;
    await useLook(desk, 'crossed.cube', crossed33);
    await desk.tab('picture');
    for (const [about, kind] of Object.entries(kinds)) {
        const name = `${about.replaceAll(' ', '_')}.png`;
        const contents = pngOfKind({ width: 37, height: 23, sampleAt: sampleOf(kind.depth), ...kind });
        await writeFile(inFolder(name), contents);
        await choosePicture(desk, name, contents);
        assert.match(await desk.text('#picture-info'), /37 x 23/);
        await expectSavedAsByProgram(name, 'crossed.cube', 100);
    }
});

test('a JPEG file is read nearly as by the program', async () => {
    const { desk } = at;
    await writeFile(inFolder('photograph.png'), pngOf(photograph(), { alpha: false }));
    await tintwellHost('render', inFolder('photograph.png'), inFolder('photograph.jpg'),
                       '--lut', inFolder('golden-hour.cube'), '--compression', '90');
    await desk.tab('picture');
    await choosePicture(desk, 'photograph.jpg', await readFile(inFolder('photograph.jpg')));
    await useLook(desk, 'bleach-bypass.cube', looks['bleach-bypass.cube']);
    await desk.tab('picture');
    const { bytes } = await desk.savedBy('#save-picture');
    const found = pictureOfPng(bytes);
    const told = await gradedByProgram({
        picture: inFolder('photograph.jpg'), look: inFolder('bleach-bypass.cube'), amount: 100,
        out: inFolder('jpeg.png') });
    // Decoders may differ in a rounding, which the look's steepest part makes more.
    const apart = found.data.map((value, index) => Math.abs(value - told.data[index]));
    assert.ok(Math.max(...new Set(apart)) <= 6, `${Math.max(...new Set(apart))} steps apart`);
});
