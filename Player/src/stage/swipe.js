// Swiping, by touch, pen or mouse.

/** Of the element's width; and in pixels at least. */
const kShare = 0.08;
const kLeast = 30;

/**
 * @param {HTMLElement} element
 * @param {(step: 1 | -1) => void} onSwipe called with 1 for a swipe to the next, which is to the
 *   left
 */
export function swipes(element, onSwipe) {
  /** @type {PointerEvent | null} */
  let start = null;
  element.addEventListener("pointerdown", (event) => {
    start = event.isPrimary && event.button === 0 ? event : null;
  });
  element.addEventListener("pointercancel", () => (start = null));
  // The pointer may be let go outside.
  addEventListener("pointerup", (event) => {
    if (start?.pointerId !== event.pointerId) return;
    const [across, down] = [event.clientX - start.clientX, event.clientY - start.clientY];
    start = null;
    const far = Math.max(element.clientWidth * kShare, kLeast);
    if (Math.abs(across) > Math.max(far, Math.abs(down))) onSwipe(across < 0 ? 1 : -1);
  });
}
