// Elements of drawings.

/**
 * @param {string} name
 * @param {Record<string, string|number>} attributes
 * @param {string} [text]
 */
export function svg(name, attributes, text) {
    const node = document.createElementNS('http://www.w3.org/2000/svg', name);
    for (const [key, value] of Object.entries(attributes)) node.setAttribute(key, value);
    if (text !== undefined) node.textContent = text;
    return node;
}
