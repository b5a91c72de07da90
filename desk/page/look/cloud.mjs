// The cloud of a look's lattice, turned by mouse, touch and keys.
import { inNextFrame, onAppearance } from '../redraw.mjs';
import { counted } from '../words.mjs';
import { cloudOf, drawCloud } from './cloud_drawing.mjs';

const START = { turn: 3.95, tilt: 0.55 };
const KEY_STEP = Math.PI / 36;
const STEEPEST = Math.PI / 2;
const PIXELS_A_RADIAN = 120;

const canvas = document.querySelector('#look-cloud');
const figures = document.querySelector('#cloud-figures');
const context = canvas.getContext('2d');

let cloud = null;
let view = { ...START };
// The last event of a drag.
let grip = null;

function coloursOf(style) {
    const line = style.getPropertyValue('--wire');
    return { line, text: style.color, ground: style.backgroundColor };
}

const request = inNextFrame(() => {
    const { clientWidth: width, clientHeight: height } = canvas;
    if (!cloud || !width) return;
    const density = devicePixelRatio;
    const [across, down] = [Math.round(width * density), Math.round(height * density)];
    if (canvas.width !== across) canvas.width = across;
    if (canvas.height !== down) canvas.height = down;
    context.setTransform(density, 0, 0, density, 0, 0);
    drawCloud(context, cloud, view, { width, height }, coloursOf(getComputedStyle(canvas)));
});

function turnBy(turn, tilt) {
    view.turn += turn;
    view.tilt = Math.min(Math.max(view.tilt + tilt, -STEEPEST), STEEPEST);
    request();
}

function reset() {
    view = { ...START };
    request();
}

function onKey(event) {
    const step = event.shiftKey ? KEY_STEP * 3 : KEY_STEP;
    const moves = {
        ArrowLeft: () => turnBy(-step, 0),
        ArrowRight: () => turnBy(step, 0),
        ArrowUp: () => turnBy(0, -step),
        ArrowDown: () => turnBy(0, step),
        Home: reset,
    };
    if (!moves[event.key]) return;
    event.preventDefault();
    moves[event.key]();
}

function onGrip(event) {
    if (!event.isPrimary) return;
    canvas.setPointerCapture(event.pointerId);
    grip = event;
}

function onMove(event) {
    if (!event.isPrimary || !canvas.hasPointerCapture(event.pointerId)) return;
    turnBy((event.clientX - grip.clientX) / PIXELS_A_RADIAN,
           (event.clientY - grip.clientY) / PIXELS_A_RADIAN);
    grip = event;
}

/** @param {Float32Array} samples @param {number} size */
export function showCloud(samples, size) {
    cloud = cloudOf(samples, size);
    let outside = 0;
    for (let at = 0; at < samples.length; at += 3) {
        if ([0, 1, 2].some((i) => samples[at + i] < 0 || samples[at + i] > 1)) ++outside;
    }
    const all = samples.length / 3;
    const drawn = cloud.count < all ? `, ${cloud.count.toLocaleString('en')} of them drawn` : '';
    figures.textContent = `${counted(all, 'point')}${drawn}. ` +
        (outside ? `${counted(outside, 'point')} outside 0 to 1, hollow.` : 'All within 0 to 1.');
    request();
}

canvas.addEventListener('pointerdown', onGrip);
canvas.addEventListener('pointermove', onMove);
canvas.addEventListener('keydown', onKey);
onAppearance(canvas, request);
