// The page as a person has it before them, opened from disk.
import assert from 'node:assert/strict';
import { mkdtemp, readFile, rm, writeFile } from 'node:fs/promises';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { pathToFileURL } from 'node:url';
import { launch } from './browser.mjs';
import { pageFile } from './places.mjs';

const pageUrl = pathToFileURL(pageFile).href;
const PATIENCE = 20_000;

const pause = (milliseconds) => new Promise((resolve) => setTimeout(resolve, milliseconds));

/** What the page may load: itself, and what it has made. */
function isOwn(url) {
    return url.split('#')[0] === pageUrl || url.startsWith('blob:') || url.startsWith('data:');
}

/** What the page said to nobody, and what it asked for: `problems` has to stay empty. */
function watch(page, problems) {
    page.on('console', (message) => {
        if (['error', 'warn', 'assert'].includes(message.type()))
            problems.push(`console: ${message.text()}`);
    });
    page.on('pageerror', (error) => problems.push(`error: ${error.stack ?? error}`));
    page.on('request', (request) => {
        if (!isOwn(request.url())) problems.push(`request: ${request.url()}`);
    });
    page.on('requestfailed', (request) => problems.push(`failed: ${request.url()}`));
}

export class Desk {
    problems = [];

    /** @param {{width?: number, height?: number, theme?: 'light'|'dark'}} [options] */
    static async open({ width = 1280, height = 800, theme = 'light' } = {}) {
        const desk = new Desk();
        desk.folder = await mkdtemp(join(tmpdir(), 'tintwell-desk-'));
        desk.browser = await launch();
        desk.page = await desk.browser.newPage();
        desk.devtools = await desk.page.createCDPSession();
        await desk.devtools.send('Browser.setDownloadBehavior', {
            behavior: 'allowAndName', downloadPath: desk.folder, eventsEnabled: true });
        watch(desk.page, desk.problems);
        await desk.show({ width, height, theme });
        await desk.load();
        return desk;
    }

    async load() {
        await this.page.goto(pageUrl, { waitUntil: 'load' });
    }

    async show({ width, height = 800, theme }) {
        if (width) await this.page.setViewport({ width, height });
        if (theme)
            await this.page.emulateMediaFeatures([{ name: 'prefers-color-scheme', value: theme }]);
    }

    /** Ends the browser; fails if anything went wrong that the page did not show. */
    async close() {
        await this.browser.close();
        await rm(this.folder, { recursive: true, force: true });
        this.expectQuiet();
    }

    takeProblems() {
        return this.problems.splice(0);
    }

    expectQuiet() {
        assert.deepEqual(this.takeProblems(), []);
    }

    /** Waits until `holds`, called with `args` in the page, is true, and gives what it gave. */
    async until(holds, ...args) {
        const end = Date.now() + PATIENCE;
        for (;;) {
            const value = await this.page.evaluate(holds, ...args);
            if (value) return value;
            if (Date.now() > end) {
                this.expectQuiet();
                assert.fail(`in vain: ${holds} ${JSON.stringify(args)}; ` +
                            `the page says "${await this.message()}"`);
            }
            await pause(15);
        }
    }

    async text(selector) {
        return this.page.$eval(selector, (element) => element.textContent.trim());
    }

    async value(selector) {
        return this.page.$eval(selector, (element) => element.value);
    }

    async message() {
        return this.text('#message');
    }

    /** Waits for a message that `pattern` matches. */
    async untilMessage(pattern) {
        await this.until((source, flags) => new RegExp(source, flags)
            .test(document.querySelector('#message').textContent), pattern.source, pattern.flags);
        return this.message();
    }

    async untilText(selector, pattern) {
        await this.until((where, source) => new RegExp(source)
            .test(document.querySelector(where).textContent), selector, pattern.source);
    }

    async tab(name) {
        await this.page.click(`#tab-${name}`);
        await this.until((id) => !document.querySelector(id).hidden, `#${name}`);
    }

    /** A file on disk, to be chosen. */
    async file(name, contents) {
        const path = join(this.folder, name);
        await writeFile(path, contents);
        return path;
    }

    async choose(selector, name, contents) {
        const input = await this.page.$(selector);
        await input.uploadFile(await this.file(name, contents));
    }

    /** Drops a file, as another program's window would. */
    async drop(selector, name, contents) {
        const path = await this.file(name, contents);
        const { x, y } = await this.page.$eval(selector, (element) => {
            const { left, top, width, height } = element.getBoundingClientRect();
            return { x: left + width / 2, y: Math.min(top + height / 2, innerHeight - 20) };
        });
        const data = { items: [], files: [path], dragOperationsMask: 1 };
        for (const type of ['dragEnter', 'dragOver', 'drop'])
            await this.devtools.send('Input.dispatchDragEvent', { type, x, y, data });
    }

    /** The file that the page offers while `act` runs. @returns {{name: string, bytes: Buffer}} */
    async saved(act) {
        let begun;
        const listeners = {};
        const done = new Promise((resolve, reject) => {
            listeners['Browser.downloadWillBegin'] = (event) => { begun = event; };
            listeners['Browser.downloadProgress'] = ({ state }) => {
                if (state === 'completed') resolve();
                if (state === 'canceled') reject(new Error('the download was canceled'));
            };
            setTimeout(() => reject(new Error('nothing was saved')), PATIENCE).unref();
        });
        for (const [event, listener] of Object.entries(listeners))
            this.devtools.on(event, listener);
        try {
            await Promise.all([act(), done]);
        } finally {
            for (const [event, listener] of Object.entries(listeners))
                this.devtools.off(event, listener);
        }
        return { name: begun.suggestedFilename,
                 bytes: await readFile(join(this.folder, begun.guid)) };
    }

    async savedBy(button) {
        return this.saved(() => this.page.click(button));
    }

    async press(...keys) {
        for (const key of keys) await this.page.keyboard.press(key);
    }

    /** Types over what a field holds. */
    async fill(selector, text) {
        await this.page.focus(selector);
        await this.page.keyboard.down('Control');
        await this.press('a');
        await this.page.keyboard.up('Control');
        await this.page.keyboard.type(`${text}`);
    }

    /** Presses Tab until the element has the focus. */
    async tabTo(selector) {
        for (let presses = 0; presses < 60; ++presses) {
            const isThere = await this.page.evaluate(
                (where) => document.activeElement === document.querySelector(where), selector);
            if (isThere) return;
            await this.press('Tab');
        }
        assert.fail(`Tab does not lead to ${selector}`);
    }
}
