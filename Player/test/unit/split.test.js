import assert from "node:assert/strict";
import { test } from "node:test";
import { possibleUnit, splitCaption } from "../../src/motion/split.js";
import { readCaption } from "../../src/document/caption.js";

/** @param {string} markup @param {import("../../src/document/fields.js").Unit} unit */
function parts(markup, unit) {
  return splitCaption(readCaption(markup), unit).map(({ kind, parts }) => {
    const texts = parts.map((part) => part.map(({ text }) => text).join(""));
    return kind === "word" ? texts : kind;
  });
}

test("a caption is cut into letters, word by word", () => {
  assert.deepEqual(parts("Hi, you", "letter"), [["H", "i", ","], "space", ["y", "o", "u"]]);
});

test("a caption is cut into words with their punctuation, and lines", () => {
  assert.deepEqual(parts("One, two!<br>Three", "word"), [
    ["One,"],
    "space",
    ["two!"],
    "break",
    ["Three"],
  ]);
});

test("what is seen as one character stays whole", () => {
  const family = "\u{1f468}\u200d\u{1f469}\u200d\u{1f467}";
  assert.deepEqual(parts(`e\u0301${family}\u{1f1eb}\u{1f1f7}`, "letter"), [
    ["e\u0301", family, "\u{1f1eb}\u{1f1f7}"],
  ]);
});

test("a letter keeps the looks of its run, also where looks change inside a word", () => {
  const [word] = splitCaption(readCaption("a<i>bc</i>"), "letter");
  assert.deepEqual(
    word.parts.map(([{ text, italic }]) => [text, italic]),
    [
      ["a", false],
      ["b", true],
      ["c", true],
    ],
  );
  const [whole] = splitCaption(readCaption("a<i>bc</i>"), "word");
  assert.deepEqual(
    whole.parts.map((runs) => runs.map(({ text }) => text)),
    [["a", "bc"]],
  );
});

test("scripts whose letters join move word by word", () => {
  for (const text of ["مرحبا بكم", "नमस्ते दुनिया"])
    assert.equal(possibleUnit(text, "letter"), "word");
  for (const text of ["Welcome", "Привет", "你好", "שלום"])
    assert.equal(possibleUnit(text, "letter"), "letter");
});

test("a text of both directions moves as a whole", () => {
  assert.equal(possibleUnit("Hello مرحبا", "letter"), "caption");
  assert.equal(possibleUnit("Hello שלום", "word"), "caption");
});

test("a text without spaces is cut into its words", () => {
  const cut = parts("你好世界", "word");
  assert.ok(cut.length >= 2);
  assert.equal(cut.flat().join(""), "你好世界");
});
