// Shows the picture as it is wished: the view, the look and the Amount.
import { call, listen } from '../engine_client.mjs';
import { complain } from '../message.mjs';
import { inNextFrame } from '../redraw.mjs';
import { Layers } from './layers.mjs';
import { ViewState } from './view.mjs';

/** `exact` is what the screen says; where it knows nothing of a page's zoom, the ratio is right. */
function pixels(length, exact) {
    const about = Math.round(length * devicePixelRatio);
    return Math.abs(exact - about) <= 1 ? exact : about;
}

/** Tells a stage's size in the screen's own pixels, now and whenever it changes. */
function observeSize(stage, tell) {
    const observer = new ResizeObserver(([{ contentRect, devicePixelContentBoxSize }]) => {
        const [exact] = devicePixelContentBoxSize ?? [];
        tell(pixels(contentRect.width, exact?.inlineSize),
             pixels(contentRect.height, exact?.blockSize));
    });
    try {
        observer.observe(stage, { box: 'device-pixel-content-box' });
    } catch {
        observer.observe(stage);
    }
}

/**
 * @param {HTMLElement} stage
 * @param {() => object} wishNow  The picture and the grade, as the worker takes them.
 * @param {(view: ViewState) => void} onView  Called after each change of the view.
 * @returns {{view: ViewState, request: () => void, showPicture: (picture: {width: number,
 *     height: number, isOpaque: boolean}) => void}}  `request` shows a new grade.
 */
export function startStage(stage, wishNow, onView) {
    const layers = new Layers(stage);
    const showSoon = inNextFrame(show);
    const view = new ViewState(() => {
        onView(view);
        request();
    });
    let hasPicture = false;
    let lastWish = 0;

    function request() {
        ++lastWish;
        stage.dataset.shown = 'partly';
        showSoon();
    }

    async function show() {
        const wanted = view.now;
        if (!hasPicture || !wanted.width || !wanted.height) return;
        layers.moveTo(wanted, view.picture);
        const wish = lastWish;
        try {
            const { done } = await call('showPicture', { view: wanted, ...wishNow() });
            if (wish === lastWish && done) stage.dataset.shown = 'all';
        } catch (error) {
            if (wish === lastWish) complain(`cannot show the picture: ${error.message}`);
        }
    }

    listen('picture.strip', (strip) => layers.draw(strip));
    observeSize(stage, (width, height) => {
        if (width && height) view.setStage(width, height);
    });
    return {
        view,
        request,
        showPicture(picture) {
            hasPicture = true;
            layers.begin(picture);
            view.setPicture(picture);
        },
    };
}
