// Runs every benchmark program of a build folder, or those named, and prints one table; the figures also go to results.json
// there: node run-all.mjs BUILD-FOLDER [NAME...]
import { execFileSync } from "node:child_process";
import { readdirSync, writeFileSync } from "node:fs";
import os from "node:os";
import path from "node:path";
import { fileURLToPath } from "node:url";

const [buildFolder, ...wanted] = process.argv.slice(2);
const programs = path.join(buildFolder, "benchmarks");
const withDisplay = path.join(path.dirname(fileURLToPath(import.meta.url)), "../Tests/support/with-display");

const milliseconds = (seconds) => `${(seconds * 1000).toFixed(3)} ms`;
const spread = ({ q1, median, q3 }) => `${milliseconds(median)} (${milliseconds(q1)}–${milliseconds(q3)})`;
const verdict = (isGood) => (isGood ? "yes" : "NO");

/** One row of the table. */
function rowOf(figure) {
  const memory = `${Math.round(figure.peakKiB / 1024)} MiB`;
  if (figure.reference === undefined)
    return [figure.what, `${figure.value} ${figure.unit}`, "–", "–", `${figure.limit} ${figure.unit}`,
      verdict(figure.value <= figure.limit), memory];
  return [figure.what, spread(figure.ours), `${figure.reference}: ${spread(figure.theirs)}`, figure.ratio.toFixed(2),
    figure.target.toFixed(2), verdict(figure.ratio <= figure.target), memory];
}

function printTable(rows) {
  const widths = rows[0].map((_, column) => Math.max(...rows.map((row) => row[column].length)));
  for (const row of rows) console.log(row.map((cell, column) => cell.padEnd(widths[column])).join("  "));
}

const names = readdirSync(programs).filter((name) => wanted.length === 0 || wanted.includes(name)).sort();
const figures = [];
for (const name of names) {
  console.error(`    ${name}`);
  const output = execFileSync(withDisplay, [path.join(programs, name)], { encoding: "utf8", stdio: ["ignore", "pipe", "inherit"] });
  for (const line of output.split("\n")) if (line.startsWith("{")) figures.push({ program: name, ...JSON.parse(line) });
}

const machine = { processor: os.cpus()[0].model, cores: os.cpus().length, memory: os.totalmem(), system: os.release() };
writeFileSync(path.join(buildFolder, "results.json"), JSON.stringify({ machine, figures }, null, 2));
printTable([["what", "ours", "reference", "ratio", "target", "reached", "peak memory"], ...figures.map(rowOf)]);
console.log(`\n${machine.processor}, ${machine.cores} cores; figures also in ${path.join(buildFolder, "results.json")}`);
