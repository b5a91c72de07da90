// The samples of a decoded PNG as red, green, blue and straight alpha.

/**
 * @param {object} decoded  As fast-png gives it.
 * @param {object} header
 * @param {number} header.width
 * @param {number} header.height
 * @param {number} header.depth
 * @param {number} header.channels
 * @param {boolean} header.indexed
 * @returns {Uint8Array|Uint16Array}  16 bits of a 16-bit file, else 8.
 */
export function samplesOf(decoded, header) {
    const { depth, channels, indexed } = header;
    const samples = depth < 8 ? unpacked(decoded.data, header) : decoded.data;
    if (indexed) return lookedUp(samples, decoded.palette);
    const clear = decoded.transparency;
    if (channels === 4) return samples;
    if (channels === 3) return withAlpha(samples, depth, clear);
    return fromGrey(samples, header, clear);
}

/** One sample a byte. */
function unpacked(data, { width, height, depth }) {
    const samples = new Uint8Array(width * height);
    const bytesInRow = Math.ceil(width * depth / 8);
    const mask = (1 << depth) - 1;
    for (let y = 0, to = 0; y < height; ++y) {
        for (let x = 0; x < width; ++x) {
            const bit = x * depth;
            const byte = data[y * bytesInRow + (bit >> 3)];
            samples[to++] = (byte >> (8 - depth - (bit & 7))) & mask;
        }
    }
    return samples;
}

function lookedUp(samples, palette) {
    const rgba = new Uint8Array(samples.length * 4);
    for (let pixel = 0; pixel < samples.length; ++pixel) {
        const colour = palette?.[samples[pixel]];
        if (!colour) throw new Error('it is damaged: its palette lacks a colour');
        const [red, green, blue, alpha = 255] = colour;
        rgba[pixel * 4] = red;
        rgba[pixel * 4 + 1] = green;
        rgba[pixel * 4 + 2] = blue;
        rgba[pixel * 4 + 3] = alpha;
    }
    return rgba;
}

/** `clear`: the one colour that is transparent, if any. */
function withAlpha(rgb, depth, clear = []) {
    const rgba = new rgb.constructor(rgb.length / 3 * 4);
    const full = depth === 16 ? 65535 : 255;
    const [clearRed = -1, clearGreen, clearBlue] = clear;
    for (let from = 0, to = 0; from < rgb.length; from += 3, to += 4) {
        const red = rgb[from];
        const green = rgb[from + 1];
        const blue = rgb[from + 2];
        rgba[to] = red;
        rgba[to + 1] = green;
        rgba[to + 2] = blue;
        const isClear = red === clearRed && green === clearGreen && blue === clearBlue;
        rgba[to + 3] = isClear ? 0 : full;
    }
    return rgba;
}

function fromGrey(samples, { depth, channels }, clear = []) {
    const rgba = new samples.constructor(samples.length / channels * 4);
    const full = depth === 16 ? 65535 : 255;
    const scale = depth < 8 ? 255 / ((1 << depth) - 1) : 1;
    const [clearGrey = -1] = clear;
    for (let from = 0, to = 0; from < samples.length; from += channels, to += 4) {
        const grey = samples[from];
        rgba.fill(grey * scale, to, to + 3);
        if (channels === 2) rgba[to + 3] = samples[from + 1];
        else rgba[to + 3] = grey === clearGrey ? 0 : full;
    }
    return rgba;
}
