// PNG of every kind, as red, green, blue and straight alpha.
import { decode } from 'fast-png';
import { checkSize } from './limits.mjs';
import { samplesOf } from './png_samples.mjs';

const INDEXED = 3;
const CHANNELS = new Map([[0, 1], [2, 3], [INDEXED, 1], [4, 2], [6, 4]]);
const WITH_ALPHA = [4, 6];
// Where interlaced pixels begin and how far apart they are: across, down, across, down.
const PASSES = [[0, 0, 8, 8], [4, 0, 8, 8], [0, 4, 4, 8], [2, 0, 4, 4], [0, 2, 2, 4], [1, 0, 2, 2],
                [0, 1, 1, 2]];
const AT_ONCE = [[0, 0, 1, 1]];

/** @param {Uint8Array} bytes */
export async function decodePng(bytes) {
    const chunks = chunksOf(bytes);
    const header = headerOf(chunks[0]);
    const { width, height, depth } = header;
    checkSize(width, height);
    if (header.interlaced && depth < 8)
        throw new Error('it is interlaced with fewer than 8 bits, which cannot be read here');
    const needed = chunks.filter(({ kind }) => isNeeded(kind, header));
    await checkData(needed, header);
    const samples = samplesOf(decodeChunks(bytes, needed), header);
    const picture = { data: samples, width, height, depth: 8, kind: 'PNG' };
    if (depth < 16) return picture;
    return {
        ...picture, data: rounded(samples), get floats() { return floatsOf(samples); }, depth,
    };
}

function damaged(how) {
    return new Error(`it is damaged: ${how}`);
}

/** Of each chunk its kind, its contents and all of its bytes. */
function chunksOf(bytes) {
    const view = new DataView(bytes.buffer, bytes.byteOffset, bytes.byteLength);
    const chunks = [];
    for (let at = 8; at + 12 <= bytes.length; ) {
        const end = at + 12 + view.getUint32(at);
        if (end > bytes.length) break;
        const kind = String.fromCharCode(...bytes.subarray(at + 4, at + 8));
        const all = bytes.subarray(at, end);
        chunks.push({ kind, contents: all.subarray(8, -4), all });
        if (kind === 'IEND') return chunks;
        at = end;
    }
    throw damaged('its end is missing');
}

function headerOf({ kind, contents }) {
    if (kind !== 'IHDR' || contents.length !== 13) throw damaged('it does not say how large it is');
    const view = new DataView(contents.buffer, contents.byteOffset);
    const [depth, colours, , , interlaced] = contents.subarray(8);
    if (!CHANNELS.has(colours)) throw damaged('its kind of colours is unknown');
    return {
        width: view.getUint32(0),
        height: view.getUint32(4),
        depth,
        channels: CHANNELS.get(colours),
        indexed: colours === INDEXED,
        hasAlpha: WITH_ALPHA.includes(colours),
        interlaced: interlaced === 1,
    };
}

/** Whether a chunk says anything about the pixels. */
function isNeeded(kind, { indexed, hasAlpha }) {
    if (kind === 'PLTE') return indexed;
    if (kind === 'tRNS') return !hasAlpha;
    return ['IHDR', 'IDAT', 'IEND'].includes(kind);
}

/** That the data unpack to what the size needs: no less, and not to gigabytes. */
async function checkData(chunks, header) {
    const data = chunks.filter(({ kind }) => kind === 'IDAT').map(({ contents }) => contents);
    const unpacked = new Blob(data).stream().pipeThrough(new DecompressionStream('deflate'));
    const needed = bytesNeeded(header);
    let length = 0;
    try {
        for (const reader = unpacked.getReader(); length <= needed; ) {
            const { done, value } = await reader.read();
            if (done) break;
            length += value.length;
        }
    } catch {
        throw damaged('its data cannot be unpacked');
    }
    if (length !== needed) throw damaged('it does not hold as many pixels as it says');
}

function bytesNeeded({ width, height, depth, channels, interlaced }) {
    let sum = 0;
    for (const [left, top, across, down] of interlaced ? PASSES : AT_ONCE) {
        const columns = Math.ceil((width - left) / across);
        const rows = Math.ceil((height - top) / down);
        if (columns > 0 && rows > 0) sum += rows * (1 + Math.ceil(columns * channels * depth / 8));
    }
    return sum;
}

function decodeChunks(bytes, chunks) {
    const parts = [bytes.subarray(0, 8), ...chunks.map(({ all }) => all)];
    const file = new Uint8Array(parts.reduce((sum, { length }) => sum + length, 0));
    let at = 0;
    for (const part of parts) {
        file.set(part, at);
        at += part.length;
    }
    try {
        return decode(file, { checkCrc: true });
    } catch (error) {
        throw damaged(/^CRC/.test(error.message) ? 'a checksum is wrong'
                                                 : 'its pixels cannot be read');
    }
}

function rounded(samples) {
    const bytes = new Uint8Array(samples.length);
    for (let at = 0; at < bytes.length; ++at) bytes[at] = (samples[at] + 128) / 257;
    return bytes;
}

function floatsOf(samples) {
    const step = Math.fround(1 / 65535);
    const floats = new Float32Array(samples.length);
    for (let at = 0; at < floats.length; ++at) floats[at] = samples[at] * step;
    return floats;
}
