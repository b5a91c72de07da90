// Ties the page, its worker and the engine into one HTML file that a browser opens from disk, where
// it may load nothing beside it: node bundle.mjs ENGINE-FOLDER OUT.html
import { createHash } from 'node:crypto';
import { readFile, readdir, writeFile } from 'node:fs/promises';
import { join, resolve } from 'node:path';
import { fileURLToPath } from 'node:url';
import { build } from 'esbuild';

const [engine, out] = process.argv.slice(2).map((path) => resolve(path));
const page = fileURLToPath(new URL('page', import.meta.url));

/** The packages that scripts hold. */
const packages = new Set();

/** What the licences of packages and engine ask for. */
async function notices() {
    const texts = [...packages].sort().map(async (name) => {
        const folder = fileURLToPath(new URL(`node_modules/${name}/`, import.meta.url));
        const file = (await readdir(folder)).find((each) => /^licen[cs]e/i.test(each));
        return `${name}\n\n${await readFile(join(folder, file), 'utf8')}`;
    });
    texts.unshift(readFile(new URL('engine/NOTICES.txt', import.meta.url), 'utf8'));
    return (await Promise.all(texts)).join('\n\n').replaceAll('--', '- -');
}

/** One script without imports. `parts` are modules by name, with their contents or paths. */
async function script(entry, parts) {
    const plugin = {
        name: 'parts',
        setup({ onResolve, onLoad }) {
            onResolve({ filter: /^tintwell:/ }, ({ path }) => parts[path].file
                ? { path: parts[path].file }
                : { path, namespace: 'parts' });
            onLoad({ filter: /.*/, namespace: 'parts' },
                   ({ path }) => ({ contents: parts[path].text, loader: 'text' }));
        },
    };
    const result = await build({
        entryPoints: [join(page, entry)],
        bundle: true,
        write: false,
        metafile: true,
        format: 'iife',
        target: 'es2022',
        charset: 'utf8',
        legalComments: 'eof',
        loader: { '.wasm': 'binary' },
        define: { 'import.meta.url': '"about:blank"' },
        plugins: [plugin],
    });
    for (const input of Object.keys(result.metafile.inputs)) {
        const name = input.match(/node_modules\/((?:@[^/]+\/)?[^/]+)/)?.[1];
        if (name) packages.add(name);
    }
    return result.outputFiles[0].text.replaceAll('</script', '<\\/script');
}

function hashOf(text) {
    return `'sha256-${createHash('sha256').update(text).digest('base64')}'`;
}

const worker = await script('worker/main.mjs', {
    'tintwell:engine': { file: join(engine, 'tintwell.mjs') },
    'tintwell:wasm': { file: join(engine, 'tintwell_engine.wasm') },
});
const main = await script('main.mjs', { 'tintwell:worker': { text: worker } });
const sheets = ['style.css', 'look/look.css', 'picture/picture.css', 'match/match.css'];
const styles = await Promise.all(sheets.map((sheet) => readFile(join(page, sheet), 'utf8')));
const style = styles.join('');
const policy = [
    "default-src 'none'",
    `script-src ${hashOf(main)} 'wasm-unsafe-eval'`,
    `style-src ${hashOf(style)}`,
    'worker-src blob:',
    'img-src blob: data:',
    "base-uri 'none'",
    "form-action 'none'",
].join('; ');
const licences = `<!-- Contains third-party work:\n\n${await notices()} -->`;
const html = (await readFile(join(page, 'index.html'), 'utf8'))
    .replace('<!-- policy -->',
             () => `<meta http-equiv="Content-Security-Policy" content="${policy}">`)
    .replace('<!-- style -->', () => `<style>${style}</style>`)
    .replace('<!-- notices -->', () => licences)
    .replace('<!-- script -->', () => `<script>${main}</script>`);
await writeFile(out, html);
