// Files that nobody means well with: 200 of them, the same ones each time.
import { gzipSync, deflateSync } from 'node:zlib';
import { crossed, cubeOf } from './looks.mjs';
import { photograph, pngOf, randomNumbers } from './pictures.mjs';
import { chunkOf, headerOf, SIGNATURE } from './png_kinds.mjs';

const random = randomNumbers(20261122);
const below = (limit) => random() % limit;

function randomBytes(count) {
    return Buffer.from(Uint8Array.from({ length: count }, () => random()));
}

function truncated(bytes) {
    return bytes.subarray(0, 1 + below(bytes.length - 1));
}

function flipped(bytes) {
    const changed = Buffer.from(bytes);
    for (let flips = 1 + below(8); flips > 0; --flips)
        changed[below(changed.length)] ^= 1 << below(8);
    return changed;
}

/** Bytes of the head changed, where sizes stand. */
function beheaded(bytes) {
    const changed = Buffer.from(bytes);
    for (let at = 0; at < 6; ++at) changed[below(Math.min(48, changed.length))] = random();
    return changed;
}

function fakePng({ width, height, data, ...rest }) {
    return Buffer.concat([
        SIGNATURE, headerOf({ width, height, depth: 8, colours: 6, ...rest }),
        chunkOf('IDAT', data), chunkOf('IEND', Buffer.alloc(0))]);
}

/** A JPEG's head that says how large it is, and no more. */
function fakeJpeg(width, height) {
    const frame = Buffer.from([0xff, 0xd8, 0xff, 0xc0, 0, 17, 8, 0, 0, 0, 0, 3, 1, 0x22, 0, 2, 0x11,
                               1, 3, 0x11, 1, 0xff, 0xda, 0, 12, 3, 1, 0, 2, 0x11, 3, 0x11, 0, 63,
                               0, 1, 2, 3, 4, 0xff, 0xd9]);
    frame.writeUInt16BE(height, 7);
    frame.writeUInt16BE(width, 9);
    return frame;
}

const zeros = deflateSync(Buffer.alloc(1 << 20));
const handmade = {
    'empty': Buffer.alloc(0),
    'zero.cube': Buffer.alloc(1),
    'zeros.png': Buffer.alloc(100_000),
    'gzip.gz': Buffer.from([0x1f, 0x8b]),
    'bomb.gz': gzipSync(Buffer.alloc(64 << 20), { level: 9 }),
    'signature.png': SIGNATURE,
    'huge.png': fakePng({ width: 2 ** 31 - 1, height: 2 ** 31 - 1, data: zeros }),
    'minus.png': fakePng({ width: 2 ** 32 - 1, height: 1, data: zeros }),
    'wide.png': fakePng({ width: 100_000, height: 1, data: zeros }),
    'bomb.png': fakePng({ width: 16_000, height: 12_000, data: zeros }),
    'nothing.png': fakePng({ width: 0, height: 5, data: zeros }),
    'short.png': fakePng({ width: 100, height: 100, data: deflateSync(Buffer.alloc(10)) }),
    'long.png': fakePng({ width: 1, height: 1, data: zeros }),
    'depth.png': fakePng({ width: 9, height: 9, depth: 7, data: zeros }),
    'kind.png': fakePng({ width: 9, height: 9, colours: 5, data: zeros }),
    'palette.png': fakePng({ width: 1024, height: 1023, colours: 3, data: zeros }),
    'huge.jpg': fakeJpeg(65535, 65535),
    'small.jpg': fakeJpeg(16, 16),
    'nothing.jpg': fakeJpeg(0, 0),
    'start.jpg': Buffer.from([0xff, 0xd8, 0xff]),
    'markers.jpg': Buffer.alloc(5000, 0xff).fill(0xd8, 1, 2),
    'lengths.jpg': Buffer.concat([Buffer.from([0xff, 0xd8]),
                                  ...new Array(2000).fill(Buffer.from([0xff, 0xe0, 0, 0]))]),
    'size.cube': Buffer.from('LUT_3D_SIZE 99999999999999999999\n'),
    'large.cube': Buffer.from('LUT_3D_SIZE 256\n0 0 0\n'),
    'minus.cube': Buffer.from('LUT_3D_SIZE -2\n0 0 0\n'),
    'infinite.cube': Buffer.from(`LUT_3D_SIZE 2\n${'1e999 nan -1e999\n'.repeat(8)}`),
    'line.cube': Buffer.from(`LUT_3D_SIZE 2\n${'1'.repeat(1 << 20)}\n`),
    'lines.cube': Buffer.alloc(1 << 20, '\n'),
    'size.twlut': Buffer.from('TWLUT3 1 x 129 0 1 AAAA'),
    'minus.twlut': Buffer.from('TWLUT3 1 x -129 0 1 AAAA'),
    'range.twlut': Buffer.from(`TWLUT3 1 x 2 -1e38 3e38 ${'/'.repeat(64)}`),
    'name.twlut': Buffer.from(`TWLUT3 1 ${'%ff'.repeat(133)} 2 0 1 ${'A'.repeat(64)}`),
    'marks.bin': Buffer.from('TWLUT3 '.repeat(50_000)),
    'patterns.bin': Buffer.from(Array.from({ length: 500 }, (_, at) => `TWLUTP ${at} `).join('')),
    'script.cube': Buffer.from('TITLE "<img src=x onerror=alert(1)>"\nLUT_3D_SIZE 2\n0\n'),
    '<img src=x onerror=alert(1)>.cube': Buffer.from('<script>alert(1)</script>'),
};

/**
 * @param {(text: string) => Uint8Array} jpeg  A JPEG file.
 * @returns {{name: string, contents: Buffer}[]}
 */
export function hostileFiles(jpeg) {
    const cube = Buffer.from(cubeOf(5, crossed));
    const text = Buffer.from(`TWLUT3 7 Name 2 0 1 ${'AACA//8A'.repeat(8)}`);
    const good = {
        'cube': cube,
        'twlut': text,
        'prproj': gzipSync(`<x>${text}</x>${text.toString('base64')}`),
        'png': Buffer.from(pngOf(photograph(40, 30))),
        'jpg': Buffer.from(jpeg),
    };
    const files = Object.entries(handmade).map(([name, contents]) => ({ name, contents }));
    for (let count = 0; files.length < 200; ++count) {
        const kinds = Object.keys(good);
        const kind = kinds[count % kinds.length];
        const change = [truncated, flipped, beheaded][Math.floor(count / kinds.length) % 3];
        const contents = count % 11 === 10 ? randomBytes(1 + below(4000)) : change(good[kind]);
        files.push({ name: `hostile-${count}.${kind}`, contents });
    }
    return files;
}
