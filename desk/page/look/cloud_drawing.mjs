// Draws the lattice of a look as a cloud: each point lies at the colour that comes out, and has it.

const MOST_POINTS_AN_AXIS = 17;
const FARTHEST = 3;
// How much nearer things look larger.
const DEPTH = 0.12;
const BUCKETS = 512;

const CORNERS = Array.from({ length: 8 }, (_, at) => [at & 1, at >> 1 & 1, at >> 2]);
const EDGES = CORNERS.flatMap((corner, at) => [1, 2, 4]
    .filter((bit) => !(at & bit))
    .map((bit) => [corner, CORNERS[at | bit]]));
const LABELS = [
    ['black', [0, 0, 0]], ['red', [1, 0, 0]], ['green', [0, 1, 0]],
    ['blue', [0, 0, 1]], ['white', [1, 1, 1]],
];

/** Lattice indices an axis, evenly spread over the larger lattices. */
function indices(size) {
    const count = Math.min(size, MOST_POINTS_AN_AXIS);
    return Array.from({ length: count }, (_, at) => Math.round(at * (size - 1) / (count - 1)));
}

function cssOf(colour) {
    const [red, green, blue] = colour.map(
        (value) => Math.round(Math.min(Math.max(value, 0), 1) * 255));
    return `rgb(${red} ${green} ${blue})`;
}

/**
 * The points of a cloud.
 * @param {Float32Array} samples
 * @param {number} size
 */
export function cloudOf(samples, size) {
    const axis = indices(size);
    const values = [];
    const colours = [];
    const outside = [];
    let farthest = Math.sqrt(0.75);
    for (const blue of axis) {
        for (const green of axis) {
            for (const red of axis) {
                const at = ((blue * size + green) * size + red) * 3;
                const colour = [...samples.subarray(at, at + 3)];
                if (!colour.every(Number.isFinite)) continue;
                const centred = colour.map((value) => value - 0.5);
                values.push(...centred);
                colours.push(cssOf(colour));
                outside.push(colour.some((value) => value < 0 || value > 1));
                farthest = Math.max(farthest, Math.hypot(...centred));
            }
        }
    }
    return {
        values: Float32Array.from(values),
        colours,
        outside,
        radius: Math.min(farthest, FARTHEST),
        count: colours.length,
        spacing: 1 / (axis.length - 1),
    };
}

/**
 * Where a colour lies in the drawing, with white up at first. Gives x, y and the nearness.
 * @param {{turn: number, tilt: number}} view  Radians.
 */
function projection({ turn, tilt }, { radius }, width, height) {
    const [sinTurn, cosTurn] = [Math.sin(turn), Math.cos(turn)];
    const [sinTilt, cosTilt] = [Math.sin(tilt), Math.cos(tilt)];
    const scale = Math.min(width, height) / 2 / radius * 0.84;
    // The grey axis stands upright before it is tilted.
    return (red, green, blue, out) => {
        const across = (red - green) * Math.SQRT1_2;
        const away = (red + green - 2 * blue) / Math.sqrt(6);
        const up = (red + green + blue) / Math.sqrt(3);
        const x = across * cosTurn + away * sinTurn;
        const z = away * cosTurn - across * sinTurn;
        const near = z * cosTilt + up * sinTilt;
        const y = up * cosTilt - z * sinTilt;
        const zoom = scale * (1 + DEPTH * near / radius);
        out[0] = width / 2 + x * zoom;
        out[1] = height / 2 - y * zoom;
        out[2] = near / radius;
        return out;
    };
}

/** Point numbers, the farthest first: sorted into buckets, as that is fast. */
function order(nearness) {
    const starts = new Uint32Array(BUCKETS + 1);
    const bucketOf = (near) => Math.min(
        Math.max(Math.floor((near + 1) / 2 * BUCKETS), 0), BUCKETS - 1);
    for (const near of nearness) ++starts[bucketOf(near) + 1];
    for (let at = 0; at < BUCKETS; ++at) starts[at + 1] += starts[at];
    const sorted = new Uint32Array(nearness.length);
    nearness.forEach((near, at) => {
        sorted[starts[bucketOf(near)]++] = at;
    });
    return sorted;
}

function projected({ values, count }, project) {
    const places = new Float32Array(count * 2);
    const nearness = new Float32Array(count);
    const out = [0, 0, 0];
    for (let at = 0; at < count; ++at) {
        project(values[at * 3], values[at * 3 + 1], values[at * 3 + 2], out);
        places[at * 2] = out[0];
        places[at * 2 + 1] = out[1];
        nearness[at] = out[2];
    }
    return { places, nearness };
}

/** What lies outside is drawn hollow. */
function drawPoints(context, cloud, project, scale) {
    const { places, nearness } = projected(cloud, project);
    const side = Math.max(2.2, Math.min(9, scale * cloud.spacing * 0.16));
    context.lineWidth = 1.4;
    for (const at of order(nearness)) {
        const edge = side * (1 + 0.35 * nearness[at]);
        const x = places[at * 2] - edge / 2;
        const y = places[at * 2 + 1] - edge / 2;
        if (cloud.outside[at]) {
            context.strokeStyle = cloud.colours[at];
            context.strokeRect(x, y, edge, edge);
        } else {
            context.fillStyle = cloud.colours[at];
            context.fillRect(x, y, edge, edge);
        }
    }
}

/** The edges behind the cloud, or those before it. */
function drawCube(context, project, before, line) {
    context.strokeStyle = line;
    context.lineWidth = 1;
    context.beginPath();
    for (const edge of EDGES) {
        const [from, to] = edge.map((corner) => project(...corner.map((v) => v - 0.5), []));
        if ((from[2] + to[2] > 0) !== before) continue;
        context.moveTo(from[0], from[1]);
        context.lineTo(to[0], to[1]);
    }
    context.stroke();
}

/** The names of the corners behind the cloud, or of those before it. */
function drawLabels(context, project, before, { width, height }, { text, ground }) {
    context.font = '12px system-ui, sans-serif';
    context.textAlign = 'center';
    context.textBaseline = 'middle';
    context.lineJoin = 'round';
    context.lineWidth = 4;
    context.strokeStyle = ground;
    context.fillStyle = text;
    for (const [label, corner] of LABELS) {
        const [x, y, near] = project(...corner.map((value) => (value - 0.5) * 1.16), []);
        if ((near > -0.5) !== before) continue;
        const place = [Math.min(Math.max(x, 20), width - 20), Math.min(Math.max(y, 9), height - 9)];
        context.strokeText(label, ...place);
        context.fillText(label, ...place);
    }
}

/**
 * @param {CanvasRenderingContext2D} context  Of pixels of the page.
 * @param {ReturnType<typeof cloudOf>} cloud
 * @param {{turn: number, tilt: number}} view
 * @param {{width: number, height: number}} size
 * @param {{line: string, text: string, ground: string}} colours
 */
export function drawCloud(context, cloud, view, size, colours) {
    const { width, height } = size;
    const project = projection(view, cloud, width, height);
    context.clearRect(0, 0, width, height);
    drawLabels(context, project, false, size, colours);
    drawCube(context, project, false, colours.line);
    drawPoints(context, cloud, project, Math.min(width, height) / cloud.radius);
    drawCube(context, project, true, colours.line);
    drawLabels(context, project, true, size, colours);
}
