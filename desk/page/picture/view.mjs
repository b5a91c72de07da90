// Where a picture lies on the stage. All lengths are in the screen's own pixels.

const LARGEST = 32;
const BUTTON_STEP = 2;

function limited(value, low, high) {
    return Math.min(high, Math.max(low, value));
}

/** So that a picture smaller than the stage is in its middle, and a larger one covers it. */
function placed(begin, size, room) {
    return size <= room ? (room - size) / 2 : limited(begin, room - size, 0);
}

export class ViewState {
    #id = 0;
    #left = 0;
    #top = 0;
    #zoom = 1;
    #fitted = true;
    #stage = { width: 0, height: 0 };
    #picture = { width: 1, height: 1 };
    #onChange;

    /** @param {() => void} onChange */
    constructor(onChange) {
        this.#onChange = onChange;
    }

    /** @returns {import('../worker/picture/resampling.mjs').View} */
    get now() {
        return {
            id: this.#id,
            ...this.#stage,
            zoom: this.#zoom,
            left: Math.round(this.#left),
            top: Math.round(this.#top),
        };
    }

    get picture() {
        return this.#picture;
    }

    setStage(width, height) {
        const centre = this.#centre();
        this.#stage = { width, height };
        if (this.#fitted) this.fit();
        else this.#show(centre);
    }

    setPicture({ width, height }) {
        this.#picture = { width, height };
        this.fit();
    }

    fit() {
        this.#fitted = true;
        this.#zoom = this.#fitZoom();
        this.#changed();
    }

    /** @param {{x: number, y: number}} [anchor]  What stays where it is. */
    zoomTo(zoom, anchor = this.#middle()) {
        const smallest = Math.min(1, this.#fitZoom());
        const next = limited(zoom, smallest, LARGEST);
        const ratio = next / this.#zoom;
        this.#left = anchor.x - (anchor.x - this.#left) * ratio;
        this.#top = anchor.y - (anchor.y - this.#top) * ratio;
        this.#zoom = next;
        this.#fitted = next === this.#fitZoom();
        this.#changed();
    }

    zoomBy(factor, anchor) {
        this.zoomTo(this.#zoom * factor, anchor);
    }

    /** To the next power of two. @param {1|-1} direction */
    step(direction) {
        const at = Math.log(this.#zoom) / Math.log(BUTTON_STEP);
        const next = direction > 0 ? Math.floor(at + 1 + 1e-9) : Math.ceil(at - 1 - 1e-9);
        this.zoomTo(BUTTON_STEP ** next);
    }

    pan(x, y) {
        this.#left += x;
        this.#top += y;
        this.#changed();
    }

    /** The picture's pixel at a place of the stage; null beside the picture. */
    pixelAt({ x, y }) {
        const { left, top } = this.now;
        const pixel = {
            x: Math.floor((Math.floor(x) + 0.5 - left) / this.#zoom),
            y: Math.floor((Math.floor(y) + 0.5 - top) / this.#zoom),
        };
        const { width, height } = this.#picture;
        const inside = pixel.x >= 0 && pixel.y >= 0 && pixel.x < width && pixel.y < height;
        return inside ? pixel : null;
    }

    /** The middle of a pixel on the stage. */
    placeOf({ x, y }) {
        const { left, top } = this.now;
        return { x: left + (x + 0.5) * this.#zoom, y: top + (y + 0.5) * this.#zoom };
    }

    /** Pans as far as is needed to see a pixel. */
    reveal(pixel) {
        const { x, y } = this.placeOf(pixel);
        const { width, height } = this.#stage;
        const right = limited(x, 0, width) - x;
        const down = limited(y, 0, height) - y;
        if (right || down) this.pan(right, down);
    }

    #fitZoom() {
        const { width, height } = this.#stage;
        return Math.min(width / this.#picture.width, height / this.#picture.height, LARGEST);
    }

    #middle() {
        return { x: this.#stage.width / 2, y: this.#stage.height / 2 };
    }

    #centre() {
        const { x, y } = this.#middle();
        return { x: (x - this.#left) / this.#zoom, y: (y - this.#top) / this.#zoom };
    }

    #show(centre) {
        this.#left = this.#middle().x - centre.x * this.#zoom;
        this.#top = this.#middle().y - centre.y * this.#zoom;
        this.#changed();
    }

    #changed() {
        const { width, height } = this.#picture;
        this.#left = placed(this.#left, width * this.#zoom, this.#stage.width);
        this.#top = placed(this.#top, height * this.#zoom, this.#stage.height);
        ++this.#id;
        this.#onChange();
    }
}
