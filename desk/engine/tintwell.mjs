/**
 * The engine of Tintwell for pages, workers and node: reads and writes looks, grades pictures as the
 * effect does, draws the calibration pattern and measures it.
 *
 * Needs `tintwell_engine.mjs` and `tintwell_engine.wasm` beside it. Pictures are red, green, blue,
 * alpha for each pixel, rows top down without padding, alpha straight. The results are those of the
 * effect on an Intel processor, bit for bit; on Apple silicon a value may differ by a rounding.
 *
 * Threads: an engine belongs to the thread that loaded it. Several may be loaded.
 */
import loadModule from './tintwell_engine.mjs';

/** Said to the user as it is: one sentence without a full stop. */
export class TintwellError extends Error {
    name = 'TintwellError';
}

/** The engine has failed: it, its looks and its pictures are lost. Load it again. */
export class EngineLost extends Error {
    name = 'EngineLost';

    constructor() {
        super('the engine has failed and has to be started again');
    }
}

/**
 * @typedef {object} Finding  One thing that somebody ought to know about a look.
 * @property {'fatal'|'trap'|'note'} weight  fatal: the effect cannot use the look; trap: it works,
 *     and is probably not what was meant.
 * @property {string} id  A word for tools, such as "clipped-highlights".
 * @property {string} words
 * @property {string} advice  What to do; may be empty.
 *
 * @typedef {object} ChannelFacts  Of one channel, while grey rises from 0 to 1.
 * @property {number} fall  The longest way down, and the grey at which it ends.
 * @property {number} fallAt
 * @property {number} flatUpTo  All greys up to this one give one output.
 * @property {number} flatFrom  And all from this one on.
 *
 * @typedef {object} Facts  What a look does, in numbers: 1 is white.
 * @property {number} points
 * @property {number} notNumbers
 * @property {number} lowest
 * @property {number} highest
 * @property {number} below  Lattice points with a value below 0.
 * @property {number} above  Those with one above 1.
 * @property {number} duplicates
 * @property {number} largestChange
 * @property {number[]} black  What black becomes.
 * @property {number[]} white
 * @property {number} cast  Largest difference between two channels of one grey.
 * @property {number} castAt
 * @property {ChannelFacts} red
 * @property {ChannelFacts} green
 * @property {ChannelFacts} blue
 *
 * @typedef {object} Check
 * @property {boolean} works  Whether the effect shows the look.
 * @property {string} name
 * @property {bigint} id
 * @property {number} size  0 where it could not be read.
 * @property {Finding[]} findings  Heaviest first.
 * @property {Facts|null} facts
 * @property {{largest: number, mean: number}|null} precision  What a .cube file loses as it becomes
 *     a text, in steps of 8 bits.
 *
 * @typedef {object} Measurement
 * @property {Look} look
 * @property {number} columns  Patches across.
 * @property {number} rows
 * @property {number} patchWidth  The smallest, in pixels.
 * @property {number} patchHeight
 * @property {number} pixelsRead  Of each patch, at least.
 * @property {number} middleNoise  In steps of 8 bits, as the next ones.
 * @property {number} mostNoise
 * @property {number} middleError  How far the look's points are off.
 * @property {number} mostError
 * @property {number[]} noisiest  The colour of the noisiest patch in the pattern.
 * @property {boolean} poor  Less compression, a larger frame or fewer steps would help.
 * @property {number[]} noise  Of each patch in lattice order; 1 is white.
 *
 * @typedef {object} Place
 * @property {number} offset  In the bytes; in those that were packed, for gzip.
 * @property {boolean} base64
 * @property {boolean} wide  In 16-bit units.
 *
 * @typedef {object} Found
 * @property {{look: Look, count: number, places: Place[]}[]} looks  Each distinct one; at most 20
 *     places of each are told.
 * @property {{reason: string, count: number, places: Place[]}[]} unreadable
 * @property {number} beyond  Texts that came after the first 10,000 distinct looks.
 *
 * @typedef {object} EditRequest
 * @property {'whole'|'cut'|'unfinished'|'foreign'} state  unfinished: read the file again.
 * @property {bigint} id  0 when there is none.
 * @property {string|null} name
 * @property {bigint|null} at  Milliseconds since 1970 UTC.
 *
 * @typedef {object} Raster
 * @property {Uint8Array|Uint8ClampedArray|Float32Array} data  Floats: 1 is white, not limited.
 * @property {number} width
 * @property {number} height
 */

