// The engine's worker as the page sees it.
import workerSource from 'tintwell:worker';

const source = new Blob([workerSource], { type: 'text/javascript' });
const url = URL.createObjectURL(source);
const worker = new Worker(url);
URL.revokeObjectURL(url);

let lastCall = 0;
const waiting = new Map();
const listeners = new Map();

worker.onmessage = ({ data }) => receive(data);

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

/** Calls `listener` when the engine has failed: its looks and pictures are gone. */
export function whenLost(listener) {
    worker.onerror = (event) => {
        event.preventDefault();
        listener();
    };
}
