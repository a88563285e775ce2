// Animation styles: what the document's style definitions say about how a caption comes and goes.

import { kUnits } from "../document/fields.js";

/**
 * How a caption looks before it has entered (it ends at its plain looks, and leaves the way it
 * came).
 * @typedef {object} Style
 * @property {string} name
 * @property {number} duration seconds that the entrance of one part takes
 * @property {number} out seconds that the exit takes
 * @property {number} step seconds between the entrances of two neighbouring parts
 * @property {string} ease one of kEases
 * @property {import("../document/fields.js").Unit} unit the coarsest parts that the style works on
 * @property {number} opacity 0 to 1
 * @property {number} move percent of the slide's width or height, in the start direction
 * @property {number} scale percent
 * @property {number} rotate degrees
 * @property {number} flip degrees around the axis across the start direction
 * @property {number} blur hundredths of the caption's size
 * @property {number} wave hundredths of the caption's size that a part swings up and down while
 *   entering
 */

/** @typedef {import("../document/xml_scan.js").XmlElement} XmlElement */

const kCurves = [
  "Quad",
  "Cubic",
  "Quart",
  "Quint",
  "Sine",
  "Circ",
  "Expo",
  "Bounce",
  "Back",
  "Elastic",
];

/** The values of the attribute "Ease". */
export const kEases = Object.freeze([
  "linear",
  ...kCurves.flatMap((curve) => ["in", "out", "inOut"].map((way) => way + curve)),
]);

/**
 * The number attributes with the least, the usual and the greatest value.
 * @type {readonly [attribute: string, key: Exclude<keyof Style, "name" | "ease" | "unit">, least:
 *   number, usual: number, most: number][]}
 */
export const kNumbers = Object.freeze([
  ["Duration", "duration", 0, 0.8, 20],
  ["Out", "out", 0, 0.4, 20],
  ["Step", "step", 0, 0.05, 5],
  ["Opacity", "opacity", 0, 0, 1],
  ["Move", "move", -200, 0, 200],
  ["Scale", "scale", 0, 100, 1000],
  ["Rotate", "rotate", -3600, 0, 3600],
  ["Flip", "flip", -3600, 0, 3600],
  ["Blur", "blur", 0, 0, 400],
  ["Wave", "wave", -400, 0, 400],
]);

/** What a caption does whose style is not defined anywhere: it fades. */
const kPlain = Object.freeze(readStyle("", new Map()));

/** @param {string} name @param {Map<string, string>} attributes @returns {Style} */
function readStyle(name, attributes) {
  const ease = attributes.get("Ease") ?? "";
  const unit = /** @type {import("../document/fields.js").Unit} */ (attributes.get("Unit"));
  const style = /** @type {Style} */ ({
    name,
    ease: kEases.includes(ease) ? ease : "outCubic",
    unit: kUnits.includes(unit) ? unit : "caption",
  });
  for (const [attribute, key, least, usual, most] of kNumbers) {
    const value = parseFloat(attributes.get(attribute) ?? "");
    style[key] = Number.isNaN(value) ? usual : Math.min(Math.max(value, least), most);
  }
  return style;
}

/**
 * Reads the style definitions. What a definition leaves out is taken from the preset of its name.
 * @param {XmlElement[]} presets
 * @param {XmlElement[]} definitions
 * @returns {Map<string, Style>} by name
 */
export function readStyles(presets, definitions) {
  /** @type {Map<string, Map<string, string>>} */
  const known = new Map();
  for (const { attributes } of [...presets, ...definitions]) {
    const name = attributes.get("Name");
    if (name !== undefined) known.set(name, new Map([...(known.get(name) ?? []), ...attributes]));
  }
  return new Map([...known].map(([name, attributes]) => [name, readStyle(name, attributes)]));
}

/** @param {Map<string, Style>} styles @param {string | undefined} name @returns {Style} */
export function styleNamed(styles, name) {
  return styles.get(name ?? "") ?? kPlain;
}
