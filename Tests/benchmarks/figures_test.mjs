import assert from "node:assert/strict";
import test from "node:test";

import { cellsOf, growthOf, isReached, judgement, measureText } from "../../Benchmarks/figures.mjs";

const kRow = { what: "read", unit: "s", ours: [2, 4, 9], theirs: [1, 4, 3], reference: "theirs", judged: "ratio", share: 0.5, limit: 2 };

test("a ratio is the median of the rounds' ratios, and a value at the limit keeps it", () => {
  assert.deepEqual(judgement(kRow), { value: 2, low: 2, high: 3 });
  assert.equal(isReached(kRow), true);
  assert.equal(isReached({ ...kRow, limit: 1.99 }), false);
});

test("a difference is that of the two percentiles", () => {
  const row = { ...kRow, judged: "difference", share: 0.95, limit: 5 };
  assert.equal(judgement(row).value, 9 - 4);
  assert.equal(isReached(row), true);
  assert.equal(isReached({ ...row, limit: 4.9 }), false);
});

test("a figure of ours alone is judged without its reference", () => {
  const row = { ...kRow, judged: "ours", unit: "%", limit: 4 };
  assert.equal(isReached(row), true);
  assert.equal(isReached({ ...row, limit: 3.9 }), false);
  assert.equal(cellsOf({ ...row, theirs: undefined })[2], "–");
});

test("a missed limit stands out in its row", () => {
  assert.equal(cellsOf({ ...kRow, limit: 1, size: 1000, of: "captions" })[0], "read, 1,000 captions");
  assert.equal(cellsOf({ ...kRow, limit: 1 })[5], "NO");
});

test("measures come in the unit that suits them", () => {
  assert.deepEqual([2, 0.0123, 0.0000021].map((seconds) => measureText(seconds, "s")), ["2.00 s", "12.30 ms", "2.1 µs"]);
  assert.equal(measureText(2048, "KiB"), "2.0 MiB");
});

test("rows of different sizes make the growth of what they measure", () => {
  const growth = growthOf([kRow, { ...kRow, size: 10 }, { ...kRow, size: 100 }]);
  assert.deepEqual(growth.get("read").map(({ size }) => size), [10, 100]);
});
