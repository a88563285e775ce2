import assert from "node:assert/strict";
import { test } from "node:test";
import { isMovie, mediaAddress } from "../../src/document/media.js";

test("both places of media files are found", () => {
  assert.equal(mediaAddress("a.jpg"), "a.jpg");
  assert.equal(mediaAddress("intro_asset/a.jpg"), "intro_asset/a.jpg");
});

test("every character of a name is taken as it stands", () => {
  assert.equal(mediaAddress("50% #1?.jpg"), "50%25%20%231%3F.jpg");
  assert.equal(
    mediaAddress("intro_asset/Grüße & \u{1f600}.png"),
    "intro_asset/Gr%C3%BC%C3%9Fe%20%26%20%F0%9F%98%80.png",
  );
});

test("a name cannot leave the folder or name another host", () => {
  assert.equal(mediaAddress("../secret.jpg"), "");
  assert.equal(mediaAddress("a/../../b.jpg"), "");
  assert.equal(mediaAddress("http://example.org/x.jpg"), "http%3A/example.org/x.jpg");
  assert.equal(mediaAddress("//example.org/x.jpg"), "example.org/x.jpg");
  assert.equal(mediaAddress("javascript:alert(1)"), "javascript%3Aalert(1)");
});

test("movies are told by their ending", () => {
  assert.deepEqual(["a.swf", "b.SWF", "c.swf.jpg", "swf"].map(isMovie), [true, true, false, false]);
});
