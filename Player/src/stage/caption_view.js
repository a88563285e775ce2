// Shows one caption: its text once for screen readers and once in parts that move.

import { captionText } from "../document/caption.js";
import { possibleUnit, splitCaption } from "../motion/split.js";
import { make } from "./elements.js";

/** @typedef {import("../document/caption.js").Run} Run */

/** Darker colours than this stand out by a light glow rather than by a dark shadow. */
const kDark = 0.4;

/** @param {string} color "#" and six hexadecimal digits @returns {number} how light, 0 to 1 */
function lightness(color) {
  const [red, green, blue] = [1, 3, 5].map((at) => parseInt(color.slice(at, at + 2), 16) / 255);
  return 0.3 * red + 0.59 * green + 0.11 * blue;
}

/** @param {Run} run */
function runElement(run) {
  const element = make("span", { class: "run", text: run.text });
  if (lightness(run.color) < kDark) element.dataset.ink = "dark";
  element.style.color = run.color;
  element.style.setProperty("--size", String(run.size));
  if (run.bold) element.style.fontWeight = "700";
  if (run.italic) element.style.fontStyle = "italic";
  if (run.underline) element.style.textDecorationLine = "underline";
  return element;
}

/** @param {Run[]} runs */
function partElement(runs) {
  return make("span", { class: "part" }, runs.map(runElement));
}

/**
 * The coarser of the unit that the caption asks for and the one that its style works on.
 * @param {import("../document/slider_document.js").Caption} caption
 */
function unitOf({ unit, style }) {
  return unit === "caption" ? style.unit : unit;
}

export class CaptionView {
  /** @param {import("../document/slider_document.js").Caption} caption */
  constructor(caption) {
    this.caption = caption;
    const text = captionText(caption.runs);
    this.shown = make("span", { class: "shown", "aria-hidden": "true", dir: "auto" });
    const spoken = make("span", { class: "spoken", dir: "auto", text: text.replace(/\s+/g, " ") });
    this.element = make("p", { class: "caption", "data-state": "waiting" }, [spoken, this.shown]);
    this.element.classList.toggle("deep", caption.style.flip !== 0);
    this.element.style.textAlign = caption.textAlign;
    const size = Math.max(...caption.runs.map((run) => run.size));
    this.element.style.setProperty("--size", String(size));
    this.parts = this.fill(possibleUnit(text, unitOf(caption)));
  }

  /**
   * @param {import("../document/fields.js").Unit} unit
   * @returns {HTMLElement[]} the parts that enter
   */
  fill(unit) {
    const { runs } = this.caption;
    if (unit === "caption") {
      const whole = partElement(runs);
      this.shown.append(whole);
      return [whole];
    }
    return splitCaption(runs, unit).flatMap(({ kind, parts }) => {
      const elements = parts.map(partElement);
      if (kind === "word" && elements.length > 1)
        this.shown.append(make("span", { class: "word", dir: "auto" }, elements));
      else this.shown.append(...elements);
      if (kind === "word") return elements;
      for (const element of elements) element.className = "gap";
      return [];
    });
  }

  /** @param {number} lane row among the captions at the same anchor */
  setLane(lane) {
    this.element.style.gridRow = String(lane + 1);
  }
}
