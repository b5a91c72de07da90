// When drawings are drawn again.

const dark = matchMedia('(prefers-color-scheme: dark)');

/**
 * Calls `draw` before the next frame, once for any number of requests.
 * @param {() => void} draw
 * @returns {() => void}  The request.
 */
export function inNextFrame(draw) {
    let asked = false;
    return () => {
        if (asked) return;
        asked = true;
        requestAnimationFrame(() => {
            asked = false;
            draw();
        });
    };
}

function onDensity(request) {
    matchMedia(`(resolution: ${devicePixelRatio}dppx)`).addEventListener('change', () => {
        request();
        onDensity(request);
    }, { once: true });
}

/** Calls `request` when an element's size, the theme or the screen's density changes. */
export function onAppearance(element, request) {
    new ResizeObserver(request).observe(element);
    dark.addEventListener('change', request);
    onDensity(request);
}
