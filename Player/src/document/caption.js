// Reads a caption's markup into runs of text with their looks.
//
// A caption is "<b><font size="24" color="#FF0000">what was typed</font></b>" with the typed text
// as it stands. Five tags are known (b, i, u, font, br); whatever else it holds is text, "<" and
// "&" included.

import { decodeEntities } from "./xml_scan.js";
import { kDefaultColor, kDefaultSize, readColor, readSize } from "./fields.js";

/**
 * @typedef {object} Run
 * @property {string} text a line break is "\n"
 * @property {boolean} bold
 * @property {boolean} italic
 * @property {boolean} underline
 * @property {number} size see kReferenceWidth
 * @property {string} color "#" and six hexadecimal digits
 */

/** @typedef {Omit<Run, "text">} Looks */

const kMissing = "(null)";
/** @type {Readonly<Looks>} */
const kPlain = Object.freeze({
  bold: false,
  italic: false,
  underline: false,
  size: kDefaultSize,
  color: kDefaultColor,
});
const kTag = /<(\/?)(b|i|u|font|br)((?:\s+[a-z]+\s*=\s*(?:"[^"]*"|'[^']*'))*)\s*\/?>/gi;
const kFrame =
  /^\s*<b>\s*<font((?:\s+[a-z]+\s*=\s*(?:"[^"]*"|'[^']*'))*)\s*>([^]*)<\/font>\s*<\/b>\s*$/i;
const kFontAttribute = /([a-z]+)\s*=\s*(?:"([^"]*)"|'([^']*)')/gi;
// Embeddings, overrides and isolates would reorder the text around them; other controls draw
// nothing.
const kUnwanted = /[\u0000-\u0008\u000b-\u001f\u007f\u202a-\u202e\u2066-\u2069]/g;

/** @param {string} source @returns {Map<string, string>} */
function fontAttributes(source) {
  return new Map(
    [...source.matchAll(kFontAttribute)].map(([, name, a, b]) => [name.toLowerCase(), a ?? b]),
  );
}

/**
 * @param {Looks} looks
 * @param {string} tag lower case
 * @param {string} attributes
 * @returns {Looks}
 */
function withTag(looks, tag, attributes) {
  if (tag === "b") return { ...looks, bold: true };
  if (tag === "i") return { ...looks, italic: true };
  if (tag === "u") return { ...looks, underline: true };
  const font = fontAttributes(attributes);
  return {
    ...looks,
    size: font.has("size") ? readSize(font.get("size")) : looks.size,
    color: font.has("color") ? readColor(font.get("color")) : looks.color,
  };
}

/** Collects the runs of one caption while its tags open and close. */
class Reader {
  /** @param {Looks} looks of the whole caption */
  constructor(looks) {
    /** @type {Run[]} */
    this.runs = [];
    this.looks = looks;
    /** @type {{ tag: string, outer: Looks }[]} */
    this.open = [];
  }

  /** @param {string} raw */
  text(raw) {
    const text = decodeEntities(raw).replace(kUnwanted, "");
    if (text !== "") this.runs.push({ text, ...this.looks });
  }

  /** @param {string} tag @param {string} attributes */
  begin(tag, attributes) {
    this.open.push({ tag, outer: this.looks });
    this.looks = withTag(this.looks, tag, attributes);
  }

  /** @param {string} tag @returns {boolean} whether such a tag was open */
  end(tag) {
    const level = this.open.map((entry) => entry.tag).lastIndexOf(tag);
    if (level < 0) return false;
    this.looks = this.open[level].outer;
    this.open.splice(level);
    return true;
  }
}

/**
 * @param {string} markup
 * @returns {Run[]} empty when there is nothing to show
 */
export function readCaption(markup) {
  // The frame is taken off first, so that nothing that was typed can close it.
  const [, font, typed] = kFrame.exec(markup) ?? [null, null, markup];
  if (font !== null && isLost(font, typed)) return [];
  const reader = new Reader(
    font === null ? kPlain : withTag({ ...kPlain, bold: true }, "font", font),
  );
  let from = 0;
  for (const match of typed.matchAll(kTag)) {
    reader.text(typed.slice(from, match.index));
    from = match.index + match[0].length;
    const tag = match[2].toLowerCase();
    if (tag === "br") reader.text("\n");
    else if (match[1] === "") reader.begin(tag, match[3]);
    else if (!reader.end(tag)) reader.text(match[0]);
  }
  reader.text(typed.slice(from));
  return reader.runs;
}

/**
 * A caption of which text, size and colour are all missing was never a caption.
 * @param {string} font the attributes
 * @param {string} typed
 */
function isLost(font, typed) {
  const attributes = fontAttributes(font);
  return [typed, attributes.get("size"), attributes.get("color")].every(
    (value) => value === kMissing,
  );
}

/** @param {Run[]} runs @returns {string} the caption as one text, as it is read aloud */
export function captionText(runs) {
  return runs.map((run) => run.text).join("");
}
