// Looks live in the worker as long as a part of the page names them.
import { call } from './engine_client.mjs';

const held = new Map();

/**
 * Names the looks that a part of the page needs, instead of those it needed before; what no part
 * needs any more is freed.
 * @param {string} holder
 * @param {number[]} keys
 */
export function hold(holder, keys) {
    const before = held.get(holder) ?? [];
    held.set(holder, keys);
    const still = new Set([...held.values()].flat());
    const gone = before.filter((key) => !still.has(key));
    if (gone.length) call('dropLooks', { keys: gone });
}
