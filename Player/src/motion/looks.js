// How a caption looks on its way: its style's values as values of CSS properties.

import { eases } from "animejs/easings/eases";

/** @typedef {import("../document/slider_document.js").Caption} Caption */

/**
 * Values of CSS properties; none for what the style leaves alone.
 * @typedef {object} Looks
 * @property {string} [transform]
 * @property {string} [opacity]
 * @property {string} [filter]
 */

/** @typedef {{ width: number, height: number }} Size of the slide, in pixels of CSS */

/** @typedef {(share: number, size: Size) => Looks} LooksAt when a share of the way is done, 0 to 1 */

/** @typedef {keyof typeof kFineness} Unit */

/**
 * One function of the property `transform`, in place or in size.
 * @typedef {[name: string, away: number, plain: number, unit: Unit]} Change
 */

/** Steps to a unit: what changes by less is not seen, and not drawn again. */
const kFineness = Object.freeze({ px: 4, em: 1000, deg: 100, "": 10000 });
/** As many as a colour has. */
const kOpacities = 255;
/** What a swing goes through, evenly: up, down, less far up, and to its place. */
const kSwings = Object.freeze([1, -0.6, 0.3, 0]);

/** @param {number} value @param {Unit} unit */
function withUnit(value, unit) {
  return `${Math.round(value * kFineness[unit]) / kFineness[unit]}${unit}`;
}

/** @param {number} away @param {number} plain @param {number} presence */
function between(away, plain, presence) {
  return away + (plain - away) * presence;
}

/** @param {string} name one of kEases @returns {(share: number) => number} */
function easeNamed(name) {
  const ease = /** @type {Record<string, any>} */ (eases)[name];
  // These two can be made to go beyond their end by more or less; the usual is meant.
  return /(Back|Elastic)$/.test(name) ? ease() : ease;
}

/** @param {Caption} caption @returns {Change[]} */
function changesOf({ style, direction }) {
  /** @type {Change[]} */
  const changes = [
    ["scale", style.scale / 100, 1, ""],
    ["rotate", style.rotate, 0, "deg"],
    [direction.x !== 0 ? "rotateY" : "rotateX", style.flip, 0, "deg"],
  ];
  return changes.filter(([, away, plain]) => away !== plain);
}

/**
 * @param {Caption} caption
 * @returns {(presence: number, size: Size) => string | undefined} the value of `transform`
 */
function transformBetween(caption) {
  const { style, direction } = caption;
  const [x, y] = [direction.x, direction.y].map((side) => (side * style.move) / 100);
  const changes = changesOf(caption);
  const moves = x !== 0 || y !== 0;
  if (!moves && changes.length === 0) return () => undefined;
  return (presence, { width, height }) => {
    let transform = "";
    // Browsers read one translation in pixels much faster than any other transformation.
    if (moves) {
      const [right, down] = [x * width, y * height].map((far) => between(far, 0, presence));
      transform = `translate(${withUnit(right, "px")},${withUnit(down, "px")})`;
    }
    for (const [name, away, plain, unit] of changes)
      transform += ` ${name}(${withUnit(between(away, plain, presence), unit)})`;
    return transform;
  };
}

/**
 * @param {Caption} caption
 * @returns {(presence: number, size: Size) => Looks} from 0, away, to 1, plain; an ease may go
 *   beyond
 */
function looksBetween(caption) {
  const { opacity, blur } = caption.style;
  const transformAt = transformBetween(caption);
  return (presence, size) => {
    /** @type {Looks} */
    const looks = { transform: transformAt(presence, size) };
    if (opacity !== 1) looks.opacity = opacityText(between(opacity, 1, presence));
    if (blur !== 0)
      looks.filter = `blur(${withUnit(Math.max(between(blur / 100, 0, presence), 0), "em")})`;
    return looks;
  };
}

/** @param {number} opacity */
function opacityText(opacity) {
  return String(Math.round(Math.min(Math.max(opacity, 0), 1) * kOpacities) / kOpacities);
}

/**
 * @param {number} share of the way
 * @param {(share: number) => number} ease from each turn to the next one
 */
function swingAt(share, ease) {
  const turns = kSwings.length - 1;
  const turn = Math.min(Math.floor(share * turns), turns - 1);
  return between(kSwings[turn], kSwings[turn + 1], ease(share * turns - turn));
}

/** @param {Caption} caption @returns {LooksAt} of each of its parts */
export function entrance(caption) {
  const { style, direction } = caption;
  const ease = easeNamed(style.ease);
  if (style.wave === 0) {
    const looks = looksBetween(caption);
    return (share, size) => looks(ease(share), size);
  }
  // The swing takes the place of a move up or down.
  const looks = looksBetween({ ...caption, direction: { ...direction, y: 0 } });
  return (share, size) => {
    const { transform = "", ...others } = looks(ease(share), size);
    const height = withUnit((swingAt(share, ease) * style.wave) / 100, "em");
    return { ...others, transform: `translateY(${height}) ${transform}` };
  };
}

/** @param {Caption} caption @returns {LooksAt} of the caption as a whole */
export function exit(caption) {
  const looks = looksBetween({ ...caption, style: { ...caption.style, opacity: 0 } });
  // A caption that has not begun to leave is drawn as if it never would.
  return (share, size) => (share === 0 ? {} : looks(1 - eases.inQuad(share), size));
}
