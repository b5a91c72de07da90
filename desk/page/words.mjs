// Numbers and names in sentences.

/** With up to three significant digits. @param {number} value */
export function spell(value) {
    return Number.isFinite(value) ? String(Number(value.toPrecision(3))) : 'no number';
}

/** "1 look", "2 looks". */
export function counted(count, one, many = `${one}s`) {
    return `${count.toLocaleString('en')} ${count === 1 ? one : many}`;
}

/** Of a picture or a LUT, where less than a ten-thousandth is no more than a rounding. */
export function spellValue(value) {
    return spell(Math.round(value * 1e4) / 1e4);
}

/** "0.1 0.2 0.3". @param {number[]} colour */
export function spellColour(colour) {
    return colour.map(spellValue).join(' ');
}

export function nameOf({ name }) {
    return name || '(no name)';
}

/** A file's name without what file systems refuse. */
export function fileNameOf({ name }, ending) {
    const safe = name.replace(/[\\/:*?"<>|\p{Cc}]/gu, '_').replace(/^\.+|[. ]+$/g, '');
    return `${safe || 'look'}${ending}`;
}
