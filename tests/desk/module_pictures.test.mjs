// Pictures in the engine as a module: graded, drawn and measured, and refused where they are none.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { crossed33, cubeOf, identity } from './support/looks.mjs';
import { loadEngine } from './support/module.mjs';
import { cutout, photograph } from './support/pictures.mjs';
import { contentsOf } from './support/places.mjs';
import { refused } from './support/refused.mjs';

const engine = await loadEngine();
const read = (cube) => engine.readCube(cube, 'x.cube');

const noPicture = 'a picture is 1 to 65535 pixels wide and high';
const noMemory = 'there is not enough memory for it';

test('a picture keeps its kind and alpha, and is not changed itself', () => {
    const look = read(cubeOf(2, (r, g, b) => [1 - r, g, b]));
    for (const Kind of [Uint8Array, Uint8ClampedArray]) {
        const data = Kind.from([10, 20, 30, 40, 50, 60, 70, 0]);
        const graded = engine.grade({ data, width: 2, height: 1 }, look);
        assert.ok(graded instanceof Kind);
        assert.deepEqual([...graded], [245, 20, 30, 40, 205, 60, 70, 0]);
        assert.deepEqual([...data], [10, 20, 30, 40, 50, 60, 70, 0]);
    }
    const data = Float32Array.from([0.25, 0.5, 0.75, 0.125]);
    const graded = engine.grade({ data, width: 1, height: 1 }, look);
    assert.ok(graded instanceof Float32Array);
    assert.deepEqual([...graded], [0.75, 0.5, 0.75, 0.125]);
});

test('floats beyond 0 and 1 are limited by the LUT, and numbers that are none stay apart', () => {
    const look = read(cubeOf(2, (r, g, b) => [2 * r - 0.5, g, b]));
    const colours = [[-3, 0, 1, 1], [3, 0.5, 7, -2], [NaN, 0.5, 0.5, NaN],
                     [Infinity, -Infinity, NaN, 0.25], [0.5, 0.5, 0.5, 1]];
    const graded = engine.grade(
        { data: Float32Array.from(colours.flat()), width: 5, height: 1 }, look);
    const near = [...graded].map((value) => Number(value.toFixed(4)));
    assert.deepEqual(near.slice(0, 8), [-0.5, 0, 1, 1, 1.5, 0.5, 1, -2]);
    assert.deepEqual([near[11], near[15]], [NaN, 0.25]);
    assert.deepEqual(near.slice(16), [0.5, 0.5, 0.5, 1]);
});

test('an Amount is 0 to 100, and 0 leaves every value as it is', () => {
    const look = read(crossed33);
    const odd = Float32Array.from([NaN, -4, 9, 0.1, Infinity, -0, 1e-40, 1]);
    assert.deepEqual(engine.grade({ data: odd, width: 2, height: 1 }, look, 0), odd);
    const picture = cutout();
    assert.deepEqual(engine.grade(picture, look, 0), picture.data);
    assert.deepEqual(engine.grade(picture, look), engine.grade(picture, look, 100));
    assert.notDeepEqual(engine.grade(picture, look, 50), engine.grade(picture, look, 51));
    for (const amount of [-1, -0.001, 100.001, 1e9, NaN, Infinity])
        assert.equal(refused(() => engine.grade(picture, look, amount)), 'an Amount is 0 to 100');
});

test('several looks grade side by side', () => {
    const picture = photograph(64, 48);
    const cubes = [crossed33, contentsOf('examples/golden-hour.cube'),
                   contentsOf('examples/bleach-bypass.cube'), cubeOf(2, identity)];
    const alone = cubes.map((cube) => engine.grade(picture, read(cube)));
    const looks = cubes.map(read);
    for (const round of [0, 1])
        for (const [at, look] of looks.entries())
            assert.deepEqual(engine.grade(picture, look), alone[at], `round ${round}`);
    assert.deepEqual(alone[3], picture.data);
    assert.equal(new Set(alone.map((data) => data.join())).size, 4);
});

test('a pattern or no look in place of a LUT does what the effect does', () => {
    const picture = photograph(160, 90);
    const pattern = engine.readText('TWLUTP 9');
    const drawn = engine.pattern(9, 160, 90);
    assert.ok(drawn instanceof Uint8ClampedArray);
    for (const amount of [0, 50, 100])
        assert.deepEqual([...engine.grade(picture, pattern, amount)], [...drawn]);
    assert.deepEqual(engine.grade(picture, engine.readText('TWLUT0')), picture.data);
});

