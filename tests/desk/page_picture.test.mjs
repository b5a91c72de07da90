// The Picture task, as people do it: what is seen, and how the view is moved.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { crossed33 } from './support/looks.mjs';
import { loadEngine } from './support/module.mjs';
import { cutout, photograph, pictureOfPng, pngOf } from './support/pictures.mjs';
import { choosePicture, shown, useLook, values } from './support/picture_panel.mjs';
import { withDesk } from './support/with_desk.mjs';

const engine = await loadEngine();
const crossed = engine.readCube(crossed33, 'Crossed.cube');
const picture = photograph();
const file = pngOf(picture, { alpha: false });

const at = withDesk();

const pixelOf = ({ data, width }, x, y) => [...data.subarray((y * width + x) * 4).subarray(0, 3)];
const zoomOf = async () => parseFloat(await at.desk.text('#zoom-value'));

async function press(...keys) {
    await at.desk.press(...keys);
    await shown(at.desk);
}

test('a picture is there before a file is chosen, and a look grades it', async () => {
    const { desk } = at;
    await desk.tab('picture');
    await shown(desk);
    await desk.until(() => document.querySelector('#picture-info').textContent.match(/\d+ x \d+/));
    const scene = engine.scene(960, 540);
    await desk.page.focus('#picture-view');
    await desk.page.keyboard.down('Shift');
    await desk.press('ArrowRight');
    await desk.page.keyboard.up('Shift');
    const { x, y, before, after } = await values(desk);
    assert.deepEqual(before, pixelOf({ data: scene, width: 960 }, x, y));
    assert.deepEqual(after, before);
});

test('what is seen on both sides of the divider is what the engine makes of it', async () => {
    const { desk } = at;
    await useLook(desk, 'Crossed.cube', crossed33);
    await desk.tab('picture');
    await choosePicture(desk, 'photograph.png', file);
    const graded = { ...picture, data: engine.grade(picture, crossed, 100) };
    await desk.page.click('#zoom-pixels');
    await shown(desk);
    assert.equal(await zoomOf(), 100);
    const box = await (await desk.page.$('#picture-view')).boundingBox();
    const middle = { x: Math.round(box.x + box.width / 2), y: Math.round(box.y + box.height / 2) };
    const points = [[-90, -60], [-40, 45], [-150, 10], [90, -60], [40, 45], [150, 10]];
    await desk.page.mouse.move(2, 2);
    const screen = pictureOfPng(await desk.page.screenshot());
    for (const [right, down] of points) {
        const [x, y] = [middle.x + right, middle.y + down];
        await desk.page.mouse.move(x, y);
        const found = await values(desk);
        assert.deepEqual(found.before, pixelOf(picture, found.x, found.y));
        assert.deepEqual(found.after, pixelOf(graded, found.x, found.y));
        assert.deepEqual(pixelOf(screen, x, y), right < 0 ? found.before : found.after,
                         `at ${right} ${down}`);
    }
});

test('the Amount goes by keys from 0 to 100, and the values follow', async () => {
    const { desk } = at;
    await useLook(desk, 'Crossed.cube', crossed33);
    await desk.tab('picture');
    await choosePicture(desk, 'photograph.png', file);
    assert.equal(await desk.value('#amount'), '100');
    assert.match(await desk.text('#amount-value'), /^100\b/);
    await desk.page.focus('#picture-view');
    await desk.page.keyboard.down('Shift');
    await desk.press('ArrowRight', 'ArrowDown');
    await desk.page.keyboard.up('Shift');
    const { x, y } = await values(desk);
    // Asked with keys, they are told to those who do not see them too.
    assert.equal(await desk.page.$eval('#values', ({ ariaLive }) => ariaLive), 'polite');
    await desk.tabTo('#amount');
    await press('Home');
    assert.match(await desk.text('#amount-value'), /^0\b/);
    for (let amount = 1; amount <= 3; ++amount) {
        await press('ArrowRight');
        assert.match(await desk.text('#amount-value'), new RegExp(`^${amount}\\b`));
        const graded = engine.grade(picture, crossed, amount);
        await desk.until((told) => document.querySelector('#values').textContent.includes(told),
                         `after ${pixelOf({ ...picture, data: graded }, x, y).join(' ')}`);
    }
});

test('the divider goes by keys', async () => {
    const { desk } = at;
    await desk.tab('picture');
    await shown(desk);
    await desk.tabTo('#divider');
    const now = () => desk.page.$eval('#divider', (slider) => Number(slider.ariaValueNow));
    for (const [key, expected] of [['Home', 0], ['ArrowRight', 1], ['ArrowUp', 2], ['PageUp', 12],
                                   ['ArrowLeft', 11], ['PageDown', 1], ['End', 100],
                                   ['ArrowRight', 100], ['ArrowLeft', 99]]) {
        await desk.press(key);
        assert.equal(await now(), expected, key);
    }
    await desk.page.keyboard.down('Shift');
    await desk.press('ArrowLeft');
    await desk.page.keyboard.up('Shift');
    assert.equal(await now(), 89);
});

