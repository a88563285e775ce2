import assert from "node:assert/strict";
import { test } from "node:test";
import { captionText, readCaption } from "../../src/document/caption.js";

/** @param {string} text @param {string} [size] @param {string} [color] */
function markup(text, size = "24", color = "#FF0000") {
  return `<b><font size="${size}" color="${color}">${text}</font></b>`;
}

test("a caption carries its text, size and colour, bold", () => {
  assert.deepEqual(readCaption(markup("Welcome")), [
    { text: "Welcome", bold: true, italic: false, underline: false, size: 24, color: "#ff0000" },
  ]);
});

for (const text of [
  "Fish & Chips",
  "a < b > c",
  "<more>",
  "<script>alert(1)</script>",
  "<img src=x onerror=y>",
  "x </p> y",
  "<b",
])
  test(`"${text}" is text`, () => {
    const runs = readCaption(markup(text));
    assert.equal(captionText(runs), text);
    assert.ok(runs.every(({ size, color }) => size === 24 && color === "#ff0000"));
  });

test("typed markup of the known tags takes effect", () => {
  const runs = readCaption(
    markup(`one <i>two</i><br/><u>three</u> <font color='#00ff00' size="40">four</font> five`),
  );
  assert.equal(captionText(runs), "one two\nthree four five");
  assert.deepEqual(
    runs.filter(({ italic }) => italic).map(({ text }) => text),
    ["two"],
  );
  assert.deepEqual(
    runs.filter(({ underline }) => underline).map(({ text }) => text),
    ["three"],
  );
  const green = runs.filter(({ color }) => color === "#00ff00");
  assert.deepEqual(
    green.map(({ text, size }) => [text, size]),
    [["four", 40]],
  );
  assert.equal(runs[runs.length - 1].color, "#ff0000");
});

test("a typed closing tag is text and does not end the caption's looks", () => {
  const runs = readCaption(markup("before</font>after</b>"));
  assert.equal(captionText(runs), "before</font>after</b>");
  assert.ok(runs.every(({ size, color, bold }) => size === 24 && color === "#ff0000" && bold));
});

test("entities read as their characters after the tags have been found", () => {
  assert.equal(captionText(readCaption(markup("&lt;b&gt; &amp; &copy;"))), "<b> & &copy;");
});

test("sizes are kept in bounds, and odd sizes and colours are replaced", () => {
  const look = (/** @type {string} */ size, /** @type {string} */ color) => {
    const [run] = readCaption(markup("x", size, color));
    return [run.size, run.color];
  };
  assert.deepEqual(look("99999", "0x00ff00"), [200, "#00ff00"]);
  assert.deepEqual(look("-3", "red;background:url(//x)"), [4, "#ffffff"]);
  assert.deepEqual(look("(null)", "(null)"), [24, "#ffffff"]);
  assert.deepEqual(look("", ""), [24, "#ffffff"]);
});

test("a caption whose text, size and colour are all lost shows nothing, a typed one does", () => {
  assert.deepEqual(readCaption(markup("(null)", "(null)", "(null)")), []);
  assert.equal(captionText(readCaption(markup("(null)"))), "(null)");
});

test("a caption without any markup is shown", () => {
  assert.equal(captionText(readCaption("plain words")), "plain words");
  assert.deepEqual(readCaption(""), []);
});

test("controls that reorder or hide text are dropped", () => {
  assert.equal(captionText(readCaption(markup("a\u202eb\u0007c\u2066d"))), "abcd");
});
