// Writes the tables of docs/performance.md, between its two marks, from results.json: node write-document.mjs RESULTS DOCUMENT
import { readFileSync, writeFileSync } from "node:fs";

import { cellsOf, growthOf, isReached, judgement, kColumns, machineText, measureText, quantile } from "./figures.mjs";

const [resultsFile, documentFile] = process.argv.slice(2);
const kBegin = "<!-- figures: written by ./bench --document -->";
const kEnd = "<!-- end of figures -->";
/** Of what grows, the size that stands in the first table. */
const kTypicalSize = 10_000;
const kSizes = [10, 100, 1_000, 10_000, 100_000];

const table = (rows) =>
  rows.map((cells, index) => `| ${cells.join(" | ")} |${index === 0 ? `\n|${" --- |".repeat(cells.length)}` : ""}`).join("\n");

function fail(message) {
  console.error(`error: ${message}`);
  process.exit(1);
}

function growthCell(row) {
  if (!row) return "–";
  const text = measureText(quantile(row.ours, row.share), row.unit);
  const beside = row.judged === "ratio" ? `, ${judgement(row).value.toFixed(2)}` : "";
  return text + beside + (isReached(row) ? "" : " (missed)");
}

function figures({ machine, busyBefore, isQuick, programs, runs }) {
  if (isQuick) fail("these are the figures of a quick run");
  const missing = programs.filter((name) => !runs.some(({ program }) => program === name));
  if (missing.length > 0) fail(`nothing was measured by ${missing.join(", ")}`);
  const rows = runs.flatMap((run) => run.rows);
  const growth = growthOf(rows);
  const main = rows.filter((row) => !row.size || row.size === kTypicalSize || growth.get(row.what).length === 1);
  const growing = [...growth].filter(([, ofIt]) => ofIt.length > 1).map(([what, ofIt]) =>
    [`${what} (${ofIt[0].of})`, ...kSizes.map((size) => growthCell(ofIt.find((row) => row.size === size)))]);
  const dates = runs.map(({ date }) => date.slice(0, 10)).sort();
  return [
    `Measured on ${dates.at(-1)} on: ${machineText(machine)}. Busy before: ${busyBefore.toFixed(1)} processors.`,
    `${rows.filter(isReached).length} of ${rows.length} figures keep their limits.`,
    table([kColumns, ...main.map(cellsOf)]),
    "How the cost grows: our median, and the ratio to the reference of the same size.",
    table([["what", ...kSizes.map((size) => size.toLocaleString("en-US"))], ...growing]),
  ].join("\n\n");
}

const document = readFileSync(documentFile, "utf8");
const [begin, end] = [document.indexOf(kBegin), document.indexOf(kEnd)];
if (begin < 0 || end < begin) fail(`${documentFile} lacks its marks`);
const text = figures(JSON.parse(readFileSync(resultsFile, "utf8")));
writeFileSync(documentFile, `${document.slice(0, begin + kBegin.length)}\n\n${text}\n\n${document.slice(end)}`);
