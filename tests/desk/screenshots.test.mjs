// Pictures of each panel for people to look at; nothing is wider than the window.
import assert from 'node:assert/strict';
import { mkdir } from 'node:fs/promises';
import { join } from 'node:path';
import { test } from 'node:test';
import { contentsOf, screenshotFolder } from './support/places.mjs';
import { choosePicture, shown } from './support/picture_panel.mjs';
import { photograph, pngOf } from './support/pictures.mjs';
import { withDesk } from './support/with_desk.mjs';

const at = withDesk();
const golden = contentsOf('examples/golden-hour.cube');
const bleach = contentsOf('examples/bleach-bypass.cube');
const graded = contentsOf('examples/panel/patterns/graded_3_280x160.png');
const longName = `${'A look with a name that goes on and on '.repeat(5)}.cube`;

async function widest(desk) {
    return desk.page.evaluate(() => ({
        window: innerWidth,
        page: document.documentElement.scrollWidth,
        wide: [...document.querySelectorAll('main *')]
            .filter((element) => element.getBoundingClientRect().right > innerWidth + 1)
            .map((element) => `${element.tagName}#${element.id}`).slice(0, 5),
    }));
}

/** Two frames, in which the canvases are drawn. */
async function drawn(desk) {
    await desk.page.evaluate(() => new Promise((resolve) => {
        requestAnimationFrame(() => requestAnimationFrame(() => setTimeout(resolve, 100)));
    }));
}

/** All panels with something in them. */
async function fill(desk) {
    await desk.choose('#look-file', 'golden-hour.cube', golden);
    await desk.untilText('#look-name', /golden-hour/);
    await desk.choose('#other-file', 'bleach-bypass.cube', bleach);
    await desk.untilText('#difference', /\d/);
    await desk.tab('picture');
    await choosePicture(desk, 'photograph.png', pngOf(photograph(960, 540)));
    await desk.tab('match');
    await desk.fill('#steps', 3);
    await desk.choose('#graded-file', 'graded.png', graded);
    await desk.untilText('#measurement', /graded/);
}

for (const width of [360, 800, 1280]) {
    for (const theme of ['light', 'dark']) {
        test(`${width} pixels wide, ${theme}`, async () => {
            const { desk } = at;
            await mkdir(screenshotFolder, { recursive: true });
            await desk.show({ width, height: 800, theme });
            await fill(desk);
            for (const panel of ['look', 'picture', 'match']) {
                await desk.tab(panel);
                await drawn(desk);
                if (panel === 'picture') await shown(desk);
                const path = join(screenshotFolder, `${panel}-${width}-${theme}.png`);
                await desk.page.screenshot({ path, fullPage: true });
                const { window, page, wide } = await widest(desk);
                assert.ok(page <= window, `${panel}: ${page} pixels of ${window}: ${wide}`);
            }
        });
    }
}

test('a long name makes nothing wider', async () => {
    const { desk } = at;
    await desk.show({ width: 360 });
    await desk.choose('#look-file', longName, golden);
    await desk.untilText('#look-name', /on and on/);
    await desk.choose('#look-file', `${'x'.repeat(200)}.cube`, golden);
    await desk.untilText('#look-name', /xxxxx/);
    await desk.choose('#look-file', `${'y'.repeat(200)}.cube`, 'LUT_3D_SIZE 2\nno\n');
    await desk.untilMessage(/yyyy/);
    for (const panel of ['look', 'picture', 'match']) {
        await desk.tab(panel);
        const { window, page, wide } = await widest(desk);
        assert.ok(page <= window, `${panel}: ${page} pixels of ${window}: ${wide}`);
    }
});
