// The vectors of examples/panel against the engine. Runs in node and in browsers: nothing is
// imported, and what differs is told as sentences.

const sameFloats = (told, found) =>
    told.length === found.length && told.every((value, at) => Math.fround(value) === found[at]);

const nearFloats = (told, found) => told.length === found.length &&
    told.every((value, at) => Math.abs(Math.fround(value) - found[at]) <= 1e-7);

const bytesOfHex = (hex) => Uint8Array.from(hex.match(/../g) ?? [], (pair) => parseInt(pair, 16));

// Names are strings: bytes that are no UTF-8 become the character for what is unknown.
const nameOf = ({ name, name_bytes }) => name ?? new TextDecoder().decode(bytesOfHex(name_bytes));

class Judge {
    wrong = [];
    compared = 0;

    expect(what, told, found) {
        ++this.compared;
        if (told !== found) this.wrong.push(`${what}: ${found} and not ${told}`);
    }

    expectThat(what, holds) {
        this.expect(what, true, holds);
    }
}

function messageOf(vector) {
    const says = vector.message ?? '';
    return says === '' || says === 'parameter does not hold TWLUT text'
        ? 'it holds no TWLUT text' : says;
}

function judgeValue(engine, vector, bytes, judge) {
    let look = null;
    let message = '';
    try {
        look = engine.readText(bytes);
    } catch (error) {
        message = error.message;
    }
    const { file, reads } = vector;
    judge.expect(`${file}, kind`, reads, look?.kind ?? 'nothing');
    if (!look) judge.expect(`${file}, message`, messageOf(vector), message);
    if (look?.kind === 'pattern') judge.expect(`${file}, steps`, vector.size, look.steps);
    if (look?.kind === 'lut') {
        judge.expect(`${file}, id`, BigInt(vector.id), look.id);
        judge.expect(`${file}, name`, nameOf(vector), look.name);
        judge.expect(`${file}, size`, vector.size, look.size);
        judge.expectThat(`${file}, samples`, sameFloats(vector.samples, engine.samples(look)));
    }
    look?.free();
}


// The engine takes samples in a .cube file; nine digits tell all single-precision numbers apart.
function judgeWritten(engine, vector, judge) {
    const { about, size, samples, id, name, text } = vector;
    const lines = [`LUT_3D_SIZE ${size}`];
    for (let at = 0; at < samples.length; at += 3)
        lines.push(samples.slice(at, at + 3).map((v) => v.toPrecision(9)).join(' '));
    const read = engine.readCube(lines.join('\n'), 'x.cube');
    const look = engine.named(read, { id: BigInt(id), name });
    judge.expect(`written, ${about}`, text, engine.writeText(look));
    read.free();
    look.free();
}

function judgePatches(vector, data, judge) {
    const { file, width, patches } = vector;
    for (const { index, x, y, to_x, to_y, colour } of patches) {
        const bytes = colour.map((value) => Math.floor(Math.fround(value) * 255 + 0.5)).join();
        for (const at of [y * width + x, (to_y - 1) * width + to_x - 1])
            judge.expect(`${file}, patch ${index}`, `${bytes},255`,
                         data.subarray(at * 4, at * 4 + 4).join());
    }
}

// The first patches show every level of red.
function judgeLevels(engine, vector, drawn, judge) {
    const { file, size, width, height, columns, levels, bytes } = vector;
    const look = engine.readText(`TWLUTP ${size}`);
    const floats = engine.grade(
        { width, height, data: new Float32Array(width * height * 4) }, look);
    const reds = (values) => levels.map(
        (_, level) => values[Math.ceil(level * width / columns) * 4]);
    judge.expectThat(`${file}, levels`, sameFloats(levels, reds(floats)));
    judge.expect(`${file}, bytes`, bytes.join(), reds(drawn).join());
    look.free();
}

function judgePattern(engine, vector, picture, judge) {
    const { file, size, width, height } = vector;
    const drawn = engine.pattern(size, width, height);
    judge.expect(`${file}, frame`, `${width} ${height}`, `${picture.width} ${picture.height}`);
    judge.expectThat(`${file}, pixels`,
                     drawn.length === picture.data.length &&
                     drawn.every((value, at) => value === picture.data[at]));
    judgePatches(vector, drawn, judge);
    judgeLevels(engine, vector, drawn, judge);
}

function judgeMeasured(engine, vector, picture, judge) {
    const { look, columns, rows } = engine.measure(picture, vector.size);
    judge.expectThat(`${vector.file}, measured`, nearFloats(vector.samples, engine.samples(look)));
    judge.expect(`${vector.file}, grid`, '7 4', `${columns} ${rows}`);
    look.free();
}

function judgeRequest(engine, vector, bytes, judge) {
    const { file, state, id = '0', at } = vector;
    const found = engine.parseEditRequest(bytes);
    const hasName = 'name' in vector || 'name_bytes' in vector;
    judge.expect(`${file}, state`, state, found.state);
    judge.expect(`${file}, id`, BigInt(id), found.id);
    judge.expect(`${file}, name`, hasName ? nameOf(vector) : null, found.name);
    judge.expect(`${file}, at`, at === undefined ? null : BigInt(at), found.at);
}

/**
 * @param engine  Made by loadEngine.
 * @param {{texts, patterns, requests}} indexes  Of the folders.
 * @param {Record<string, Uint8Array>} files  Contents by folder/name.
 * @param {Record<string, {data, width, height}>} pictures  Those of patterns/, decoded.
 * @returns {{wrong: string[], compared: number, used: string[]}}
 */
export function judgeVectors(engine, { texts, patterns, requests }, files, pictures) {
    const judge = new Judge();
    for (const vector of texts.values)
        judgeValue(engine, vector, files[`texts/${vector.file}`], judge);
    for (const vector of texts.written) judgeWritten(engine, vector, judge);
    for (const vector of patterns.patterns)
        judgePattern(engine, vector, pictures[`patterns/${vector.file}`], judge);
    for (const vector of patterns.measured)
        judgeMeasured(engine, vector, pictures[`patterns/${vector.file}`], judge);
    for (const vector of requests.requests)
        judgeRequest(engine, vector, files[`requests/${vector.file}`], judge);
    const used = [
        ...texts.values.map(({ file }) => `texts/${file}`),
        ...[...patterns.patterns, ...patterns.measured].map(({ file }) => `patterns/${file}`),
        ...requests.requests.map(({ file }) => `requests/${file}`),
    ];
    return { wrong: judge.wrong, compared: judge.compared, used };
}
