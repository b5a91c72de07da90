// The program that runs the effect, with which the tests compare.
import { execFile } from 'node:child_process';
import { readFile } from 'node:fs/promises';
import { promisify } from 'node:util';
import { pictureOfPng } from './pictures.mjs';
import { program } from './places.mjs';

const run = promisify(execFile);

/** What the program prints. */
export async function tintwellHost(...options) {
    const { stdout } = await run(program, options.map(String), { maxBuffer: 1 << 28 });
    return stdout;
}

/**
 * What the program makes of a picture in 8 bits.
 * @param {{picture: string, look: string, amount: number, out: string}} files  Paths.
 */
export async function gradedByProgram({ picture, look, amount, out }) {
    await tintwellHost('render', picture, out, '--lut', look, '--amount', amount, '--depth', '8');
    return pictureOfPng(await readFile(out));
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
