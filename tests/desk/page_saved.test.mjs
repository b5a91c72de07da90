// The graded picture that the page saves has every pixel that the program writes.
import assert from 'node:assert/strict';
import { readFile, writeFile } from 'node:fs/promises';
import { join } from 'node:path';
import { test } from 'node:test';
import { crossed33 } from './support/looks.mjs';
import { choosePicture, setAmount, useLook } from './support/picture_panel.mjs';
import { cutout, photograph, pictureOfPng, pngOf, randomNumbers } from './support/pictures.mjs';
import { contentsOf, inTemporaryFolder } from './support/places.mjs';
import { pngOfKind } from './support/png_kinds.mjs';
import { gradedByProgram, jpegByProgram, tintwellHost } from './support/program.mjs';
import { withDesk } from './support/with_desk.mjs';

const at = withDesk();
const looks = {
    'golden-hour.cube': contentsOf('examples/golden-hour.cube'),
    'bleach-bypass.cube': contentsOf('examples/bleach-bypass.cube'),
    'crossed.cube': Buffer.from(crossed33),
};
function expectSame(found, told, what) {
    assert.deepEqual([found.width, found.height], [told.width, told.height], what);
    const differing = found.data.findIndex((value, index) => value !== told.data[index]);
    assert.equal(differing, -1, `${what}: byte ${differing} is ${found.data[differing]} and not ` +
                                `${told.data[differing]}`);
}

async function savedBy(name) {
    const { bytes, name: saved } = await at.desk.savedBy('#save-picture');
    assert.equal(saved, name.replace(/\.\w+$/, '-graded.png'));
    return pictureOfPng(bytes);
}

const pictures = {
    'photograph.png': pngOf(photograph(), { alpha: false }),
    'cutout.png': pngOf(cutout()),
};

for (const look of Object.keys(looks)) {
    test(`an opaque and a transparent picture through ${look} and five Amounts`, async () => {
        const { desk } = at;
        const amounts = [0, 1, 37, 50, 100];
        const told = new Map();
        for (const amount of amounts)
            told.set(amount, await gradedByProgram(Object.values(pictures), looks[look], amount));
        await useLook(desk, look, looks[look]);
        await desk.tab('picture');
        for (const [index, name] of Object.keys(pictures).entries()) {
            await choosePicture(desk, name, pictures[name]);
            for (const amount of amounts) {
                await setAmount(desk, amount);
                expectSame(await savedBy(name), told.get(amount)[index], `${name}, ${amount} %`);
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
    'a palette with alpha': {
        depth: 2, colours: 3, palette: palette(4), transparent: [0, 90, 255] },
    'colours of 16 bits': { depth: 16, colours: 2 },
    'colours with alpha of 16 bits': { depth: 16, colours: 6 },
    'interlaced colours': { depth: 8, colours: 2, interlaced: true },
    'interlaced colours with alpha': { depth: 8, colours: 6, interlaced: true },
};

test('PNG files of every kind', async () => {
    const { desk } = at;
    const files = Object.values(kinds).map((kind) => pngOfKind(
        { width: 37, height: 23, sampleAt: sampleOf(kind.depth), ...kind }));
    const told = await gradedByProgram(files, crossed33, 100);
    await useLook(desk, 'crossed.cube', crossed33);
    await desk.tab('picture');
    for (const [index, about] of Object.keys(kinds).entries()) {
        const name = `${about.replaceAll(' ', '_')}.png`;
        await choosePicture(desk, name, files[index]);
        assert.match(await desk.text('#picture-info'), /37 x 23/);
        expectSame(await savedBy(name), told[index], about);
    }
});

test('a JPEG file is read nearly as by the program', async () => {
    const { desk } = at;
    const jpeg = await jpegByProgram(pictures['photograph.png']);
    const told = await inTemporaryFolder(async (folder) => {
        const [from, to, look] = ['in.jpg', 'out.png', 'look.cube']
            .map((name) => join(folder, name));
        await writeFile(from, jpeg);
        await writeFile(look, looks['golden-hour.cube']);
        await tintwellHost('render', from, to, '--lut', look);
        return pictureOfPng(await readFile(to));
    });
    await useLook(desk, 'golden-hour.cube', looks['golden-hour.cube']);
    await desk.tab('picture');
    await choosePicture(desk, 'photograph.jpg', jpeg);
    const found = await savedBy('photograph.jpg');
    assert.deepEqual([found.width, found.height], [told.width, told.height]);
    // Decoders may differ in a rounding, which a look's steepest part makes more.
    const apart = new Set(found.data.map((value, index) => Math.abs(value - told.data[index])));
    assert.ok(Math.max(...apart) <= 6, `${Math.max(...apart)} steps apart`);
});
