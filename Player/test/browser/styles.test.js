import assert from "node:assert/strict";
import { test } from "node:test";
import { Session } from "../support/session.js";

// The slides of these tests are 960 by 600 pixels, and their captions 48 pixels high.
const kEnter = 1000;

/**
 * @typedef {{ opacity: number, x: number, y: number, scale: number, angle: number, deep: number,
 *   blur: string }} Looks
 */

/** @param {Session} session @returns {Promise<Looks[]>} of each part */
function sample(session) {
  return session.page.$$eval(".part", (parts) =>
    parts.map((part) => {
      const { opacity, transform, filter } = getComputedStyle(part);
      const matrix = new DOMMatrix(transform);
      return {
        opacity: Number(opacity),
        x: matrix.m41,
        y: matrix.m42,
        scale: Math.hypot(matrix.a, matrix.b),
        angle: (Math.atan2(matrix.b, matrix.a) * 180) / Math.PI,
        deep: Math.abs(matrix.m13) + Math.abs(matrix.m23),
        blur: filter,
      };
    }),
  );
}

/**
 * @param {Session} session
 * @param {string} style
 * @param {Record<string, string>} [attributes]
 */
async function show(session, style, attributes = {}) {
  const values = { set_animation_style: style, In_Time: "1", Stay_Time: "2", ...attributes };
  await session.show([{ captions: [{ text: "Hello", attributes: values }] }]);
}

/** @param {Session} session @param {number} time @returns {Promise<Looks>} of the first part */
async function at(session, time) {
  await session.seek(kEnter + time);
  return (await sample(session))[0];
}

/** @param {number} value @param {number} expected @param {number} [tolerance] */
function close(value, expected, tolerance = 0.5) {
  assert.ok(Math.abs(value - expected) <= tolerance, `${value} is not ${expected}`);
}

/** @param {Looks} looks */
function assertPlain({ opacity, x, y, scale, angle, deep, blur }) {
  assert.deepEqual([opacity, x, y, Math.round(scale * 1000), angle, deep], [1, 0, 0, 1000, 0, 0]);
  assert.ok(blur === "none" || blur === "blur(0px)", blur);
}

/** @type {[style: string, away: (looks: Looks) => void][]} */
const kAway = [
  ["Fade", ({ opacity, x, scale }) => assert.deepEqual([opacity, x, scale], [0, 0, 1])],
  ["Slide", ({ opacity, x }) => (close(opacity, 0), close(x, -288))],
  ["Zoom", ({ scale }) => close(scale, 0.3, 0.01)],
  ["Rotate", ({ scale, angle }) => (close(scale, 0.6, 0.01), close(angle, -120))],
  ["Bounce", ({ x }) => close(x, -384)],
  ["Blur", ({ blur, scale }) => (assert.match(blur, /^blur\(28\.8px\)$/), close(scale, 1.1, 0.01))],
  ["Wave", ({ y }) => close(y, 38.4)],
  ["Flip", ({ deep }) => close(deep, 1, 0.01)],
];

for (const [style, away] of kAway)
  test(`${style} comes from its looks and arrives at plain ones`, async (context) => {
    const session = await Session.start(context);
    await show(session, style);
    away(await at(session, 0));
    const start = JSON.stringify(await at(session, 0));
    const middle = await at(session, 150);
    assert.notEqual(JSON.stringify(middle), start);
    assert.ok(middle.opacity > 0 && middle.opacity < 1, `${middle.opacity}`);
    assertPlain(await at(session, 2100));
  });

test("Bounce touches its place and springs back before it arrives", async (context) => {
  const session = await Session.start(context);
  await show(session, "Bounce");
  close((await at(session, 1200 / 2.75)).x, 0, 3);
  assert.ok((await at(session, 650)).x < -20);
});

test("Zoom shoots over its size before it arrives", async (context) => {
  const session = await Session.start(context);
  await show(session, "Zoom");
  assert.ok((await at(session, 500)).scale > 1.01);
});

