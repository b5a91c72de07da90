// One browser for the tests of a file; each begins with a fresh page, and none leaves a trace in
// the console or asks for anything but the page.
import { after, afterEach, before, beforeEach } from 'node:test';
import { Desk } from './desk.mjs';

/** @returns {{desk: Desk}} */
export function withDesk(options) {
    const holder = {};
    before(async () => { holder.desk = await Desk.open(options); });
    beforeEach(() => holder.desk.load());
    afterEach(() => holder.desk.expectQuiet());
    after(() => holder.desk.close());
    return holder;
}
