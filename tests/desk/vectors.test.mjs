// The engine reads, writes, draws and measures what the vectors for makers of a panel say, in node
// and in the browser.
import assert from 'node:assert/strict';
import { readdirSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';
import { inBlankPage } from './support/browser.mjs';
import { loadEngine, wasmBinary } from './support/module.mjs';
import { pictureOfPng } from './support/pictures.mjs';
import { contentsOf, engineFolder, esbuild, jsonOf, root } from './support/places.mjs';
import { judgeVectors } from './support/vectors.mjs';

const folders = ['texts', 'patterns', 'requests'];
const indexes = Object.fromEntries(
    folders.map((folder) => [folder, jsonOf(`examples/panel/${folder}/index.json`)]));
const names = folders.flatMap((folder) => readdirSync(join(root, 'examples/panel', folder))
    .filter((name) => name !== 'index.json')
    .map((name) => `${folder}/${name}`));
const files = Object.fromEntries(
    names.map((name) => [name, contentsOf(`examples/panel/${name}`)]));
const pictures = Object.fromEntries(names.filter((name) => name.endsWith('.png'))
    .map((name) => [name, pictureOfPng(files[name])]));

function expectAll({ wrong, compared, used }) {
    assert.deepEqual(wrong, []);
    assert.deepEqual([...used].sort(), [...names].sort());
    assert.equal(used.length, 96);
    assert.ok(compared > 400, `only ${compared} comparisons`);
}

test('the engine under node agrees with all vectors', async () => {
    expectAll(judgeVectors(await loadEngine(), indexes, files, pictures));
});

test('a vector that says something else is found', async () => {
    const changed = structuredClone(indexes);
    const look = changed.texts.values.find(({ reads }) => reads === 'lut');
    look.samples[4] += 1e-6;
    changed.texts.values.find(({ message }) => message).message = 'something else';
    changed.requests.requests[0].id = '43';
    changed.patterns.patterns[0].bytes[1] = 254;
    const { wrong } = judgeVectors(await loadEngine(), changed, files, pictures);
    assert.equal(wrong.length, 4);
});

// Bytes go through puppeteer as base64: it knows no others.
const packed = (bytes) => Buffer.from(bytes).toString('base64');

const scriptForPages = `
    import { loadEngine } from '${join(engineFolder, 'tintwell.mjs')}';
    import { judgeVectors } from '${join(root, 'tests/desk/support/vectors.mjs')}';
    const bytesOf = (text) => Uint8Array.from(atob(text), (letter) => letter.charCodeAt(0));
    const eachOf = (object, change) => Object.fromEntries(
        Object.entries(object).map(([name, value]) => [name, change(value)]));
    globalThis.judge = async ({ wasm, indexes, files, pictures }) => judgeVectors(
        await loadEngine({ wasmBinary: bytesOf(wasm) }), indexes, eachOf(files, bytesOf),
        eachOf(pictures, ({ data, ...size }) => ({ ...size, data: bytesOf(data) })));
`;

test('the engine in the browser agrees with all vectors', async () => {
    const { outputFiles: [script] } = await esbuild.build({
        stdin: { contents: scriptForPages, resolveDir: root },
        bundle: true,
        write: false,
        format: 'iife',
        define: { 'import.meta.url': '"about:blank"' },
        logLevel: 'error',
    });
    const packedOf = (object, change) => Object.fromEntries(
        Object.entries(object).map(([name, value]) => [name, change(value)]));
    const all = {
        wasm: packed(wasmBinary),
        indexes,
        files: packedOf(files, packed),
        pictures: packedOf(pictures, ({ data, width, height }) =>
            ({ data: packed(data), width, height })),
    };
    await inBlankPage(async (page) => {
        await page.evaluate(script.text);
        expectAll(await page.evaluate((vectors) => globalThis.judge(vectors), all));
    });
});
