// Runs every benchmark program of a build folder, or those named, and prints one table; the samples also go to results.json
// there: node run-all.mjs BUILD-FOLDER [--quick] [--keep] [NAME...]
//
//   --quick  few rounds of small sizes, to see that the benchmarks work; their figures say nothing
//   --keep   keep in results.json what is there of the programs that are not run
//
// Exit status: 0 all limits kept, 1 a limit was missed, 2 a program failed or there is none of that name.
import { execFileSync } from "node:child_process";
import { existsSync, readFileSync, readdirSync, writeFileSync } from "node:fs";
import os from "node:os";
import path from "node:path";
import { fileURLToPath } from "node:url";

import { cellsOf, isReached, kColumns, machineText, titleOf } from "./figures.mjs";

const [buildFolder, ...rest] = process.argv.slice(2);
const options = new Set(rest.filter((word) => word.startsWith("--")));
const wanted = rest.filter((word) => !word.startsWith("--"));
const programFolder = path.join(buildFolder, "benchmarks");
const resultsFile = path.join(buildFolder, "results.json");
/** Processors that others may keep busy before the figures are noise. */
const kMostBusy = 0.2;
const withDisplay = path.join(path.dirname(fileURLToPath(import.meta.url)), "../Tests/support/with-display");

function systemName() {
  const line = readFileSync("/etc/os-release", "utf8").match(/^PRETTY_NAME="?([^"\n]*)/m);
  return line ? line[1] : os.type();
}

/** The kind of the file system that holds the temporary folder. */
function fileSystem() {
  const mounts = readFileSync("/proc/mounts", "utf8").split("\n").map((line) => line.split(" "));
  const holds = (place) => place === "/" || `${os.tmpdir()}/`.startsWith(`${place}/`);
  const [, , kind] = mounts.filter(([, place]) => place && holds(place))
    .sort(([, one], [, other]) => one.length - other.length).at(-1);
  return kind;
}

const machine = {
  processor: os.cpus()[0].model,
  cores: os.cpus().length,
  memory: os.totalmem(),
  system: systemName(),
  kernel: os.release().match(/^[\d.]+/)[0].replace(/\.$/, ""),
  fileSystem: fileSystem(),
};

/** How many processors are busy, seen for a second; the load would still tell of the build. */
async function busyProcessors() {
  const idleTimes = () => os.cpus().map(({ times }) => times.idle);
  const before = idleTimes();
  await new Promise((resolve) => setTimeout(resolve, 1000));
  return idleTimes().reduce((busy, idle, each) => busy + Math.max(0, 1 - (idle - before[each]) / 1000), 0);
}

/** Runs a program and answers what it measured; null when it failed. */
function run(name) {
  console.error(`    ${name}`);
  const date = new Date().toISOString();
  const env = options.has("--quick") ? { ...process.env, VIREONIX_BENCH_QUICK: "1" } : process.env;
  try {
    const output = execFileSync(withDisplay, [path.join(programFolder, name)],
      { encoding: "utf8", env, stdio: ["ignore", "pipe", "inherit"], maxBuffer: 2 ** 26 });
    const rows = output.split("\n").filter((line) => line.startsWith("{")).map((line) => JSON.parse(line));
    return { program: name, date, rows };
  } catch (error) {
    console.error(`error: ${name}: ${error.message}`);
    return null;
  }
}

function printTable(rows) {
  const widths = rows[0].map((_, column) => Math.max(...rows.map((row) => row[column].length)));
  for (const row of rows) console.log(row.map((cell, column) => cell.padEnd(widths[column])).join("  ").trimEnd());
}

/** What an earlier run on this machine has of other programs. */
function kept(names) {
  if (!options.has("--keep") || !existsSync(resultsFile)) return [];
  const earlier = JSON.parse(readFileSync(resultsFile, "utf8"));
  if (JSON.stringify(earlier.machine) !== JSON.stringify(machine)) return [];
  return earlier.runs.filter(({ program }) => !names.includes(program));
}

const programs = readdirSync(programFolder).sort();
const unknown = wanted.filter((name) => !programs.includes(name));
if (unknown.length > 0) {
  console.error(`error: no benchmark ${unknown.join(", ")}; there are: ${programs.join(", ")}`);
  process.exit(2);
}
const names = programs.filter((name) => wanted.length === 0 || wanted.includes(name));
const busyBefore = await busyProcessors();
if (busyBefore > kMostBusy) console.error(`    The machine is busy (${busyBefore.toFixed(1)} processors): the figures will be noise.`);

const done = names.map(run);
const runs = done.filter((one) => one !== null);
const all = [...kept(names), ...runs].sort((one, other) => one.program.localeCompare(other.program));
writeFileSync(resultsFile, JSON.stringify({ machine, busyBefore, isQuick: options.has("--quick"), programs, runs: all }, null, 1));

const rows = runs.flatMap((one) => one.rows);
printTable([kColumns, ...rows.map(cellsOf)]);
console.log(`\n${machineText(machine)}\nReferences ran in the same minutes, alternating with ours; in brackets the quartiles. Samples: ${resultsFile}`);
const missed = rows.filter((row) => !isReached(row));
if (missed.length > 0) console.log(`Limits missed: ${missed.map(titleOf).join("; ")}`);
process.exitCode = runs.length < done.length ? 2 : missed.length > 0 ? 1 : 0;
