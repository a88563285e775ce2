// The slider document as the player uses it: slides and captions, every value read, every odd
// value replaced.

import { readCaption } from "./caption.js";
import * as fields from "./fields.js";
import { readStyles, styleNamed } from "../motion/styles.js";
import { scanXml } from "./xml_scan.js";

/**
 * @typedef {object} Caption
 * @property {import("./caption.js").Run[]} runs
 * @property {import("../motion/styles.js").Style} style
 * @property {string} anchor one of kAnchors
 * @property {string} textAlign one of kTextAligns
 * @property {number} inTime seconds from the slide's start to the caption's entrance
 * @property {number} stayTime seconds from its arrival to its exit; 0 keeps it until the slide ends
 * @property {import("./fields.js").Unit} unit
 * @property {import("./fields.js").Direction} direction
 */

/**
 * @typedef {object} Slide
 * @property {string} media path relative to the page, as written in the document; "" for none
 * @property {Caption[]} captions
 */

/**
 * @typedef {object} SliderDocument
 * @property {Slide[]} slides
 */

/** @typedef {import("./xml_scan.js").XmlElement} XmlElement */
/** @typedef {Map<string, import("../motion/styles.js").Style>} Styles */

/**
 * @param {XmlElement} element
 * @param {string} name
 * @returns {XmlElement | undefined} the last one so named
 */
function lastChild(element, name) {
  return element.children.filter((child) => child.name === name).pop();
}

/** @param {XmlElement} element a text object @param {Styles} styles @returns {Caption} */
function readTextObject(element, styles) {
  const caption = lastChild(element, "text");
  const markup = caption && caption.children.length > 0 ? caption.inner : (caption ?? element).text;
  const value = (/** @type {string} */ name) => element.attributes.get(name);
  return {
    runs: readCaption(markup),
    style: styleNamed(styles, value("set_animation_style")),
    anchor: fields.readAnchor(value("Align")),
    textAlign: fields.readChoice(fields.kTextAligns, value("Text_Align")),
    inTime: fields.readSeconds(value("In_Time")),
    stayTime: fields.readSeconds(value("Stay_Time")),
    unit: fields.readChoice(fields.kUnits, value("Text_Animation_LetterByLetter")),
    direction: fields.readChoice(fields.kDirections, value("Animation_Start_Direction")),
  };
}

/** @param {XmlElement} element @param {Styles} styles @returns {Slide} */
function readSlide(element, styles) {
  const texts = element.children.filter((child) => child.name === "text");
  return {
    media: (element.attributes.get("Background_image") ?? "").trim(),
    captions: texts
      .map((text) => readTextObject(text, styles))
      .filter((caption) => caption.runs.length > 0),
  };
}

/**
 * @param {string} source the document's text
 * @param {string} presets a document whose style definitions stand in for those that this one lacks
 * @returns {SliderDocument | null} null when the text is no document at all
 */
export function readSliderDocument(source, presets) {
  const root = scanXml(source);
  if (!root) return null;
  const own = lastChild(root, "define_animation_Style");
  const preset = lastChild(scanXml(presets) ?? root, "define_animation_Style");
  const styles = readStyles(preset?.children ?? [], own?.children ?? []);
  const slides = lastChild(root, "data")?.children.filter((child) => child.name === "slide") ?? [];
  return { slides: slides.map((slide) => readSlide(slide, styles)) };
}
