// The drawing of neutral axes.
import { nameOf, spell } from '../words.mjs';
import { svg } from './svg.mjs';

const CHANNELS = ['red', 'green', 'blue'];
// Widest first, so that the three are told apart where they run together, and without their hue.
const WIDTHS = { red: 4, green: 2.5, blue: 1.25 };
// Of the first look's widths.
const OTHERS_SHARE = 0.7;
const MOST_NAMED = 28;
const HEIGHT = 380;
const EDGE = { left: 46, right: 14, top: 48, bottom: 42 };
const TICKS = [0, 0.25, 0.5, 0.75, 1];

function rangeOf(axes) {
    let [low, high] = [0, 1];
    for (const axis of axes) {
        for (const value of axis.filter(Number.isFinite)) {
            low = Math.min(low, value);
            high = Math.max(high, value);
        }
    }
    return [low, high];
}

/** 1, 2 or 5 times a power of ten: at most six ticks. */
function tickStep(span) {
    const power = 10 ** Math.floor(Math.log10(span / 6));
    return [1, 2, 5, 10].map((factor) => factor * power).find((step) => span / step <= 6);
}

function outputTicks([low, high]) {
    const step = high - low <= 1.3 ? 0.25 : tickStep(high - low);
    const ticks = [];
    for (let at = Math.ceil(low / step); at * step <= high; ++at) ticks.push(at * step);
    return ticks;
}

/** Where values lie in the drawing. */
function scaleOf(width, [low, high]) {
    const across = width - EDGE.left - EDGE.right;
    const down = HEIGHT - EDGE.top - EDGE.bottom;
    return {
        low,
        high,
        width,
        x: (grey) => EDGE.left + grey * across,
        y: (value) => EDGE.top + (high - value) / (high - low) * down,
    };
}

function outsideOf({ low, high, x, y }) {
    const band = (from, to) => svg('rect', {
        class: 'outside', x: x(0), width: x(1) - x(0), y: y(to), height: y(from) - y(to),
    });
    return [...low < 0 ? [band(low, 0)] : [], ...high > 1 ? [band(1, high)] : []];
}

function kindOf(tick) {
    return tick === 0 || tick === 1 ? 'limit' : 'grid';
}

function gridOf({ low, high, x, y }) {
    const lines = [];
    for (const tick of TICKS) {
        const at = x(tick);
        lines.push(
            svg('line', { class: 'grid', x1: at, x2: at, y1: y(low), y2: y(high) }),
            svg('text', { x: at, y: y(low) + 17, 'text-anchor': 'middle' }, spell(tick)));
    }
    for (const tick of outputTicks([low, high])) {
        const at = y(tick);
        lines.push(
            svg('line', { class: kindOf(tick), x1: x(0), x2: x(1), y1: at, y2: at }),
            svg('text', { x: x(0) - 7, y: at + 4, 'text-anchor': 'end' }, spell(tick)));
    }
    return lines;
}

function namesOf({ low, high, x, y }) {
    const middle = (y(low) + y(high)) / 2;
    return [
        svg('text', { x: x(0.5), y: HEIGHT - 6, 'text-anchor': 'middle' }, 'Grey in'),
        svg('text', {
            x: 12, y: middle, 'text-anchor': 'middle', transform: `rotate(-90 12 ${middle})`,
        }, 'Out'),
    ];
}

function curveOf(axis, channel, dashed, { x, y }) {
    const count = axis.length / 3;
    const points = [];
    for (let at = 0; at < count; ++at) {
        const value = axis[at * 3 + CHANNELS.indexOf(channel)];
        if (!Number.isFinite(value)) continue;
        points.push(`${x(at / (count - 1)).toFixed(1)},${y(value).toFixed(1)}`);
    }
    return svg('polyline', {
        class: `${channel}${dashed ? ' other' : ''}`,
        points: points.join(' '),
        'stroke-width': WIDTHS[channel] * (dashed ? OTHERS_SHARE : 1),
    });
}

function entryOf(name, kind, x, y, width) {
    const line = svg('line', {
        class: kind, x1: x, x2: x + 18, y1: y - 4, y2: y - 4, 'stroke-width': width,
    });
    return [line, svg('text', { x: x + 23, y }, name)];
}

function legend(other) {
    const left = EDGE.left;
    return [
        ...CHANNELS.flatMap((name, at) => entryOf(name, name, left + at * 70, 15, WIDTHS[name])),
        ...entryOf('no change', 'unchanged', left, 34, 1),
        ...other ? entryOf(nameOf(other.look).slice(0, MOST_NAMED), 'other plain', left + 98, 34,
                           WIDTHS.green * OTHERS_SHARE)
                 : [],
    ];
}

/**
 * @typedef {{look: import('../app.mjs').LookInfo, axis: Float32Array}} Axis
 *
 * @param {SVGSVGElement} plot
 * @param {Axis} shown
 * @param {Axis|null} other  Dashed.
 */
export function drawAxes(plot, shown, other) {
    const width = plot.clientWidth;
    const axes = [shown.axis, ...other ? [other.axis] : []];
    const scale = scaleOf(width, rangeOf(axes));
    const { x, y } = scale;
    const curves = (axis, dashed) => CHANNELS.map((name) => curveOf(axis, name, dashed, scale));
    plot.setAttribute('viewBox', `0 0 ${width} ${HEIGHT}`);
    plot.setAttribute('height', HEIGHT);
    plot.replaceChildren(
        ...outsideOf(scale), ...gridOf(scale), ...namesOf(scale),
        svg('line', { class: 'unchanged', x1: x(0), x2: x(1), y1: y(0), y2: y(1) }),
        ...curves(shown.axis, false),
        ...other ? curves(other.axis, true) : [],
        ...legend(other));
}
