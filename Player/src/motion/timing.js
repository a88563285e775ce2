// When everything on a slide happens. All times are milliseconds from the slide's start.

/** @typedef {import("../document/slider_document.js").Caption} Caption */

/**
 * @typedef {object} CaptionTiming
 * @property {number} enter the entrance begins
 * @property {number} arrived the entrance is over
 * @property {number} leave the exit begins
 * @property {number} gone the exit is over; the slide's end or later for a caption that stays
 * @property {number} lane row among the captions at the same anchor, 0 for the first
 */

/**
 * @typedef {object} SlideTiming
 * @property {number} duration
 * @property {CaptionTiming[]} captions
 */

const kMinimumSlide = 4000;
/** How long a caption that stays until the slide ends is seen at least. */
const kMinimumStay = 3000;
const kTail = 300;

/**
 * @param {{ caption: Caption, parts: number }[]} entries the captions with the number of their
 *   parts
 * @param {boolean} still whether captions appear and go at once
 * @returns {SlideTiming}
 */
export function slideTiming(entries, still) {
  const captions = entries.map(({ caption, parts }) => {
    const { style } = caption;
    const enter = caption.inTime * 1000;
    const arrived =
      enter + (still ? 0 : (style.duration + style.step * Math.max(parts - 1, 0)) * 1000);
    const stays = caption.stayTime === 0;
    const leave = stays ? Infinity : arrived + caption.stayTime * 1000;
    return {
      stays,
      enter,
      arrived,
      leave,
      gone: still ? leave : leave + style.out * 1000,
      lane: 0,
    };
  });
  const ends = captions.map(({ stays, arrived, gone }) =>
    stays ? arrived + kMinimumStay : gone + kTail,
  );
  const duration = Math.max(kMinimumSlide, ...ends);
  assignLanes(entries, captions);
  return { duration, captions: captions.map(({ stays, ...timing }) => timing) };
}

/**
 * Captions at one anchor stand below each other while they are seen together, and share a row
 * otherwise.
 * @param {{ caption: Caption }[]} entries
 * @param {CaptionTiming[]} timings
 */
function assignLanes(entries, timings) {
  /** @type {Map<string, number[]>} */
  const lanes = new Map();
  timings.forEach((timing, index) => {
    const { anchor } = entries[index].caption;
    const ends = lanes.get(anchor) ?? [];
    const free = ends.findIndex((end) => end <= timing.enter);
    timing.lane = free < 0 ? ends.length : free;
    ends[timing.lane] = timing.gone;
    lanes.set(anchor, ends);
  });
}

/**
 * @param {CaptionTiming} timing
 * @param {number} time
 * @returns {"waiting" | "entering" | "staying" | "leaving" | "gone"}
 */
export function captionState(timing, time) {
  if (time < timing.enter) return "waiting";
  if (time < timing.arrived) return "entering";
  if (time < timing.leave) return "staying";
  return time < timing.gone ? "leaving" : "gone";
}

/**
 * The first time at which most captions have arrived and none of these leaves: where a still
 * slide is seen best.
 * @param {SlideTiming} timing
 * @returns {number}
 */
export function settledTime({ captions }) {
  const seenAt = (/** @type {number} */ time) =>
    captions.filter((timing) => captionState(timing, time) === "staying").length;
  const times = captions.map(({ arrived }) => arrived).sort((a, b) => a - b);
  return times.reduce((best, time) => (seenAt(time) > seenAt(best) ? time : best), 0);
}
