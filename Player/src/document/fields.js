// What the values of the slider document mean. This is the only place that says so; README.md
// shows it as a table.

/**
 * @typedef {object} Direction
 * @property {string} name
 * @property {-1 | 0 | 1} x
 * @property {-1 | 0 | 1} y
 */

/** "Align": the place of a caption on the slide, row by row. */
export const kAnchors = Object.freeze(["TL", "TC", "TR", "CL", "C", "CR", "BL", "BC", "BR"]);

/** "Text_Align": how the lines of a caption are set inside it, by index. */
export const kTextAligns = Object.freeze(["left", "center", "right"]);

/**
 * "Text_Animation_LetterByLetter": the parts of a caption that enter one after another, by index.
 * @typedef {"caption" | "letter" | "word"} Unit
 * @type {readonly Unit[]}
 */
export const kUnits = Object.freeze(["caption", "letter", "word"]);

/**
 * "Animation_Start_Direction": the side from which a caption enters, by index.
 * @type {readonly Direction[]}
 */
export const kDirections = Object.freeze([
  { name: "left", x: -1, y: 0 },
  { name: "right", x: 1, y: 0 },
  { name: "top", x: 0, y: -1 },
  { name: "bottom", x: 0, y: 1 },
  { name: "top left", x: -1, y: -1 },
  { name: "top right", x: 1, y: -1 },
  { name: "bottom left", x: -1, y: 1 },
  { name: "bottom right", x: 1, y: 1 },
]);

/** "In_Time" and "Stay_Time" count seconds; longer ones are cut to this. */
export const kMaximumSeconds = 3600;

/** "size" is in pixels of a slide that is this wide, and grows and shrinks with the slide. */
export const kReferenceWidth = 480;
export const kDefaultSize = 24;
export const kMinimumSize = 4;
export const kMaximumSize = 200;
export const kDefaultColor = "#ffffff";

/**
 * The leading integer of a text; the fallback when it has none.
 * @param {string | undefined} text
 * @param {number} fallback
 */
export function readInteger(text, fallback) {
  const value = parseInt(text ?? "", 10);
  return Number.isNaN(value) ? fallback : value;
}

/**
 * The entry of a list that a text names by index; the first entry when the index is none of the
 * list's.
 * @template T
 * @param {readonly T[]} list
 * @param {string | undefined} text
 * @returns {T}
 */
export function readChoice(list, text) {
  return list[readInteger(text, 0)] ?? list[0];
}

/**
 * @param {string | undefined} text one of the nine codes
 * @returns {string} the code; the centre for anything else
 */
export function readAnchor(text) {
  const code = (text ?? "").trim().toUpperCase();
  return kAnchors.includes(code) ? code : "C";
}

/**
 * @param {string | undefined} text
 * @returns {number} seconds, 0 for anything that is not a positive number
 */
export function readSeconds(text) {
  return Math.min(Math.max(readInteger(text, 0), 0), kMaximumSeconds);
}

/** @param {string | undefined} text @returns {number} */
export function readSize(text) {
  const size = readInteger(text, kDefaultSize);
  return Math.min(Math.max(size, kMinimumSize), kMaximumSize);
}

/**
 * @param {string | undefined} text "#" or "0x" and six hexadecimal digits
 * @returns {string} "#" and six digits
 */
export function readColor(text) {
  const digits = /^\s*(?:#|0x)([0-9a-f]{6})\s*$/i.exec(text ?? "");
  return digits ? `#${digits[1].toLowerCase()}` : kDefaultColor;
}
