// The Look task, as people do it.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { gzipSync } from 'node:zlib';
import { crossed33, cubeOf, identity } from './support/looks.mjs';
import { loadEngine, toUtf16 } from './support/module.mjs';
import { contentsOf } from './support/places.mjs';
import { withDesk } from './support/with_desk.mjs';

const engine = await loadEngine();
const golden = contentsOf('examples/golden-hour.cube');
const bleach = contentsOf('examples/bleach-bypass.cube');
const textOf = (cube, name, id = 0n) =>
    engine.writeText(engine.named(engine.readCube(cube, name), { id }));
const dusk = textOf(cubeOf(5, (r, g, b) => [r, g * 0.9, b * 1.2]), 'Dusk.cube', 42n);
const night = textOf(crossed33, 'Night.cube', 2n ** 63n - 1n);

const at = withDesk();

async function useGolden() {
    await at.desk.choose('#look-file', 'golden-hour.cube', golden);
    await at.desk.untilText('#look-name', /^golden-hour$/);
    await at.desk.untilMessage(/golden-hour/);
}

test('a look is chosen, and shown with what the engine knows of it', async () => {
    const { desk } = at;
    await useGolden();
    assert.equal(await desk.text('#look-id'), '20261120');
    assert.match(await desk.text('#look-size'), /^17\b/);
    assert.match(await desk.text('#look-range'), /^0\b.*\b1$/);
    assert.match(await desk.text('#look-verdict'), /works/);
    const told = await desk.text('#look-findings');
    const { findings } = engine.check(golden, 'golden-hour.cube');
    assert.ok(findings.length >= 4);
    for (const { words, advice } of findings) {
        assert.ok(told.includes(words), words);
        assert.ok(told.includes(advice), advice);
    }
    assert.equal(await desk.page.$$eval('#look-findings li', (items) => items.length),
                 findings.length);
});

test('a look is dropped anywhere in the panel', async () => {
    const { desk } = at;
    await useGolden();
    await desk.drop('#look', 'bleach-bypass.cube', bleach);
    await desk.untilText('#look-name', /^bleach-bypass$/);
    await desk.drop('#look-curves', 'golden-hour.cube', golden);
    await desk.untilText('#look-name', /^golden-hour$/);
});

test('a file that a script drops is taken too', async () => {
    const { desk } = at;
    await desk.page.evaluate((contents) => {
        const dataTransfer = new DataTransfer();
        dataTransfer.items.add(new File([contents], 'made.cube'));
        for (const type of ['dragenter', 'dragover', 'drop'])
            document.querySelector('#look').dispatchEvent(
                new DragEvent(type, { dataTransfer, bubbles: true, cancelable: true }));
    }, cubeOf(3, identity));
    await desk.untilText('#look-name', /^made$/);
});

test('a text is pasted', async () => {
    const { desk } = at;
    await desk.page.focus('#look-text');
    await desk.page.keyboard.sendCharacter(dusk);
    await desk.page.click('#look-take-text');
    await desk.untilText('#look-name', /^Dusk$/);
    assert.equal(await desk.text('#look-id'), '42');
    assert.match(await desk.text('#look-size'), /^5\b/);
});

test('with the keyboard alone', async () => {
    const { desk } = at;
    await desk.tabTo('#look-text');
    await desk.page.keyboard.sendCharacter(dusk);
    await desk.press('Tab');
    await desk.press('Enter');
    await desk.untilText('#look-name', /^Dusk$/);
    await desk.tabTo('#save-cube');
    const { name } = await desk.saved(() => desk.press('Enter'));
    assert.equal(name, 'Dusk.cube');
    await desk.tabTo('#tab-look');
    for (const [key, panel] of [['ArrowRight', 'picture'], ['ArrowRight', 'match'],
                                ['ArrowRight', 'look'], ['ArrowLeft', 'match'],
                                ['Home', 'look'], ['End', 'match']]) {
        await desk.press(key);
        assert.deepEqual(await desk.page.$$eval(
            '[role=tabpanel]', (panels) => panels.filter((each) => !each.hidden)
                .map((each) => each.id)), [panel]);
        assert.equal(await desk.page.evaluate(() => document.activeElement.id), `tab-${panel}`);
        assert.equal(await desk.page.$eval(
            `#tab-${panel}`, (tab) => tab.getAttribute('aria-selected')), 'true');
    }
});

