// A picture's pixels as a view shows them.

/**
 * @typedef {object} View
 * @property {number} id  Another one for each view.
 * @property {number} width  Of the stage, as all here in its pixels.
 * @property {number} height
 * @property {number} zoom  Pixels of the stage for one of the picture.
 * @property {number} left  Where the picture begins; whole numbers.
 * @property {number} top
 */

/**
 * The part of the stage that the picture covers.
 * @param {View} view
 */
export function regionOf({ width, height, zoom, left, top }, source) {
    const right = left + Math.max(1, Math.round(source.width * zoom));
    const bottom = top + Math.max(1, Math.round(source.height * zoom));
    const region = { x: Math.max(0, left), y: Math.max(0, top) };
    return {
        ...region,
        width: Math.max(0, Math.min(width, right) - region.x),
        height: Math.max(0, Math.min(height, bottom) - region.y),
    };
}

/**
 * Pixels of the region, rows [first, last), into `out`, which holds the whole region. From 100 % on
 * they are the picture's own; below they are averages over what each covers.
 */
export function resample(source, view, region, first, last, out) {
    if (view.zoom >= 1) pick(source, view, region, first, last, out);
    else shrink(source, view, region, first, last, out);
}

function nearest(count, begin, zoom, size) {
    return Int32Array.from(
        { length: count },
        (_, at) => Math.min(size - 1, Math.max(0, Math.floor((begin + at + 0.5) / zoom))));
}

function pick({ data, width, height }, view, region, first, last, out) {
    const from = new Uint32Array(data.buffer, data.byteOffset, width * height);
    const to = new Uint32Array(out.buffer);
    const columns = nearest(region.width, region.x - view.left, view.zoom, width);
    const rows = nearest(last - first, region.y + first - view.top, view.zoom, height);
    for (let y = first; y < last; ++y) {
        const row = rows[y - first] * width;
        const begin = y * region.width;
        if (y > first && rows[y - first] === rows[y - first - 1])
            to.copyWithin(begin, begin - region.width, begin);
        else for (let x = 0; x < region.width; ++x) to[begin + x] = from[row + columns[x]];
    }
}

const MOST_SPAN = 4;

/** For each pixel where its share of the picture begins, and how much each sample counts. */
function spans(count, begin, zoom, size) {
    const starts = new Int32Array(count);
    const weights = new Float32Array(count * MOST_SPAN);
    for (let at = 0; at < count; ++at) {
        const low = Math.min(size - 1e-3, Math.max(0, (begin + at) / zoom));
        const high = Math.min(size, Math.max(low + 1e-3, (begin + at + 1) / zoom));
        const start = Math.floor(low);
        starts[at] = start;
        for (let k = 0; k < MOST_SPAN; ++k) {
            const share = Math.min(high, start + k + 1) - Math.max(low, start + k);
            weights[at * MOST_SPAN + k] = Math.max(0, share) / (high - low);
        }
    }
    return { starts, weights };
}

function shrink(source, view, region, first, last, out) {
    const times = Math.floor(Math.log2(1 / view.zoom));
    const level = source.level(times);
    const zoom = view.zoom * 2 ** times;
    const columns = spans(region.width, region.x - view.left, zoom, level.width);
    const rows = spans(last - first, region.y + first - view.top, zoom, level.height);
    for (let y = first; y < last; ++y) {
        for (let x = 0; x < region.width; ++x)
            averageInto(out, (y * region.width + x) * 4, level, columns, x, rows, y - first);
    }
}

function averageInto(out, to, { data, width }, columns, x, rows, y) {
    let red = 0;
    let green = 0;
    let blue = 0;
    let alpha = 0;
    for (let j = 0; j < MOST_SPAN; ++j) {
        const down = rows.weights[y * MOST_SPAN + j];
        if (down === 0) break;
        const row = (rows.starts[y] + j) * width;
        for (let i = 0; i < MOST_SPAN; ++i) {
            const across = columns.weights[x * MOST_SPAN + i];
            if (across === 0) break;
            const at = (row + columns.starts[x] + i) * 4;
            const weight = down * across * data[at + 3];
            red += weight * data[at];
            green += weight * data[at + 1];
            blue += weight * data[at + 2];
            alpha += weight;
        }
    }
    const scale = alpha > 0 ? 1 / alpha : 0;
    out[to] = red * scale + 0.5;
    out[to + 1] = green * scale + 0.5;
    out[to + 2] = blue * scale + 0.5;
    out[to + 3] = alpha + 0.5;
}
