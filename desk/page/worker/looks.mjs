// The worker's methods for looks: found in files, judged, compared and written.

const GREYS = 257;

/** @returns {import('../app.mjs').LookInfo} */
export function infoOf(key, look) {
    const { name, kind, size, steps } = look;
    return { key, name, id: String(look.id), kind, size, steps };
}

function isCubeName(name) {
    return name.toLowerCase().endsWith('.cube');
}

/** What cannot be read, as the check would tell it. */
function findingOf({ reason, count }) {
    return {
        weight: 'fatal',
        id: 'unreadable',
        words: `${reason} (${count === 1 ? '1 text' : `${count} texts`})`,
        advice: 'Apply the look again.',
    };
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
        if (!check.works) return { looks: [], refused: check };
        const look = isText ? engine.readText(bytes) : engine.readCube(bytes, name);
        checks.set(look, check);
        return { looks: [entryOf(look, 1)], refused: null };
    }

    /** Any file's looks; null where there is nothing of the kind. */
    async function found(bytes) {
        const { looks: all, unreadable, beyond } = await engine.findLooks(bytes);
        if (all.length === 0 && unreadable.length === 0) return null;
        if (all.some(({ look }) => look.kind === 'lut')) {
            return {
                looks: all.map(({ look, count }) => entryOf(look, count)),
                refused: null,
                unreadable: unreadable.map(findingOf),
                beyond,
            };
        }
        const check = all.length ? engine.check(all[0].look) : { works: false, findings: [] };
        for (const { look } of all) look.free();
        const findings = [...check.findings, ...unreadable.map(findingOf)];
        return { looks: [], refused: { ...check, findings } };
    }

    async function open(bytes, name) {
        const isText = engine.isText(bytes);
        if (isText || isCubeName(name)) return single(bytes, name, isText);
        const inside = await found(bytes);
        if (inside) return inside;
        const check = engine.check(bytes, name);
        if (check.size === 0) throw new Error('it holds no look');
        return single(bytes, name, false);
    }

    return {
        /**
         * The looks of a file: `looks` with how often each lies in it, or `refused`, the check of
         * what does not work.
         */
        async openLook({ bytes, name }) {
            return { unreadable: [], beyond: 0, ...await open(bytes, name) };
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
            for (const key of keys) {
                looks.get(key)?.free();
                looks.delete(key);
            }
        },
    };
}