test('the looks of a project are listed, and one is taken', async () => {
    const { desk } = at;
    const project = gzipSync(Buffer.concat([
        toUtf16(dusk), Buffer.from(` ${Buffer.from(toUtf16(night)).toString('base64')} `),
        toUtf16(dusk)]));
    await desk.choose('#look-file', 'film.prproj', project);
    await desk.until(() => document.querySelectorAll('#look-list button').length === 2);
    const told = await desk.page.$$eval(
        '#look-list button', (buttons) => buttons.map((button) => button.textContent));
    assert.match(told[0], /Dusk.*42.*5.*2/);
    assert.match(told[1], /Night.*9223372036854775807.*33.*1/);
    await desk.page.focus('#look-list li:nth-child(2) button');
    await desk.press('Enter');
    await desk.untilText('#look-name', /^Night$/);
    assert.equal(await desk.text('#look-id'), '9223372036854775807');
});

test('a look that was chosen later stays when an older file has been read', async () => {
    const { desk } = at;
    await desk.page.focus('#look-text');
    await desk.page.keyboard.sendCharacter(dusk);
    const slow = gzipSync(Buffer.concat([Buffer.alloc(100 << 20), Buffer.from(night)]));
    await desk.choose('#look-file', 'slow.prproj', slow);
    await desk.page.click('#look-take-text');
    await desk.untilMessage(/^Read slow\.prproj\.$/);
    assert.equal(await desk.text('#look-name'), 'Dusk');
    assert.equal(await desk.text('#in-use'), 'Dusk');
    assert.ok((await desk.savedBy('#save-cube')).bytes.length > 0);
});

test('looks that are no longer needed are freed', async () => {
    const { desk } = at;
    await useGolden();
    const [worker] = desk.page.workers();
    await worker.evaluate(() => {
        self.freed = 0;
        const { unregister } = FinalizationRegistry.prototype;
        FinalizationRegistry.prototype.unregister = function forget(token) {
            if (typeof token.free === 'function') ++self.freed;
            return unregister.call(this, token);
        };
    });
    await desk.choose('#look-file', 'bleach-bypass.cube', bleach);
    await desk.untilText('#look-name', /^bleach-bypass$/);
    const end = Date.now() + 10_000;
    while (!await worker.evaluate(() => self.freed)) assert.ok(Date.now() < end);
    assert.equal(await worker.evaluate(() => self.freed), 1);
});

test('a zip file is named as one', async () => {
    const { desk } = at;
    await desk.choose('#look-file', 'film.zip', Buffer.from('PK\x03\x04 and so on'));
    await desk.untilMessage(/^cannot use 'film\.zip': it is a zip file: unpack it first$/);
});

test('a text is dragged into its field', async () => {
    const { desk } = at;
    const { x, y } = await desk.page.$eval('#look-text', (field) => {
        field.scrollIntoView({ block: 'center' });
        const { left, top, width, height } = field.getBoundingClientRect();
        return { x: left + width / 2, y: top + height / 2 };
    });
    const items = [{ mimeType: 'text/plain', data: 'TWLUTP 9' }];
    const data = { items, files: [], dragOperationsMask: 1 };
    for (const type of ['dragEnter', 'dragOver', 'drop'])
        await desk.devtools.send('Input.dispatchDragEvent', { type, x, y, data });
    await desk.until(() => document.querySelector('#look-text').value === 'TWLUTP 9');
});

test('a look is saved as a .cube file as the program writes it', async () => {
    const { desk } = at;
    await useGolden();
    const look = engine.readCube(golden, 'golden-hour.cube');
    const { name, bytes } = await desk.savedBy('#save-cube');
    assert.equal(name, 'golden-hour.cube');
    assert.ok(bytes.equals(Buffer.from(engine.writeCube(look))));
});

