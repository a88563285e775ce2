import assert from "node:assert/strict";
import { readFile } from "node:fs/promises";
import { test } from "node:test";
import { captionText } from "../../src/document/caption.js";
import { readSliderDocument } from "../../src/document/slider_document.js";

const template = await readFile(
  new URL("../../../Resources/data/intro_asset/data.xml", import.meta.url),
  "utf8",
);
const kStyles = [
  "Fade",
  "Slide",
  "Zoom",
  "Rotate",
  "Bounce",
  "Blur",
  "Typewriter",
  "Wave",
  "Flip",
  "None",
];

/** @param {string} source */
function read(source) {
  const slider = readSliderDocument(source, template);
  assert.ok(slider);
  return slider.slides;
}

/** @param {string} attributes @param {string} [definitions] */
function readOne(attributes, definitions = "") {
  const styles = `<define_animation_Style>${definitions}</define_animation_Style>`;
  const markup = '<b><font size="24" color="#FF0000">x</font></b>';
  const text = `<text ${attributes}><text><![CDATA[${markup}]]></text></text>`;
  return read(
    `<main>${styles}<data><slide Background_image="a.jpg">${text}</slide></data></main>`,
  )[0].captions[0];
}

test("the template document shows one slide with one caption", () => {
  const slides = read(template);
  assert.equal(slides.length, 1);
  assert.equal(slides[0].media, "intro_asset/welcome.jpg");
  assert.deepEqual(
    slides[0].captions.map(({ runs }) => captionText(runs)),
    ["Welcome"],
  );
});

test("the template defines ten styles of which no two are alike", () => {
  const looks = kStyles.map((name) => {
    const { style } = readOne(`set_animation_style="${name}"`);
    assert.equal(style.name, name);
    return JSON.stringify({ ...style, name: "" });
  });
  assert.equal(new Set(looks).size, kStyles.length);
});

test("the template holds nothing but elements in its styles and slides", () => {
  assert.doesNotMatch(template, />\s+<(?!main)/);
  assert.doesNotMatch(template, /<!--/);
});

test("every edited value is read", () => {
  const caption = readOne(
    'set_animation_style="Zoom" Align="TR" In_Time="3" Stay_Time="7" Text_Align="2" ' +
      'Text_Animation_LetterByLetter="1" Animation_Start_Direction="2"',
  );
  assert.equal(caption.style.name, "Zoom");
  assert.equal(caption.anchor, "TR");
  assert.equal(caption.inTime, 3);
  assert.equal(caption.stayTime, 7);
  assert.equal(caption.textAlign, "right");
  assert.equal(caption.unit, "letter");
  assert.equal(caption.direction.name, "top");
});

test("missing and odd values are replaced by something visible", () => {
  for (const odd of [
    "",
    'Align="XX" In_Time="-5" Stay_Time="zz" Text_Align="-1" Animation_Start_Direction="99"',
  ]) {
    const { anchor, inTime, stayTime, textAlign, unit, direction, style } = readOne(odd);
    assert.deepEqual([anchor, inTime, stayTime, textAlign, unit], ["C", 0, 0, "left", "caption"]);
    assert.deepEqual([direction.name, style.opacity, style.duration > 0], ["left", 0, true]);
  }
});

test("a definition of the document overrides the shipped one and leaves the rest to it", () => {
  const { style } = readOne(
    'set_animation_style="Slide"',
    '<x Name="Slide" Move="55" Ease="evil()"/>',
  );
  assert.equal(style.move, 55);
  assert.equal(style.ease, "outCubic");
  assert.equal(style.duration, readOne('set_animation_style="Slide"').style.duration);
});

test("a new style of the document is known, its numbers in bounds", () => {
  const { style } = readOne(
    'set_animation_style="Mine"',
    '<x Name="Mine" Scale="99999999" Duration="-1" Opacity="x"/>',
  );
  assert.deepEqual([style.scale, style.duration, style.opacity], [1000, 0, 0]);
});

test("the last of several slide containers counts, and other elements are skipped", () => {
  const slides = read(
    '<other><data><slide Background_image="no.jpg"/></data>' +
      '<data><x/><slide Background_image=" b.jpg"/></data></other>',
  );
  assert.deepEqual(slides, [{ media: "b.jpg", captions: [] }]);
});

test("a caption whose markup is not in a CDATA section is read all the same", () => {
  const source =
    '<main><data><slide><text><text><b><font size="30" color="#0000FF">blue</font></b>' +
    "</text></text></slide></data></main>";
  const [run] = read(source)[0].captions[0].runs;
  assert.deepEqual([run.text, run.size, run.color], ["blue", 30, "#0000ff"]);
});

test("a text that is no document is none", () => {
  assert.equal(readSliderDocument("404 not found", template), null);
});
