// A browser without a window.
import { existsSync } from 'node:fs';
import { puppeteer } from './places.mjs';

const executablePath = process.env.TINTWELL_CHROMIUM ?? '/usr/bin/chromium';

export async function launch() {
    if (!existsSync(executablePath)) throw new Error(`there is no ${executablePath}`);
    const isRoot = process.getuid?.() === 0;
    return puppeteer.launch({
        executablePath,
        // The screen shows the values as they are.
        args: ['--disable-dev-shm-usage', '--force-color-profile=srgb',
               ...(isRoot ? ['--no-sandbox'] : [])],
    });
}

/** Calls `use` with a page that shows nothing. */
export async function inBlankPage(use) {
    const browser = await launch();
    try {
        return await use(await browser.newPage());
    } finally {
        await browser.close();
    }
}
