#!/usr/bin/env node
// The native command and the one as WebAssembly give the same bytes, sentences and exit codes: all animations of the tests, of the
// golden journals, and random ones, plain and packed.
//
// The warm program may take three times as long as the native one, processes and all.
//
// usage: same_bytes_test.mjs EXFLATE PACKAGE SOURCES
// Environment: EXFLATE_RANDOM_FILES is how many random animations (default 25), EXFLATE_RANDOM_SEED repeats.
import { spawnSync } from "node:child_process";
import { cpSync, mkdirSync, mkdtempSync, readFileSync, readdirSync, rmSync } from "node:fs";
import { tmpdir } from "node:os";
import { basename, join } from "node:path";
import { pathToFileURL } from "node:url";

const [exflate, packageFolder, sources] = process.argv.slice(2);
const { runProgram } = await import(pathToFileURL(join(packageFolder, "src/program.mjs")));
const { nodeFiles } = await import(pathToFileURL(join(packageFolder, "src/node_files.mjs")));
const { memoryStreams } = await import(pathToFileURL(join(packageFolder, "src/memory_files.mjs")));
const module = new WebAssembly.Module(readFileSync(join(packageFolder, "exflate.wasm")));
const environment = { PATH: process.env.PATH, EXFLATE_PLUGIN: process.env.EXFLATE_PLUGIN ?? "" };

const folder = mkdtempSync(join(tmpdir(), "exflate-same-bytes-"));
process.on("exit", () => rmSync(folder, { recursive: true, force: true }));
for (const side of ["native", "web"]) mkdirSync(join(folder, side));
process.chdir(join(folder, "web"));

const count = process.env.EXFLATE_RANDOM_FILES ?? "25";
const seed = process.env.EXFLATE_RANDOM_SEED ?? String(Date.now() % 1e9);
const made = spawnSync("python3", [join(import.meta.dirname ?? new URL(".", import.meta.url).pathname, "make_animations.py"), folder, count, seed], { encoding: "utf8" });
if (made.status !== 0) throw new Error(made.stderr);
console.log(made.stdout.trim());
for (const from of ["tests/node_modules/lottie-web/test/animations", "tests/golden/journals", "examples"]) {
  for (const name of readdirSync(join(sources, from))) if (name.endsWith(".json")) cpSync(join(sources, from, name), join(folder, name));
}
const files = readdirSync(folder).filter((name) => /\.(json|lottie|tgs)$/.test(name)).map((name) => `../${name}`);

const times = { native: 0, web: 0 };
function timed(side, work) {
  const start = performance.now();
  const result = work();
  times[side] += performance.now() - start;
  return result;
}

function native(args) {
  const ran = spawnSync(exflate, args, { cwd: join(folder, "native"), env: environment, maxBuffer: 1 << 30 });
  return { code: ran.status, output: ran.stdout, said: ran.stderr.toString() };
}

function web(args) {
  const streams = memoryStreams();
  const code = runProgram(module, { args: ["exflate", ...args], environment, programFile: join(packageFolder, "bin/exflate.mjs"), files: nodeFiles, streams });
  return { code, output: Buffer.from(streams.output()), said: streams.errors() };
}

const kSlowest = 3;

const differences = [];
let comparisons = 0;
function compare(what, one, other) {
  comparisons += 1;
  const same = one.code === other.code && one.output.equals(other.output) && one.said === other.said;
  if (!same) differences.push(`${what}: exit codes ${one.code} and ${other.code}, ${one.output.length} and ${other.output.length} bytes`);
}

web(["check", files[0]]); // warm from here on

// Many files at once, for a process costs more than most of them.
const kBatch = 40;
for (const command of [["run"], ["run", "--recursive", "--delete-source"], ["flatten"]]) {
  for (let at = 0; at < files.length; at += kBatch) {
    const batch = files.slice(at, at + kBatch);
    const args = [...command, "--out-dir", "out", ...batch];
    compare(args.join(" "), timed("native", () => native(args)), timed("web", () => web(args)));
    for (const file of batch) {
      const [one, other] = ["native", "web"].map((side) => {
        const result = join(folder, side, "out", basename(file));
        return nodeFiles.kind(result) === "file" ? readFileSync(result) : Buffer.from("no result");
      });
      compare(`${command.join(" ")} ${file}`, { code: 0, output: one, said: "" }, { code: 0, output: other, said: "" });
    }
    for (const side of ["native", "web"]) rmSync(join(folder, side, "out"), { recursive: true, force: true });
  }
}
for (let at = 0; at < files.length; at += kBatch) {
  const args = ["check", "--format", "json", ...files.slice(at, at + kBatch)];
  compare(args.join(" "), timed("native", () => native(args)), timed("web", () => web(args)));
}
for (const file of files) {
  const args = ["list", "--json", file];
  compare(args.join(" "), timed("native", () => native(args)), timed("web", () => web(args)));
}

console.log(`${files.length} files, ${comparisons} comparisons, ${differences.length} differences; native ${(times.native / 1000).toFixed(1)} s, WebAssembly ${(times.web / 1000).toFixed(1)} s`);
for (const difference of differences.slice(0, 20)) console.error(difference.slice(0, 400));
const ratio = times.web / times.native;
if (ratio > kSlowest) console.error(`WebAssembly takes ${ratio.toFixed(1)} times as long, more than ${kSlowest}`);
process.exitCode = differences.length || ratio > kSlowest ? 1 : 0;
