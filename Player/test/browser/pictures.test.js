// Pictures of every style at given times, for people to look at, in the folder that
// VIREONIX_PICTURES names.

import assert from "node:assert/strict";
import { copyFile } from "node:fs/promises";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { test } from "node:test";
import { Album } from "../support/album.js";
import { Session } from "../support/session.js";

/** @typedef {import("../support/workspace.js").SlideSource} SlideSource */

const kStyles = [
  ...["Fade", "Slide", "Zoom", "Rotate", "Bounce"],
  ...["Blur", "Typewriter", "Wave", "Flip", "None"],
];
const kDirections = [
  ...["left", "right", "top", "bottom"],
  ...["top left", "top right", "bottom left", "bottom right"],
];
const kAnchors = ["TL", "TC", "TR", "CL", "C", "CR", "BL", "BC", "BR"];
const kUnits = ["whole", "letter", "word"];
const kSmall = { width: 320, height: 200 };
const kPreview = { width: 384, height: 288 };
const kFull = { width: 1024, height: 640 };
const kLong =
  "It was the best of times, it was the worst of times, it was the age of wisdom, it was the age " +
  "of foolishness, it was the epoch of belief, it was the epoch of incredulity.";
const kScripts = [
  { text: "غروب الشمس على البحر", Align: "TR", unit: "1" },
  { text: "שקיעה מעל הים", Align: "TL", unit: "1" },
  { text: "समुद्र पर सूर्यास्त", Align: "CL", unit: "1" },
  { text: "静かな朝の湖", Align: "CR", unit: "1" },
  { text: "พระอาทิตย์ตก", Align: "BL", unit: "1" },
  { text: "Straße – Ærø 👩‍👩‍👧", Align: "BR", unit: "1" },
  { text: "سفر Journey 2026", Align: "C", unit: "0" },
];

const kAlbum = process.env.VIREONIX_PICTURES ?? join(tmpdir(), "player-pictures");
const kSamples = process.env.VIREONIX_SAMPLES ?? "";

/** @type {Album} */
let album;

/** @param {import("node:test").TestContext} context */
async function start(context) {
  album ??= await Album.open(kAlbum);
  const session = await Session.start(context);
  for (const name of ["lake.jpg", "sea.jpg", "intro_asset/meadow.jpg"])
    await copyFile(
      join(kSamples, name),
      join(session.workspace.folder, name.split("/").at(-1) ?? ""),
    );
  return session;
}

/** Shows a slide at a time of its clock, whole. @param {Session} session @param {number} index */
async function goTo(session, index, time = 0) {
  await session.page.evaluate(
    async ([at, milliseconds]) => {
      const player = /** @type {any} */ (window).vireonixPlayer;
      player.goTo(at);
      for (const animation of document.getAnimations()) animation.finish();
      player.seek(milliseconds);
      await document.querySelector(/** @type {"img"} */ (".slide.current img"))?.decode();
    },
    [index, time],
  );
}

/** @param {string} style @param {string} unit @param {string} [direction] @returns {SlideSource} */
function slideOf(style, unit, direction = "0") {
  const attributes = {
    ...{ set_animation_style: style, Text_Animation_LetterByLetter: unit },
    ...{ Animation_Start_Direction: direction, In_Time: "1", Stay_Time: "3", Text_Align: "1" },
  };
  // On a plain ground nothing but the caption makes one picture different from another.
  return { media: "a.png", captions: [{ text: "A quiet morning", size: "40", attributes }] };
}

test("pictures of every style, whole, letter by letter and word by word", async (context) => {
  const session = await start(context);
  await session.page.setViewportSize(kPreview);
  await session.show(
    kStyles.flatMap((style) => ["0", "1", "2"].map((unit) => slideOf(style, unit))),
  );
  for (const [at, style] of kStyles.entries())
    for (const [unit, name] of kUnits.entries()) {
      const pictures = [];
      for (const time of unit === 0 ? [100, 250, 500, 2500] : [100, 300]) {
        await goTo(session, at * kUnits.length + unit, 1000 + time);
        const title = `${style}, ${name}, after ${time} ms`;
        pictures.push(await album.add(session.page, style, `${style}-${name}-${time}`, title));
      }
      const differ = new Set(pictures.map((picture) => picture.toString("base64"))).size;
      const isStill = style === "None";
      assert.ok(isStill ? differ === 1 : differ > 1, `${style}, ${name}: ${differ} pictures`);
    }
});

test("pictures of the start directions", async (context) => {
  const session = await start(context);
  await session.page.setViewportSize(kPreview);
  await session.show(kDirections.map((_, index) => slideOf("Slide", "1", String(index))));
  const pictures = new Set();
  for (const [index, name] of kDirections.entries()) {
    await goTo(session, index, 1250);
    const file = `Slide-from-${name.replace(" ", "-")}`;
    pictures.add((await album.add(session.page, "Directions", file, name)).toString("base64"));
  }
  assert.equal(pictures.size, kDirections.length);
});

test("pictures of places, scripts and long captions, small and large", async (context) => {
  const session = await start(context);
  const caption = (
    /** @type {string} */ text,
    /** @type {string} */ Align,
    unit = "0",
    size = "20",
  ) => ({
    text,
    size,
    attributes: { Align, Text_Animation_LetterByLetter: unit, Stay_Time: "0" },
  });
  await session.show([
    { media: "sea.jpg", captions: kAnchors.map((Align) => caption(Align, Align)) },
    {
      media: "meadow.jpg",
      captions: kScripts.map(({ text, Align, unit }) => caption(text, Align, unit)),
    },
    {
      media: "lake.jpg",
      captions: [caption(kLong, "TL", "2", "18"), caption(kLong, "BR", "0", "12")],
    },
    { media: "a.png", captions: [caption("Plain ground", "C", "0", "40")] },
    { media: "gone.png", captions: [caption("No picture", "C", "0", "40")] },
  ]);
  await session.page.focus(".stage");
  const names = ["places", "scripts", "long", "plain", "missing"];
  for (const [size, viewport] of Object.entries({ small: kSmall, full: kFull })) {
    await session.page.setViewportSize(viewport);
    for (const [index, name] of names.entries()) {
      await goTo(session, index, 3000).catch(() => {});
      await album.add(session.page, `Slides, ${size}`, `${name}-${size}`, `${name}, ${size}`);
    }
  }
  session.complaints.length = 0;
  await album.close(session.page);
});
