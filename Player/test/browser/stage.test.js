import assert from "node:assert/strict";
import { test } from "node:test";
import { firstPixel, solidPicture } from "../support/picture.js";
import { Session } from "../support/session.js";

const kThree = [
  { media: "a.png", captions: [{ text: "one" }] },
  { media: "b.png", captions: [{ text: "two" }] },
  { media: "a.png", captions: [{ text: "three" }] },
];

test("slides follow in the document's order, and the first the last", async (context) => {
  const session = await Session.start(context);
  await session.show(kThree);
  const order = [];
  for (const next of [1, 2, 0]) {
    order.push(
      await session.page.$eval(".swiper-slide-active .spoken", (spoken) => spoken.textContent),
    );
    await session.seek((await session.state()).duration);
    await session.waitForSlide(next);
  }
  assert.deepEqual(order, ["one", "two", "three"]);
});

test("a slide moves on by itself when its time has passed", async (context) => {
  const session = await Session.start(context);
  await session.show(kThree);
  const { duration } = await session.state();
  await session.seek(duration - 300);
  await session.page.evaluate(() => /** @type {any} */ (window).vireonixPlayer.release());
  await session.waitForSlide(1);
});

test("the arrow keys move between slides, and Space stops and goes on", async (context) => {
  const session = await Session.start(context);
  await session.show(kThree);
  await session.page.keyboard.press("ArrowRight");
  await session.waitForSlide(1);
  await session.page.keyboard.press("ArrowLeft");
  await session.page.keyboard.press("ArrowLeft");
  await session.waitForSlide(2);
  await session.page.keyboard.press("Space");
  assert.equal((await session.state()).paused, true);
  await session.page.keyboard.press("Space");
  assert.equal((await session.state()).paused, false);
});

test("a paused slide stands still", async (context) => {
  const session = await Session.start(context);
  await session.show(kThree);
  await session.page.evaluate(() => /** @type {any} */ (window).vireonixPlayer.release());
  await session.page.click(".pause");
  const { time, paused } = await session.state();
  assert.equal(paused, true);
  await session.page.evaluate(
    () => new Promise((done) => requestAnimationFrame(() => requestAnimationFrame(done))),
  );
  assert.equal((await session.state()).time, time);
  assert.equal(
    await session.page.$eval(".pause", (button) => button.getAttribute("aria-label")),
    "Play",
  );
});

test("moving on while paused shows a slide with its captions", async (context) => {
  const session = await Session.start(context);
  await session.show(kThree);
  await session.page.keyboard.press("Space");
  await session.page.keyboard.press("ArrowRight");
  await session.waitForSlide(1);
  assert.equal(await session.page.isVisible(".swiper-slide-active .caption .shown"), true);
  assert.equal((await session.state()).paused, true);
});

test("buttons, dots and swiping move between slides", async (context) => {
  const session = await Session.start(context);
  await session.show(kThree);
  await session.page.hover(".stage");
  await session.page.click(".next");
  await session.waitForSlide(1);
  await session.page.click(".previous");
  await session.waitForSlide(0);
  await session.page.click(".swiper-pagination-bullet:nth-child(3)");
  await session.waitForSlide(2);
  await session.settle();
  await session.page.mouse.move(300, 200);
  await session.page.mouse.down();
  await session.page.mouse.move(700, 200, { steps: 8 });
  await session.page.mouse.up();
  await session.waitForSlide(1);
});

test("the controls stay out of the picture until they are wanted", async (context) => {
  const session = await Session.start(context);
  await session.show(kThree);
  const opacity = () =>
    session.page.$eval(".controls", (controls) => {
      for (const animation of controls.getAnimations()) animation.finish();
      return getComputedStyle(controls).opacity;
    });
  assert.equal(await opacity(), "0");
  await session.page.keyboard.press("Tab");
  assert.equal(await opacity(), "1");
});

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

test("a picture covers the whole slide, a dark ground is there before", async (context) => {
  const session = await Session.start(context);
  await session.show([{ media: "b.png" }]);
  const [red, green, blue] = firstPixel(await session.page.screenshot());
  assert.deepEqual([red, green, blue], [190, 130, 30]);
  const ground = await session.page.evaluate(
    () => getComputedStyle(document.documentElement).backgroundColor,
  );
  assert.equal(ground, "rgb(20, 22, 26)");
});

test("a picture is found whatever its name is, in both folders", async (context) => {
  const session = await Session.start(context);
  const names = ["intro_asset/50% #1?&é.png", 'it\'s "q" +.png'];
  for (const name of names) await session.workspace.write(name, solidPicture(200, 30, 60));
  await session.show(names.map((media) => ({ media })));
  for (const index of [0, 1]) {
    await session.page.evaluate((at) => /** @type {any} */ (window).vireonixPlayer.goTo(at), index);
    await session.waitForSlide(index);
    await session.page.waitForSelector(".swiper-slide-active .backdrop[data-loaded]");
  }
});

test("a missing picture is said in a corner, its captions are shown", async (context) => {
  const session = await Session.start(context);
  await session.show([
    { media: "gone.png", captions: [{ text: "still here" }] },
    { media: "a.png" },
  ]);
  await session.page.waitForSelector(".notice:not([hidden])");
  assert.equal(await session.page.textContent(".notice"), "“gone.png” cannot be shown.");
  await session.seek(2000);
  assert.equal(await session.page.isVisible(".caption .shown"), true);
  await session.page.keyboard.press("ArrowRight");
  await session.waitForSlide(1);
  await session.page.waitForSelector(".notice", { state: "hidden" });
  assert.equal(session.complaints.splice(0).length, 1);
});

test("a document that is missing, empty or none is explained in words", async (context) => {
  const session = await Session.start(context);
  await session.load();
  assert.match((await session.page.textContent(".message")) ?? "", /cannot be read/);
  assert.equal(session.complaints.splice(0).length, 1);
  await session.workspace.write("intro_asset/data.xml", "nothing but words");
  await session.load();
  assert.match((await session.page.textContent(".message")) ?? "", /not a slider document/);
  await session.show([]);
  assert.match((await session.page.textContent(".message")) ?? "", /no slides yet/);
});

test("a malformed document is read as far as it goes", async (context) => {
  const session = await Session.start(context);
  const caption = `<text Align="C"><text><![CDATA[<b><font size="24" color="#FFFFFF">half`;
  const broken = `<main><data><slide Background_image="a.png">${caption}`;
  await session.workspace.write("intro_asset/data.xml", broken);
  await session.load();
  assert.match((await session.page.textContent(".spoken")) ?? "", /half/);
});

test("a page that may not read its neighbour files says what to do", async (context) => {
  const session = await Session.start(context);
  await session.workspace.writeSlides(kThree);
  await session.page.goto(`file://${session.workspace.folder}/index.html`);
  await session.page.waitForSelector("html[data-ready]");
  assert.match((await session.page.textContent(".message")) ?? "", /web server/);
  assert.ok(
    session.complaints.splice(0).every((complaint) => /data\.xml|ERR_FAILED/.test(complaint)),
  );
});

test("two hundred slides are soon ready, with only the nearest pictures", async (context) => {
  const session = await Session.start(context);
  const captions = Array.from({ length: 5 }, (_, index) => ({
    text: `Caption number ${index} of a slide`,
  }));
  await session.workspace.writeSlides(Array.from({ length: 200 }, () => ({ captions })));
  await session.load();
  const ready = await session.page.evaluate(() => performance.now());
  assert.ok(ready < 6000, `${ready} ms`);
  assert.equal(await session.page.$$eval(".picture[src]", (pictures) => pictures.length), 2);
});
