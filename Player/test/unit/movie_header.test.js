import assert from "node:assert/strict";
import { test } from "node:test";
import { deflateSync } from "node:zlib";
import { movieSeconds } from "../../src/movie/header.js";
import { solidMovie } from "../support/movie.js";

/** @param {Buffer} bytes @returns {ArrayBuffer} */
function buffer(bytes) {
  return new Uint8Array(bytes).buffer;
}

/** @param {Buffer} movie */
function packed(movie) {
  const head = Buffer.from(movie.subarray(0, 8));
  head[0] = 0x43;
  return Buffer.concat([head, deflateSync(movie.subarray(8))]);
}

/** A movie of two frames, twelve a second, made one of so many frames. @param {number} frames */
function movie(frames) {
  const bytes = solidMovie([1, 2, 3]);
  bytes.writeUInt16LE(frames, 8 + 9 + 2);
  return bytes;
}

test("a movie lasts as many seconds as its frames take", async () => {
  assert.equal(await movieSeconds(buffer(movie(120))), 10);
});

test("a packed movie's header is read too", async () => {
  assert.equal(await movieSeconds(buffer(packed(movie(60)))), 5);
});

test("a still movie, an endless one, and what is no movie have sensible lengths", async () => {
  assert.equal(await movieSeconds(buffer(movie(1))), 0);
  assert.equal(await movieSeconds(buffer(movie(65535))), 300);
  assert.equal(await movieSeconds(buffer(Buffer.from("CWS\x08abcdefghijkl"))), 0);
  assert.equal(await movieSeconds(buffer(movie(9).subarray(0, 12))), 0);
  assert.equal(await movieSeconds(buffer(Buffer.from("<html>"))), 0);
});
