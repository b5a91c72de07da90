// The neutral axis: what red, green and blue become while grey rises from black to white.
import { inNextFrame, onAppearance } from '../redraw.mjs';
import { spell, spellColour } from '../words.mjs';
import { drawAxes } from './axis_plot.mjs';

const plot = document.querySelector('#look-curves');
const figures = document.querySelector('#curves-figures');
const table = document.querySelector('#curves-table');

let shown = null;
let other = null;

function colourAt(axis, grey) {
    const at = Math.round(grey * (axis.length / 3 - 1)) * 3;
    return [...axis.subarray(at, at + 3)];
}

function cellOf(tag, text, scope) {
    const cell = document.createElement(tag);
    cell.textContent = text;
    if (scope) cell.scope = scope;
    return cell;
}

/** Never "-0.000". */
function thousandths(value) {
    if (!Number.isFinite(value)) return 'no number';
    return (Math.round(value * 1000) / 1000 + 0).toFixed(3);
}

function rowOf(grey) {
    const row = document.createElement('tr');
    row.append(cellOf('th', spell(grey), 'row'));
    for (const { axis } of [shown, ...other ? [other] : []])
        row.append(...colourAt(axis, grey).map((value) => cellOf('td', thousandths(value))));
    return row;
}

function headRow() {
    const row = document.createElement('tr');
    const heads = ['Grey', 'Red', 'Green', 'Blue'];
    if (other) heads.push('Second red', 'Second green', 'Second blue');
    row.append(...heads.map((head) => cellOf('th', head, 'col')));
    return row;
}

function writeFigures() {
    const [black, middle, white] = [0, 0.5, 1].map(
        (grey) => spellColour(colourAt(shown.axis, grey)));
    figures.textContent = `Black becomes ${black}, middle grey ${middle}, white ${white}.`;
    table.replaceChildren(
        headRow(), ...Array.from({ length: 11 }, (_, at) => rowOf(at / 10)));
}

function update() {
    if (!shown) return;
    writeFigures();
    requestDraw();
}

/** @param {import('../app.mjs').LookInfo} look @param {Float32Array} axis */
export function showAxis(look, axis) {
    shown = { look, axis };
    update();
}

/** The second look's, dashed; none for null. */
export function showOtherAxis(look, axis) {
    other = look && { look, axis };
    update();
}

const requestDraw = inNextFrame(() => {
    if (shown && plot.clientWidth) drawAxes(plot, shown, other);
});
onAppearance(plot, requestDraw);
