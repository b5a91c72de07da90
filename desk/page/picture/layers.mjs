// The two canvases of the stage, and the board that shows through transparent pixels.
import { regionOf } from '../worker/picture/resampling.mjs';

export class Layers {
    #board;
    #contexts;
    #scratch = document.createElement('canvas');
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
        if (old && canvas.width) this.#keep(canvas);
        if (canvas.width === view.width && canvas.height === view.height) {
            context.clearRect(0, 0, view.width, view.height);
        } else {
            canvas.width = view.width;
            canvas.height = view.height;
        }
        if (!old || !this.#scratch.width) return;
        const ratio = view.zoom / old.zoom;
        context.imageSmoothingEnabled = view.zoom < 1;
        context.drawImage(this.#scratch, view.left - old.left * ratio, view.top - old.top * ratio,
                          old.width * ratio, old.height * ratio);
    }

    #keep(canvas) {
        this.#scratch.width = canvas.width;
        this.#scratch.height = canvas.height;
        this.#scratch.getContext('2d').drawImage(canvas, 0, 0);
    }

    #placeBoard({ x, y, width, height }) {
        const { style } = this.#board;
        style.left = `${x / devicePixelRatio}px`;
        style.top = `${y / devicePixelRatio}px`;
        style.width = `${width / devicePixelRatio}px`;
        style.height = `${height / devicePixelRatio}px`;
    }
}
