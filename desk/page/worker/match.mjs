// The worker's methods for matches: the pattern drawn, measured after a grade, and named.
import { infoOf } from './looks.mjs';
import { PngWriter } from './picture/png_writing.mjs';
import { decodePicture } from './picture/reading.mjs';

export function matchMethods(shared) {
    const { engine, looks } = shared;

    /** Where the picture alone does not tell the pattern's grid, the frame's is tried. */
    function measured(raster, steps, frame) {
        try {
            return engine.measure(raster, steps);
        } catch (error) {
            if (raster.width === frame.width && raster.height === frame.height) throw error;
            return measuredInFrame(raster, steps, frame, error);
        }
    }

    function measuredInFrame(raster, steps, { width, height }, first) {
        try {
            return engine.measure(raster, steps, { frameWidth: width, frameHeight: height });
        } catch {
            throw first;
        }
    }

    return {
        /** The pattern's values. */
        drawPattern({ steps, width, height }) {
            const data = engine.pattern(steps, width, height);
            return { data, transfer: [data.buffer] };
        },

        async patternPng({ steps, width, height }) {
            const png = new PngWriter({ width, height, isOpaque: true });
            await png.write(engine.pattern(steps, width, height));
            return { file: await png.finish() };
        },

        /** The look in a picture of the graded pattern, and how exact it is. */
        async measureMatch({ bytes, steps, frame }) {
            const { data, floats, width, height, depth } = await decodePicture(bytes);
            const { look, noise, ...report } = measured(
                { data: floats ?? data, width, height }, steps, frame);
            const picture = { width, height, depth };
            return { look: infoOf(shared.keep(look), look), range: look.range, report, picture };
        },

        /** A measured look under a name and a match. */
        nameMatch({ key, name, id }) {
            const look = engine.named(looks.get(key), { name, id });
            return { look: infoOf(shared.keep(look), look) };
        },
    };
}
