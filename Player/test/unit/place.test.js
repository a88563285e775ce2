import assert from "node:assert/strict";
import { test } from "node:test";
import { findChange } from "../../src/place.js";

/** @param {string[]} slides each a media name and its captions, separated by spaces */
function marks(...slides) {
  return slides.map((slide) => {
    const [media, ...captions] = slide.split(" ");
    return { media, captions };
  });
}

/**
 * @param {string[]} before
 * @param {string[]} after
 * @param {number} [index] the slide that was on show
 */
function change(before, after, index = 0) {
  return findChange({ slides: marks(...before), index, time: 0, paused: false }, marks(...after));
}

test("an unchanged document has no change", () => {
  assert.equal(change(["a x y", "b"], ["a x y", "b"], 1), null);
});

test("a changed, added or removed caption is found", () => {
  assert.deepEqual(change(["a", "b x y"], ["a", "b x z"]), { index: 1, caption: 1 });
  assert.deepEqual(change(["a", "b x"], ["a", "b x y"]), { index: 1, caption: 1 });
  assert.deepEqual(change(["a x y", "b"], ["a y", "b"]), { index: 0, caption: 0 });
  assert.deepEqual(change(["a x", "b"], ["a", "b"]), { index: 0, caption: null });
});

test("a slide with another picture is found", () => {
  assert.deepEqual(change(["a x", "b y"], ["a x", "c y"]), { index: 1, caption: null });
});

test("an added slide is shown, in the middle and at the end", () => {
  assert.deepEqual(change(["a", "b"], ["a", "n", "b"]), { index: 1, caption: null });
  assert.deepEqual(change(["a", "b"], ["a", "b", "n"]), { index: 2, caption: null });
});

test("after a removed slide the one that followed it is shown, or the new last one", () => {
  assert.deepEqual(change(["a", "b", "c"], ["a", "c"]), { index: 1, caption: null });
  assert.deepEqual(change(["a", "b"], ["a"]), { index: 0, caption: null });
});

test("when many slides changed, the one on show stays", () => {
  assert.deepEqual(change(["a x", "b x", "c x"], ["a y", "b y", "c y"], 1), {
    index: 1,
    caption: 0,
  });
});
