// The values of the pixel under the pointer or under the keyboard's cross.
import { call } from '../engine_client.mjs';
import { placeOn } from './gestures.mjs';

const INVITATION = 'Point at the picture to read its values.';
const FAR = 10;
const DIRECTIONS = new Map([
    ['ArrowLeft', [-1, 0]], ['ArrowRight', [1, 0]], ['ArrowUp', [0, -1]], ['ArrowDown', [0, 1]],
]);

function spelled([red, green, blue, alpha]) {
    return `${red} ${green} ${blue}${alpha === 255 ? '' : ` A ${alpha}`}`;
}

function part(words) {
    const span = document.createElement('span');
    span.textContent = words;
    return span;
}

/**
 * @param {object} panel
 * @param {HTMLElement} panel.stage
 * @param {HTMLElement} panel.cross
 * @param {HTMLOutputElement} panel.output
 * @param {import('./view.mjs').ViewState} panel.view
 * @param {() => object} panel.wishNow
 * @returns {() => void}  To be called when the view, the picture or the grade has changed.
 */
export function startValues({ stage, cross, output, view, wishNow }) {
    // Of the two only one is there: the pointer's place on the stage or the cross's pixel.
    let pointer = null;
    let marked = null;
    let asking = false;
    let again = false;

    function pixelNow() {
        return marked ?? (pointer && view.pixelAt(pointer));
    }

    /** One question at a time; of those that come meanwhile only the last is asked. */
    async function ask() {
        again = asking;
        if (asking) return;
        const pixel = pixelNow();
        if (!pixel) {
            output.textContent = INVITATION;
            return;
        }
        asking = true;
        try {
            show(pixel, await call('pictureValues', { ...pixel, ...wishNow() }));
        } catch {
            output.textContent = INVITATION;
        }
        asking = false;
        if (again) ask();
    }

    function show({ x, y }, { before, after }) {
        // Screen readers tell what was asked with keys; what lies under a pointer would never end.
        output.setAttribute('aria-live', marked ? 'polite' : 'off');
        const parts = [`x ${x} y ${y}`, `before ${spelled(before)}`, `after ${spelled(after)}`];
        output.replaceChildren(...parts.flatMap((words) => [part(words), ' ']));
    }

    function placeCross() {
        cross.hidden = !marked;
        if (!marked) return;
        const { x, y } = view.placeOf(marked);
        cross.style.left = `${x / devicePixelRatio}px`;
        cross.style.top = `${y / devicePixelRatio}px`;
    }

    function update() {
        const { width, height } = view.picture;
        if (marked && (marked.x >= width || marked.y >= height)) marked = null;
        placeCross();
        ask();
    }

    function point(place) {
        pointer = place;
        marked = null;
        update();
    }

    function middle() {
        const { width, height } = view.now;
        return view.pixelAt({ x: width / 2, y: height / 2 });
    }

    function moveCross([right, down], isFar) {
        const from = marked ?? middle();
        // At least one pixel of the screen, or nothing would be seen to move.
        const step = Math.max(1, Math.round(1 / view.now.zoom)) * (isFar ? FAR : 1);
        const { width, height } = view.picture;
        marked = {
            x: Math.min(width - 1, Math.max(0, from.x + right * step)),
            y: Math.min(height - 1, Math.max(0, from.y + down * step)),
        };
        pointer = null;
        view.reveal(marked);
        update();
    }

    stage.addEventListener('pointermove', (event) => point(placeOn(stage, event)));
    stage.addEventListener('pointerdown', (event) => point(placeOn(stage, event)));
    stage.addEventListener('pointerleave', ({ pointerType }) => {
        // A finger that is lifted still wants to know what it touched.
        if (!marked && pointerType === 'mouse') point(null);
    });
    stage.addEventListener('keydown', (event) => {
        const direction = DIRECTIONS.get(event.key);
        if (event.target !== stage || event.ctrlKey || event.metaKey) return;
        if (event.key === 'Escape') point(null);
        if (!direction || !event.shiftKey) return;
        event.preventDefault();
        moveCross(direction, event.altKey);
    });
    return update;
}
