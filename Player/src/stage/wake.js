// The controls show while someone is there: the pointer moves over the slides, or touches them.

/** How long after the pointer's last movement. */
const kAwake = 2500;

/** @param {HTMLElement} element marked with data-awake while someone is there */
export function wakes(element) {
  let timer = 0;
  const sleep = () => delete element.dataset.awake;
  const wake = () => {
    element.dataset.awake = "";
    clearTimeout(timer);
    timer = window.setTimeout(sleep, kAwake);
  };
  element.addEventListener("pointermove", wake);
  element.addEventListener("pointerdown", wake);
  element.addEventListener("pointerleave", sleep);
}
