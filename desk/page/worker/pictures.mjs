// The worker's methods for the picture: opened, shown, asked and saved.
import { dependsOnPlace, gradedPng, gradePiece } from './picture/grading.mjs';
import { Rendering } from './picture/rendering.mjs';
import { Source } from './picture/source.mjs';
import { decodePicture } from './png.mjs';

const SAMPLE = { width: 1280, height: 720 };

/** The pixel at `at`, as four numbers. */
function pixelIn({ data, width }, { x, y }) {
    const at = (y * width + x) * 4;
    return data.subarray(at, at + 4);
}

/**
 * Each method takes `grade`: the key of a look or null, and the Amount. Topics: "picture.strip" and
 * "picture.progress".
 */
export function pictureMethods(shared) {
    const { engine, looks } = shared;
    let source = null;
    let rendering = null;
    let newest = 0;
    // The last look that had to grade the whole picture, and what came out.
    let whole = {};

    function sourceNow() {
        if (!source) {
            const { width, height } = SAMPLE;
            const data = new Uint8Array(engine.scene(width, height).buffer);
            source = new Source({ data, width, height });
        }
        return source;
    }

    function use(picture) {
        source = new Source(picture);
        rendering = null;
        whole = {};
    }

    function gradeOf({ look, amount }) {
        return { look: looks.get(look) ?? null, amount };
    }

    /** The whole graded picture, for looks whose pixels depend on where they are; else null. */
    function wholeGraded(of, grade) {
        if (!dependsOnPlace(grade)) return null;
        if (whole.look !== grade.look) {
            const { width, height } = of;
            const data = engine.grade({ data: of.data, width, height }, grade.look);
            whole = { look: grade.look, graded: new Source({ data, width, height }) };
        }
        return whole.graded;
    }

    function tellStrip(strip) {
        const transfer = [strip.after.buffer];
        if (strip.before) transfer.push(strip.before.buffer);
        shared.tell('picture.strip', strip, transfer);
    }

    return {
        /** Takes a picture file in place of the picture there was. */
        async openPicture({ bytes }) {
            const { data, width, height, depth, kind } = await decodePicture(bytes);
            use({ data, width, height });
            return { width, height, depth, kind, isOpaque: source.isOpaque };
        },

        /** What there is without a file. */
        samplePicture() {
            const { width, height, isOpaque } = sourceNow();
            return { width, height, isOpaque };
        },

        /** Tells the strips of a view; `done` is false where a newer call came in between. */
        async showPicture({ view, grade }) {
            const number = ++newest;
            const of = sourceNow();
            const looked = gradeOf(grade);
            const graded = wholeGraded(of, looked);
            if (!rendering?.isOf(of, graded, view)) rendering = new Rendering(of, graded, view);
            const wish = { number, grade: looked, isNewest: () => number === newest };
            return { done: await rendering.show(engine, wish, tellStrip) };
        },

        /** One pixel of the picture, before and after. */
        pictureValues({ x, y, grade }) {
            const of = sourceNow();
            const looked = gradeOf(grade);
            const before = pixelIn(of, { x, y });
            const graded = wholeGraded(of, looked);
            const after = graded ? pixelIn(graded, { x, y })
                                 : gradePiece(engine, before.slice(), 1, looked);
            return { before: [...before], after: [...after] };
        },

        /** The whole graded picture as a PNG. */
        async savePicture({ grade }) {
            const of = sourceNow();
            const looked = gradeOf(grade);
            const tell = (share) => shared.tell('picture.progress', { share });
            const file = await gradedPng(engine, of, wholeGraded(of, looked), looked, tell);
            return { file };
        },
    };
}
