import assert from "node:assert/strict";
import { test } from "node:test";
import { decodeEntities, scanXml } from "../../src/document/xml_scan.js";

/** @param {string} source */
function scan(source) {
  const root = scanXml(source);
  assert.ok(root);
  return root;
}

test("a well-formed document is read with names, attributes in order and text", () => {
  const root = scan(`<?xml version="1.0"?><!-- x --><main a="1" b='2'><c/>hello<d>w</d></main>`);
  assert.equal(root.name, "main");
  assert.deepEqual(
    [...root.attributes],
    [
      ["a", "1"],
      ["b", "2"],
    ],
  );
  assert.deepEqual(
    root.children.map(({ name }) => name),
    ["c", "d"],
  );
  assert.equal(root.text, "hello");
  assert.equal(root.inner, "<c/>hello<d>w</d>");
});

test("a CDATA section is text as it stands, and neighbouring ones join", () => {
  const root = scan("<a><![CDATA[<b>A & B]]]]><![CDATA[></b>]]></a>");
  assert.equal(root.text, "<b>A & B]]></b>");
  assert.deepEqual(root.children, []);
});

test("no declared entity is expanded, and a document type is no content", () => {
  const root = scan(`<!DOCTYPE m [<!ENTITY x "secret"><!ELEMENT m ANY>]><m k="&x;">&x;&amp;</m>`);
  assert.equal(root.text, "&x;&");
  assert.equal(root.attributes.get("k"), "&x;");
});

test("the predefined entities and character references are decoded, odd ones are not", () => {
  assert.equal(decodeEntities("&lt;&gt;&amp;&quot;&apos;&#65;&#x1F600;"), `<>&"'A\u{1f600}`);
  assert.equal(
    decodeEntities("&nbsp; &#0; &#xD800; &#x110000; & &amp"),
    "&nbsp; &#0; &#xD800; &#x110000; & &amp",
  );
});

test("an element that is never closed ends with its parent", () => {
  const root = scan("<main><data><slide><text>one</data><after/></main>");
  assert.deepEqual(
    root.children.map(({ name }) => name),
    ["data", "after"],
  );
  assert.equal(root.children[0].children[0].children[0].text, "one");
});

test("a closing tag without an opening one is ignored, and a lonely < is text", () => {
  const root = scan("<a></x>1 < 2 & 3<b/></a>");
  assert.equal(root.text, "1 < 2 & 3");
  assert.equal(root.children.length, 1);
});

test("a document that breaks off keeps what it held", () => {
  const root = scan(`<main><data><slide Background_image="a.jpg"><text><![CDATA[half`);
  assert.equal(root.children[0].children[0].children[0].text, "half");
});

test("an attribute value may hold > and <, and may lack its quotes", () => {
  const root = scan(`<a x="1>0 <2" y=plain />`);
  assert.deepEqual(
    [...root.attributes],
    [
      ["x", "1>0 <2"],
      ["y", "plain"],
    ],
  );
});

test("a text without any element is no document", () => {
  assert.equal(scanXml("just words"), null);
  assert.equal(scanXml(""), null);
});

test("a document nested without end is read in bounded depth", () => {
  let depth = 0;
  for (let at = scanXml("<a>".repeat(5000)); at; at = at.children[0] ?? null) ++depth;
  assert.ok(depth > 10 && depth < 100, `depth ${depth}`);
});
