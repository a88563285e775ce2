// Captions as the player's own modules hand them on, made without a document.

import { kDirections } from "../../src/document/fields.js";
import { readStyles, styleNamed } from "../../src/motion/styles.js";

/** @typedef {import("../../src/document/slider_document.js").Caption} Caption */
/** @typedef {import("../../src/motion/styles.js").Style} Style */

/**
 * @param {Partial<Style>} style what differs from a style that is not defined
 * @param {Partial<Caption>} [values] what differs from a caption in the centre
 * @returns {Caption}
 */
export function makeCaption(style, values) {
  return {
    ...{ runs: [], anchor: "C", textAlign: "left", unit: "caption", direction: kDirections[0] },
    ...{
      inTime: 0,
      stayTime: 1,
      style: { ...styleNamed(readStyles([], []), undefined), ...style },
    },
    ...values,
  };
}
