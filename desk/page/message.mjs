// The one place where the page speaks to the user.
const region = document.querySelector('#message');

function show(sentence, role) {
    const words = document.createElement('p');
    words.textContent = sentence;
    if (role) words.setAttribute('role', role);
    region.replaceChildren(...(sentence ? [words] : []));
}

/** Tells what has been done. An empty sentence takes the last one away. */
export function say(sentence) {
    show(sentence);
}

/** Tells what did not work, and why. */
export function complain(sentence) {
    show(sentence, 'alert');
}
