// The worker's methods for looks: found in files, judged, compared and written.
import { TintwellError } from 'tintwell:engine';
import { counted } from '../words.mjs';

// So that each tenth is one of them.
const GREYS = 401;

/** @returns {import('../app.mjs').LookInfo} */
export function infoOf(key, look) {
    const { name, kind, size, steps } = look;
    return { key, name, id: String(look.id), kind, size, steps };
}

function isCubeName(name) {
    return name.toLowerCase().endsWith('.cube');
}

function isZip(bytes) {
    return [0x50, 0x4b, 0x03, 0x04].every((byte, at) => bytes[at] === byte);
}

function fatal(words, advice) {
    return { weight: 'fatal', id: 'unreadable', words, advice };
}

/** Texts in a file that cannot be read, as the check would tell them. */
function findingOf({ reason, count }) {
    return fatal(`${reason} (${counted(count, 'text')})`, 'Apply the look again.');
}

/** The check of a file that is no look at all. */
function nothing(words) {
    return { works: false, findings: [fatal(words, '')] };
}

function refused(check) {
    return { looks: [], refused: check };
}

export function lookMethods(shared) {
    const { engine, looks } = shared;
    // Of looks that were read from files; a .cube file's check tells more than its look's.
    const checks = new WeakMap();

    function lookOf(key) {
        const look = looks.get(key);
        if (!look) throw new Error('the look is no longer there; open its file again');
        return look;
    }

    function checkOf(look) {
        if (!checks.has(look)) checks.set(look, engine.check(look));
        return checks.get(look);
    }

    function entryOf(look, count) {
        return { ...infoOf(shared.keep(look), look), count };
    }

    /** A file that is one look, or none that works. */
    function single(bytes, name, isText) {
        const check = engine.check(bytes, name);
        if (!check.works) return refused(check);
        const look = isText ? engine.readText(bytes) : engine.readCube(bytes, name);
        checks.set(look, check);
        return { looks: [entryOf(look, 1)], refused: null };
    }

    /** What the looks inside a file come to; null where there is nothing of the kind. */
    function inside({ looks: all, unreadable, beyond }) {
        if (all.length === 0 && unreadable.length === 0) return null;
        const unread = unreadable.map(findingOf);
        if (all.some(({ look }) => look.kind === 'lut')) {
            const entries = all.map(({ look, count }) => entryOf(look, count));
            return { looks: entries, refused: null, unreadable: unread, beyond };
        }
        const own = all.flatMap(({ look }) => engine.check(look).findings);
        for (const { look } of all) look.free();
        return refused({ works: false, findings: [...own, ...unread] });
    }

    async function open(bytes, name) {
        const isText = engine.isText(bytes);
        if (isText || isCubeName(name) || bytes.length === 0) return single(bytes, name, isText);
        const found = inside(await engine.findLooks(bytes));
        if (found) return found;
        if (isZip(bytes)) return refused(nothing('it is a zip file: unpack it first'));
        const isCube = engine.check(bytes, name).size > 0;
        return isCube ? single(bytes, name, false) : refused(nothing('it holds no look'));
    }

    return {
        /**
         * The looks of a file: `looks` with how often each lies in it, or `refused`, the check of
         * what does not work.
         */
        async openLook({ bytes, name }) {
            try {
                return { unreadable: [], beyond: 0, ...await open(bytes, name) };
            } catch (error) {
                if (!(error instanceof TintwellError)) throw error;
                return refused(nothing(error.message));
            }
        },

        /** What the page shows of a look with a LUT. */
        describeLook({ key }) {
            const look = lookOf(key);
            const axis = engine.neutralAxis(look, GREYS);
            const samples = engine.samples(look);
            const transfer = [axis.buffer, samples.buffer];
            return { check: checkOf(look), range: look.range, axis, samples, transfer };
        },

        compareLooks({ one, other }) {
            return engine.compare(lookOf(one), lookOf(other));
        },

        cubeOf({ key }) {
            return { bytes: engine.writeCube(lookOf(key)) };
        },

        textOf({ key }) {
            return { text: engine.writeText(lookOf(key)) };
        },

        /** Looks that the page no longer names. */
        dropLooks({ keys }) {
            for (const key of keys) shared.drop(key);
        },
    };
}
