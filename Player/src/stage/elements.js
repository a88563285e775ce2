// Making elements. Text goes in as text only.

/**
 * @template {keyof HTMLElementTagNameMap} Tag
 * @param {Tag} tag
 * @param {{ class?: string, text?: string, [attribute: string]: string | undefined }} [attributes]
 * @param {Node[]} [children]
 * @returns {HTMLElementTagNameMap[Tag]}
 */
export function make(tag, attributes = {}, children = []) {
  const element = document.createElement(tag);
  for (const [name, value] of Object.entries(attributes)) {
    if (value === undefined) continue;
    if (name === "text") element.textContent = value;
    else element.setAttribute(name, value);
  }
  element.append(...children);
  return element;
}

/** @param {number} milliseconds @returns {Promise<void>} */
export function after(milliseconds) {
  return new Promise((done) => setTimeout(done, milliseconds));
}

/**
 * A promise's value, or the given one when it takes longer.
 * @template T
 * @param {Promise<T>} promise
 * @param {number} milliseconds
 * @param {T} late
 * @returns {Promise<T>}
 */
export function within(promise, milliseconds, late) {
  return Promise.race([promise, after(milliseconds).then(() => late)]);
}
