// Turns a slide's captions and their timing into one timeline that can be moved to any time.

import { entrance, exit } from "./looks.js";
import { captionState } from "./timing.js";

/** @typedef {import("../document/slider_document.js").Caption} Caption */
/** @typedef {import("./looks.js").LooksAt} LooksAt */
/** @typedef {import("./looks.js").Size} Size */
/** @typedef {import("./timing.js").CaptionTiming} CaptionTiming */

/**
 * @typedef {object} MovingCaption
 * @property {Caption} caption
 * @property {CaptionTiming} timing
 * @property {HTMLElement} element leaves as a whole
 * @property {HTMLElement[]} parts enter one after another
 */

/** @type {Readonly<Required<import("./looks.js").Looks>>} */
const kPlain = Object.freeze({ transform: "", opacity: "", filter: "" });

/** One element on its way, which looks as it should at any time. */
class Motion {
  /**
   * @param {HTMLElement} element
   * @param {LooksAt} looksAt
   * @param {number} begin milliseconds
   * @param {number} duration milliseconds, more than 0
   */
  constructor(element, looksAt, begin, duration) {
    this.style = element.style;
    this.looksAt = looksAt;
    this.begin = begin;
    this.duration = duration;
    /** What the looks were last made for. */
    this.share = NaN;
    /** @type {Size | null} */
    this.size = null;
    this.looks = kPlain;
  }

  /** @param {number} time @param {Size} size the same object for as long as it is the same size */
  seek(time, size) {
    const share = Math.min(Math.max((time - this.begin) / this.duration, 0), 1);
    if (share === this.share && size === this.size) return;
    const { looks, style } = this;
    this.share = share;
    this.size = size;
    const { transform = "", opacity = "", filter = "" } = this.looksAt(share, size);
    // Hundreds of elements move at once: what does not change is not touched.
    if (transform !== looks.transform) style.transform = transform;
    if (opacity !== looks.opacity) style.opacity = opacity;
    if (filter !== looks.filter) style.filter = filter;
    this.looks = { transform, opacity, filter };
  }

  /** Puts the element back to its plain looks. */
  remove() {
    Object.assign(this.style, kPlain);
  }
}

/** @param {MovingCaption} moving @returns {Motion[]} */
function entrances({ caption, timing, parts }) {
  const { duration, step } = caption.style;
  if (duration === 0 && parts.length === 1) return [];
  const looksAt = entrance(caption);
  const length = Math.max(duration * 1000, 1);
  return parts.map(
    (part, index) => new Motion(part, looksAt, timing.enter + index * step * 1000, length),
  );
}

/** @param {MovingCaption} moving @returns {Motion[]} */
function exits({ caption, timing, element }) {
  const { out } = caption.style;
  if (out === 0 || !Number.isFinite(timing.leave)) return [];
  return [new Motion(element, exit(caption), timing.leave, out * 1000)];
}

export class SlideTimeline {
  /**
   * @param {HTMLElement} slide by whose size captions move
   * @param {MovingCaption[]} captions
   * @param {boolean} still whether captions appear and go at once
   */
  constructor(slide, captions, still) {
    this.slide = slide;
    this.captions = captions;
    this.motions = still
      ? []
      : captions.flatMap((moving) => [...entrances(moving), ...exits(moving)]);
    this.size = { width: 0, height: 0 };
  }

  /** @param {number} time milliseconds from the slide's start */
  seek(time) {
    this.measure();
    for (const motion of this.motions) motion.seek(time, this.size);
    for (const { timing, element } of this.captions) {
      const state = captionState(timing, time);
      if (element.dataset.state !== state) element.dataset.state = state;
    }
  }

  measure() {
    const { clientWidth: width, clientHeight: height } = this.slide;
    if (width !== this.size.width || height !== this.size.height) this.size = { width, height };
  }

  /** Puts everything back to its plain looks and forgets it. */
  remove() {
    for (const motion of this.motions) motion.remove();
    this.motions = [];
  }
}
