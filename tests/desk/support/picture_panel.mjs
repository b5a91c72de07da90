// What the tests of pictures do on the page again and again.

export async function useLook(desk, name, contents) {
    await desk.tab('look');
    await desk.choose('#look-file', name, contents);
    await desk.untilText('#look-name', new RegExp(`^${name.replace(/\.cube$/, '')}$`));
}

/** Waits until the stage shows all that was asked for. */
export async function shown(desk) {
    await desk.page.evaluate(() => new Promise((resolve) => {
        requestAnimationFrame(() => requestAnimationFrame(resolve));
    }));
    await desk.until(() => document.querySelector('#picture-view').dataset.shown === 'all');
}

export async function choosePicture(desk, name, contents) {
    await desk.choose('#picture-file', name, contents);
    await desk.untilText('#picture-info', new RegExp(`^${name.replaceAll('.', '\\.')}`));
    await shown(desk);
}

/** The place and values that are told, when they have settled. */
export async function values(desk) {
    await desk.until(() => /before .* after /.test(document.querySelector('#values').textContent));
    await desk.page.evaluate(() => new Promise((resolve) => setTimeout(resolve, 60)));
    const text = await desk.text('#values');
    const [, x, y] = text.match(/x (\d+) y (\d+)/).map(Number);
    const colour = (word) => text.match(new RegExp(`${word} (\\d+) (\\d+) (\\d+)`))
        .slice(1).map(Number);
    return { x, y, before: colour('before'), after: colour('after'), text };
}

/** Sets the Amount with keys. */
export async function setAmount(desk, amount) {
    await desk.page.focus('#amount');
    const pages = new Array(Math.floor(amount / 10)).fill('PageUp');
    await desk.press('Home', ...pages, ...new Array(amount % 10).fill('ArrowRight'));
    await desk.until((wanted) => document.querySelector('#amount').value === wanted, `${amount}`);
}
