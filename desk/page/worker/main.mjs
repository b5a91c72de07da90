// The worker: the engine, and what the page keeps in it. Messages: see ../engine_client.mjs.
import { EngineLost, loadEngine } from 'tintwell:engine';
import wasmBinary from 'tintwell:wasm';
import { lookMethods } from './looks.mjs';
import { matchMethods } from './match.mjs';
import { pictureMethods } from './pictures.mjs';

/** What the methods share. Looks are told apart by key: the page cannot hold the looks themselves. */
class Shared {
    looks = new Map();
    #lastKey = 0;
    #dropped = [];
    #running = 0;

    constructor(engine) {
        this.engine = engine;
    }

    keep(look) {
        this.looks.set(++this.#lastKey, look);
        return this.#lastKey;
    }

    drop(key) {
        if (this.looks.has(key)) this.#dropped.push(this.looks.get(key));
        this.looks.delete(key);
    }

    /** Runs a method. A picture may be on its way through a dropped look: it is freed when none is. */
    async run(method, args) {
        ++this.#running;
        try {
            return await method(args);
        } finally {
            if (--this.#running === 0)
                for (const look of this.#dropped.splice(0)) look.free();
        }
    }

    /** Tells the page, in between. */
    tell(topic, value, transfer = []) {
        postMessage({ topic, value }, transfer);
    }
}

const started = loadEngine({ wasmBinary }).then((engine) => {
    const shared = new Shared(engine);
    const methods = { ...lookMethods(shared), ...pictureMethods(shared), ...matchMethods(shared) };
    return { shared, methods };
});

onmessage = async ({ data: { call, method, args } }) => {
    try {
        const { shared, methods } = await started;
        // A result may name what is handed over, not copied, as `transfer`.
        const { transfer = [], ...result } = (await shared.run(methods[method], args)) ?? {};
        postMessage({ call, result }, transfer);
    } catch (error) {
        postMessage({ call, message: error.message });
        // Nothing here can be relied on any more: the page starts again.
        if (error instanceof EngineLost) setTimeout(() => { throw error; });
    }
};
