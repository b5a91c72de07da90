// Writes a PNG while its rows come, so that a large one is never in memory unpacked and the worker can do
// other things in between. The values go in as they are, alpha straight; the browser packs.

const SIGNATURE = [0x89, 0x50, 0x4e, 0x47, 0x0d, 0x0a, 0x1a, 0x0a];
const RGB = 2;
const RGBA = 6;
// Each byte less the one above: a third to a half of the size, and quick.
const UP = 2;

const CRCS = Uint32Array.from({ length: 256 }, (_, byte) => {
    let crc = byte;
    for (let bit = 0; bit < 8; ++bit) crc = crc & 1 ? 0xedb88320 ^ (crc >>> 1) : crc >>> 1;
    return crc;
});

function crcOf(bytes) {
    let crc = 0xffffffff;
    for (let at = 0; at < bytes.length; ++at) crc = CRCS[(crc ^ bytes[at]) & 0xff] ^ (crc >>> 8);
    return (crc ^ 0xffffffff) >>> 0;
}

function chunk(kind, contents) {
    const bytes = new Uint8Array(contents.length + 12);
    const view = new DataView(bytes.buffer);
    view.setUint32(0, contents.length);
    for (let at = 0; at < 4; ++at) bytes[4 + at] = kind.charCodeAt(at);
    bytes.set(contents, 8);
    view.setUint32(8 + contents.length, crcOf(bytes.subarray(4, -4)));
    return bytes;
}

function header(width, height, colours) {
    const contents = new Uint8Array(13);
    const view = new DataView(contents.buffer);
    view.setUint32(0, width);
    view.setUint32(4, height);
    contents.set([8, colours], 8);
    return chunk('IHDR', contents);
}

/** An 8-bit PNG. */
export class PngWriter {
    #parts;
    #width;
    #channels;
    #above;
    #packer = new CompressionStream('deflate');
    #input = this.#packer.writable.getWriter();
    #packed = this.#collect();

    /** @param {{width: number, height: number, isOpaque: boolean}} picture  Opaque: no alpha. */
    constructor({ width, height, isOpaque }) {
        this.#width = width;
        this.#channels = isOpaque ? 3 : 4;
        this.#above = new Uint8Array(width * this.#channels);
        this.#parts = [new Uint8Array(SIGNATURE), header(width, height, isOpaque ? RGB : RGBA)];
    }

    /** Whole rows, after those there are. @param {Uint8Array} rgba */
    async write(rgba) {
        await this.#input.write(this.#filtered(rgba));
    }

    /** @returns {Promise<Blob>} */
    async finish() {
        await this.#input.close();
        await this.#packed;
        this.#parts.push(chunk('IEND', []));
        return new Blob(this.#parts, { type: 'image/png' });
    }

    async #collect() {
        for (const reader = this.#packer.readable.getReader(); ; ) {
            const { done, value } = await reader.read();
            if (done) return;
            this.#parts.push(chunk('IDAT', value));
        }
    }

    #filtered(rgba) {
        const rows = rgba.length / 4 / this.#width;
        const channels = this.#channels;
        const above = this.#above;
        const out = new Uint8Array(rows * (1 + above.length));
        for (let row = 0, from = 0, to = 0; row < rows; ++row) {
            out[to++] = UP;
            for (let at = 0; at < above.length; from += 4) {
                for (let k = 0; k < channels; ++k, ++at) {
                    const value = rgba[from + k];
                    out[to++] = value - above[at];
                    above[at] = value;
                }
            }
        }
        return out;
    }
}
