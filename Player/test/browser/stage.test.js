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
    order.push(await session.page.$eval(".slide.current .spoken", (spoken) => spoken.textContent));
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

test("time waits for a slow picture, also when it is stopped and goes on meanwhile", async (context) => {
  const session = await Session.start(context);
  /** @type {(value?: unknown) => void} */
  let deliver = () => {};
  const delivered = new Promise((resolve) => (deliver = resolve));
  await session.page.route("**/b.png", async (route) => {
    await delivered;
    await route.continue();
  });
  await session.show(kThree);
  await session.page.evaluate(() => /** @type {any} */ (window).vireonixPlayer.release());
  await session.page.keyboard.press("ArrowRight");
  await session.waitForSlide(1);
  await session.page.keyboard.press("Space");
  await session.page.keyboard.press("Space");
  await session.page.waitForTimeout(200);
  assert.equal((await session.state()).time, 0);
  deliver();
  await session.page.waitForFunction(() => /** @type {any} */ (window).vireonixPlayer.time > 0);
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
  assert.equal(await session.page.isVisible(".slide.current .caption .shown"), true);
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
  await session.page.click(".dot:nth-child(3)");
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
  await session.page.hover(".stage");
  assert.equal(await opacity(), "1");
  await session.page.waitForSelector(".stage:not([data-awake])");
  assert.equal(await opacity(), "0");
  await session.page.keyboard.press("Tab");
  assert.equal(await opacity(), "1");
});

test("few slides have dots, many are counted", async (context) => {
  const session = await Session.start(context);
  await session.show(kThree);
  assert.equal(await session.page.$$eval(".dot", (dots) => dots.length), 3);
  assert.equal(
    await session.page.getAttribute(".dot[aria-current]", "aria-label"),
    "Go to slide 1",
  );
  await session.show(Array.from({ length: 40 }, () => ({})));
  await session.page.keyboard.press("ArrowRight");
  await session.waitForSlide(1);
  assert.equal(await session.page.textContent(".counter"), "2 / 40");
  assert.equal(await session.page.$$eval(".dot", (dots) => dots.length), 0);
});

test("a slide appears above the one before, which keeps its captions until it is covered", async (context) => {
  const session = await Session.start(context);
  await session.show(kThree);
  await session.seek(2000);
  const seen = () =>
    session.page.$$eval(".slide", (slides) =>
      slides.map((slide) => {
        const caption = /** @type {Element | null} */ (slide.querySelector(".shown"));
        return caption !== null && getComputedStyle(caption).visibility === "visible";
      }),
    );
  await session.page.keyboard.press("ArrowRight");
  await session.waitForSlide(1);
  assert.deepEqual(await seen(), [true, true, false]);
  await session.page.evaluate(() => document.getAnimations().forEach((one) => one.finish()));
  await session.page.waitForFunction(() => !document.querySelector(".covered"));
  assert.deepEqual(await seen(), [false, true, false]);
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
    await session.page.waitForSelector(".slide.current .backdrop[data-loaded]");
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

test("time stands still while the page is hidden", async (context) => {
  const session = await Session.start(context);
  await session.show(kThree);
  const setHidden = (/** @type {boolean} */ hidden) =>
    session.page.evaluate((value) => {
      Object.defineProperty(document, "hidden", { value, configurable: true });
      document.dispatchEvent(new Event("visibilitychange"));
    }, hidden);
  const passes = async () => {
    const { time } = await session.state();
    await session.page.evaluate(
      () => new Promise((done) => requestAnimationFrame(() => requestAnimationFrame(done))),
    );
    return (await session.state()).time > time;
  };
  await session.page.evaluate(() => /** @type {any} */ (window).vireonixPlayer.release());
  await session.page.waitForFunction(() => /** @type {any} */ (window).vireonixPlayer.time > 0);
  await setHidden(true);
  assert.equal(await passes(), false);
  await setHidden(false);
  assert.equal(await passes(), true);
  assert.equal((await session.state()).paused, false);
});

test("a finger swipes between slides", async (context) => {
  const session = await Session.start(context, { hasTouch: true });
  await session.show(kThree);
  const devtools = await session.page.context().newCDPSession(session.page);
  const touch = (/** @type {"touchStart" | "touchMove"} */ type, /** @type {number} */ x) =>
    devtools.send("Input.dispatchTouchEvent", { type, touchPoints: [{ x, y: 300 }] });
  await touch("touchStart", 700);
  for (const x of [600, 500, 400]) await touch("touchMove", x);
  await devtools.send("Input.dispatchTouchEvent", { type: "touchEnd", touchPoints: [] });
  await session.waitForSlide(1);
});

test("a screen reader is told of the next slide only while the slider is paused", async (context) => {
  const session = await Session.start(context);
  await session.show(kThree);
  const live = () => session.page.getAttribute(".slides", "aria-live");
  assert.equal(await live(), "off");
  await session.page.keyboard.press("Space");
  assert.equal(await live(), "polite");
});

test("the buttons work from the keyboard", async (context) => {
  const session = await Session.start(context);
  await session.show(kThree);
  await session.page.focus(".next");
  await session.page.keyboard.press("Enter");
  await session.waitForSlide(1);
  await session.page.focus(".pause");
  await session.page.keyboard.press("Space");
  assert.equal((await session.state()).paused, true);
});
