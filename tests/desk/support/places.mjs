// Where the tests find what they try, and what they need for it.
import { createRequire } from 'node:module';
import { mkdtemp, rm } from 'node:fs/promises';
import { readFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join, resolve } from 'node:path';
import { fileURLToPath, pathToFileURL } from 'node:url';

export const root = fileURLToPath(new URL('../../..', import.meta.url));

const given = (variable, usual) => resolve(root, process.env[variable] ?? usual);

export const engineFolder = given('TINTWELL_ENGINE', 'build/desk/desk/engine');
export const pageFile = given('TINTWELL_DESK', 'build/desk/desk.html');
export const program = given('TINTWELL_HOST', 'build/dev/tintwell-host');
export const screenshotFolder = join(root, 'build/desk/screenshots');

const requireFromDesk = createRequire(join(root, 'desk/package.json'));

/** The path of a file of a package that the page is built or tested with. */
export function packageFile(name) {
    return join(root, 'desk/node_modules', name);
}

export const puppeteer = requireFromDesk('puppeteer-core');
export const esbuild = requireFromDesk('esbuild');
export const { decode: decodePng, encode: encodePng } =
    await import(pathToFileURL(packageFile('fast-png/lib/index.js')));

/** The contents of a file of the project. */
export function contentsOf(path) {
    return new Uint8Array(readFileSync(join(root, path)));
}

export function jsonOf(path) {
    return JSON.parse(new TextDecoder().decode(contentsOf(path)));
}

/** A folder, to be removed. */
export async function makeTemporaryFolder() {
    const path = await mkdtemp(join(tmpdir(), 'tintwell-desk-'));
    return { path, remove: () => rm(path, { recursive: true, force: true }) };
}

/** Calls `use` with a folder that is there until it has ended. */
export async function inTemporaryFolder(use) {
    const { path, remove } = await makeTemporaryFolder();
    try {
        return await use(path);
    } finally {
        await remove();
    }
}
