// Cuts a caption into the parts that enter one after another.

/** @typedef {import("../document/caption.js").Run} Run */
/** @typedef {import("../document/fields.js").Unit} Unit */

/**
 * One word, space or line break of a caption: the pieces of it that move by themselves.
 * @typedef {object} Word
 * @property {"word" | "space" | "break"} kind
 * @property {Run[][]} parts each part is one or more runs that move together
 */

// Letters of these scripts join or stack on their neighbours, so they only move word by word.
const kJoinedScripts = [
  ...["Arabic", "Syriac", "Mongolian", "Nko", "Devanagari", "Bengali", "Gurmukhi", "Gujarati"],
  ...["Oriya", "Tamil", "Telugu", "Kannada", "Malayalam", "Sinhala", "Tibetan", "Myanmar", "Khmer"],
];
const kJoined = new RegExp(
  `[${kJoinedScripts.map((name) => `\\p{Script=${name}}`).join("")}]`,
  "u",
);
const kRightToLeft = /[\u0590-\u08ff\ufb1d-\ufdff\ufe70-\ufeff]/;
const kLeftToRight = /[\p{Script=Latin}\p{Script=Greek}\p{Script=Cyrillic}\p{Script=Han}]/u;

/**
 * The unit that a text can really be cut into.
 * @param {string} text
 * @param {Unit} unit
 * @returns {Unit}
 */
export function possibleUnit(text, unit) {
  // Parts are laid out one by one, which would lose the order of words in a text of both
  // directions.
  if (kRightToLeft.test(text) && kLeftToRight.test(text)) return "caption";
  return unit === "letter" && kJoined.test(text) ? "word" : unit;
}

/** @param {string} text @param {"grapheme" | "word"} granularity @returns {string[]} */
function segments(text, granularity) {
  if (typeof Intl.Segmenter === "undefined")
    return granularity === "grapheme"
      ? [...text]
      : text.split(/(\s+)/).filter((part) => part !== "");
  return [...new Intl.Segmenter(undefined, { granularity }).segment(text)].map(
    ({ segment }) => segment,
  );
}

/**
 * Words with their punctuation, spaces and line breaks.
 * @param {string} text
 * @returns {string[]}
 */
function pieces(text) {
  const found = text.match(/\n|[^\S\n]+|\S+/g) ?? [];
  const spaceless =
    /[\p{Script=Han}\p{Script=Hiragana}\p{Script=Katakana}\p{Script=Thai}\p{Script=Lao}]/u;
  return found.flatMap((piece) => (spaceless.test(piece) ? segments(piece, "word") : [piece]));
}

/**
 * The runs of a caption between two of its characters.
 * @param {Run[]} runs
 * @param {number} from
 * @param {number} to
 */
function runsBetween(runs, from, to) {
  /** @type {Run[]} */
  const cut = [];
  let start = 0;
  for (const run of runs) {
    const text = run.text.slice(Math.max(from - start, 0), Math.max(to - start, 0));
    if (text !== "") cut.push({ ...run, text });
    start += run.text.length;
  }
  return cut;
}

/**
 * @param {Run[]} runs
 * @param {Unit} unit "letter" or "word"
 * @returns {Word[]}
 */
export function splitCaption(runs, unit) {
  let at = 0;
  return pieces(runs.map((run) => run.text).join("")).map((piece) => {
    const kind = piece === "\n" ? "break" : piece.trim() === "" ? "space" : "word";
    const cut = kind === "word" && unit === "letter" ? segments(piece, "grapheme") : [piece];
    const parts = cut.map((part) => runsBetween(runs, at, (at += part.length)));
    return { kind, parts };
  });
}
