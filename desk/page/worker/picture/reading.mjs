// Picture files, PNG and JPEG.
import { decodeJpeg } from './jpeg_reading.mjs';
import { decodePng } from './png_reading.mjs';

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

/** Whether all alpha is 255. */
export function isOpaque(rgba) {
    for (let at = 3; at < rgba.length; at += 4) if (rgba[at] !== 255) return false;
    return true;
}
