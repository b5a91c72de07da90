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

    constructor(engine) {
        this.engine = engine;
    }

    keep(look) {
        this.looks.set(++this.#lastKey, look);
        return this.#lastKey;
    }

    /** Tells the page, in between. */
    tell(topic, value, transfer = []) {
        postMessage({ topic, value }, transfer);
    }
}

const methods = loadEngine({ wasmBinary }).then((engine) => {
    const shared = new Shared(engine);
    return { ...lookMethods(shared), ...pictureMethods(shared), ...matchMethods(shared) };
});

onmessage = async ({ data: { call, method, args } }) => {
    try {
        // A result may name what is handed over, not copied, as `transfer`.
        const { transfer = [], ...result } = (await (await methods)[method](args)) ?? {};
        postMessage({ call, result }, transfer);
    } catch (error) {
        postMessage({ call, message: error.message });
        // Nothing here can be relied on any more: the page starts again.
        if (error instanceof EngineLost) setTimeout(() => { throw error; });
    }
};
