// What has been measured, in words.
import { spellColour, spellValue } from '../words.mjs';

const DIGITS = 2;

function roughly(value) {
    return String(Number(value.toPrecision(DIGITS)));
}

function patternOf({ columns, rows, patchWidth, patchHeight, pixelsRead }, { size }) {
    return `${size} steps in ${columns} x ${rows} patches, the smallest ${patchWidth} x ` +
           `${patchHeight} pixels, each read from ${pixelsRead} of them or more`;
}

function noiseOf({ middleNoise, mostNoise, noisiest }) {
    return `${roughly(middleNoise)} steps of 8 bits in the middle patch, ` +
           `${roughly(mostNoise)} in the noisiest (${spellColour(noisiest)})`;
}

function exactnessOf({ middleError, mostError }) {
    return `points are right to about ${roughly(middleError)} steps of 8 bits, ` +
           `the worst to ${roughly(mostError)}`;
}

function lineOf([term, words]) {
    const line = document.createElement('div');
    const name = document.createElement('dt');
    const value = document.createElement('dd');
    name.textContent = term;
    value.textContent = words;
    line.append(name, value);
    return line;
}

/** A description list of what the worker's measureMatch gave. */
export function describeMeasurement(fileName, { report, picture, look, range }) {
    const lines = [
        ['Picture', `${fileName}, ${picture.width} x ${picture.height}, ${picture.depth} bits`],
        ['Pattern', patternOf(report, look)],
        ['Noise', noiseOf(report)],
        ['Exactness', exactnessOf(report)],
        ['Look', `${look.size} points an axis, values ${range.map(spellValue).join(' to ')}`],
    ];
    if (report.poor) {
        lines.push(
            ['Advice', 'less compression, a larger frame or fewer steps make it more exact']);
    }
    const list = document.createElement('dl');
    list.append(...lines.map(lineOf));
    return list;
}
