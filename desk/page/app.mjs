// What the page's tasks share: the look that is in use.

/**
 * @typedef {object} LookInfo
 * @property {number} key  Of the look in the worker.
 * @property {string} name
 * @property {string} id
 * @property {'lut'|'pattern'|'none'} kind
 * @property {number} size
 * @property {number} steps  Of a pattern, else 0.
 */

/** Dispatches "look" when `look` has changed. */
class App extends EventTarget {
    /** @type {LookInfo|null} */
    look = null;

    #lastChoice = 0;
    #used = 0;

    /** The user chooses a look that is still to be read: a number for useLook. */
    beginChoice() {
        return ++this.#lastChoice;
    }

    /** Uses a look, unless one that was chosen later is in use already; tells whether it did. */
    useLook(look, choice = this.beginChoice()) {
        if (choice < this.#used) return false;
        this.#used = choice;
        this.look = look;
        this.dispatchEvent(new Event('look'));
        return true;
    }
}

export const app = new App();
