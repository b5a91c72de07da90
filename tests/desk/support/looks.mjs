// Looks that the tests make, as .cube files.

/**
 * @param {number} size
 * @param {(r: number, g: number, b: number) => number[]} change
 * @param {string[]} [head]  Lines before the size.
 */
export function cubeOf(size, change, head = []) {
    const lines = [...head, `LUT_3D_SIZE ${size}`];
    const last = size - 1;
    for (let b = 0; b < size; ++b)
        for (let g = 0; g < size; ++g)
            for (let r = 0; r < size; ++r) {
                const colour = change(r / last, g / last, b / last);
                lines.push(colour.map((value) => value.toFixed(6)).join(' '));
            }
    return `${lines.join('\n')}\n`;
}

export const identity = (r, g, b) => [r, g, b];

/** A look of a curve, a turn of the hue and values below 0 and above 1. */
export function crossed(r, g, b) {
    const luma = 0.2126 * r + 0.7152 * g + 0.0722 * b;
    const curve = (value) => value * value * (3 - 2 * value);
    return [curve(0.8 * r + 0.3 * luma - 0.04), curve(0.9 * g + 0.1 * b),
            1.1 * b - 0.05 * r + 0.02];
}

export const crossed33 = cubeOf(33, crossed);

/** A look of one colour, of any size: its bytes. */
export function flatCube(size) {
    return Buffer.from(`LUT_3D_SIZE ${size}\n${'0 0 0\n'.repeat(size ** 3)}`);
}
