// Turns a slide's captions and their timing into one timeline that can be moved to any time.

import { createTimeline, stagger } from "animejs";
import { captionState } from "./timing.js";

/** @typedef {import("../document/slider_document.js").Caption} Caption */
/** @typedef {import("./timing.js").CaptionTiming} CaptionTiming */

/**
 * @typedef {object} MovingCaption
 * @property {Caption} caption
 * @property {CaptionTiming} timing
 * @property {HTMLElement} element leaves as a whole
 * @property {HTMLElement[]} parts enter one after another
 */

/**
 * @typedef {Record<string, (string | number)[]>} Looks pairs of the looks away and the plain
 *   looks
 */

/**
 * @param {Caption} caption
 * @returns {Looks} what differs from the plain looks while the caption is away
 */
function looksAway({ style, direction }) {
  /** @type {Looks} */
  const looks = {};
  if (style.opacity !== 1) looks.opacity = [style.opacity, 1];
  if (style.move !== 0 && direction.x !== 0)
    looks.translateX = [`${direction.x * style.move}cqw`, "0cqw"];
  if (style.move !== 0 && direction.y !== 0)
    looks.translateY = [`${direction.y * style.move}cqh`, "0cqh"];
  if (style.scale !== 100) looks.scale = [style.scale / 100, 1];
  if (style.rotate !== 0) looks.rotate = [`${style.rotate}deg`, "0deg"];
  if (style.flip !== 0)
    looks[direction.x !== 0 ? "rotateY" : "rotateX"] = [`${style.flip}deg`, "0deg"];
  if (style.blur !== 0) looks.filter = [`blur(${style.blur / 100}em)`, "blur(0em)"];
  return looks;
}

/** @param {Caption} caption @returns {Looks} */
function entrance(caption) {
  const looks = looksAway(caption);
  const { wave } = caption.style;
  if (wave !== 0) looks.translateY = [1, -0.6, 0.3, 0].map((swing) => `${(swing * wave) / 100}em`);
  return looks;
}

/** @param {Caption} caption @returns {Looks} */
function exit(caption) {
  const looks = Object.entries({ ...looksAway(caption), opacity: [0, 1] });
  return Object.fromEntries(looks.map(([property, [away, plain]]) => [property, [plain, away]]));
}

export class SlideTimeline {
  /**
   * @param {MovingCaption[]} captions
   * @param {boolean} still whether captions appear and go at once
   */
  constructor(captions, still) {
    this.captions = captions;
    this.timeline = createTimeline({ autoplay: false });
    if (!still) for (const caption of captions) this.add(caption);
    this.timeline.init();
  }

  /** @param {MovingCaption} moving */
  add({ caption, timing, element, parts }) {
    const { duration, step, ease, out } = caption.style;
    const delay = parts.length > 1 ? stagger(step * 1000) : 0;
    if (duration > 0 || parts.length > 1)
      this.timeline.add(
        parts,
        { ...entrance(caption), duration: Math.max(duration * 1000, 1), delay, ease },
        timing.enter,
      );
    if (out > 0 && Number.isFinite(timing.leave))
      this.timeline.add(
        element,
        { ...exit(caption), duration: out * 1000, ease: "inQuad" },
        timing.leave,
      );
  }

  /** @param {number} time milliseconds from the slide's start */
  seek(time) {
    this.timeline.seek(time);
    for (const { timing, element } of this.captions) {
      const state = captionState(timing, time);
      if (element.dataset.state !== state) element.dataset.state = state;
    }
  }

  /** Puts everything back to its plain looks and forgets it. */
  remove() {
    this.timeline.revert();
  }
}
