// Lets messages in between pieces of long work.
const { port1, port2 } = new MessageChannel();
const waiting = [];
port1.onmessage = () => waiting.shift()();

export function nextTurn() {
    return new Promise((resolve) => {
        waiting.push(resolve);
        port2.postMessage(null);
    });
}
