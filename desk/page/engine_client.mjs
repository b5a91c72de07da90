// The engine's worker as the page sees it.
import workerSource from 'tintwell:worker';

let worker;
let lastCall = 0;
const waiting = new Map();
const listeners = new Map();

/** Ends what the worker still does and forgets its looks and pictures. */
function start() {
    const source = new Blob([workerSource], { type: 'text/javascript' });
    const url = URL.createObjectURL(source);
    worker = new Worker(url);
    URL.revokeObjectURL(url);
    worker.onmessage = ({ data }) => receive(data);
    worker.onerror = (event) => {
        event.preventDefault();
        for (const { reject } of waiting.values()) reject(new Error('the engine had to start again'));
        waiting.clear();
        worker.terminate();
        start();
    };
}

function receive({ call, result, message, topic, value }) {
    if (topic !== undefined) {
        listeners.get(topic)?.(value);
        return;
    }
    const { resolve, reject } = waiting.get(call);
    waiting.delete(call);
    if (message === undefined) resolve(result);
    else reject(new Error(message));
}

/**
 * Calls a method of the worker (see worker/main.mjs); rejects with an Error whose message is one
 * sentence for the user.
 * @param {string} method
 * @param {any} [args]  One structured-cloneable value.
 * @param {Transferable[]} [transfer]
 */
export function call(method, args = {}, transfer = []) {
    return new Promise((resolve, reject) => {
        waiting.set(++lastCall, { resolve, reject });
        worker.postMessage({ call: lastCall, method, args }, transfer);
    });
}

/** Calls `listener` with what the worker tells of a topic meanwhile. One listener a topic. */
export function listen(topic, listener) {
    listeners.set(topic, listener);
}

start();
