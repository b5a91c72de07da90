// JPEG by the browser's own decoder, its colours left as they are.
import { checkSize } from './limits.mjs';

const TEM = 0x01;
const FIRST_WITHOUT_LENGTH = 0xd0;
const LAST_WITHOUT_LENGTH = 0xd8;
// Frames begin with SOF0 to SOF15, without DHT, JPG and DAC, which lie between.
const NO_FRAMES = [0xc4, 0xc8, 0xcc];

/** @param {Uint8Array} bytes */
export async function decodeJpeg(bytes) {
    checkSize(...sizeOf(bytes));
    const blob = new Blob([bytes], { type: 'image/jpeg' });
    const bitmap = await createImageBitmap(
        blob, { colorSpaceConversion: 'none', premultiplyAlpha: 'none' }).catch(() => {
        throw new Error('it is damaged: the browser cannot read it');
    });
    const { width, height } = bitmap;
    const canvas = new OffscreenCanvas(width, height);
    const context = canvas.getContext('2d', { willReadFrequently: true });
    context.drawImage(bitmap, 0, 0);
    bitmap.close();
    const { data } = context.getImageData(0, 0, width, height);
    return { data: new Uint8Array(data.buffer), width, height, depth: 8, kind: 'JPEG' };
}

/** Width and height, from the head of the first frame. */
function sizeOf(bytes) {
    const view = new DataView(bytes.buffer, bytes.byteOffset, bytes.byteLength);
    for (let at = 2; at + 9 <= bytes.length; ) {
        if (bytes[at] !== 0xff) break;
        const marker = bytes[at + 1];
        const bare = marker === TEM
            || (marker >= FIRST_WITHOUT_LENGTH && marker <= LAST_WITHOUT_LENGTH);
        if (marker === 0xff) at += 1;
        else if (bare) at += 2;
        else if (marker >= 0xc0 && marker <= 0xcf && !NO_FRAMES.includes(marker))
            return [view.getUint16(at + 7), view.getUint16(at + 5)];
        else at += 2 + view.getUint16(at + 2);
    }
    throw new Error('it is damaged: it does not say how large it is');
}
