// What the stage shows of a picture, strip by strip.
import { gradePiece } from './grading.mjs';
import { regionOf, resample } from './resampling.mjs';
import { nextTurn } from './turns.mjs';

// A few milliseconds of work, so that newer wishes need not wait.
const PIXELS_IN_STRIP = 1 << 16;

/** One view of a picture. Its resampled pixels are kept for the next look or Amount. */
export class Rendering {
    #source;
    #region;
    #before;
    #strips = [];

    /**
     * @param {import('./source.mjs').Source} source
     * @param {import('./resampling.mjs').View} view
     */
    constructor(source, view) {
        this.#source = source;
        this.view = view;
        this.#region = regionOf(view, source);
        const { width, height } = this.#region;
        this.#before = new Uint8Array(width * height * 4);
        const rows = Math.max(1, Math.floor(PIXELS_IN_STRIP / Math.max(1, width)));
        for (let first = 0; width && first < height; first += rows)
            this.#strips.push({ first, last: Math.min(height, first + rows), gradedBy: 0 });
    }

    isOf(source, view) {
        return this.#source === source && this.view.id === view.id;
    }

    /**
     * Hands the strips to `tell`, until `isNewest` says no.
     * @param {object} wish
     * @param {number} wish.number  Rises with each wish; from 1 on.
     * @param {import('./grading.mjs').Grade} wish.grade
     * @param {() => boolean} wish.isNewest
     * @returns {Promise<boolean>}  Whether all have been told.
     */
    async show(engine, { number, grade, isNewest }, tell) {
        for (const strip of this.#inOrder()) {
            if (!isNewest()) return false;
            tell(this.#render(engine, strip, grade));
            strip.gradedBy = number;
            await nextTurn();
        }
        return true;
    }

    /** From the middle; those that have waited longest first, or a dragged slider starves some. */
    #inOrder() {
        const middle = this.#region.height / 2;
        const distance = ({ first, last }) => Math.abs((first + last) / 2 - middle);
        return [...this.#strips].sort(
            (a, b) => a.gradedBy - b.gradedBy || distance(a) - distance(b));
    }

    #render(engine, strip, grade) {
        const { first, last } = strip;
        const { x, y, width } = this.#region;
        const part = (pixels) => pixels.subarray(first * width * 4, last * width * 4);
        const isNew = strip.gradedBy === 0;
        if (isNew) resample(this.#source, this.view, this.#region, first, last, this.#before);
        return {
            view: this.view.id,
            x,
            y: y + first,
            width,
            before: isNew ? part(this.#before).slice() : null,
            after: gradePiece(engine, part(this.#before), width, grade),
        };
    }
}
