// What the player showed before the page was loaded again, and where to go on from there.
//
// While the slider is being edited, the page is loaded again after every change of the document.
// The player then shows what changed, or goes on where it was when nothing did.

/** @typedef {import("./document/slider_document.js").Slide} Slide */

/** @typedef {{ media: string, captions: string[] }} SlideMark */

/**
 * @typedef {object} Place
 * @property {SlideMark[]} slides
 * @property {number} index the slide on show
 * @property {number} time milliseconds
 * @property {boolean} paused
 */

/**
 * @typedef {{ index: number, caption: number | null }} Change the caption is null for the slide
 *   as a whole
 */

/**
 * A short stand-in for a text; equal for equal texts, and hardly ever for others: 64 bits of two
 * multiplying hashes.
 * @param {string} text
 */
function digest(text) {
  let [one, two] = [0x811c9dc5, 0x1b873593];
  for (let at = 0; at < text.length; ++at) {
    const code = text.charCodeAt(at);
    one = Math.imul(one ^ code, 0x01000193);
    two = Math.imul(two ^ code, 0x5bd1e995) ^ (two >>> 13);
  }
  return (one >>> 0).toString(36) + (two >>> 0).toString(36);
}

/** @param {Slide[]} slides @returns {SlideMark[]} */
export function marksOf(slides) {
  return slides.map(({ media, captions }) => {
    return { media, captions: captions.map((caption) => digest(JSON.stringify(caption))) };
  });
}

/**
 * The first of `after` that is new or different; the one that follows a removed one.
 * @param {string[]} before
 * @param {string[]} after
 * @param {number} preferred taken when it is one of several that differ
 * @returns {number} -1 when both are equal
 */
function firstChange(before, after, preferred) {
  const length = Math.max(before.length, after.length);
  const changed = [];
  for (let at = 0; at < length; ++at) if (before[at] !== after[at]) changed.push(at);
  if (changed.length === 0) return -1;
  const index =
    before.length === after.length && changed.includes(preferred) ? preferred : changed[0];
  return Math.max(Math.min(index, after.length - 1), 0);
}

/**
 * @param {Place} place
 * @param {SlideMark[]} slides as they are now; at least one
 * @returns {Change | null} null when nothing changed
 */
export function findChange(place, slides) {
  const flat = (/** @type {SlideMark[]} */ marks) => marks.map((mark) => JSON.stringify(mark));
  const index = firstChange(flat(place.slides), flat(slides), place.index);
  if (index < 0) return null;
  const before = place.slides[index];
  const sameSlide =
    before && place.slides.length === slides.length && before.media === slides[index].media;
  if (!sameSlide || slides[index].captions.length === 0) return { index, caption: null };
  return { index, caption: firstChange(before.captions, slides[index].captions, -1) };
}

const kKey = "vireonix.place";

/** @param {Place} place */
export function savePlace(place) {
  const entry = JSON.stringify({ page: location.pathname, ...place });
  try {
    sessionStorage.setItem(kKey, entry);
  } catch {
    // Without storage the player starts from the first slide.
  }
}

/** @returns {Place | null} */
export function loadPlace() {
  try {
    const entry = JSON.parse(sessionStorage.getItem(kKey) ?? "null");
    const whole =
      entry?.page === location.pathname &&
      Array.isArray(entry.slides) &&
      Number.isInteger(entry.index);
    return whole ? entry : null;
  } catch {
    return null;
  }
}
