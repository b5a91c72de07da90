// The divider between before and after: a slider over the stage's width.

const STEP = 1;
const LARGE_STEP = 10;

function moved(value, { key, shiftKey }) {
    const step = shiftKey ? LARGE_STEP : STEP;
    switch (key) {
    case 'ArrowLeft':
    case 'ArrowDown': return value - step;
    case 'ArrowRight':
    case 'ArrowUp': return value + step;
    case 'PageDown': return value - LARGE_STEP;
    case 'PageUp': return value + LARGE_STEP;
    case 'Home': return 0;
    case 'End': return 100;
    }
}

export function startDivider(divider, stage) {
    let value;

    function set(wanted) {
        value = Math.min(100, Math.max(0, wanted));
        stage.style.setProperty('--divider', `${value}%`);
        divider.setAttribute('aria-valuenow', Math.round(value));
        divider.setAttribute('aria-valuetext', `${Math.round(value)} %`);
    }

    divider.addEventListener('pointerdown', (event) => {
        event.stopPropagation();
        if (event.button === 0) divider.setPointerCapture(event.pointerId);
    });
    divider.addEventListener('pointermove', (event) => {
        if (!divider.hasPointerCapture(event.pointerId)) return;
        event.stopPropagation();
        const { left, width } = stage.getBoundingClientRect();
        set((event.clientX - left) / width * 100);
    });
    divider.addEventListener('keydown', (event) => {
        if (event.ctrlKey || event.metaKey || event.altKey) return;
        const wanted = moved(Math.round(value), event);
        if (wanted === undefined) return;
        event.preventDefault();
        set(wanted);
    });
    set(50);
}
