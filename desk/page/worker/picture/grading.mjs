// Graded pixels of a picture, in pieces that come to the same as the whole at once.
import { PngWriter } from './png_writing.mjs';
import { nextTurn } from './turns.mjs';

const PIXELS_AT_ONCE = 1 << 16;

/**
 * @typedef {object} Grade
 * @property {import('tintwell:engine').Look|null} look
 * @property {number} amount
 */

/**
 * Pixels of any place in the picture.
 * @param {Uint8Array} data
 * @param {number} width
 * @param {Grade} grade
 */
export function gradePiece(engine, data, width, { look, amount }) {
    if (!look) return data.slice();
    return engine.grade({ data, width, height: data.length / 4 / width }, look, amount);
}

/**
 * The whole graded picture as a PNG; `tell` is called with the share that is done.
 * @param {import('./source.mjs').Source} source
 * @param {Grade} grade
 * @returns {Promise<Blob>}
 */
export async function gradedPng(engine, source, grade, tell) {
    const { data, width, height, isOpaque } = source;
    const png = new PngWriter({ width, height, isOpaque });
    const step = Math.ceil(PIXELS_AT_ONCE / width) * width * 4;
    for (let at = 0; at < data.length; at += step) {
        const piece = data.subarray(at, at + step);
        await png.write(gradePiece(engine, piece, width, grade));
        tell(Math.min(1, (at + step) / data.length));
        await nextTurn();
    }
    return png.finish();
}
