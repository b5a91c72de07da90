// The worker's methods for the picture: opened, shown, asked and saved.
import { gradedPng, gradePiece } from './picture/grading.mjs';
import { Rendering } from './picture/rendering.mjs';
import { Source } from './picture/source.mjs';
import { decodePicture } from './picture/reading.mjs';

const SAMPLE = { width: 960, height: 540 };

/** The pixel at `at`, as four numbers. */
function pixelIn({ data, width }, { x, y }) {
    const at = (y * width + x) * 4;
    return data.subarray(at, at + 4);
}

/**
 * The methods take `picture`, the key of what they are about, and `grade`: the key of a look or
 * null, and the Amount. Topics: "picture.strip" and "picture.progress".
 */
export function pictureMethods(shared) {
    const { engine, looks } = shared;
    let source = null;
    let sourceKey = null;
    let rendering = null;
    let newest = 0;

    /** Of one picture at a time, the last one. */
    function sourceOf(key) {
        if (key !== sourceKey)
            throw new Error('the picture is no longer there; open its file again');
        return source;
    }

    /** Takes the place of the picture there was. */
    function use(picture) {
        source = new Source(picture);
        sourceKey = Math.random();
        rendering = null;
        const { width, height, isOpaque } = source;
        return { key: sourceKey, width, height, isOpaque };
    }

    function gradeOf({ look, amount }) {
        if (look !== null && !looks.has(look))
            throw new Error('the look is no longer there; open its file again');
        return { look: looks.get(look) ?? null, amount };
    }

    function tellStrip(strip) {
        const transfer = [strip.after.buffer];
        if (strip.before) transfer.push(strip.before.buffer);
        shared.tell('picture.strip', strip, transfer);
    }

    return {
        async openPicture({ bytes }) {
            const { data, width, height, depth, kind } = await decodePicture(bytes);
            return { ...use({ data, width, height }), depth, kind };
        },

        /** What there is without a file. */
        samplePicture() {
            const { width, height } = SAMPLE;
            return use({ data: new Uint8Array(engine.scene(width, height).buffer), width, height });
        },

        /** Tells the strips of a view; `done` is false where a newer call came in between. */
        async showPicture({ picture, view, grade }) {
            const number = ++newest;
            const of = sourceOf(picture);
            const looked = gradeOf(grade);
            if (!rendering?.isOf(of, view)) rendering = new Rendering(of, view);
            const wish = { number, grade: looked, isNewest: () => number === newest };
            return { done: await rendering.show(engine, wish, tellStrip) };
        },

        /** One pixel of the picture, before and after. */
        pictureValues({ picture, x, y, grade }) {
            const of = sourceOf(picture);
            const looked = gradeOf(grade);
            const before = pixelIn(of, { x, y });
            const after = gradePiece(engine, before.slice(), 1, looked);
            return { before: [...before], after: [...after] };
        },

        /** The whole graded picture as a PNG. */
        async savePicture({ picture, grade }) {
            const of = sourceOf(picture);
            const looked = gradeOf(grade);
            const tell = (share) => shared.tell('picture.progress', { share });
            const file = await gradedPng(engine, of, looked, tell);
            return { file };
        },
    };
}
