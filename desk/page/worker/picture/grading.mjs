// Graded pixels of a picture, in pieces that come to the same as the whole at once.
import { nextTurn } from './turns.mjs';

const PIXELS_AT_ONCE = 1 << 18;

/**
 * @typedef {object} Grade
 * @property {import('tintwell:engine').Look|null} look
 * @property {number} amount
 */

/** Pixels of any place in the picture. Not for the pattern, which has another colour in each. */
export function gradePiece(engine, data, width, { look, amount }) {
    if (!look) return data.slice();
    return engine.grade({ data, width, height: data.length / 4 / width }, look, amount);
}

export function dependsOnPlace({ look }) {
    return look?.kind === 'pattern';
}

/**
 * The whole picture graded; `tell` is called with the share that is done.
 * @param {{data: Uint8Array, width: number, height: number}} picture
 * @param {Grade} grade
 */
export async function gradeWhole(engine, { data, width, height }, grade, tell) {
    if (dependsOnPlace(grade)) return engine.grade({ data, width, height }, grade.look);
    const graded = new Uint8Array(data.length);
    const step = Math.max(1, Math.floor(PIXELS_AT_ONCE / width)) * width * 4;
    for (let at = 0; at < data.length; at += step) {
        graded.set(gradePiece(engine, data.subarray(at, at + step), width, grade), at);
        tell(Math.min(1, (at + step) / data.length));
        await nextTurn();
    }
    return graded;
}
