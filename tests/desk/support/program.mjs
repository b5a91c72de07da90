// The program that runs the effect, with which the tests compare.
import { execFile } from 'node:child_process';
import { readFile, writeFile } from 'node:fs/promises';
import { join } from 'node:path';
import { promisify } from 'node:util';
import { cubeOf, identity } from './looks.mjs';
import { pictureOfPng } from './pictures.mjs';
import { inTemporaryFolder, program } from './places.mjs';

const run = promisify(execFile);

/** What the program prints. */
export async function tintwellHost(...options) {
    const { stdout } = await run(program, options.map(String), { maxBuffer: 1 << 28 });
    return stdout;
}

/**
 * What the program makes of PNG files in 8 bits, all in one run.
 * @param {Uint8Array[]} files
 * @param {Uint8Array|string} cube
 * @param {number} amount
 */
export async function gradedByProgram(files, cube, amount) {
    return inTemporaryFolder(async (folder) => {
        const numbered = (name, at) =>
            join(folder, `${name}.${String(at + 1).padStart(4, '0')}.png`);
        await Promise.all(files.map((file, at) => writeFile(numbered('in', at), file)));
        await writeFile(join(folder, 'look.cube'), cube);
        await tintwellHost(
            'render', join(folder, 'in.%04d.png'), join(folder, 'out.%04d.png'),
            '--lut', join(folder, 'look.cube'), '--amount', amount, '--depth', '8');
        return Promise.all(files.map(async (_, at) =>
            pictureOfPng(await readFile(numbered('out', at)))));
    });
}

/** A JPEG file of a PNG file. */
export function jpegByProgram(png) {
    return inTemporaryFolder(async (folder) => {
        const [from, to, look] = ['in.png', 'out.jpg', 'look.cube']
            .map((name) => join(folder, name));
        await writeFile(from, png);
        await writeFile(look, cubeOf(2, identity));
        await tintwellHost('render', from, to, '--lut', look, '--amount', 0, '--compression', 90);
        return readFile(to);
    });
}

/** The last line of what the program complains. */
export async function complaintOf(...options) {
    try {
        await tintwellHost(...options);
    } catch (error) {
        return error.stderr.trim().split('\n').pop().replace(/^tintwell-host: /, '');
    }
    throw new Error('the program did not complain');
}
