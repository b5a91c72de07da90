// The two canvases of the stage, and the board that shows through transparent pixels.
import { regionOf } from '../worker/picture/resampling.mjs';

function copyOf(canvas) {
    const copy = document.createElement('canvas');
    copy.width = canvas.width;
    copy.height = canvas.height;
    copy.getContext('2d').drawImage(canvas, 0, 0);
    return copy;
}

export class Layers {
    #board;
    #contexts;
    #view = null;

    constructor(stage) {
        this.#board = stage.querySelector('.board');
        this.#contexts = [...stage.querySelectorAll('canvas')].map(
            (canvas) => canvas.getContext('2d'));
    }

    /** For another picture. */
    begin({ isOpaque }) {
        this.#view = null;
        this.#board.hidden = isOpaque;
    }

    /** Moves what is shown to where a new view will have it, until its strips come. */
    moveTo(view, picture) {
        if (view.id === this.#view?.id) return;
        for (const context of this.#contexts) this.#move(context, view);
        this.#view = view;
        this.#placeBoard(regionOf(view, picture));
    }

    draw({ view, x, y, width, before, after }) {
        if (view !== this.#view?.id) return;
        [before, after].forEach((pixels, at) => {
            if (!pixels) return;
            const image = new ImageData(new Uint8ClampedArray(pixels.buffer), width);
            this.#contexts[at].putImageData(image, x, y);
        });
    }

    #move(context, view) {
        const { canvas } = context;
        const old = this.#view;
        const fits = canvas.width === view.width && canvas.height === view.height;
        const shown = fits ? canvas : copyOf(canvas);
        if (!fits || !old) {
            canvas.width = view.width;
            canvas.height = view.height;
        }
        if (!old) return;
        const ratio = view.zoom / old.zoom;
        // Takes the place of all there is; what is drawn may then be the canvas itself.
        context.globalCompositeOperation = 'copy';
        context.imageSmoothingEnabled = view.zoom < 1;
        context.drawImage(shown, view.left - old.left * ratio, view.top - old.top * ratio,
                          old.width * ratio, old.height * ratio);
    }

    #placeBoard({ x, y, width, height }) {
        const { style } = this.#board;
        style.left = `${x / devicePixelRatio}px`;
        style.top = `${y / devicePixelRatio}px`;
        style.width = `${width / devicePixelRatio}px`;
        style.height = `${height / devicePixelRatio}px`;
    }
}
