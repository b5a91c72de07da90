// The program that runs the effect, with which the tests compare.
import { execFile } from 'node:child_process';
import { promisify } from 'node:util';
import { program } from './places.mjs';

const run = promisify(execFile);

/** What the program prints. */
export async function tintwellHost(...options) {
    const { stdout } = await run(program, options.map(String), { maxBuffer: 1 << 28 });
    return stdout;
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
