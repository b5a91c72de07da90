// Picture files: PNG and JPEG are read, PNG is written.
import { encode } from 'fast-png';
import { decodeJpeg } from './picture/jpeg_reading.mjs';
import { decodePng } from './picture/png_reading.mjs';

/**
 * @typedef {object} FilePicture
 * @property {Uint8Array} data  Red, green, blue, straight alpha; 16 bits are rounded to 8.
 * @property {Float32Array} [floats]  Of a 16-bit file, the same with all its bits: 1 is white.
 *     Made whenever it is asked for.
 * @property {number} width
 * @property {number} height
 * @property {8|16} depth  Of the file.
 * @property {'PNG'|'JPEG'} kind
 */

/**
 * @param {Uint8Array} bytes  What the file holds.
 * @returns {Promise<FilePicture>}  Rejects with a sentence without a full stop.
 */
export async function decodePicture(bytes) {
    if (startsWith(bytes, 0x89, 0x50, 0x4e, 0x47)) return decodePng(bytes);
    if (startsWith(bytes, 0xff, 0xd8, 0xff)) return decodeJpeg(bytes);
    throw new Error('it is neither PNG nor JPEG');
}

function startsWith(bytes, ...first) {
    return first.every((value, at) => bytes[at] === value);
}

/**
 * An 8-bit PNG with the very values; without alpha where all of it is 255.
 * @param {{data: Uint8Array|Uint8ClampedArray, width: number, height: number}} picture
 * @returns {Uint8Array}
 */
export function encodePng({ data, width, height }) {
    const opaque = isOpaque(data);
    const picture = opaque ? { data: withoutAlpha(data), channels: 3 } : { data, channels: 4 };
    // More than the lowest level takes longer and gains next to nothing.
    return encode({ ...picture, width, height, depth: 8 }, { zlib: { level: 1 } });
}

/** Whether all alpha is 255. */
export function isOpaque(rgba) {
    for (let at = 3; at < rgba.length; at += 4) if (rgba[at] !== 255) return false;
    return true;
}

function withoutAlpha(rgba) {
    const rgb = new Uint8Array(rgba.length / 4 * 3);
    for (let from = 0, to = 0; from < rgba.length; from += 4) {
        rgb[to++] = rgba[from];
        rgb[to++] = rgba[from + 1];
        rgb[to++] = rgba[from + 2];
    }
    return rgb;
}
