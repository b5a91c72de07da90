// What the page's tasks share: the look that is in use.

/**
 * @typedef {object} LookInfo
 * @property {number} key  Of the look in the worker.
 * @property {string} name
 * @property {string} id
 * @property {'lut'|'pattern'|'none'} kind
 * @property {number} size
 */

/** Dispatches "look" when `look` has changed. */
class App extends EventTarget {
    /** @type {LookInfo|null} */
    look = null;

    useLook(look) {
        this.look = look;
        this.dispatchEvent(new Event('look'));
    }
}

export const app = new App();