const MOST_BYTES = 1 << 30;
// What a look may be unpacked to: a project that is packed a hundred times over is none.
const MOST_UNPACKED = 2 ** 34;
const PIECE = 1 << 20;
// Engines of JavaScript refuse calls with some 100,000.
const MOST_ARGUMENTS = 1 << 14;
// As tintwell-host reads files of 8 bits: the last bit of a measured value hangs on it.
const A_255TH = Math.fround(1 / 255);

/** Makes what the engine says to the user a TintwellError. */
function told(call) {
    try {
        return call();
    } catch (error) {
        if (error instanceof WebAssembly.RuntimeError) throw new EngineLost();
        if (error?.constructor === Error) throw new TintwellError(error.message);
        throw error;
    }
}

function release(...handles) {
    told(() => handles.forEach((handle) => handle.delete()));
}

/** Frees what the user forgot. */
const forgotten = new FinalizationRegistry((handle) => handle.delete());

/** A look. Never changes; free() it when it is no longer needed, or leave it to the collector. */
export class Look {
    #handle;

    /** @hidden */
    constructor(handle) {
        this.#handle = handle;
        forgotten.register(this, handle, this);
    }

    /** @hidden */
    get handle() {
        if (!this.#handle) throw new TintwellError('the look has been freed');
        return this.#handle;
    }

    /** What the effect does with it. @type {'lut'|'pattern'|'none'} */
    get kind() {
        return this.handle.kind;
    }

    /** The match; 0 when unknown. @type {bigint} */
    get id() {
        return BigInt(this.handle.id);
    }

    /** @type {string} */
    get name() {
        return this.handle.name;
    }

    /** Points an axis; 0 without a LUT. @type {number} */
    get size() {
        return this.handle.size;
    }

    /** Steps a channel of a pattern, else 0. @type {number} */
    get steps() {
        return this.handle.steps;
    }

    /** The lowest and the highest value; null without a LUT. @type {[number, number]|null} */
    get range() {
        return this.handle.range;
    }

    free() {
        if (!this.#handle) return;
        forgotten.unregister(this);
        release(this.#handle);
        this.#handle = null;
    }
}

/** @param {Uint8Array|ArrayBuffer|string} contents */
function bytesOf(contents) {
    if (typeof contents === 'string') return new TextEncoder().encode(contents);
    if (contents instanceof ArrayBuffer) return new Uint8Array(contents);
    return new Uint8Array(contents.buffer, contents.byteOffset, contents.byteLength);
}

/** What C++ would cut silently is refused here. */
function checkPicture({ data, width, height }) {
    const isOf8Bits = data instanceof Uint8Array || data instanceof Uint8ClampedArray;
    if (!isOf8Bits && !(data instanceof Float32Array))
        throw new TintwellError('the values of a picture are bytes or floats of 32 bits');
    checkWhole(width, height);
}

function checkWhole(...numbers) {
    if (!numbers.every((number) => Number.isInteger(number) && Math.abs(number) < 2 ** 31))
        throw new TintwellError('sizes and steps are whole numbers');
}

function idText(id) {
    let whole;
    try {
        whole = BigInt(id);
    } catch {
        whole = 2n ** 64n;
    }
    if (BigInt.asIntN(64, whole) !== whole)
        throw new TintwellError('a match id is a whole number of 64 bits');
    return String(whole);
}

function floatsOf(bytes) {
    const floats = new Float32Array(bytes.length);
    for (let at = 0; at < bytes.length; ++at) floats[at] = bytes[at] * A_255TH;
    return floats;
}

async function* piecesOf(bytes) {
    if (bytes[0] !== 0x1f || bytes[1] !== 0x8b) {
        for (let at = 0; at < bytes.length; at += PIECE) yield bytes.subarray(at, at + PIECE);
        return;
    }
    const stream = new Blob([bytes]).stream().pipeThrough(new DecompressionStream('gzip'));
    let unpacked = 0;
    for (const reader = stream.getReader(); ; ) {
        const { done, value } = await reader.read().catch(() => {
            throw new TintwellError('it is a damaged gzip file');
        });
        if (done) return;
        unpacked += value.length;
        if (unpacked > MOST_UNPACKED) throw new TintwellError('it holds more than 16 GB when unpacked');
        yield value;
    }
}

/** Made by loadEngine. */
class Engine {
    #module;

    constructor(module) {
        this.#module = module;
    }

    /** Calls `use` with a copy of bytes or floats in the engine's memory. */
    #with(Kind, values, use) {
        if (values.byteLength > MOST_BYTES) throw new TintwellError('it is larger than 1 GB');
        const copy = told(() => new Kind(values.length));
        try {
            copy.view().set(values);
            return told(() => use(copy));
        } finally {
            release(copy);
        }
    }

    #withBytes(contents, use) {
        return this.#with(this.#module.Bytes, bytesOf(contents), use);
    }

    /** The values of what `make` gives, freed there. */
    #taken(make) {
        const made = told(make);
        try {
            return made.view().slice();
        } finally {
            release(made);
        }
    }

