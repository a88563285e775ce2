import assert from "node:assert/strict";
import { test } from "node:test";
import { kDirections } from "../../src/document/fields.js";
import { entrance, exit } from "../../src/motion/looks.js";
import { kEases, kNumbers } from "../../src/motion/styles.js";
import { makeCaption } from "../support/caption.js";
import { randomNumbers } from "../support/random.js";

const kSize = { width: 1000, height: 500 };
const kPlain = { transform: "translate(0px,0px)", opacity: "1" };

/** @param {Partial<import("../../src/motion/styles.js").Style>} style @param {number} share */
function entering(style, share) {
  return entrance(makeCaption(style))(share, kSize);
}

test("every ease leads from the looks away to the plain ones", () => {
  for (const ease of kEases) {
    const style = { ease, move: 30, opacity: 0 };
    const away = { transform: "translate(-300px,0px)", opacity: "0" };
    assert.deepEqual(entering(style, 0), away, ease);
    assert.deepEqual(entering(style, 1), kPlain, ease);
  }
});

test("an ease may go beyond the plain looks, but nothing is more than opaque or less than sharp", () => {
  const style = { ease: "outBack", move: 30, scale: 50, opacity: 0, blur: 50 };
  const { transform, opacity, filter } = entering(style, 0.6);
  assert.match(transform ?? "", /^translate\([1-9][\d.]*px,0px\) scale\(1\.0\d+\)$/);
  assert.deepEqual([opacity, filter], ["1", "blur(0em)"]);
});

test("what a style leaves alone is not touched", () => {
  assert.deepEqual(entering({ opacity: 1 }, 0.5), { transform: undefined });
  assert.deepEqual(entering({ opacity: 1, rotate: 90, ease: "linear" }, 0.5), {
    transform: " rotate(45deg)",
  });
});

test("what cannot be seen to move is not drawn again", () => {
  const style = { ease: "outQuint", move: 30, opacity: 0 };
  assert.deepEqual(entering(style, 0.88), kPlain);
  assert.deepEqual(entering(style, 0.8), entering(style, 0.801));
  assert.notDeepEqual(entering(style, 0.5), entering(style, 0.51));
});

test("a wave swings down, up and to its place, in place of a move up or down", () => {
  const caption = makeCaption({ wave: 100, move: 50, opacity: 1 }, { direction: kDirections[4] });
  const looks = entrance(caption);
  const heights = [0, 1 / 3, 2 / 3, 1].map((share) => looks(share, kSize).transform?.split(" ")[0]);
  assert.deepEqual(
    heights,
    [1, -0.6, 0.3, 0].map((height) => `translateY(${height}em)`),
  );
  assert.equal(looks(0, kSize).transform, "translateY(1em) translate(-500px,0px)");
});

test("a flip turns around the axis across the start direction", () => {
  const axis = (/** @type {number} */ direction) => {
    const caption = makeCaption({ flip: 90 }, { direction: kDirections[direction] });
    return /rotate[XY]/.exec(entrance(caption)(0, kSize).transform ?? "")?.[0];
  };
  assert.deepEqual([0, 1, 2, 3, 4].map(axis), [
    "rotateY",
    "rotateY",
    "rotateX",
    "rotateX",
    "rotateY",
  ]);
});

test("an exit fades whatever the style, and begins with nothing", () => {
  const looks = exit(makeCaption({ opacity: 1, move: 20 }));
  assert.deepEqual(looks(0, kSize), {});
  assert.deepEqual(looks(0.5, kSize), {
    transform: "translate(-50px,0px)",
    opacity: "0.7490196078431373",
  });
  assert.deepEqual(looks(1, kSize), { transform: "translate(-200px,0px)", opacity: "0" });
});

test("whatever a style says, its looks are values that a browser reads", () => {
  const number = "-?\\d+(\\.\\d+)?";
  const change = `translateY\\(${number}em\\)|translate\\(${number}px,${number}px\\)|scale\\(${number}\\)|rotate[XY]?\\(${number}deg\\)`;
  const transform = new RegExp(`^( ?(${change}) ?)+$`);
  for (let seed = 1; seed <= 2000; ++seed) {
    const random = randomNumbers(seed);
    const pick = (/** @type {readonly any[]} */ all) => all[Math.floor(random() * all.length)];
    const style = Object.fromEntries(
      kNumbers.map(([, key, least, usual, most]) => [
        key,
        pick([usual, least, most, least + (most - least) * random()]),
      ]),
    );
    const caption = makeCaption({ ...style, ease: pick(kEases) }, { direction: pick(kDirections) });
    for (const looks of [entrance(caption), exit(caption)])
      for (const share of [0, random(), 1]) {
        const { transform: moved, opacity, filter } = looks(share, kSize);
        if (moved !== undefined) assert.match(moved, transform);
        if (opacity !== undefined) assert.ok(Number(opacity) >= 0 && Number(opacity) <= 1, opacity);
        if (filter !== undefined) assert.match(filter, /^blur\(\d+(\.\d+)?em\)$/);
      }
  }
});
