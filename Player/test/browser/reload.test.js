import assert from "node:assert/strict";
import { test } from "node:test";
import { Session } from "../support/session.js";

/** @param {string[]} texts of the second of three slides */
function slides(...texts) {
  const captions = texts.map((text, index) => ({
    text,
    attributes: { In_Time: String(index * 5) },
  }));
  return [{ media: "a.png" }, { media: "b.png", captions }, { media: "a.png" }];
}

/** @param {Session} session @param {number} index */
async function goTo(session, index) {
  await session.page.evaluate((at) => /** @type {any} */ (window).vireonixPlayer.goTo(at), index);
  await session.waitForSlide(index);
}

test("an unchanged document goes on at the same slide and time", async (context) => {
  const session = await Session.start(context);
  await session.show(slides("one", "two"));
  await goTo(session, 1);
  await session.seek(2500);
  await session.load();
  const { currentSlide, time } = await session.state();
  assert.equal(currentSlide, 1);
  assert.ok(time >= 2500 && time < 3500, `${time}`);
});

test("a paused player is still paused", async (context) => {
  const session = await Session.start(context);
  await session.show(slides("one"));
  await session.seek(700);
  await session.page.evaluate(() => /** @type {any} */ (window).vireonixPlayer.pause());
  await session.load();
  assert.deepEqual(await session.state(), {
    currentSlide: 0,
    time: 700,
    duration: 4000,
    paused: true,
  });
});

test("a changed caption is shown from just before it enters", async (context) => {
  const session = await Session.start(context);
  await session.show(slides("one", "two"));
  await session.show(slides("one", "two!"));
  const { currentSlide, time } = await session.state();
  assert.equal(currentSlide, 1);
  assert.ok(time >= 4750 && time < 6500, `${time}`);
});

test("the slide to go on with is there at once, without any other before it", async (context) => {
  const session = await Session.start(context);
  await session.show(slides("one"));
  await session.page.addInitScript(() => {
    new MutationObserver(() => {
      const seen = /** @type {any} */ (window);
      (seen.slidesSeen ??= new Set()).add(document.documentElement.dataset.slide);
    }).observe(document, { attributes: true, attributeFilter: ["data-slide"], subtree: true });
  });
  await session.show(slides("changed"));
  assert.deepEqual(await session.page.evaluate(() => [.../** @type {any} */ (window).slidesSeen]), [
    "1",
  ]);
});

test("an added slide is shown", async (context) => {
  const session = await Session.start(context);
  await session.show(slides("one"));
  await session.show([...slides("one"), { media: "b.png" }]);
  assert.equal((await session.state()).currentSlide, 3);
});

test("someone who paused sees the change arrive and is paused again", async (context) => {
  const session = await Session.start(context);
  await session.show(slides("one"));
  await session.page.evaluate(() => /** @type {any} */ (window).vireonixPlayer.pause());
  await session.show(slides("two"));
  assert.equal((await session.state()).paused, false);
  await session.seek(900);
  const { currentSlide, paused } = await session.state();
  assert.deepEqual([currentSlide, paused], [1, true]);
});
