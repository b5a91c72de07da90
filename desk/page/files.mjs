// Files that come in, and files that go out.
import { complain, say } from './message.mjs';

const MOST_BYTES = 2 ** 30;

// A file that is dropped beside its place would else take the page's own place in the window.
for (const type of ['dragover', 'drop']) {
    addEventListener(type, (event) => {
        if (holdsFiles(event)) event.preventDefault();
    });
}

/** @param {File} file */
export async function bytesOf(file) {
    if (file.size > MOST_BYTES) throw new Error('it is larger than 1 GB');
    try {
        return new Uint8Array(await file.arrayBuffer());
    } catch {
        throw new Error('it cannot be read');
    }
}

function holdsFiles(event) {
    return event.dataTransfer?.types.includes('Files');
}

function showInInput(input, file) {
    const one = new DataTransfer();
    if (file) one.items.add(file);
    input.files = one.files;
}

/** The same file, changed meanwhile, can be chosen again. */
function letChooseAgain(input) {
    let shown;
    input.addEventListener('click', () => {
        [shown] = input.files;
        input.value = '';
    });
    input.addEventListener('cancel', () => showInInput(input, shown));
}

/**
 * Hands `handler` each file that is chosen in `input` or dropped on `dropElement`, one after the
 * other. Where it throws, the user is told why the file cannot be used.
 * @param {HTMLInputElement} input
 * @param {HTMLElement} dropElement
 * @param {(file: File) => any} handler
 */
export function onFile(input, dropElement, handler) {
    let last = Promise.resolve();

    async function take(file) {
        say('');
        dropElement.setAttribute('aria-busy', 'true');
        try {
            await handler(file);
        } catch (error) {
            complain(`cannot use '${file.name}': ${error.message}`);
        }
        dropElement.removeAttribute('aria-busy');
    }

    function enqueue(file) {
        last = last.then(() => take(file));
    }

    letChooseAgain(input);
    input.addEventListener('change', () => {
        if (input.files.length) enqueue(input.files[0]);
    });
    dropElement.addEventListener('dragover', (event) => {
        if (!holdsFiles(event)) return;
        event.stopPropagation();
        event.preventDefault();
        event.dataTransfer.dropEffect = 'copy';
        dropElement.classList.add('dropping');
    });
    dropElement.addEventListener('dragleave', (event) => {
        if (!dropElement.contains(event.relatedTarget)) dropElement.classList.remove('dropping');
    });
    dropElement.addEventListener('drop', (event) => {
        const file = event.dataTransfer?.files[0];
        dropElement.classList.remove('dropping');
        if (!file) return;
        event.stopPropagation();
        event.preventDefault();
        showInInput(input, file);
        enqueue(file);
    });
}

/**
 * Offers a file to the user, who finds it where the browser saves downloads.
 * @param {Blob|Uint8Array} contents
 * @param {string} fileName
 * @param {string} [type]
 */
export function save(contents, fileName, type = 'application/octet-stream') {
    const url = URL.createObjectURL(new Blob([contents], { type }));
    const link = document.createElement('a');
    link.href = url;
    link.download = fileName;
    link.click();
    // Browsers begin to read a moment after the click.
    setTimeout(() => URL.revokeObjectURL(url), 60_000);
}
