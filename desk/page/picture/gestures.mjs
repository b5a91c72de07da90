// Pan and zoom with mouse, touch and keys.

const WHEEL_SPEED = 0.002;
const PINCH_SPEED = 0.01;
const PAN_STEP = 40;

/** Where an event is on the stage, whose pixels begin at a whole one of the screen. */
export function placeOn(stage, { clientX, clientY }) {
    const { left, top } = stage.getBoundingClientRect();
    const ratio = devicePixelRatio;
    return {
        x: clientX * ratio - Math.round(left * ratio),
        y: clientY * ratio - Math.round(top * ratio),
    };
}

function middleOf(places) {
    const sum = (key) => places.reduce((total, place) => total + place[key], 0);
    return { x: sum('x') / places.length, y: sum('y') / places.length };
}

function spread([one, other]) {
    return other ? Math.hypot(one.x - other.x, one.y - other.y) : 0;
}

function startPointers(stage, view) {
    const places = new Map();

    function move(event) {
        if (!places.has(event.pointerId)) return;
        const before = [...places.values()];
        places.set(event.pointerId, placeOn(stage, event));
        const now = [...places.values()];
        const from = middleOf(before);
        const to = middleOf(now);
        view.pan(to.x - from.x, to.y - from.y);
        if (spread(before) > 0 && spread(now) > 0) view.zoomBy(spread(now) / spread(before), to);
    }

    function end(event) {
        places.delete(event.pointerId);
        stage.classList.toggle('panning', places.size > 0);
    }

    stage.addEventListener('pointerdown', (event) => {
        if (event.button !== 0 || places.size === 2) return;
        stage.setPointerCapture(event.pointerId);
        places.set(event.pointerId, placeOn(stage, event));
        stage.classList.add('panning');
    });
    stage.addEventListener('pointermove', move);
    stage.addEventListener('lostpointercapture', end);
}

function startWheel(stage, view) {
    stage.addEventListener('wheel', (event) => {
        event.preventDefault();
        const pixels = event.deltaMode === WheelEvent.DOM_DELTA_LINE ? 16 : 1;
        const speed = event.ctrlKey ? PINCH_SPEED : WHEEL_SPEED;
        view.zoomBy(Math.exp(-event.deltaY * pixels * speed), placeOn(stage, event));
    }, { passive: false });
}

function startKeys(stage, view) {
    const step = () => PAN_STEP * devicePixelRatio;
    const actions = new Map([
        ['+', () => view.step(1)],
        ['=', () => view.step(1)],
        ['-', () => view.step(-1)],
        ['0', () => view.fit()],
        ['1', () => view.zoomTo(1)],
        ['ArrowLeft', () => view.pan(step(), 0)],
        ['ArrowRight', () => view.pan(-step(), 0)],
        ['ArrowUp', () => view.pan(0, step())],
        ['ArrowDown', () => view.pan(0, -step())],
    ]);
    stage.addEventListener('keydown', (event) => {
        // With Control or Command these keys are the browser's own.
        if (event.target !== stage || event.ctrlKey || event.metaKey || event.altKey) return;
        if (event.shiftKey && event.key.startsWith('Arrow')) return;
        const action = actions.get(event.key);
        if (!action) return;
        event.preventDefault();
        action();
    });
}

/** @param {import('./view.mjs').ViewState} view */
export function startGestures(stage, view) {
    startPointers(stage, view);
    startWheel(stage, view);
    startKeys(stage, view);
}
