// How fast the engine as a module grades, beside the native kernels, and how the page feels:
// node bench/desk/desk_bench.mjs, after scripts/desk and a release build of tintwell_bench.
import { execFileSync } from 'node:child_process';
import { resolve } from 'node:path';
import { Desk } from '../../tests/desk/support/desk.mjs';
import { crossed33 } from '../../tests/desk/support/looks.mjs';
import { loadEngine } from '../../tests/desk/support/module.mjs';
import { choosePicture, shown, useLook } from '../../tests/desk/support/picture_panel.mjs';
import { pngOf, randomNumbers } from '../../tests/desk/support/pictures.mjs';
import { root } from '../../tests/desk/support/places.mjs';

const nativeBench = resolve(
    root, process.env.TINTWELL_BENCH ?? 'build/release/bench/tintwell_bench');
const ROUNDS = 7;
const WIDTH = 1920;
const HEIGHT = 1080;
const AMOUNT = 80;

/** As the native benchmarks' pictures: a slow wave a channel, and 3 % noise. */
function waves() {
    const random = randomNumbers(1);
    const floats = new Float32Array(WIDTH * HEIGHT * 4);
    for (let at = 0; at < floats.length; ++at) {
        const [x, y] = [(at >> 2) % WIDTH, Math.floor((at >> 2) / WIDTH)];
        const wave = 0.5 + 0.45 * Math.sin(x / 211 + y / 173 + (at & 3) * 2);
        floats[at] = wave + 0.03 * (random() / 2 ** 32 - 0.5);
    }
    return floats;
}

function randomCube(size) {
    const random = randomNumbers(size);
    const value = () => (random() / 2 ** 32).toFixed(6);
    const lines = Array.from({ length: size ** 3 }, () => `${value()} ${value()} ${value()}`);
    return `LUT_3D_SIZE ${size}\n${lines.join('\n')}\n`;
}

/** Nanoseconds a pixel of the native kernels, of which one round is told. */
function nativeRound(kind, size) {
    const report = JSON.parse(execFileSync(nativeBench, [
        `--benchmark_filter=^row${kind}/.*/lut:${size}/colours:0/`, '--benchmark_format=json',
    ], { stdio: ['ignore', 'pipe', 'ignore'] }));
    return report.benchmarks.map((each) => [each.name.split('/')[1], each['ns/pixel']]);
}

function moduleRound(engine, look, data) {
    const begin = performance.now();
    engine.grade({ data, width: WIDTH, height: HEIGHT }, look, AMOUNT);
    return (performance.now() - begin) * 1e6 / (WIDTH * HEIGHT);
}

/** Rounds of all take turns, and the quickest of each counts: others disturbed it least. */
function gradeBeside(engine, kind, size, data) {
    const look = engine.readCube(randomCube(size));
    const best = new Map();
    const note = (name, time) => best.set(name, Math.min(time, best.get(name) ?? Infinity));
    for (let round = 0; round < ROUNDS; ++round) {
        note('module', moduleRound(engine, look, data));
        for (const [name, time] of nativeRound(kind, size)) note(name, time);
    }
    look.free();
    console.log(`row${kind}, ${size} points:`);
    for (const [name, time] of best)
        console.log(`  ${name.padEnd(8)} ${time.toFixed(2)} ns a pixel, ` +
                    `${(time / best.get('scalar')).toFixed(2)} x scalar`);
}

function spell(label, times) {
    const sorted = [...times].sort((a, b) => a - b);
    const at = (share) => sorted[Math.min(sorted.length - 1, Math.floor(sorted.length * share))];
    console.log(`${label}: median ${at(0.5).toFixed(1)} ms, ` +
                `95 % within ${at(0.95).toFixed(1)} ms, longest ${at(1).toFixed(1)} ms, ` +
                `${sorted.length} frames`);
}

/** The times between frames while `act` runs. */
async function frameTimes(desk, act) {
    await desk.page.evaluate(() => {
        globalThis.frames = [];
        const tick = (now) => {
            globalThis.frames.push(now);
            globalThis.ticking = requestAnimationFrame(tick);
        };
        globalThis.ticking = requestAnimationFrame(tick);
    });
    await act();
    const frames = await desk.page.evaluate(() => {
        cancelAnimationFrame(globalThis.ticking);
        return globalThis.frames;
    });
    return frames.slice(1).map((time, at) => time - frames[at]);
}

async function dragDivider(desk) {
    const stage = await (await desk.page.$('#picture-view')).boundingBox();
    const y = stage.y + stage.height / 2;
    const { mouse } = desk.page;
    await mouse.move(stage.x + stage.width / 2, y);
    await mouse.down();
    for (let step = 0; step < 200; ++step)
        await mouse.move(stage.x + stage.width * (0.5 + 0.4 * Math.sin(step / 15)), y);
    await mouse.up();
}

async function dragAmount(desk) {
    await desk.page.focus('#amount');
    for (let step = 0; step < 60; ++step) await desk.press('ArrowLeft');
    await shown(desk);
}

async function benchPage(png) {
    const began = performance.now();
    const desk = await Desk.open();
    const opened = performance.now();
    await desk.load();
    await desk.tab('picture');
    await shown(desk);
    console.log(`the sample after the page's load: ${(performance.now() - opened).toFixed(0)} ms ` +
                `(the browser took ${(opened - began).toFixed(0)} ms)`);
    await useLook(desk, 'Crossed.cube', crossed33);
    await desk.tab('picture');
    const chosen = performance.now();
    await choosePicture(desk, 'waves.png', png);
    console.log(`a PNG of ${WIDTH} x ${HEIGHT}, chosen until shown: ` +
                `${(performance.now() - chosen).toFixed(0)} ms`);
    spell('the divider dragged', await frameTimes(desk, () => dragDivider(desk)));
    spell('the Amount moved', await frameTimes(desk, () => dragAmount(desk)));
    await desk.close();
}

const floats = waves();
const bytes = Uint8Array.from(floats, (value) => Math.max(0, Math.min(255, value * 255)));
const engine = await loadEngine();
for (const size of [17, 33]) {
    gradeBeside(engine, '8', size, bytes);
    gradeBeside(engine, 'F', size, floats);
}
await benchPage(pngOf({ data: bytes, width: WIDTH, height: HEIGHT }, { alpha: false }));
