// The page in Firefox, from disk: a look, a graded picture and a match, as in Chromium.
import assert from 'node:assert/strict';
import { readdir, readFile, writeFile } from 'node:fs/promises';
import { existsSync } from 'node:fs';
import { join } from 'node:path';
import { after, before, test } from 'node:test';
import { pathToFileURL } from 'node:url';
import { crossed33 } from './support/looks.mjs';
import { loadEngine } from './support/module.mjs';
import { photograph, pictureOfPng, pngOf } from './support/pictures.mjs';
import { jpegByProgram } from './support/program.mjs';
import { contentsOf, makeTemporaryFolder, pageFile, puppeteer } from './support/places.mjs';

const executablePath = process.env.TINTWELL_FIREFOX ?? '/usr/bin/firefox-esr';
const PATIENCE = 60_000;
const problems = [];
let folder;
let browser;
let page;

const pause = (milliseconds) => new Promise((resolve) => setTimeout(resolve, milliseconds));

before(async () => {
    assert.ok(existsSync(executablePath), `there is no ${executablePath}`);
    folder = await makeTemporaryFolder();
    browser = await puppeteer.launch({
        browser: 'firefox',
        executablePath,
        extraPrefsFirefox: {
            'browser.download.dir': folder.path,
            'browser.download.folderList': 2,
            'browser.download.useDownloadDir': true,
            'browser.download.alwaysOpenPanel': false,
        },
    });
    page = await browser.newPage();
    page.on('console', (message) => {
        if (['error', 'warn'].includes(message.type())) problems.push(message.text());
    });
    page.on('pageerror', (error) => problems.push(`${error}`));
    page.on('request', (request) => {
        if (!/^(file|blob|data):/.test(request.url())) problems.push(request.url());
    });
    await page.goto(pathToFileURL(pageFile).href);
});

after(async () => {
    await browser?.close();
    await folder.remove();
});

/** Waits until `find` gives something that holds. */
async function until(find, ...args) {
    for (const end = Date.now() + PATIENCE; Date.now() < end; await pause(30)) {
        const found = await find(...args);
        if (found) return found;
    }
    const said = await page.evaluate(() => document.querySelector('#message').textContent);
    return assert.fail(`in vain: ${find}; the page says "${said}"`);
}

const untilText = (selector, words) => until(() => page.evaluate(
    (where, part) => document.querySelector(where).textContent.includes(part), selector, words));

async function choose(selector, name, contents) {
    const path = join(folder.path, name);
    await writeFile(path, contents);
    await (await page.$(selector)).uploadFile(path);
}

async function savedBy(button) {
    const known = new Set(await readdir(folder.path));
    await page.click(button);
    const name = await until(async () => (await readdir(folder.path))
        .find((file) => !known.has(file) && !file.endsWith('.part')));
    let size = -1;
    return until(async () => {
        const bytes = await readFile(join(folder.path, name));
        const isWhole = bytes.length > 0 && bytes.length === size;
        size = bytes.length;
        return isWhole && bytes;
    });
}

test('a look grades a picture, which is saved with every pixel of the engine', async () => {
    const engine = await loadEngine();
    const look = engine.readCube(crossed33, 'Crossed.cube');
    const picture = photograph();
    await choose('#look-file', 'Crossed.cube', crossed33);
    await untilText('#look-name', 'Crossed');
    await page.click('#tab-picture');
    await choose('#picture-file', 'photograph.png', pngOf(picture));
    await untilText('#picture-info', '421 x 263');
    const { data } = pictureOfPng(await savedBy('#save-picture'));
    assert.ok(Buffer.from(data).equals(Buffer.from(engine.grade(picture, look))));
    await until(() => page.evaluate(
        () => document.querySelector('#picture-view').dataset.shown === 'all'));
});

test('a JPEG file is read', async () => {
    const picture = photograph();
    await choose('#picture-file', 'photograph.jpg', await jpegByProgram(pngOf(picture)));
    await untilText('#picture-info', 'photograph.jpg: 421 x 263');
    await page.focus('#amount');
    await page.keyboard.press('Home');
    const { data } = pictureOfPng(await savedBy('#save-picture'));
    const apart = data.reduce((sum, value, at) => sum + Math.abs(value - picture.data[at]), 0);
    assert.ok(apart / data.length < 4, `${apart / data.length} steps apart on average`);
});

test('a match is measured and saved', async () => {
    const engine = await loadEngine();
    const contents = contentsOf('examples/panel/patterns/graded_3_280x160.png');
    await page.click('#tab-match');
    await page.click('#steps', { count: 3 });
    await page.keyboard.type('3');
    await choose('#graded-file', 'graded.png', contents);
    await untilText('#measurement', 'graded.png');
    await page.type('#match-name', 'Dusk');
    const { look } = engine.measure(pictureOfPng(contents), 3, { name: 'Dusk' });
    assert.ok((await savedBy('#match-cube')).equals(Buffer.from(engine.writeCube(look))));
});

test('a file that cannot be read is refused, and the page goes on', async () => {
    await page.click('#tab-look');
    await choose('#look-file', 'cut.cube', crossed33.slice(0, 2000));
    await untilText('#message', 'cannot use \'cut.cube\': ');
    await choose('#look-file', 'Again.cube', crossed33);
    await untilText('#look-name', 'Again');
    assert.deepEqual(problems, []);
});
