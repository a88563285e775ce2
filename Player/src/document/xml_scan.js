// Reads the slider document's XML, well-formed or not, into plain elements.
//
// The browser's own parser answers a malformed document with nothing but an error, so one
// tolerant scan serves both kinds: an element that is never closed ends with its parent, a
// closing tag without an opening one is ignored, and a "<" that begins no tag is text. Nothing is
// fetched and no declared entity is expanded.

/**
 * @typedef {object} XmlElement
 * @property {string} name
 * @property {Map<string, string>} attributes in document order
 * @property {XmlElement[]} children the child elements
 * @property {string} text the character data directly inside, CDATA sections included
 * @property {string} inner the source between the tags, as it stands
 */

const kMaximumDepth = 64;
const kName = "[^\\s<>/=\"'!?&]+";
// Groups: the name of a closing tag; an opening one's name and what follows it.
const kTag = new RegExp(
  [
    "<!--[\\s\\S]*?(?:-->|$)",
    "<\\?[\\s\\S]*?(?:\\?>|$)",
    "<!DOCTYPE[^\\[>]*(?:\\[[\\s\\S]*?(?:\\]\\s*>|$)|>|$)",
    `</\\s*(${kName})[^<>]*>`,
    `<(${kName})((?:[^<>"']*(?:"[^"]*"|'[^']*'))*[^<>"']*)>`,
  ].join("|"),
  "y",
);
const kAttribute = new RegExp(`(${kName})\\s*=\\s*(?:"([^"]*)"|'([^']*)'|([^\\s"'>]+))`, "g");
const kEntities = new Map([
  ["amp", "&"],
  ["lt", "<"],
  ["gt", ">"],
  ["quot", '"'],
  ["apos", "'"],
]);

/**
 * Replaces XML's five predefined entities and character references; everything else stays as it
 * stands.
 * @param {string} text
 */
export function decodeEntities(text) {
  if (!text.includes("&")) return text;
  return text.replace(
    /&(#x[0-9a-f]{1,6}|#[0-9]{1,7}|amp|lt|gt|quot|apos);/gi,
    (whole, /** @type {string} */ body) => {
      if (!body.startsWith("#")) return kEntities.get(body) ?? whole;
      const hexadecimal = body[1] === "x" || body[1] === "X";
      const code = hexadecimal ? parseInt(body.slice(2), 16) : parseInt(body.slice(1), 10);
      const valid = code > 0 && code <= 0x10ffff && !(code >= 0xd800 && code <= 0xdfff);
      return valid ? String.fromCodePoint(code) : whole;
    },
  );
}

/**
 * @param {string} source
 * @returns {Map<string, string>}
 */
function readAttributes(source) {
  /** @type {Map<string, string>} */
  const attributes = new Map();
  kAttribute.lastIndex = 0;
  for (let match = kAttribute.exec(source); match; match = kAttribute.exec(source))
    attributes.set(match[1], decodeEntities(match[2] ?? match[3] ?? match[4]));
  return attributes;
}

/**
 * @param {string} name
 * @param {Map<string, string>} attributes
 * @returns {XmlElement}
 */
function makeElement(name, attributes) {
  return { name, attributes, children: [], text: "", inner: "" };
}

/** The open elements of one scan, the document itself at the bottom. */
class OpenElements {
  constructor() {
    this.document = makeElement("", new Map());
    /** @type {{ element: XmlElement, start: number }[]} */
    this.stack = [{ element: this.document, start: 0 }];
  }

  get innermost() {
    return this.stack[this.stack.length - 1].element;
  }

  /**
   * @param {XmlElement} element
   * @param {number} start where its content begins
   * @param {boolean} empty
   */
  open(element, start, empty) {
    this.innermost.children.push(element);
    if (!empty && this.stack.length <= kMaximumDepth) this.stack.push({ element, start });
  }

  /**
   * @param {string} name
   * @param {string} source
   * @param {number} end where the closing tag begins
   */
  close(name, source, end) {
    const level = this.stack.map(({ element }) => element.name).lastIndexOf(name);
    if (level > 0) this.closeTo(level, source, end);
  }

  /** @param {number} level @param {string} source @param {number} end */
  closeTo(level, source, end) {
    for (const { element, start } of this.stack.splice(level))
      element.inner = source.slice(start, end);
  }
}

const kSectionStart = "<![CDATA[";
const kSectionEnd = "]]>";

/**
 * Takes a section, a tag or a lonely "<" into the open elements.
 * @param {OpenElements} open
 * @param {string} source
 * @param {number} at where its "<" is
 * @returns {number} where it ends
 */
function takeMarkup(open, source, at) {
  if (source.startsWith(kSectionStart, at)) {
    const end = endOf(source, kSectionEnd, at);
    open.innermost.text += source.slice(at + kSectionStart.length, end);
    return end + kSectionEnd.length;
  }
  kTag.lastIndex = at;
  const match = kTag.exec(source);
  if (!match) {
    open.innermost.text += "<";
    return at + 1;
  }
  const [, close, name, rest] = match;
  const end = kTag.lastIndex;
  if (close !== undefined) open.close(close, source, at);
  else if (name !== undefined) {
    const empty = rest.endsWith("/");
    const attributes = readAttributes(empty ? rest.slice(0, -1) : rest);
    open.open(makeElement(name, attributes), end, empty);
  }
  return end;
}

/**
 * @param {string} source
 * @param {string} what
 * @param {number} from
 * @returns {number} where it is next; the end of the source when it is nowhere
 */
function endOf(source, what, from) {
  const index = source.indexOf(what, from);
  return index < 0 ? source.length : index;
}

/**
 * @param {string} source
 * @returns {XmlElement | null} the root element; null when the text holds no element at all
 */
export function scanXml(source) {
  const open = new OpenElements();
  for (let at = 0; at < source.length;) {
    const next = endOf(source, "<", at);
    open.innermost.text += decodeEntities(source.slice(at, next));
    at = next < source.length ? takeMarkup(open, source, next) : next;
  }
  open.closeTo(1, source, source.length);
  return open.document.children[0] ?? null;
}
