// A picture graded by the module has every byte of the one that the program writes, and so have the
// looks that it measures.
import assert from 'node:assert/strict';
import { readFile, writeFile } from 'node:fs/promises';
import { join } from 'node:path';
import { before, after, test } from 'node:test';
import { crossed33 } from './support/looks.mjs';
import { loadEngine } from './support/module.mjs';
import { cutout, photograph, pictureOfPng, pngOf } from './support/pictures.mjs';
import { contentsOf, makeTemporaryFolder } from './support/places.mjs';
import { gradedByProgram, tintwellHost } from './support/program.mjs';

const engine = await loadEngine();
const cubes = {
    'golden-hour.cube': contentsOf('examples/golden-hour.cube'),
    'bleach-bypass.cube': contentsOf('examples/bleach-bypass.cube'),
    'crossed.cube': Buffer.from(crossed33),
};
const pictures = [photograph(), cutout()];
const files = [pngOf(pictures[0], { alpha: false }), pngOf(pictures[1])];
let folder;
const inFolder = (name) => join(folder.path, name);

before(async () => {
    folder = await makeTemporaryFolder();
    for (const [name, contents] of Object.entries(cubes)) await writeFile(inFolder(name), contents);
});

after(() => folder.remove());

for (const cube of Object.keys(cubes)) {
    test(`an opaque and a transparent picture through ${cube}`, async () => {
        const look = engine.readCube(cubes[cube], cube);
        const different = new Set();
        for (const amount of [0, 1, 37, 50, 100]) {
            const told = await gradedByProgram(files, cubes[cube], amount);
            for (const [at, picture] of pictures.entries()) {
                const { data, width, height } = told[at];
                const graded = Buffer.from(engine.grade(picture, look, amount));
                assert.deepEqual([width, height], [picture.width, picture.height]);
                assert.ok(graded.equals(Buffer.from(data)), `picture ${at}, Amount ${amount}`);
                different.add(graded.toString('base64'));
            }
        }
        // One percent may change nothing that 8 bits show.
        assert.ok(different.size >= 8);
        look.free();
    });
}

test('a pattern is drawn as the program draws it', async () => {
    for (const [steps, width, height] of [[2, 64, 36], [9, 160, 90], [17, 641, 359]]) {
        const out = inFolder(`pattern-${steps}.png`);
        await tintwellHost('pattern', '--size', steps, '--frame', `${width}x${height}`, out);
        const { data } = pictureOfPng(await readFile(out));
        assert.ok(Buffer.from(data).equals(Buffer.from(engine.pattern(steps, width, height))));
    }
});

/** Measures a picture with the program and with the engine. */
async function measuredBoth(file, steps, { id = 0n, name = '' } = {}) {
    for (const form of ['cube', 'twlut'])
        await tintwellHost('measure', file, '--size', steps, '--id', id, '--name', name,
                           '-o', inFolder(`measured.${form}`));
    const picture = pictureOfPng(await readFile(file));
    const { look } = engine.measure(picture, steps, { id, name });
    const [cube, text] = await Promise.all(
        ['cube', 'twlut'].map((form) => readFile(inFolder(`measured.${form}`))));
    assert.ok(cube.equals(Buffer.from(engine.writeCube(look))), 'the .cube files differ');
    assert.equal(`${engine.writeText(look)}\n`, text.toString());
    return look;
}

test('the graded pattern of the vectors is measured as by the program', async () => {
    const file = inFolder('graded_3.png');
    await writeFile(file, contentsOf('examples/panel/patterns/graded_3_280x160.png'));
    const look = await measuredBoth(file, 3, { id: 42n, name: 'Köln "Dusk"' });
    assert.deepEqual([look.name, look.id, look.size], ['Köln "Dusk"', 42n, 3]);
});

for (const cube of Object.keys(cubes)) {
    test(`a pattern through ${cube} is measured as by the program`, async () => {
        const pattern = { data: engine.pattern(9, 640, 360), width: 640, height: 360 };
        await writeFile(inFolder('pattern.png'), pngOf(pattern));
        await tintwellHost('render', inFolder('pattern.png'), inFolder('graded.png'),
                           '--lut', inFolder(cube), '--depth', '8');
        const measured = await measuredBoth(inFolder('graded.png'), 9, { name: cube });
        const look = engine.readCube(cubes[cube]);
        const { largest } = engine.compare(measured, look);
        assert.ok(largest > 0 && largest < 40, `${largest} steps apart`);
    });
}
