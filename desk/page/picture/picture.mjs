// The Picture task: a picture before and after the look in use.
import { app } from '../app.mjs';
import { call } from '../engine_client.mjs';
import { bytesOf, onFile } from '../files.mjs';
import { startDivider } from './divider.mjs';
import { startGestures } from './gestures.mjs';
import { markup } from './markup.mjs';
import { startSaving } from './saving.mjs';
import { startStage } from './stage.mjs';
import { startValues } from './values.mjs';

const SAMPLE_NAME = 'sample';
const NO_LOOK_WORDS = 'No look is in use: before and after are the same. Open one in Look.';

function spelledInfo(name, { width, height, depth, kind }) {
    const bits = depth === 16 ? '16 bits, shown and saved in 8' : '8 bits';
    return `${name}: ${width} x ${height}, ${kind}, ${bits}`;
}

/** @param {HTMLElement} root  Gets the panel's contents. */
export function startPicture(root) {
    root.innerHTML = markup;
    const element = (id) => root.querySelector(`#${id}`);
    const stage = element('picture-view');
    const amount = element('amount');
    const info = element('picture-info');
    let name = SAMPLE_NAME;
    let key = null;

    function wishNow() {
        const grade = { look: app.look?.key ?? null, amount: Number(amount.value) };
        return { picture: key, grade };
    }

    const { view, request, showPicture } = startStage(stage, wishNow, () => {
        element('zoom-value').textContent = `${Number((view.now.zoom * 100).toPrecision(3))} %`;
        updateValues();
    });
    const updateValues = startValues({
        stage, cross: root.querySelector('.cross'), output: element('values'), view, wishNow,
    });

    function showGrade() {
        element('amount-value').textContent = `${amount.value} %`;
        element('picture-look').textContent = app.look ? '' : NO_LOOK_WORDS;
        request();
        updateValues();
    }

    function take(picture) {
        key = picture.key;
        showPicture(picture);
    }

    async function open(file) {
        const before = info.textContent;
        info.textContent = `Reading ${file.name}`;
        try {
            const bytes = await bytesOf(file);
            const picture = await call('openPicture', { bytes }, [bytes.buffer]);
            name = file.name.replace(/\.[^.]*$/, '');
            info.textContent = spelledInfo(file.name, picture);
            take(picture);
        } catch (error) {
            info.textContent = before;
            throw error;
        }
    }

    async function showSample() {
        const sample = await call('samplePicture');
        info.textContent = spelledInfo('Sample', { ...sample, depth: 8, kind: 'computed' });
        take(sample);
    }

    startDivider(element('divider'), stage);
    startGestures(stage, view);
    startSaving(element('save-picture'), element('save-progress'), wishNow, () => name);
    element('zoom-out').addEventListener('click', () => view.step(-1));
    element('zoom-in').addEventListener('click', () => view.step(1));
    element('zoom-fit').addEventListener('click', () => view.fit());
    element('zoom-pixels').addEventListener('click', () => view.zoomTo(1));
    amount.addEventListener('input', showGrade);
    app.addEventListener('look', showGrade);
    onFile(element('picture-file'), root.closest('[role=tabpanel]'), open);
    showGrade();
    // Not before it is seen: computing it would keep the first look waiting.
    const seen = new IntersectionObserver(([{ isIntersecting }]) => {
        if (!isIntersecting) return;
        seen.disconnect();
        showSample();
    });
    seen.observe(root);
}
