// Pictures that the tests make, and PNG files of them.
import { decodePng, encodePng } from './places.mjs';

/** Numbers from 0 to 2^32 - 1, the same ones for a seed. */
export function randomNumbers(seed) {
    let state = seed >>> 0;
    return () => {
        state = (state + 0x6d2b79f5) >>> 0;
        let mixed = Math.imul(state ^ (state >>> 15), state | 1);
        mixed ^= mixed + Math.imul(mixed ^ (mixed >>> 7), mixed | 61);
        return (mixed ^ (mixed >>> 14)) >>> 0;
    };
}

function pictureOf(width, height, colourAt) {
    const data = new Uint8Array(width * height * 4);
    for (let y = 0; y < height; ++y)
        for (let x = 0; x < width; ++x) data.set(colourAt(x, y), (y * width + x) * 4);
    return { data, width, height };
}

const limited = (value) => Math.max(0, Math.min(255, Math.round(value)));

/** Sky, a sun, a dark hill with texture, and grain: most colours that a photograph has. */
export function photograph(width = 421, height = 263) {
    const random = randomNumbers(7);
    return pictureOf(width, height, (x, y) => {
        const [u, v] = [x / width, y / height];
        const sun = 230 * Math.exp(-60 * ((u - 0.7) ** 2 + (v - 0.4) ** 2));
        const hill = v > 0.62 + 0.08 * Math.sin(9 * u) + 0.03 * Math.sin(31 * u);
        const base = hill
            ? [30 + 40 * u, 50 + 60 * (1 - v), 25 + 15 * Math.sin(40 * u * v)]
            : [60 + 150 * v + sun, 90 + 70 * v + 0.8 * sun, 190 - 90 * v + 0.4 * sun];
        const grain = (random() % 13) - 6;
        return [...base.map((value) => limited(value + grain)), 255];
    });
}

/** All alphas, and colours of every hue under them, also where nothing shows. */
export function cutout(width = 256, height = 97) {
    const random = randomNumbers(11);
    return pictureOf(width, height, (x) => {
        const noise = random();
        return [noise & 255, (noise >>> 8) & 255, (noise >>> 16) & 255, x & 255];
    });
}

function withoutAlpha({ data, width, height }) {
    const colours = new Uint8Array(width * height * 3);
    for (let at = 0; at < width * height; ++at)
        colours.set(data.subarray(at * 4, at * 4 + 3), at * 3);
    return colours;
}

/** @param {{alpha?: boolean}} [options]  Whether the file has alpha. */
export function pngOf(picture, { alpha = true } = {}) {
    const { width, height } = picture;
    const data = alpha ? new Uint8Array(picture.data) : withoutAlpha(picture);
    return encodePng({ width, height, data, channels: alpha ? 4 : 3, depth: 8 });
}

/** The 8-bit picture in a PNG file, with alpha whether the file has it or not. */
export function pictureOfPng(bytes) {
    const { width, height, data, channels, depth } = decodePng(bytes);
    if (depth !== 8) throw new Error(`the PNG file has ${depth} bits`);
    if (channels === 4) return { width, height, data };
    const rgba = new Uint8Array(width * height * 4).fill(255);
    const isGrey = channels < 3;
    for (let from = 0, to = 0; from < data.length; from += channels, to += 4) {
        rgba[to] = data[from];
        rgba[to + 1] = data[from + (isGrey ? 0 : 1)];
        rgba[to + 2] = data[from + (isGrey ? 0 : 2)];
        if (channels === 2) rgba[to + 3] = data[from + 1];
    }
    return { width, height, data: rgba };
}
