// Looks in the engine as a module: read, named, written, checked and freed, with the program's
// sentences where they cannot be.
import assert from 'node:assert/strict';
import { readFile, writeFile } from 'node:fs/promises';
import { join } from 'node:path';
import { test } from 'node:test';
import { crossed33, cubeOf, flatCube, identity } from './support/looks.mjs';
import { Look, loadEngine, TintwellError, toUtf16 } from './support/module.mjs';
import { contentsOf, inTemporaryFolder } from './support/places.mjs';
import { complaintOf, tintwellHost } from './support/program.mjs';
import { refused } from './support/refused.mjs';

const engine = await loadEngine();
const small = cubeOf(2, identity);

test('a .cube file gives a look with the file\'s name and its match', () => {
    const look = engine.readCube(`# Tintwell match 42\n${small}`, 'folder/Evening.v2.cube');
    assert.ok(look instanceof Look);
    assert.deepEqual([look.kind, look.id, look.name, look.size, look.steps, look.range],
                     ['lut', 42n, 'Evening.v2', 2, 0, [0, 1]]);
    assert.equal(engine.readCube(small).name, '');
    look.free();
});

test('bytes come as an array, a part of one, a buffer or a string', () => {
    const bytes = new TextEncoder().encode(`xx${small}`);
    const whole = engine.samples(engine.readCube(small));
    assert.equal(whole.length, 24);
    for (const contents of [bytes.subarray(2), bytes.slice(2), bytes.slice(2).buffer,
                            Buffer.from(small), new DataView(bytes.buffer, 2)])
        assert.deepEqual(engine.samples(engine.readCube(contents)), whole);
});

test('a .cube file is refused as by the program', () => inTemporaryFolder(async (folder) => {
    const files = {
        'empty.cube': '',
        'short.cube': 'LUT_3D_SIZE 2\n1 2\n',
        'nothing.cube': '# nothing\n',
        'large.cube': 'LUT_3D_SIZE 257\n',
        'cut.cube': small.slice(0, -20),
        'one.cube': 'LUT_1D_SIZE 2\n0 0 0\n1 1 1\n',
        'wide.cube': `DOMAIN_MAX 2 2 2\n${small}`,
        'bare.cube': `DOMAIN_MAX 0 0 0\n${small}`,
    };
    const sentences = new Set();
    for (const [name, contents] of Object.entries(files)) {
        await writeFile(join(folder, name), contents);
        const program = await complaintOf('encode', join(folder, name));
        const sentence = refused(() => engine.readCube(contents, name));
        assert.equal(program, `cannot use '${join(folder, name)}': ${sentence}`);
        sentences.add(sentence);
    }
    assert.equal(sentences.size, 7);
}));

test('a text has no more than 129 points an axis', () => {
    const most = engine.readCube(flatCube(129), 'most.cube');
    assert.equal(most.size, 129);
    assert.equal(engine.readText(engine.writeText(most)).size, 129);
    most.free();
    for (const size of [130, 256]) {
        const over = flatCube(size);
        assert.equal(refused(() => engine.readCube(over, 'x.cube')), 'LUT size out of range');
    }
    const check = engine.check(flatCube(130), 'x.cube');
    assert.deepEqual([check.works, check.size, check.findings[0].id],
                     [false, 130, 'too-many-points']);
    assert.equal(refused(() => engine.readCube(flatCube(257), 'x.cube')),
                 'LUT_3D_SIZE out of range');
});

test('what a check finds is what the program finds', () => inTemporaryFolder(async (folder) => {
    const files = {
        'golden-hour.cube': contentsOf('examples/golden-hour.cube'),
        'bleach-bypass.cube': contentsOf('examples/bleach-bypass.cube'),
        'crossed.cube': crossed33,
        'identity.cube': small,
        'range.cube': `LUT_IN_VIDEO_RANGE\n${small}`,
        'marked.cube': `\ufeff${small}`,
        'commas.cube': small.replaceAll('.', ','),
        'returns.cube': small.replaceAll('\n', '\r'),
        'cut.cube': small.slice(0, -30),
        'infinite.cube': small.replace('1.000000', '1e99'),
        [`${'%'.repeat(140)}.cube`]: small,
        'text.twlut': engine.writeText(engine.readCube(crossed33, 'crossed.cube')),
        'none.twlut': 'TWLUT0',
        'damaged.twlut': 'TWLUT3 1 x 3 0 1 AAAA',
    };
    for (const [name, contents] of Object.entries(files))
        await writeFile(join(folder, name), contents);
    const all = JSON.parse(await checked(Object.keys(files).map((name) => join(folder, name))));
    assert.equal(all.length, Object.keys(files).length);
    for (const [at, [name, contents]] of Object.entries(files).entries()) {
        const told = all[at];
        const { works, name: found, id, size, findings, facts, precision } =
            engine.check(contents, name);
        assert.deepEqual(findings, told.findings, name);
        assert.equal(works, told.works);
        if (told.size) assert.deepEqual([found, id, size],
                                        [told.name, BigInt(told.match ?? 0), told.size]);
        // JSON knows no infinity.
        assert.deepEqual(JSON.parse(JSON.stringify(facts)), told.facts ?? null);
        assert.deepEqual(precision, told.precision ?? null);
    }
}));

// The program fails when a look would not work; what it prints counts.
async function checked(files) {
    return tintwellHost('check', '--json', ...files).catch(({ stdout }) => stdout);
}

