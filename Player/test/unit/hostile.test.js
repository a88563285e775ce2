import assert from "node:assert/strict";
import { test } from "node:test";
import { captionText, readCaption } from "../../src/document/caption.js";
import * as fields from "../../src/document/fields.js";
import { mediaAddress } from "../../src/document/media.js";
import { readSliderDocument } from "../../src/document/slider_document.js";
import { possibleUnit, splitCaption } from "../../src/motion/split.js";
import { slideTiming } from "../../src/motion/timing.js";
import { hostileText, randomNumbers } from "../support/random.js";
import { documentXml } from "../support/workspace.js";

const kTexts = 3000;
const kDocuments = 1500;

/** @param {import("../../src/document/caption.js").Run[]} runs @param {string} source */
function assertSound(runs, source) {
  for (const { text, size, color } of runs) {
    assert.notEqual(text, "", source);
    assert.match(color, /^#[0-9a-f]{6}$/, source);
    assert.ok(size >= fields.kMinimumSize && size <= fields.kMaximumSize, source);
    assert.doesNotMatch(text, /[\u0000-\u0008\u202a-\u202e\u2066-\u2069]/, source);
  }
}

/** @param {number} count @param {(text: string) => void} check */
function forHostileTexts(count, check) {
  for (let seed = 1; seed <= count; ++seed) check(hostileText(randomNumbers(seed), 12));
}

test("whatever is in a caption, its runs are text of sound sizes and colours", () => {
  forHostileTexts(kTexts, (typed) => {
    for (const markup of [typed, `<b><font size="24" color="#FF0000">${typed}</font></b>`])
      assertSound(readCaption(markup), markup);
  });
});

test("a caption without known tags and entities is shown as typed", () => {
  forHostileTexts(kTexts, (piece) => {
    const typed = piece.replace(
      /<\/?(b|i|u|font|br)\b|&|[\u0000-\u001f\u007f\u202a-\u202e\u2066-\u2069]/gi,
      "~",
    );
    const runs = readCaption(`<b><font size="24" color="#FF0000">${typed}</font></b>`);
    assert.equal(captionText(runs), typed);
  });
});

test("cutting a caption into parts loses none of it", () => {
  forHostileTexts(kTexts, (typed) => {
    const runs = readCaption(typed);
    const text = captionText(runs);
    for (const wanted of /** @type {const} */ (["letter", "word"])) {
      const unit = possibleUnit(text, wanted);
      if (unit === "caption") continue;
      const parts = splitCaption(runs, unit).flatMap((word) => word.parts);
      assert.equal(parts.map(captionText).join(""), text);
    }
  });
});

test("whatever a document holds, it is read as sound slides that end", () => {
  for (let seed = 1; seed <= kDocuments; ++seed) {
    const random = randomNumbers(seed);
    const some = () => hostileText(random, 6);
    const attributes = Object.fromEntries(
      ["In_Time", "Stay_Time", "Align", "Text_Align", "set_animation_style"].map((name) => [
        name,
        some(),
      ]),
    );
    const whole = documentXml(
      [{ media: some(), captions: [{ text: some(), attributes }] }],
      some(),
    );
    // As it stands, broken off, and with a piece in its middle.
    const cut = Math.floor(random() * whole.length);
    const sources = [whole, whole.slice(0, cut), whole.slice(0, cut) + some() + whole.slice(cut)];
    for (const source of sources) assertDocumentSound(source);
  }
});

/** @param {string} source */
function assertDocumentSound(source) {
  for (const { media, captions } of readSliderDocument(source, "")?.slides ?? []) {
    assert.doesNotMatch(mediaAddress(media), /^[/\\]|^[a-z]+:|(^|\/)\.\.(\/|$)/i, source);
    for (const { runs, anchor, textAlign } of captions) {
      assertSound(runs, source);
      assert.ok(fields.kAnchors.includes(anchor) && fields.kTextAligns.includes(textAlign), source);
    }
    const { duration } = slideTiming(
      captions.map((caption) => ({ caption, parts: 3 })),
      false,
    );
    assert.ok(duration >= 4000 && duration < 3 * 3600 * 1000, source);
  }
}

test("a document of opening brackets and quotes is read in time that grows with its length", () => {
  const seconds = (/** @type {string} */ source) => {
    const start = performance.now();
    readSliderDocument(`<main><data>${source}`, "");
    return (performance.now() - start) / 1000;
  };
  const pieces = [
    ...["<", "<a ", "<a b=", "<![CDATA[", "<!--", "</", "<a b='c' ", "&", "<?", "<b>"],
    ...["<!DOCTYPE ", "<!DOCTYPE x [", '<a "', "<a b='>'\""],
  ];
  for (const piece of pieces) assert.ok(seconds(piece.repeat(20000)) < 2, piece);
});
