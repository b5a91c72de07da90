// PNG files of every kind, written by hand: encoders write only a few of them.
import { deflateSync } from 'node:zlib';

const PASSES = [[0, 0, 8, 8], [4, 0, 8, 8], [0, 4, 4, 8], [2, 0, 4, 4], [0, 2, 2, 4], [1, 0, 2, 2],
                [0, 1, 1, 2]];
const CHANNELS = { 0: 1, 2: 3, 3: 1, 4: 2, 6: 4 };

function checksumOf(bytes) {
    let sum = 0xffffffff;
    for (const byte of bytes) {
        sum ^= byte;
        for (let bit = 0; bit < 8; ++bit) sum = (sum >>> 1) ^ (sum & 1 ? 0xedb88320 : 0);
    }
    return (sum ^ 0xffffffff) >>> 0;
}

export function chunkOf(kind, contents) {
    const chunk = Buffer.alloc(12 + contents.length);
    chunk.writeUInt32BE(contents.length);
    chunk.write(kind, 4, 'latin1');
    chunk.set(contents, 8);
    chunk.writeUInt32BE(checksumOf(chunk.subarray(4, -4)), 8 + contents.length);
    return chunk;
}

export function headerOf({ width, height, depth, colours, interlaced = false }) {
    const header = Buffer.alloc(13);
    header.writeUInt32BE(width);
    header.writeUInt32BE(height, 4);
    header.set([depth, colours, 0, 0, interlaced ? 1 : 0], 8);
    return chunkOf('IHDR', header);
}

function packedRow(samples, depth) {
    const row = Buffer.alloc(1 + Math.ceil((samples.length * depth) / 8));
    samples.forEach((sample, at) => {
        if (depth === 16) row.writeUInt16BE(sample, 1 + at * 2);
        else row[1 + ((at * depth) >> 3)] |= sample << (8 - depth - ((at * depth) & 7));
    });
    return row;
}

function rowsOf({ width, height, depth, colours, interlaced = false, sampleAt }) {
    const rows = [];
    for (const [left, top, across, down] of interlaced ? PASSES : [[0, 0, 1, 1]]) {
        for (let y = top; y < height; y += down) {
            const samples = [];
            for (let x = left; x < width; x += across)
                for (let channel = 0; channel < CHANNELS[colours]; ++channel)
                    samples.push(sampleAt(x, y, channel));
            if (samples.length) rows.push(packedRow(samples, depth));
        }
    }
    return Buffer.concat(rows);
}

export const SIGNATURE = Buffer.from('\x89PNG\r\n\x1a\n', 'latin1');

/**
 * @param {object} kind
 * @param {number} kind.width
 * @param {number} kind.height
 * @param {number} kind.depth  1, 2, 4, 8 or 16.
 * @param {number} kind.colours  0, 2, 3, 4 or 6, as in the header.
 * @param {boolean} [kind.interlaced]
 * @param {number[]} [kind.palette]
 * @param {number[]} [kind.transparent]  Contents of tRNS.
 * @param {(x: number, y: number, channel: number) => number} kind.sampleAt
 */
export function pngOfKind(kind) {
    const { palette, transparent } = kind;
    return Buffer.concat([
        SIGNATURE, headerOf(kind),
        ...(palette ? [chunkOf('PLTE', Buffer.from(palette))] : []),
        ...(transparent ? [chunkOf('tRNS', Buffer.from(transparent))] : []),
        chunkOf('IDAT', deflateSync(rowsOf(kind))),
        chunkOf('IEND', Buffer.alloc(0)),
    ]);
}
