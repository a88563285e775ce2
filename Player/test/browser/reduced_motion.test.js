import assert from "node:assert/strict";
import { readFile } from "node:fs/promises";
import { test } from "node:test";
import { blinkingPicture } from "../support/gif.js";
import { Session } from "../support/session.js";

const kReduced = /** @type {const} */ ({ reducedMotion: "reduce" });

/**
 * @param {Session} session
 * @returns {Promise<number>} how many different pictures the page shows within most of a second
 */
async function differentPictures(session) {
  const seen = new Set();
  for (let count = 0; count < 8; ++count) {
    seen.add((await session.page.screenshot()).toString("base64"));
    await session.page.waitForTimeout(100);
  }
  return seen.size;
}

/** @param {Session} session */
async function showMovingMovie(session) {
  const movie = await readFile(process.env.VIREONIX_MOVING_MOVIE ?? "");
  await session.workspace.write("m.swf", movie);
  await session.show([{ media: "m.swf", captions: [{ text: "above" }] }, { media: "a.png" }]);
  await session.page.waitForSelector(".movie[data-playing]", { timeout: 30000 });
  await session.page.$eval("iframe", (frame) => {
    for (const animation of frame.getAnimations()) animation.finish();
  });
}

test("with reduced motion nothing moves, and slides still follow", async (context) => {
  const session = await Session.start(context, { reducedMotion: "reduce" });
  const attributes = { set_animation_style: "Slide", In_Time: "1", Stay_Time: "1" };
  await session.show([{ captions: [{ attributes }] }, { media: "b.png" }]);
  await session.seek(999);
  assert.equal(
    await session.page.$eval(".caption", (element) => element.getAttribute("data-state")),
    "waiting",
  );
  await session.seek(1000);
  const looks = await session.page.$eval(".part", (part) => {
    const { opacity, transform } = getComputedStyle(part);
    return [opacity, transform, part.closest(".caption")?.getAttribute("data-state")];
  });
  assert.deepEqual(looks, ["1", "none", "staying"]);
  assert.match(
    await session.page.$eval(".picture", (picture) => picture.style.transform),
    /^(scale\(1\))?$/,
  );
  await session.seek((await session.state()).duration);
  await session.waitForSlide(1);
});

test("a movie moves, and stands still with reduced motion while the slider goes on", async (context) => {
  const moving = await Session.start(context);
  await showMovingMovie(moving);
  assert.ok((await differentPictures(moving)) > 1);
  assert.ok((await moving.state()).duration > 4000 + 2000);

  const still = await Session.start(context, kReduced);
  await showMovingMovie(still);
  assert.equal(await differentPictures(still), 1);
  await still.page.evaluate(() => /** @type {any} */ (window).vireonixPlayer.pause());
  await still.page.evaluate(() => /** @type {any} */ (window).vireonixPlayer.play());
  assert.equal(await differentPictures(still), 1);
  await still.seek((await still.state()).duration);
  await still.waitForSlide(1);
});

test("a moving picture stands still with reduced motion", async (context) => {
  for (const [options, pictures] of /** @type {const} */ ([
    [undefined, 2],
    [kReduced, 1],
  ])) {
    const session = await Session.start(context, options);
    await session.workspace.write("m.gif", blinkingPicture());
    await session.show([{ media: "m.gif" }]);
    await session.page.waitForSelector(".backdrop[data-loaded]");
    assert.equal(await differentPictures(session), pictures);
  }
});
