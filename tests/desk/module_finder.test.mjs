// Looks found in bytes of any kind by the engine as a module.
import assert from 'node:assert/strict';
import { writeFile } from 'node:fs/promises';
import { join } from 'node:path';
import { test } from 'node:test';
import { gzipSync } from 'node:zlib';
import { crossed33, cubeOf, identity } from './support/looks.mjs';
import { loadEngine, TintwellError, toUtf16 } from './support/module.mjs';
import { randomNumbers } from './support/pictures.mjs';
import { inTemporaryFolder } from './support/places.mjs';
import { tintwellHost } from './support/program.mjs';

const engine = await loadEngine();
const textOf = (cube, name) => engine.writeText(engine.readCube(cube, name));
const dusk = textOf(cubeOf(2, identity), 'Dusk.cube');
const crossed = textOf(crossed33, 'Crossed.cube');
const base64 = (bytes) => Buffer.from(bytes).toString('base64');

async function only(contents) {
    const { looks, unreadable, beyond } = await engine.findLooks(contents);
    assert.deepEqual([looks.length, unreadable, beyond], [1, [], 0]);
    return looks[0];
}

test('a look is found as text, in 16 bits, in base64 and packed', async () => {
    const wide = toUtf16(dusk);
    const cases = [
        [`ab ${dusk} cd`, { offset: 3, base64: false, wide: false }],
        [Buffer.concat([Buffer.from('odd'), wide]), { offset: 3, base64: false, wide: true }],
        [`<v>${base64(wide)}</v>`, { offset: 3, base64: true, wide: true }],
        [`<v>${base64(dusk)}</v>`, { offset: 3, base64: true, wide: false }],
        [gzipSync(`abcd${dusk}`), { offset: 4, base64: false, wide: false }],
    ];
    for (const [contents, place] of cases) {
        const { look, count, places } = await only(contents);
        assert.deepEqual([look.name, look.kind, look.size, count], ['Dusk', 'lut', 2, 1]);
        assert.deepEqual(places, [place]);
        assert.equal(engine.writeText(look), dusk);
    }
});

test('looks are told once each, with how often they stand there', async () => {
    const all = [dusk, crossed, dusk, 'TWLUTP 9', 'TWLUT3 1 x 3 0 1 AAAA', dusk].join('\n');
    const { looks, unreadable } = await engine.findLooks(all);
    assert.deepEqual(looks.map(({ look, count }) => [look.name, look.kind, count]),
                     [['Dusk', 'lut', 3], ['Crossed', 'lut', 1], ['', 'pattern', 1]]);
    assert.deepEqual(unreadable.map(({ reason, count }) => [reason, count]),
                     [['LUT data is truncated', 1]]);
    const many = await only(`${dusk} `.repeat(50));
    assert.deepEqual([many.count, many.places.length], [50, 20]);
});

test('a look across the borders of pieces is found in megabytes of noise', async () => {
    const random = randomNumbers(3);
    const bytes = Uint8Array.from({ length: 3 << 20 }, () => random());
    const text = new TextEncoder().encode(crossed);
    const offset = (1 << 20) - 1000;
    bytes.set(text, offset);
    const { look, places } = await only(bytes);
    assert.equal(look.name, 'Crossed');
    assert.equal(places[0].offset, offset);
    assert.equal((await only(gzipSync(bytes, { level: 1 }))).places[0].offset, offset);
});

test('what is found is what the program finds', () => inTemporaryFolder(async (folder) => {
    const file = join(folder, 'project.bin');
    const contents = Buffer.concat([
        Buffer.from('head '), toUtf16(crossed), Buffer.from(` ${dusk} `),
        Buffer.from(base64(toUtf16(dusk))), Buffer.from(' TWLUT3 1 x 3 0 1 AAAA TWLUTP 99')]);
    await writeFile(file, contents);
    const told = JSON.parse(await tintwellHost('looks', '--json', file));
    const found = await engine.findLooks(contents);
    const codingOf = ({ base64: packed, wide }) =>
        `${wide ? '16' : '8'}-bit${packed ? ', base64' : ''}`;
    const placesOf = (places) => places.map((place) => [place.offset, codingOf(place)]);
    assert.deepEqual(
        found.looks.map(({ look, count, places }) =>
            [look.name, Number(look.id), look.size, count, placesOf(places)]),
        told.looks.map(({ name, match, points, times, places }) =>
            [name, match, points, times, places.map(({ offset, coding }) => [offset, coding])]));
    assert.deepEqual(found.unreadable.map(({ reason }) => reason),
                     told.unreadable.map(({ reason }) => reason));
    assert.equal(found.unreadable.length, 2);
}));

test('a damaged gzip file is refused, and the next one is read', async () => {
    const whole = gzipSync(`abc${crossed}`);
    const flipped = Buffer.from(whole);
    flipped[whole.length >> 1] ^= 0xff;
    for (const damaged of [whole.subarray(0, 2), whole.subarray(0, 1000), whole.subarray(0, -4),
                           flipped, Buffer.concat([whole, Buffer.from('more')])])
        await assert.rejects(engine.findLooks(damaged), (error) => {
            assert.ok(error instanceof TintwellError);
            assert.equal(error.message, 'it is a damaged gzip file');
            return true;
        });
    assert.equal((await only(whole)).look.name, 'Crossed');
});

test('there is nothing in nothing', async () => {
    for (const contents of ['', new Uint8Array(3 << 20), gzipSync(''), 'TWLUT'])
        assert.deepEqual(await engine.findLooks(contents),
                         { looks: [], unreadable: [], beyond: 0 });
});

test('two searches at once do not disturb one another', async () => {
    const noise = new Uint8Array(5 << 20);
    const found = await Promise.all([dusk, crossed].map((text) =>
        engine.findLooks(gzipSync(Buffer.concat([noise, Buffer.from(text), noise])))));
    assert.deepEqual(found.map(({ looks }) => looks.map(({ look }) => look.name)),
                     [['Dusk'], ['Crossed']]);
});
