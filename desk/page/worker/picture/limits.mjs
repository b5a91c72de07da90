// What is too large for the memory of a page, refused before anything is made for it.
const MOST_SIDE = 16384;
const MOST_PIXELS = 200e6;

/** Throws with a sentence. */
export function checkSize(width, height) {
    if (width < 1 || height < 1) throw new Error('it is damaged: it has no pixels');
    const size = `it is ${width} x ${height} pixels`;
    if (width > MOST_SIDE || height > MOST_SIDE)
        throw new Error(`${size}, and a side may have ${MOST_SIDE} at most`);
    if (width * height > MOST_PIXELS) throw new Error(`${size}, and 200 million are the most`);
}
