// The pattern: its steps and frame, what becomes of them, and its PNG.
import { call } from '../engine_client.mjs';
import { save } from '../files.mjs';
import { complain, say } from '../message.mjs';
import { inNextFrame } from '../redraw.mjs';
import { gridOf, isMeasurable, LEAST_PATCH, leastFrame, mostSteps, whyNoPattern } from './plan.mjs';

const MOST_SHOWN = 960;

const element = (id) => document.querySelector(`#${id}`);
const fields = ['steps', 'frame-width', 'frame-height'].map(element);
const plan = element('pattern-plan');
const preview = element('pattern-preview');

/** As the fields have it, right or wrong. */
export function patternNow() {
    const [steps, width, height] = fields.map((field) => field.valueAsNumber);
    return { steps, width, height };
}

function adviceFor(frame) {
    const wider = leastFrame(frame);
    const fewer = mostSteps(frame);
    const ways = [];
    if (wider) ways.push(`a frame of ${wider.width} x ${wider.height}`);
    if (fewer) ways.push(`${fewer} steps`);
    return ways.length ? ` It takes ${ways.join(' or ')}.` : '';
}

function sentenceOf(frame) {
    const { columns, rows, patchWidth, patchHeight } = gridOf(frame);
    const size = `${patchWidth} x ${patchHeight} pixels`;
    if (!isMeasurable(frame)) {
        return `Too small: the patches would have ${size}, and below ` +
               `${LEAST_PATCH} x ${LEAST_PATCH} they cannot be measured.${adviceFor(frame)}`;
    }
    return `${columns} x ${rows} patches of at least ${size}.`;
}

/** In a smaller frame; its grid may have a column more or less, as the sides are rounded. */
async function drawPreview({ steps, width, height }) {
    const scale = Math.min(1, MOST_SHOWN / Math.max(width, height));
    const shown = {
        width: Math.max(1, Math.round(width * scale)),
        height: Math.max(1, Math.round(height * scale)),
    };
    const { data } = await call('drawPattern', { steps, ...shown });
    preview.width = shown.width;
    preview.height = shown.height;
    preview.getContext('2d').putImageData(new ImageData(data, shown.width, shown.height), 0, 0);
}

const update = inNextFrame(() => {
    const frame = patternNow();
    const reason = whyNoPattern(frame);
    plan.textContent = reason ? `No pattern: ${reason}.` : sentenceOf(frame);
    plan.classList.toggle('warning', Boolean(reason) || !isMeasurable(frame));
    element('save-pattern').disabled = Boolean(reason);
    if (!reason) drawPreview(frame);
});

async function savePattern() {
    const frame = patternNow();
    try {
        const { file } = await call('patternPng', frame);
        const fileName = `pattern_${frame.steps}_${frame.width}x${frame.height}.png`;
        save(file, fileName, 'image/png');
        say(`Saved ${fileName}.`);
    } catch (error) {
        complain(`cannot save the pattern: ${error.message}`);
    }
}

export function startPattern() {
    for (const field of fields) field.addEventListener('input', update);
    element('save-pattern').addEventListener('click', savePattern);
    update();
}
