// A picture as the stage needs it: at full size, and ever halved for views from afar.
import { isOpaque } from './reading.mjs';

/** Half as wide and high; colours count as much as their alpha. */
function halved({ data, width, height }) {
    const half = {
        width: Math.ceil(width / 2), height: Math.ceil(height / 2), data: null,
    };
    half.data = new Uint8Array(half.width * half.height * 4);
    const right = 4;
    for (let y = 0, to = 0; y < half.height; ++y) {
        const down = 2 * y + 1 < height ? width * 4 : 0;
        for (let x = 0; x < half.width; ++x, to += 4) {
            const one = (2 * y * width + 2 * x) * 4;
            const other = 2 * x + 1 < width ? one + right : one;
            average(data, one, other, one + down, other + down, half.data, to);
        }
    }
    return half;
}

function average(data, a, b, c, d, out, to) {
    const alphaA = data[a + 3];
    const alphaB = data[b + 3];
    const alphaC = data[c + 3];
    const alphaD = data[d + 3];
    const sum = alphaA + alphaB + alphaC + alphaD;
    if (sum === 1020) {
        for (let k = 0; k < 3; ++k)
            out[to + k] = (data[a + k] + data[b + k] + data[c + k] + data[d + k] + 2) >> 2;
        out[to + 3] = 255;
    } else if (sum > 0) {
        for (let k = 0; k < 3; ++k) {
            out[to + k] = (data[a + k] * alphaA + data[b + k] * alphaB + data[c + k] * alphaC
                + data[d + k] * alphaD) / sum + 0.5;
        }
        out[to + 3] = (sum + 2) >> 2;
    }
}

export class Source {
    #levels;

    /** @param {{data: Uint8Array, width: number, height: number}} picture */
    constructor({ data, width, height }) {
        this.data = data;
        this.width = width;
        this.height = height;
        this.#levels = [this];
    }

    /** Whether nothing shows through. */
    get isOpaque() {
        return isOpaque(this.data);
    }

    /** Halved `times` times. */
    level(times) {
        while (this.#levels.length <= times) this.#levels.push(halved(this.#levels.at(-1)));
        return this.#levels[times];
    }
}
