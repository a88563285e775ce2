import assert from "node:assert/strict";
import { test } from "node:test";
import { kEndlessLoop, openAddress, solidMovie } from "../support/movie.js";
import { firstPixel } from "../support/picture.js";
import { Session } from "../support/session.js";

const kSlides = [
  { media: "m.swf", captions: [{ text: "above", attributes: { Align: "C" } }] },
  { media: "a.png" },
];

/** @param {Session} session @param {Uint8Array | string} movie */
async function showMovie(session, movie) {
  await session.workspace.write("m.swf", movie);
  await session.show(kSlides);
}

/** @param {Session} session */
function waitUntilPlaying(session) {
  return session.page.waitForSelector(".movie[data-playing]", { timeout: 30000 });
}

/** Waits until the page's first pixel has a colour. @param {Session} session @param {number[]} color */
async function waitForColor(session, color) {
  let pixel = [0, 0, 0];
  // The emulator's renderer rounds.
  const isThere = () => pixel.every((part, index) => Math.abs(part - color[index]) <= 3);
  for (const end = Date.now() + 10000; !isThere() && Date.now() < end;)
    pixel = firstPixel(await session.page.screenshot());
  assert.ok(isThere(), `${pixel}`);
}

test("a movie plays behind the captions", async (context) => {
  const session = await Session.start(context);
  await showMovie(session, solidMovie([10, 200, 40]));
  await waitUntilPlaying(session);
  await session.seek(2000);
  assert.equal(await session.page.isVisible(".caption .shown"), true);
  await waitForColor(session, [10, 200, 40]);
});

test("a movie that is paused before it starts shows its first frame", async (context) => {
  const session = await Session.start(context);
  await showMovie(session, solidMovie([10, 200, 40]));
  await session.page.keyboard.press("Space");
  await session.load();
  await waitUntilPlaying(session);
  await waitForColor(session, [10, 200, 40]);
  assert.equal((await session.state()).paused, true);
});

test("a movie whose page is hidden rests without a complaint", async (context) => {
  const session = await Session.start(context);
  await showMovie(session, solidMovie([10, 200, 40]));
  await waitUntilPlaying(session);
  await session.page.frames()[1].evaluate(() => {
    Object.defineProperty(document, "hidden", { value: true });
    Object.defineProperty(document, "visibilityState", { value: "hidden" });
    document.dispatchEvent(new Event("visibilitychange"));
  });
  await session.page.waitForTimeout(300);
});

test("the emulator is read only for a movie", async (context) => {
  const session = await Session.start(context);
  /** @type {string[]} */
  const requests = [];
  session.page.on("request", (request) => requests.push(request.url()));
  await session.show([{ media: "a.png" }, { media: "b.png" }]);
  await session.page.waitForLoadState("networkidle");
  assert.deepEqual(
    requests.filter((url) => url.includes("ruffle")),
    [],
  );
});

test("a movie reaches neither the network nor the page", async (context) => {
  const session = await Session.start(context);
  const actions = [
    openAddress("https://elsewhere.invalid/", "_top"),
    openAddress("https://elsewhere.invalid/", "_blank"),
    openAddress("javascript:parent.document.title='taken'", "_self"),
    openAddress("FSCommand:quit", ""),
  ];
  const pages = session.page.context().pages().length;
  await showMovie(session, solidMovie([10, 20, 200], actions));
  await waitUntilPlaying(session);
  assert.equal(await session.page.title(), "Slides");
  assert.equal(session.page.context().pages().length, pages);
  const frame = session.page.frames()[1];
  const reached = await frame.evaluate(async () => {
    const attempts = [
      () => parent.document.title,
      () => localStorage.length,
      () => document.cookie,
    ];
    const tried = attempts.map((attempt) => {
      try {
        return attempt() === "" ? "nothing" : "something";
      } catch {
        return "refused";
      }
    });
    const image = new Image();
    image.src = "https://elsewhere.invalid/x.png";
    return [
      ...tried,
      await image.decode().then(
        () => "loaded",
        () => "refused",
      ),
    ];
  });
  assert.deepEqual(reached, ["refused", "refused", "refused", "refused"]);
  // The browser tells of the picture that this test itself has asked for and not got.
  const others = session.complaints.splice(0).filter((text) => !text.includes("invalid/x.png"));
  assert.deepEqual(others, []);
});

test("a movie that does not end its work leaves the slider running", async (context) => {
  const session = await Session.start(context);
  await showMovie(session, solidMovie([10, 20, 200], [kEndlessLoop]));
  await session.page.keyboard.press("ArrowRight");
  await session.waitForSlide(1);
  await session.page.waitForSelector(".slide.current .backdrop[data-loaded]");
  session.complaints.length = 0;
});

for (const [what, movie] of /** @type {[string, string | Uint8Array][]} */ ([
  ["something else under a movie's name", "<html>no movie</html>"],
  ["a movie that breaks off", solidMovie([1, 2, 3]).subarray(0, 12)],
]))
  test(`${what} is said in a corner, and the slider goes on`, async (context) => {
    const session = await Session.start(context);
    await showMovie(session, movie);
    await session.page.waitForSelector(".notice:not([hidden])", { timeout: 30000 });
    assert.equal(await session.page.textContent(".notice"), "“m.swf” cannot be shown.");
    assert.equal(await session.page.$$eval("iframe", (frames) => frames.length), 0);
    await session.page.keyboard.press("ArrowRight");
    await session.waitForSlide(1);
    session.complaints.length = 0;
  });