    /**
     * A .cube file, by the rules of the effect's LUT button.
     * @param {Uint8Array|ArrayBuffer|string} contents
     * @param {string} [name]  The file's; gives the look its name.
     * @returns {Look}
     */
    readCube(contents, name = '') {
        return this.#withBytes(
            contents, (bytes) => new Look(this.#module.readCube(bytes, name)));
    }

    /**
     * A TWLUT text, 8-bit or in 16-bit little-endian units, as a parameter or a file holds it.
     * @param {Uint8Array|ArrayBuffer|string} contents
     * @returns {Look}
     */
    readText(contents) {
        return this.#withBytes(contents, (bytes) => new Look(this.#module.readText(bytes)));
    }

    /** Whether readText would look into these bytes. */
    isText(contents) {
        return this.#withBytes(contents, (bytes) => this.#module.isText(bytes));
    }

    #textOf(look) {
        return this.#taken(() => this.#module.textOf(look.handle));
    }

    /**
     * The TWLUT text of a look, one character a byte. toUtf16 makes of it what a parameter stores.
     * @param {Look} look
     * @returns {string}
     */
    writeText(look) {
        const bytes = this.#textOf(look);
        let text = '';
        for (let at = 0; at < bytes.length; at += MOST_ARGUMENTS)
            text += String.fromCharCode(...bytes.subarray(at, at + MOST_ARGUMENTS));
        return text;
    }

    /**
     * The .cube file of a look with a LUT.
     * @param {Look} look
     * @returns {Uint8Array}
     */
    writeCube(look) {
        return this.#taken(() => this.#module.cubeOf(look.handle));
    }

    /**
     * The same look under another match and name.
     * @param {Look} look
     * @param {{id?: bigint|number, name?: string}} change
     * @returns {Look}
     */
    named(look, { id = look.id, name = look.name }) {
        return told(() => new Look(this.#module.named(look.handle, idText(id), name)));
    }

    /**
     * What the effect makes of a picture: graded, the calibration pattern, or the picture itself.
     * @template {Uint8Array|Uint8ClampedArray|Float32Array} Data
     * @param {{data: Data, width: number, height: number}} picture
     * @param {Look} look
     * @param {number} [amount]  0 to 100.
     * @returns {Data}  New values; the picture's own are left alone.
     */
    grade(picture, look, amount = 100) {
        checkPicture(picture);
        const { data, width, height } = picture;
        const floats = data instanceof Float32Array;
        const Kind = floats ? this.#module.Floats : this.#module.Bytes;
        return this.#with(Kind, data, (copy) => {
            this.#module[floats ? 'gradeF' : 'grade8'](copy, width, height, look.handle, amount);
            return new data.constructor(copy.view());
        });
    }

