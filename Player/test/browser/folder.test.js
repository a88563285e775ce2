// The page opened straight from its folder, as ordinary browsers let it.

import assert from "node:assert/strict";
import { test } from "node:test";
import { solidMovie } from "../support/movie.js";
import { Session } from "../support/session.js";

const kSlides = [
  { media: "a.png", captions: [{ text: "one" }] },
  { media: "intro_asset/50% #1.swf" },
];

/** The browser tells of what it refused to read. @param {Session} session */
function forgetRefusals(session) {
  const complaints = session.complaints.splice(0);
  assert.ok(
    complaints.every((complaint) => /data\.xml|ERR_FAILED/.test(complaint)),
    complaints.join("\n"),
  );
}

test("a page that may not read its neighbour files says what to do", async (context) => {
  const session = await Session.start(context);
  await session.workspace.writeSlides(kSlides);
  await session.openFromFolder();
  assert.match((await session.page.textContent(".message")) ?? "", /Choose that folder/);
  assert.equal(await session.page.isVisible("button.choose"), true);
  forgetRefusals(session);
});

test("a folder that the user chooses is played, its movies too", async (context) => {
  const session = await Session.start(context);
  await session.workspace.writeSlides(kSlides);
  await session.workspace.copyScripts();
  await session.workspace.write(kSlides[1].media, solidMovie([10, 200, 40]));
  await session.openFromFolder();
  const chooser = session.page.waitForEvent("filechooser");
  await session.page.click("button.choose");
  await (await chooser).setFiles(session.workspace.folder);
  await session.page.waitForSelector(".backdrop[data-loaded]");
  assert.equal(await session.page.textContent(".spoken"), "one");
  await session.page.keyboard.press("ArrowRight");
  await session.page.waitForSelector(".movie[data-playing]", { timeout: 30000 });
  forgetRefusals(session);
});

test("a folder without slides is told, and another can be chosen", async (context) => {
  const session = await Session.start(context);
  await session.workspace.writeSlides(kSlides);
  await session.openFromFolder();
  const choose = (/** @type {string} */ folder) =>
    session.page.setInputFiles("input[type=file]", folder);
  await choose(`${session.workspace.folder}/intro_asset`);
  await session.page.waitForFunction(() => /not the slides/.test(document.body.innerText));
  await choose(session.workspace.folder);
  await session.page.waitForSelector(".stage");
  forgetRefusals(session);
});