for (const means of ['mouse', 'touch']) {
    test(`the divider is dragged with the ${means}`, async () => {
        const { desk } = at;
        await desk.page.setViewport({ width: 1280, height: 800, hasTouch: means === 'touch' });
        await desk.load();
        await desk.tab('picture');
        await shown(desk);
        const stage = await (await desk.page.$('#picture-view')).boundingBox();
        const handle = await (await desk.page.$('#divider')).boundingBox();
        const y = stage.y + stage.height / 2;
        const from = handle.x + handle.width / 2;
        const to = stage.x + stage.width * 0.25;
        const { mouse, touchscreen } = desk.page;
        if (means === 'mouse') {
            await mouse.move(from, y);
            await mouse.down();
            await mouse.move(to, y, { steps: 5 });
            await mouse.up();
            await mouse.move(from, y);
        } else {
            await touchscreen.touchStart(from, y);
            await touchscreen.touchMove((from + to) / 2, y);
            await touchscreen.touchMove(to, y);
            await touchscreen.touchEnd();
        }
        const value = await desk.page.$eval('#divider', (slider) => Number(slider.ariaValueNow));
        assert.ok(Math.abs(value - 25) <= 1, `${value}`);
        await desk.page.setViewport({ width: 1280, height: 800 });
    });
}

test('the view is zoomed and moved by buttons, keys, wheel and mouse', async () => {
    const { desk } = at;
    await desk.tab('picture');
    await choosePicture(desk, 'photograph.png', file);
    const fit = await zoomOf();
    await desk.page.focus('#picture-view');
    await press('1');
    assert.equal(await zoomOf(), 100);
    await press('+');
    const larger = await zoomOf();
    assert.ok(larger > 100, `${larger}`);
    await press('-');
    assert.equal(await zoomOf(), 100);
    await press('0');
    assert.equal(await zoomOf(), fit);
    for (const [button, isRight] of [['#zoom-in', (zoom, last) => zoom > last],
                                     ['#zoom-out', (zoom, last) => zoom < last],
                                     ['#zoom-pixels', (zoom) => zoom === 100],
                                     ['#zoom-fit', (zoom) => zoom === fit]]) {
        const last = await zoomOf();
        await desk.page.click(button);
        await shown(desk);
        assert.ok(isRight(await zoomOf(), last), button);
    }
    const box = await (await desk.page.$('#picture-view')).boundingBox();
    const middle = [Math.round(box.x + box.width / 2), Math.round(box.y + box.height / 2)];
    await desk.page.mouse.move(middle[0] + 30, middle[1] + 30);
    await desk.page.mouse.wheel({ deltaY: -600 });
    await desk.until((last) => parseFloat(document.querySelector('#zoom-value').textContent) > last,
                     fit);
    await shown(desk);
    const before = await values(desk);
    await desk.page.mouse.down();
    await desk.page.mouse.move(middle[0] + 90, middle[1] + 60, { steps: 4 });
    await desk.page.mouse.up();
    await shown(desk);
    // The picture goes with the pointer.
    const dragged = await values(desk);
    assert.ok(Math.abs(dragged.x - before.x) <= 1 && Math.abs(dragged.y - before.y) <= 1);
    await desk.page.focus('#picture-view');
    await press('ArrowRight', 'ArrowRight', 'ArrowDown');
    await desk.page.mouse.move(middle[0] + 91, middle[1] + 60);
    await desk.until((last) => document.querySelector('#values').textContent !== last,
                     dragged.text);
    assert.notDeepEqual((await values(desk)).x, dragged.x);
});

test('a transparent picture is told with its alpha', async () => {
    const { desk } = at;
    const glass = cutout();
    await desk.tab('picture');
    await choosePicture(desk, 'cutout.png', pngOf(glass));
    await desk.page.focus('#picture-view');
    await desk.page.keyboard.down('Shift');
    await desk.press('ArrowRight');
    await desk.page.keyboard.up('Shift');
    const { x, y, before, text } = await values(desk);
    assert.deepEqual(before, pixelOf(glass, x, y));
    assert.ok(text.includes(String(glass.data[(y * glass.width + x) * 4 + 3])), text);
});

test('a picture is dropped, and one that cannot be read leaves it there', async () => {
    const { desk } = at;
    await desk.tab('picture');
    await desk.drop('#picture', 'dropped.png', file);
    await desk.untilText('#picture-info', /dropped\.png.*421 x 263/);
    for (const [name, contents] of [['empty.png', ''], ['text.png', 'no picture'],
                                    ['cut.png', file.subarray(0, 5000)]]) {
        await desk.choose('#picture-file', name, contents);
        await desk.untilMessage(new RegExp(`^cannot use '${name}': \\S+ .*[^.]$`));
        assert.match(await desk.text('#picture-info'), /dropped\.png/);
    }
    await desk.choose('#picture-file', 'next.png', pngOf(photograph(80, 60)));
    await desk.untilText('#picture-info', /next\.png.*80 x 60/);
});