    /**
     * The calibration pattern.
     * @param {number} steps  2 to 64 a channel.
     * @param {number} width
     * @param {number} height
     * @returns {Uint8ClampedArray}
     */
    pattern(steps, width, height) {
        checkWhole(steps, width, height);
        return new Uint8ClampedArray(
            this.#taken(() => this.#module.drawPattern(steps, width, height)).buffer);
    }

    /**
     * A computed picture to look at looks with: an evening landscape, greys, skin, strong colours.
     * @param {number} width  2 or more.
     * @param {number} height
     * @returns {Uint8ClampedArray}
     */
    scene(width, height) {
        checkWhole(width, height);
        return new Uint8ClampedArray(
            this.#taken(() => this.#module.drawScene(width, height)).buffer);
    }

    /**
     * The look in a picture of the calibration pattern that somebody has graded.
     * @param {Raster} picture
     * @param {number} steps  Of the pattern.
     * @param {object} [options]
     * @param {number} [options.frameWidth]  In which the pattern was drawn, if the picture has been
     *     scaled since.
     * @param {number} [options.frameHeight]
     * @param {bigint|number} [options.id]
     * @param {string} [options.name]
     * @returns {Measurement}
     */
    measure(picture, steps, options = {}) {
        checkPicture(picture);
        const { data, width, height } = picture;
        const { frameWidth = 0, frameHeight = 0, id = 0, name = '' } = options;
        checkWhole(steps, frameWidth, frameHeight);
        const isOf8Bits = !(data instanceof Float32Array);
        const floats = isOf8Bits ? floatsOf(data) : data;
        return this.#with(this.#module.Floats, floats, (copy) => {
            const frame = { size: steps, width: frameWidth, height: frameHeight };
            const report = {};
            const look = this.#module.measure(copy, width, height, frame, isOf8Bits, idText(id),
                                              name, report);
            return { ...report, look: new Look(look) };
        });
    }

    /**
     * Will it work in the effect, and what is worth knowing about it? Takes what a file holds, a
     * .cube file or a TWLUT text, whole or damaged.
     * @param {Uint8Array|ArrayBuffer|string|Look} contents
     * @param {string} [name]  Of a .cube file.
     * @returns {Check}
     */
    check(contents, name = '') {
        if (contents instanceof Look) return this.check(this.#textOf(contents));
        return this.#withBytes(contents, (bytes) => {
            const found = this.#module.isText(bytes) ? this.#module.checkText(bytes)
                                                     : this.#module.checkCube(bytes, name);
            return { ...found, id: BigInt(found.id) };
        });
    }

    /**
     * The looks in bytes of any kind: project files as they are, gzipped or in XML.
     * @param {Uint8Array|ArrayBuffer|string} contents
     * @returns {Promise<Found>}
     */
    async findLooks(contents) {
        const finder = told(() => new this.#module.LookFinder());
        const piece = told(() => new this.#module.Bytes(PIECE));
        try {
            for await (const bytes of piecesOf(bytesOf(contents))) {
                for (let at = 0; at < bytes.length; at += PIECE) {
                    const part = bytes.subarray(at, at + PIECE);
                    piece.view().set(part);
                    told(() => finder.take(piece, part.length));
                }
            }
            const found = told(() => finder.findings());
            const looks = found.looks.map(
                ({ text, ...rest }) => ({ look: this.readText(text), ...rest }));
            return { ...found, looks };
        } finally {
            release(piece, finder);
        }
    }

    /**
     * The contents of `edit-request.json`.
     * @param {Uint8Array|ArrayBuffer|string} contents
     * @returns {EditRequest}
     */
    parseEditRequest(contents) {
        return this.#withBytes(contents, (bytes) => {
            const { state, id, name, at } = this.#module.readEditRequest(bytes);
            return { state, id: BigInt(id), name, at: at === null ? null : BigInt(at) };
        });
    }

    /**
     * What a look makes of evenly spread greys: red, green, blue for each.
     * @param {Look} look
     * @param {number} [count]
     * @returns {Float32Array}
     */
    neutralAxis(look, count = 256) {
        return this.#taken(() => this.#module.neutralAxisOf(look.handle, count));
    }

    /**
     * The LUT's values: red, green, blue for each lattice point, red fastest, then green, then blue.
     * @param {Look} look
     * @returns {Float32Array}
     */
    samples(look) {
        return this.#taken(() => this.#module.samplesOf(look.handle));
    }

    /**
     * How far two looks are from one another over all colours, in steps of 8 bits.
     * @param {Look} one
     * @param {Look} other
     * @returns {{largest: number, mean: number}}
     */
    compare(one, other) {
        return told(() => this.#module.compare(one.handle, other.handle));
    }
}

/**
 * What the effect's LUT parameter stores for a text: its characters in 16-bit little-endian units.
 * @param {string} text
 * @returns {Uint8Array}
 */
export function toUtf16(text) {
    const bytes = new Uint8Array(text.length * 2);
    for (let at = 0; at < text.length; ++at) bytes[at * 2] = text.charCodeAt(at);
    return bytes;
}

/**
 * @param {{wasmBinary?: Uint8Array|ArrayBuffer}} [options]  The bytes of tintwell_engine.wasm where
 *     they cannot be fetched from beside this file: in node, and in pages opened from disk.
 * @returns {Promise<Engine>}
 */
export async function loadEngine(options = {}) {
    // The loader would else look for the place of this file, which a packed page does not have.
    const place = options.wasmBinary ? { locateFile: (file) => file } : {};
    return new Engine(await loadModule({ ...options, ...place }));
}