test('a name that no file can have is saved under another one', async () => {
    const { desk } = at;
    const hostile = engine.named(engine.readText(dusk), { name: '../<b>a/b\\c:"d"\n|e?*' });
    await desk.choose('#look-file', 'look.twlut', engine.writeText(hostile));
    await desk.untilText('#look-name', /<b>/);
    const { name } = await desk.savedBy('#save-cube');
    assert.match(name, /^[^/\\:*?"<>|\n]+\.cube$/);
    assert.equal(await desk.page.$('#look b'), null);
});

async function clipboard(setting) {
    for (const name of ['clipboard-write', 'clipboard-read'])
        await at.desk.devtools.send('Browser.setPermission', {
            permission: { name, allowWithoutGesture: name === 'clipboard-read' }, setting });
}

test('a text is copied', async () => {
    const { desk } = at;
    await clipboard('granted');
    await useGolden();
    await desk.page.click('#copy-text');
    await desk.untilMessage(/[Cc]opied/);
    const copied = await desk.page.evaluate(() => navigator.clipboard.readText());
    assert.equal(copied, engine.writeText(engine.readCube(golden, 'golden-hour.cube')));
});

test('where the browser refuses to copy, the text is shown and selected', async () => {
    const { desk } = at;
    await clipboard('denied');
    await useGolden();
    await desk.page.click('#copy-text');
    await desk.until(() => document.activeElement.tagName === 'TEXTAREA');
    const selected = await desk.page.evaluate(() => {
        const { value, selectionStart, selectionEnd } = document.activeElement;
        return value.slice(selectionStart, selectionEnd);
    });
    assert.equal(selected, engine.writeText(engine.readCube(golden, 'golden-hour.cube')));
    await clipboard('granted');
});

test('a second look is compared, and drawn into the same curves', async () => {
    const { desk } = at;
    await useGolden();
    const curves = () => desk.page.$$eval(
        '#look-curves path, #look-curves polyline',
        (lines) => lines.map((line) => getComputedStyle(line).strokeDasharray));
    await desk.until(() => document.querySelector('#look-curves').childElementCount > 0);
    const alone = await curves();
    assert.equal(alone.filter((dashes) => dashes !== 'none').length, 0);
    await desk.choose('#other-file', 'bleach-bypass.cube', bleach);
    await desk.untilText('#difference', /\d/);
    const { largest, mean } = engine.compare(engine.readCube(golden), engine.readCube(bleach));
    const numbers = (await desk.text('#difference')).match(/\d+(\.\d+)?/g).map(Number);
    for (const value of [largest, mean])
        assert.ok(numbers.some((number) => Math.abs(number / value - 1) < 0.01),
                  `${value} is not among ${numbers}`);
    await desk.until((count) => document.querySelectorAll(
        '#look-curves path, #look-curves polyline').length >= count, alone.length + 3);
    assert.equal((await curves()).filter((dashes) => dashes !== 'none').length, 3);
    assert.equal(await desk.text('#look-name'), 'golden-hour');
});

test('the cloud turns under keys and the mouse, and turns back', async () => {
    const { desk } = at;
    await useGolden();
    const picture = () => desk.page.$eval('#look-cloud', (canvas) => canvas.toDataURL());
    const settled = async () => {
        await desk.page.evaluate(() => new Promise((resolve) =>
            requestAnimationFrame(() => requestAnimationFrame(resolve))));
        return picture();
    };
    const first = await settled();
    await desk.tabTo('#look-cloud');
    const seen = new Set([first]);
    for (const key of ['ArrowLeft', 'ArrowUp', 'ArrowRight', 'ArrowRight', 'ArrowDown']) {
        await desk.press(key);
        seen.add(await settled());
    }
    assert.ok(seen.size >= 5, `${seen.size}`);
    await desk.press('Home');
    assert.equal(await settled(), first);
    const { x, y, width, height } = await (await desk.page.$('#look-cloud')).boundingBox();
    await desk.page.mouse.move(x + width / 2, y + height / 2);
    await desk.page.mouse.down();
    await desk.page.mouse.move(x + width / 2 + 40, y + height / 2 + 10, { steps: 3 });
    await desk.page.mouse.up();
    assert.notEqual(await settled(), first);
    await desk.press('Home');
    assert.equal(await settled(), first);
});

test('a look whose values are no numbers is shown with the trap that it is', async () => {
    const { desk } = at;
    const text = `TWLUT3 1 Endless 2 -1e38 3e38 ${'/'.repeat(64)}`;
    assert.deepEqual(engine.readText(text).range, [Infinity, Infinity]);
    await useGolden();
    await desk.choose('#look-file', 'Endless.twlut', text);
    await desk.untilText('#look-findings', /24 values are no finite numbers/);
    await desk.page.evaluate(() => new Promise((resolve) => {
        requestAnimationFrame(() => requestAnimationFrame(() => setTimeout(resolve)));
    }));
    assert.doesNotMatch(await desk.text('#look'), /NaN|undefined/);
    await useGolden();
});

test('a file that is no look is refused as by the engine, and the look stays', async () => {
    const { desk } = at;
    await useGolden();
    const cut = golden.subarray(0, 3000);
    for (const [name, contents, words] of [
        ['empty.cube', '', 'the file is empty'],
        ['cut.cube', cut, engine.check(cut, 'cut.cube').findings[0].words],
        ['damaged.twlut', 'TWLUT3 1 x 3 0 1 AAAA', 'LUT data is truncated'],
        ['pattern.twlut', 'TWLUTP 9', engine.check('TWLUTP 9').findings[0].words],
    ]) {
        await desk.choose('#look-file', name, contents);
        await desk.until((text) => document.querySelector('#message [role=alert]')
            ?.textContent === text, `cannot use '${name}': ${words}`);
        assert.equal(await desk.text('#look-name'), 'golden-hour');
    }
    await desk.choose('#look-file', 'bleach-bypass.cube', bleach);
    await desk.untilText('#look-name', /^bleach-bypass$/);
    assert.equal(await desk.page.$('#message [role=alert]'), null);
});
