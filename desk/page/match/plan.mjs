// How a pattern lies in a frame: the grid that the effect draws.

export const LEAST_PATCH = 6;
const MOST_SIDE = 16384;
const MOST_PIXELS = 64e6;
const FEWEST_STEPS = 2;
const MOST_STEPS = 64;

function isWhole(value, least, most) {
    return Number.isInteger(value) && value >= least && value <= most;
}

/** Why there is no such pattern, as the engine would say it; empty where there is. */
export function whyNoPattern({ steps, width, height }) {
    if (!isWhole(steps, FEWEST_STEPS, MOST_STEPS))
        return `the steps are a whole number from ${FEWEST_STEPS} to ${MOST_STEPS}`;
    if (!isWhole(width, 1, MOST_SIDE) || !isWhole(height, 1, MOST_SIDE))
        return `a frame is 1 to ${MOST_SIDE} pixels wide and high`;
    if (width * height > MOST_PIXELS) return 'a frame has 64 million pixels at most';
    return '';
}

/**
 * Columns and rows of patches, and the smallest patch in pixels.
 * @param {{steps: number, width: number, height: number}} frame
 */
export function gridOf({ steps, width, height }) {
    const patches = steps ** 3;
    const columns = Math.max(1, Math.ceil(Math.sqrt(width / height * patches)));
    const rows = Math.ceil(patches / columns);
    return {
        columns,
        rows,
        patchWidth: Math.floor(width / columns),
        patchHeight: Math.floor(height / rows),
    };
}

/** Whether the patches are large enough to be measured. */
export function isMeasurable(frame) {
    const { patchWidth, patchHeight } = gridOf(frame);
    return Math.min(patchWidth, patchHeight) >= LEAST_PATCH;
}

/** The most steps that can be measured in a frame; 0 where even the fewest cannot. */
export function mostSteps({ width, height }) {
    for (let steps = MOST_STEPS; steps >= FEWEST_STEPS; --steps)
        if (isMeasurable({ steps, width, height })) return steps;
    return 0;
}

/** The smallest frame of the same shape in which the steps can be measured; null for none. */
export function leastFrame({ steps, width, height }) {
    for (let high = height; high <= MOST_SIDE; ++high) {
        const frame = { steps, width: Math.floor(high * width / height), height: high };
        if (frame.width > MOST_SIDE) return null;
        if (isMeasurable(frame)) return frame;
    }
    return null;
}