test('a name may be anything that a text holds', () => {
    const look = engine.readCube(small, 'x.cube');
    for (const name of ['Köln – «Abend» ☀', 'a b/c', '"', 'ü'.repeat(66), 'x'.repeat(399), '']) {
        const named = engine.named(look, { id: 7n, name });
        assert.deepEqual([named.name, named.id], [name, 7n]);
        assert.equal(engine.readText(engine.writeText(named)).name, name);
    }
    assert.equal(refused(() => engine.named(look, { name: '-' })),
                 'a look cannot be named \'-\': that stands for no name');
    assert.equal(refused(() => engine.named(look, { name: 'ü'.repeat(67) })),
                 'the name is too long: it takes 402 characters when encoded, and may take 399');
    assert.equal(look.name, 'x');
});

test('a name of bytes beyond ASCII stays as it stands in the text', () => {
    const [head, tail] = engine.writeText(engine.readCube(small, 'x.cube')).split(' x ');
    const bytes = Buffer.from(`${head} Łódź ${tail}`);
    const look = engine.readText(bytes);
    assert.equal(look.name, 'Łódź');
    assert.equal(engine.check(look).name, 'Łódź');
    const stored = toUtf16(engine.writeText(look));
    assert.deepEqual(Buffer.from(stored.filter((_, at) => at % 2 === 0)), bytes);
    assert.equal(engine.readText(stored).name, 'Łódź');
});

test('an id has 64 bits', () => {
    const look = engine.readCube(small, 'x.cube');
    for (const id of [0n, 1n, 2n ** 53n + 1n, 2n ** 63n - 1n, -(2n ** 63n), 42]) {
        const named = engine.named(look, { id });
        assert.equal(named.id, BigInt(id));
        assert.equal(engine.readText(engine.writeText(named)).id, BigInt(id));
    }
    for (const id of [2n ** 63n, -(2n ** 63n) - 1n, 1e21, 1.5, NaN, 'abc'])
        refused(() => engine.named(look, { id }));
});

test('a text is written as it is stored, and read in 8 and 16 bits', () => {
    const look = engine.readCube(crossed33, 'crossed.cube');
    const text = engine.writeText(look);
    assert.match(text, /^TWLUT3 0 crossed 33 -?[0-9.e-]+ [0-9.e-]+ [A-Za-z0-9+/]+=*$/);
    const wide = toUtf16(text);
    assert.deepEqual(Buffer.from(wide).toString('utf16le'), text);
    for (const contents of [text, wide, `${text}\n`]) {
        assert.ok(engine.isText(contents));
        assert.deepEqual(engine.samples(engine.readText(contents)), engine.samples(look));
    }
    assert.ok(!engine.isText(small));
    assert.equal(refused(() => engine.readText(small)), 'it holds no TWLUT text');
});

test('a .cube file is written as the program writes it', () => inTemporaryFolder(async (folder) => {
    const look = engine.named(engine.readCube(crossed33), { id: 42n, name: 'A "quoted" one' });
    const text = join(folder, 'look.twlut');
    await writeFile(text, engine.writeText(look));
    await tintwellHost('decode', text, join(folder, 'look.cube'));
    assert.deepEqual(Buffer.from(engine.writeCube(look)),
                     await readFile(join(folder, 'look.cube')));
}));

test('patterns and looks without a LUT are told from looks', () => {
    const pattern = engine.readText('TWLUTP 9');
    const none = engine.readText('TWLUT0');
    assert.deepEqual([pattern.kind, pattern.steps, pattern.size, pattern.range],
                     ['pattern', 9, 0, null]);
    assert.deepEqual([none.kind, none.steps, none.size, none.range], ['none', 0, 0, null]);
    for (const look of [pattern, none]) {
        assert.equal(refused(() => engine.writeCube(look)), 'it holds no LUT');
        assert.equal(refused(() => engine.neutralAxis(look)), 'it holds no LUT');
        assert.equal(refused(() => engine.named(look, {})), 'only a look with a LUT has a name');
        assert.equal(refused(() => engine.compare(look, look)),
                     'only looks with a LUT can be compared');
        assert.equal(engine.samples(look).length, 0);
        assert.equal(engine.check(look).works, false);
    }
    assert.equal(engine.writeText(pattern), 'TWLUTP 9');
    assert.equal(engine.writeText(none), 'TWLUT0');
});

test('the neutral axis and the distance of two looks are those of the LUTs', () => {
    const half = engine.readCube(cubeOf(3, (r, g, b) => [r / 2, g / 2, b]));
    const same = engine.readCube(cubeOf(5, identity));
    assert.deepEqual([...engine.neutralAxis(half, 3)].map((value) => Number(value.toFixed(4))),
                     [0, 0, 0, 0.25, 0.25, 0.5, 0.5, 0.5, 1]);
    assert.equal(engine.neutralAxis(half).length, 768);
    for (const count of [1, 65537, 0, -1])
        assert.equal(refused(() => engine.neutralAxis(half, count)), 'greys are 2 to 65536');
    assert.deepEqual(engine.compare(half, half), { largest: 0, mean: 0 });
    const { largest, mean } = engine.compare(half, same);
    assert.ok(Math.abs(largest - 127.5) < 0.01, `${largest}`);
    assert.ok(mean > 20 && mean < largest, `${mean}`);
});

test('a freed look is gone, and the others stay', () => {
    const looks = [2, 3, 4].map((size) => engine.readCube(cubeOf(size, identity), `${size}.cube`));
    looks[1].free();
    looks[1].free();
    const picture = { data: new Uint8Array(4), width: 1, height: 1 };
    for (const use of [() => looks[1].name, () => looks[1].range, () => engine.check(looks[1]),
                       () => engine.grade(picture, looks[1]), () => engine.samples(looks[1]),
                       () => engine.compare(looks[0], looks[1])])
        assert.equal(refused(use), 'the look has been freed');
    assert.deepEqual([looks[0].size, looks[2].size], [2, 4]);
    assert.equal(new TintwellError('x').name, 'TintwellError');
});