test('a picture whose size does not fit its data is refused', () => {
    const look = read(crossed33);
    const mismatch = 'the picture does not hold width x height pixels';
    for (const [values, width, height, sentence] of [
        [0, 0, 0, noPicture], [4, -1, -1, noPicture], [4, 1, 0, noPicture],
        [4 * 65536, 65536, 1, noPicture], [4, 2, 1, mismatch], [5, 1, 1, mismatch],
        [3, 1, 1, mismatch], [8, 1, 1, mismatch],
    ]) {
        for (const Kind of [Uint8Array, Float32Array]) {
            const data = new Kind(values);
            assert.equal(refused(() => engine.grade({ data, width, height }, look)), sentence);
            assert.equal(refused(() => engine.measure({ data, width, height }, 3)), sentence);
        }
    }
    for (const [width, height] of [[1.5, 1], [2 ** 32 + 1, 1], [NaN, 1], [1, undefined]])
        refused(() => engine.grade({ data: new Uint8Array(4), width, height }, look));
    for (const data of [new Uint16Array(4), new Float64Array(4), new Int8Array(4), [1, 2, 3, 4]])
        refused(() => engine.grade({ data, width: 1, height: 1 }, look));
});

test('a picture of more than memory holds is refused, and the engine goes on', () => {
    const drawn = engine.pattern(3, 61, 35);
    assert.equal(refused(() => engine.pattern(2, 65535, 65535)), noMemory);
    assert.equal(refused(() => engine.pattern(2, 40000, 40000)), noMemory);
    assert.deepEqual(engine.pattern(3, 61, 35), drawn);
    assert.equal(read(crossed33).size, 33);
});

test('the computed picture has many colours, in any size', () => {
    const scene = engine.scene(320, 180);
    assert.ok(scene instanceof Uint8ClampedArray);
    assert.equal(scene.length, 320 * 180 * 4);
    const pixels = new Uint32Array(scene.buffer);
    assert.ok(new Set(pixels).size > 5000);
    assert.ok(pixels.every((pixel) => pixel >>> 24 === 255));
    assert.equal(engine.scene(2, 2).length, 16);
    assert.equal(refused(() => engine.scene(40000, 40000)), noMemory);
    refused(() => engine.scene(0, 5));
});

test('a pattern has 2 to 64 steps and a frame', () => {
    refused(() => engine.pattern(NaN, 64, 36));
    for (const steps of [1, 65, 0, -1])
        assert.equal(refused(() => engine.pattern(steps, 64, 36)),
                     'a pattern has 2 to 64 steps a channel');
    for (const [width, height] of [[0, 1], [1, 0], [65536, 1], [-1, -1]])
        assert.equal(refused(() => engine.pattern(2, width, height)), noPicture);
});

test('a measurement tells what it read', () => {
    const picture = { data: engine.pattern(3, 280, 160), width: 280, height: 160 };
    const found = engine.measure(picture, 3, { id: 2n ** 63n - 1n, name: 'Dusk' });
    const { look, noise, ...figures } = found;
    assert.deepEqual(figures, {
        columns: 7, rows: 4, patchWidth: 40, patchHeight: 40, pixelsRead: 400, middleNoise: 0,
        mostNoise: 0, middleError: 0.25, mostError: 0.5, noisiest: [0, 0, 0], poor: false });
    assert.deepEqual(noise, new Array(27).fill(0));
    assert.deepEqual([look.name, look.id, look.size], ['Dusk', 2n ** 63n - 1n, 3]);
    const floats = Float32Array.from(picture.data, (value) => value / 255);
    const fine = engine.measure({ ...picture, data: floats }, 3);
    assert.deepEqual(engine.samples(fine.look), engine.samples(look));
    assert.equal(fine.middleError, 0);
});

test('a picture that is no whole pattern is refused with the reason', () => {
    const drawn = engine.pattern(3, 280, 160);
    const sentence = (data, steps = 3, options = {}, width = 280, height = 160) =>
        refused(() => engine.measure({ data, width, height }, steps, options));
    assert.equal(sentence(new Uint8Array(280 * 160 * 4).fill(90)),
                 'it is of one colour, or nearly so: that is no calibration pattern');
    assert.equal(sentence(drawn, 4), 'it shows a pattern of 3 steps, not of 4');
    assert.match(sentence(drawn, 33), /^its patches would be \d+x\d+ pixels, and must be 6x6 or /);
    const { data } = photograph(280, 160);
    assert.match(sentence(data), /none, or cropped|vary too much|in disorder/);
    const pixels = new Uint32Array(engine.pattern(5, 640, 360).buffer);
    const mirrored = pixels.map((_, at) => pixels[at - 2 * (at % 640) + 639]);
    assert.equal(sentence(new Uint8Array(mirrored.buffer), 5, {}, 640, 360),
                 'the picture is mirrored left to right');
    assert.equal(sentence(drawn, 3, { frameWidth: 100, frameHeight: 900 }),
                 'the pattern was not drawn in a frame of that shape');
    for (const steps of [1, 65, 0])
        assert.equal(sentence(drawn, steps), 'a pattern has 2 to 64 steps a channel');
});
