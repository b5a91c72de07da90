// What holds for the whole page: nothing comes from elsewhere or goes there, and everybody can use
// it.
import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';
import { crossed33 } from './support/looks.mjs';
import { packageFile, pageFile, root } from './support/places.mjs';
import { photograph, pngOf } from './support/pictures.mjs';
import { withDesk } from './support/with_desk.mjs';

const at = withDesk();
const axe = readFileSync(packageFile('axe-core/axe.min.js'), 'utf8');

/** A look with something to tell, a second one, and a picture. */
async function fill(desk) {
    await desk.choose('#look-file', 'Crossed.cube', crossed33);
    await desk.untilText('#look-name', /^Crossed$/);
    await desk.choose('#other-file', 'Other.cube', crossed33.replace(/^.*\n/, '$&# other\n'));
    await desk.untilText('#difference', /./);
    await desk.choose('#picture-file', 'photograph.png', pngOf(photograph()));
    await desk.untilText('#picture-info', /421/);
}

test('the page is one file that names nothing outside it', () => {
    const html = readFileSync(pageFile, 'utf8');
    const head = html.slice(0, html.indexOf('<script>'));
    assert.match(head, /default-src 'none'/);
    assert.doesNotMatch(head, /unsafe-inline|'unsafe-eval'|\bhttps?:|\bsrc=|<link/);
    // Nor where it was built.
    const places = html.match(/.{0,40}\bimport(Scripts)?\(["'`]http.{0,40}/g) ?? [];
    for (let at = -1; (at = html.indexOf(root, at + 1)) >= 0;)
        places.push(html.slice(at - 40, at + 80));
    assert.deepEqual(places, []);
});

test('the page holds the notices of what is in it', () => {
    const html = readFileSync(pageFile, 'utf8');
    for (const holder of ['The Emscripten Authors', 'Rich Felker', 'David Schultz', 'fast-png'])
        assert.ok(html.slice(0, html.indexOf('<script>')).includes(holder), holder);
});

test('the browser lets the page ask for nothing', async () => {
    const { desk } = at;
    for (const ask of [
        () => fetch('https://example.invalid/').then(() => 'went', () => 'refused'),
        () => fetch(location.href).then(() => 'went', () => 'refused'),
        () => new Promise((resolve) => {
            const image = new Image();
            image.onload = () => resolve('went');
            image.onerror = () => resolve('refused');
            image.src = 'https://example.invalid/a.png';
        }),
        () => {
            const script = document.createElement('script');
            script.textContent = 'window.ran = true;';
            document.body.append(script);
            return window.ran ? 'went' : 'refused';
        },
    ])
        assert.equal(await desk.page.evaluate(ask), 'refused', `${ask}`);
    // And the tests see what it refuses.
    const told = desk.takeProblems().join('\n');
    for (const directive of ['connect-src', 'img-src', 'script-src'])
        assert.ok(told.includes(directive), told);
    assert.ok(told.includes('request: https://example.invalid/a.png'), told);
});

test('the tests see errors of the page', async () => {
    const { desk } = at;
    await desk.page.evaluate(() => { setTimeout(() => { throw new Error('seen'); }); });
    await desk.page.evaluate(() => { console.warn('seen too'); });
    await desk.page.evaluate(() => new Promise((resolve) => setTimeout(resolve, 100)));
    const told = desk.takeProblems().sort();
    assert.equal(told.length, 2);
    assert.equal(told[0], 'console: seen too');
    assert.match(told[1], /^error: .*seen/);
});

test('the page says its name, and that nothing leaves the machine', async () => {
    const { desk } = at;
    assert.equal(await desk.page.title(), 'Tintwell desk');
    assert.match(await desk.text('header'), /^Tintwell desk/);
    assert.match(await desk.text('footer'), /[Nn]othing leaves this machine/);
    assert.equal(await desk.page.$eval('html', (html) => html.lang), 'en');
});

test('when the engine is lost the page begins again, says so and works', async () => {
    const { desk } = at;
    await desk.choose('#look-file', 'Crossed.cube', crossed33);
    await desk.untilText('#look-name', /^Crossed$/);
    const [worker] = desk.page.workers();
    const begunAgain = new Promise((resolve, reject) => {
        desk.page.once('load', resolve);
        setTimeout(() => reject(new Error('it did not begin again')), 20_000).unref();
    });
    await worker.evaluate(() => {
        FinalizationRegistry.prototype.register = () => {
            throw new WebAssembly.RuntimeError('unreachable');
        };
    });
    await desk.choose('#look-file', 'Again.cube', crossed33);
    await begunAgain;
    await desk.untilMessage(/engine had to start again/);
    assert.equal(await desk.text('#look-name'), '');
    desk.takeProblems();
    await desk.choose('#look-file', 'Crossed.cube', crossed33);
    await desk.untilText('#look-name', /^Crossed$/);
    await desk.load();
    assert.equal(await desk.message(), '');
});

async function violations(desk) {
    await desk.page.evaluate(axe);
    const { violations: found, passes } = await desk.page.evaluate(() =>
        globalThis.axe.run(document, { resultTypes: ['violations'] }));
    assert.ok(passes.length > 10);
    return found.flatMap(({ id, nodes }) =>
        nodes.map(({ target, failureSummary }) => `${id} ${target}: ${failureSummary}`));
}

for (const theme of ['light', 'dark']) {
    test(`no panel has a barrier, ${theme}`, async () => {
        const { desk } = at;
        await desk.show({ theme });
        await desk.load();
        for (const panel of ['look', 'picture', 'match']) {
            await desk.tab(panel);
            assert.deepEqual(await violations(desk), [], `${panel}, empty`);
        }
        await fill(desk);
        for (const panel of ['look', 'picture', 'match']) {
            await desk.tab(panel);
            assert.deepEqual(await violations(desk), [], panel);
        }
    });
}

test('a page without labels has barriers', async () => {
    const { desk } = at;
    await desk.page.$eval('label[for=look-file]', (label) => label.remove());
    await desk.page.$eval('#look-file', (input) => input.removeAttribute('aria-label'));
    assert.notDeepEqual(await violations(desk), []);
});
