import assert from "node:assert/strict";
import { test } from "node:test";
import { captionState, settledTime, slideTiming } from "../../src/motion/timing.js";
import { makeCaption } from "../support/caption.js";

/**
 * @param {number} inTime
 * @param {number} stayTime
 * @param {number} [parts]
 * @param {string} [anchor]
 */
function entry(inTime, stayTime, parts = 1, anchor = "C") {
  const style = { duration: 1, out: 0.5, step: 0.1 };
  const caption = makeCaption(style, { anchor, inTime, stayTime });
  return { caption, parts };
}

test("a caption enters, stays and leaves by its times", () => {
  const [timing] = slideTiming([entry(2, 3)], false).captions;
  assert.deepEqual(timing, { enter: 2000, arrived: 3000, leave: 6000, gone: 6500, lane: 0 });
  const times = [0, 2000, 3000, 6000, 6500];
  assert.deepEqual(
    times.map((time) => captionState(timing, time)),
    ["waiting", "entering", "staying", "leaving", "gone"],
  );
});

test("each further part of a caption arrives a step later", () => {
  assert.equal(slideTiming([entry(0, 1, 11)], false).captions[0].arrived, 2000);
});

test("a slide lasts until its last caption has left, and four seconds at least", () => {
  assert.equal(slideTiming([], false).duration, 4000);
  assert.equal(slideTiming([entry(0, 1)], false).duration, 4000);
  assert.equal(slideTiming([entry(0, 1), entry(9, 1)], false).duration, 11800);
});

test("a caption without a stay time stays until the slide ends", () => {
  const { duration, captions } = slideTiming([entry(5, 0)], false);
  assert.equal(captionState(captions[0], duration), "staying");
  assert.ok(duration > captions[0].arrived);
});

test("with still captions there is neither entrance nor exit", () => {
  const [timing] = slideTiming([entry(1, 2, 20)], true).captions;
  assert.deepEqual(timing, { enter: 1000, arrived: 1000, leave: 3000, gone: 3000, lane: 0 });
});

test("captions at one place stand below each other only while they are seen together", () => {
  const entries = [entry(0, 1), entry(1, 1), entry(9, 1), entry(0, 9, 1, "TL")];
  assert.deepEqual(
    slideTiming(entries, false).captions.map(({ lane }) => lane),
    [0, 1, 0, 0],
  );
});

test("a still slide is seen at the time when most captions are there", () => {
  assert.equal(settledTime(slideTiming([], false)), 0);
  assert.equal(settledTime(slideTiming([entry(0, 9), entry(3, 2), entry(20, 1)], false)), 4000);
});
