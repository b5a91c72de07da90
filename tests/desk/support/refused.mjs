import assert from 'node:assert/strict';
import { TintwellError } from './module.mjs';

/** The sentence with which the engine refuses the call. */
export function refused(call) {
    let result;
    try {
        result = call();
    } catch (error) {
        assert.ok(error instanceof TintwellError, `${error.stack}`);
        assert.match(error.message, /[^.]$/);
        return error.message;
    }
    return assert.fail(`the engine took it: ${result}`);
}