test("Wave swings each letter up and down in its turn", async (context) => {
  const session = await Session.start(context);
  await show(session, "Wave");
  await session.seek(kEnter + 300);
  const letters = await sample(session);
  assert.equal(letters.length, 5);
  assert.equal(new Set(letters.map(({ y }) => y.toFixed(2))).size, 5);
  const heights = [];
  for (const time of [0, 340, 670])
    heights.push(Math.sign(Math.round((await at(session, time)).y)));
  assert.deepEqual(heights, [1, -1, 1]);
});

test("Typewriter shows one letter after the other, at once", async (context) => {
  const session = await Session.start(context);
  await show(session, "Typewriter");
  const counts = [];
  for (const time of [10, 80, 150, 300]) {
    await session.seek(kEnter + time);
    counts.push((await sample(session)).filter(({ opacity }) => opacity === 1).length);
  }
  assert.deepEqual(counts, [1, 2, 3, 5]);
});

test("None is there at once", async (context) => {
  const session = await Session.start(context);
  await show(session, "None");
  assertPlain(await at(session, 1));
});

test("the start direction is where a moving style comes from", async (context) => {
  const session = await Session.start(context);
  const expected = [
    [-288, 0],
    [288, 0],
    [0, -180],
    [0, 180],
    [-288, -180],
    [288, -180],
    [-288, 180],
    [288, 180],
  ];
  const captions = expected.map((_, index) => {
    const direction = { set_animation_style: "Slide", Animation_Start_Direction: String(index) };
    return { size: "10", attributes: { ...direction, In_Time: "1" } };
  });
  await session.show([{ captions }]);
  await session.seek(kEnter);
  for (const [index, { x, y }] of (await sample(session)).entries()) {
    close(x, expected[index][0]);
    close(y, expected[index][1]);
  }
});

test("a caption that flips is seen in perspective, any other is not", async (context) => {
  const session = await Session.start(context);
  const perspective = async (/** @type {string} */ style) => {
    await show(session, style);
    return session.page.$eval(".caption", (element) => getComputedStyle(element).perspective);
  };
  assert.equal(await perspective("Flip"), "864px");
  assert.equal(await perspective("Slide"), "none");
});

test("a caption on its way moves by shares of the slide when the slide changes size", async (context) => {
  const session = await Session.start(context);
  await show(session, "Slide");
  close((await at(session, 0)).x, -288);
  await session.page.setViewportSize({ width: 480, height: 300 });
  await session.page.waitForFunction(() => {
    const { transform } = getComputedStyle(
      /** @type {Element} */ (document.querySelector(".part")),
    );
    return Math.abs(new DOMMatrix(transform).m41 + 144) < 0.5;
  });
});

test("a caption that has not begun to leave is left alone", async (context) => {
  const session = await Session.start(context);
  await show(session, "Slide");
  const leave = kEnter + 900 + 2000;
  const transform = async (/** @type {number} */ time) => {
    await session.seek(time);
    return session.page.$eval(".caption", (element) => getComputedStyle(element).transform);
  };
  assert.equal(await transform(leave), "none");
  assert.notEqual(await transform(leave + 100), "none");
  assert.equal(await transform(leave - 100), "none");
});

test("a caption leaves the way it came", async (context) => {
  const session = await Session.start(context);
  await show(session, "Slide");
  const caption = () =>
    session.page.$eval(".caption", (element) => {
      const { opacity, transform } = getComputedStyle(element);
      return { opacity: Number(opacity), x: new DOMMatrix(transform).m41 };
    });
  const leave = kEnter + 900 + 2000;
  await session.seek(leave - 1);
  assert.deepEqual(await caption(), { opacity: 1, x: 0 });
  await session.seek(leave + 499);
  const gone = await caption();
  close(gone.opacity, 0, 0.05);
  close(gone.x, -288, 5);
});

test("time can run backwards", async (context) => {
  const session = await Session.start(context);
  await show(session, "Slide");
  const before = JSON.stringify(await at(session, 200));
  await at(session, 5000);
  assert.equal(JSON.stringify(await at(session, 200)), before);
});
