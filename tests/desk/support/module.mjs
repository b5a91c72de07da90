// The engine as a module under node.
import { readFileSync } from 'node:fs';
import { join } from 'node:path';
import { pathToFileURL } from 'node:url';
import { engineFolder } from './places.mjs';

const module = await import(pathToFileURL(join(engineFolder, 'tintwell.mjs')));

export const { EngineLost, Look, TintwellError, toUtf16 } = module;

export const wasmBinary = new Uint8Array(
    readFileSync(join(engineFolder, 'tintwell_engine.wasm')));

export function loadEngine() {
    return module.loadEngine({ wasmBinary });
}
