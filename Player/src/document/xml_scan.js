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
const kToken = new RegExp(
  [
    "<!--[\\s\\S]*?(?:-->|$)",
    "<!\\[CDATA\\[(?<cdata>[\\s\\S]*?)(?:\\]\\]>|$)",
    "<\\?[\\s\\S]*?(?:\\?>|$)",
    "<!DOCTYPE[^\\[>]*(?:\\[[\\s\\S]*?\\]\\s*)?>",
    `</\\s*(?<close>${kName})[^<>]*>`,
    `<(?<open>${kName})(?<attributes>(?:[^<>"']|"[^"]*"|'[^']*')*?)(?<empty>/?)>`,
    "(?<text>[^<]+|<)",
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
  for (const [, name, double, single, bare] of source.matchAll(kAttribute))
    attributes.set(name, decodeEntities(double ?? single ?? bare));
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

/**
 * @param {string} source
 * @returns {XmlElement | null} the root element; null when the text holds no element at all
 */
export function scanXml(source) {
  const open = new OpenElements();
  kToken.lastIndex = 0;
  for (let match = kToken.exec(source); match; match = kToken.exec(source)) {
    const groups = match.groups ?? {};
    if (groups.cdata !== undefined) open.innermost.text += groups.cdata;
    else if (groups.text !== undefined) open.innermost.text += decodeEntities(groups.text);
    else if (groups.close !== undefined) open.close(groups.close, source, match.index);
    else if (groups.open !== undefined)
      open.open(
        makeElement(groups.open, readAttributes(groups.attributes)),
        kToken.lastIndex,
        groups.empty === "/",
      );
  }
  open.closeTo(1, source, source.length);
  return open.document.children[0] ?? null;
}
