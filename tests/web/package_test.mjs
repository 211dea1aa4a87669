#!/usr/bin/env node
// The npm package as people get it: packed, installed into an empty project, its command, functions, types and worker; on this
// machine's Node.js, the oldest that it is for and the newest.
//
// usage: package_test.mjs EXFLATE TARBALL SOURCES
import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";
import { existsSync, mkdtempSync, readFileSync, rmSync, statSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { gzipSync } from "node:zlib";

const [exflate, tarball, sources] = process.argv.slice(2);
const folder = mkdtempSync(join(tmpdir(), "exflate-package-"));
process.on("exit", () => rmSync(folder, { recursive: true, force: true }));
const animation = join(sources, "examples/lift_off.json");

const nodes = [process.execPath];
for (const name of ["node-oldest", "node-newest"]) {
  const node = join(sources, "tests/web/node_modules", name, "bin/node");
  if (existsSync(node)) nodes.push(node);
  else assert.ok(process.arch !== "x64", `${node} is missing: run tools/setup web`);
}
for (const node of nodes) console.log(`Node.js ${spawnSync(node, ["--version"], { encoding: "utf8" }).stdout.trim()}`);

const at = (name) => join(folder, name);
function run(command, args, { env, ...options } = {}) {
  // npm says on standard error what it thinks of the machine.
  const surroundings = { ...process.env, npm_config_loglevel: "error", ...env };
  const ran = spawnSync(command, args, { cwd: folder, encoding: "utf8", maxBuffer: 1 << 28, env: surroundings, ...options });
  return { code: ran.status, output: ran.stdout, said: ran.stderr };
}
function succeed(command, args, options) {
  const ran = run(command, args, options);
  assert.equal(ran.code, 0, `${command} ${args.join(" ")}: ${ran.output}${ran.said}`);
  return ran;
}

writeFileSync(at("package.json"), '{"name": "empty", "private": true, "type": "module"}');
succeed("npm", ["install", "--offline", "--no-audit", "--no-fund", "--silent", tarball]);
const installed = at("node_modules/exflate");
const cases = {
  "is small, and depends on nothing"() {
    const wasm = gzipSync(readFileSync(join(installed, "exflate.wasm")), { level: 9 }).length;
    const all = statSync(tarball).size;
    console.log(`the package has ${all} bytes, exflate.wasm ${wasm} packed with gzip`);
    assert.ok(wasm <= 900_000 && all <= 950_000, "more than 900,000 bytes of the program, or 950,000 of all");
    assert.equal(JSON.parse(readFileSync(join(installed, "package.json"))).dependencies, undefined);
  },
  "its command does and says what the native one does"() {
    for (const args of [["flatten", animation, "-o", "RESULT"], ["run", "--recursive", animation, "-o", "RESULT"], ["check", animation],
      ["list", animation], ["--version"], ["--help"], ["flatten", "--help"], ["flatten", "missing.json"], ["chek"], ["run", "--no-such"], ["flatten"]]) {
      const [own, other] = ["own.json", "native.json"].map((name) => args.map((arg) => (arg === "RESULT" ? name : arg)));
      const one = run("npx", ["--no-install", "exflate", ...own]);
      const two = run(exflate, other);
      assert.deepEqual([one.code, one.output, one.said.replaceAll("own.json", "native.json")], [two.code, two.output, two.said], args.join(" "));
      if (args.includes("RESULT")) assert.deepEqual(readFileSync(at("own.json")), readFileSync(at("native.json")));
    }
  },
  "its command does it on every Node.js that it is for"() {
    succeed(exflate, ["flatten", animation, "-o", "native.json"]);
    for (const node of nodes) {
      succeed(node, [join(installed, "bin/exflate.mjs"), "flatten", animation, "-o", "own.json"]);
      assert.deepEqual(readFileSync(at("own.json")), readFileSync(at("native.json")), node);
    }
  },
  "its command starts quickly"() {
    const small = join(sources, "tests/node_modules/lottie-web/test/animations/starfish.json");
    // Seconds of the processor, for the machine may be busy; and of the clock.
    const best = (...command) => {
      const runs = Array.from({ length: 5 }, () => {
        const ran = succeed("bash", ["-c", `TIMEFORMAT="%U %S %R"; time "$@" 2>/dev/null`, "", ...command]);
        const [user, system, clock] = ran.said.trim().split(" ").map(Number);
        return [user + system, clock];
      });
      return [0, 1].map((i) => Math.min(...runs.map((one) => one[i])).toFixed(2));
    };
    const run = ["exflate", "run", small, "-o", "own.json"];
    const [through, alone, empty] = [best("npx", "--no-install", ...run), best(at("node_modules/.bin/exflate"), ...run.slice(1)), best("node", "-e", "0")];
    console.log(`run on ${statSync(small).size} bytes, seconds of the processor and of the clock: ${through.join(", ")} through npx, ` +
      `${alone.join(", ")} by itself, of which Node.js ${empty.join(", ")}`);
    assert.ok(through[0] < 2, "not even once within two seconds of the processor");
  },
  "its command reads a stream and writes one"() {
    const input = readFileSync(animation);
    const one = run("npx", ["--no-install", "exflate", "flatten", "-"], { input });
    assert.equal(one.output, run(exflate, ["flatten", "-"], { input }).output);
  },
  "its command says in one sentence what it cannot do"() {
    for (const args of [["run", "--dialog", animation], ["run", "--journal", "a.journal", animation], ["dialog", "--picture", "a.png"]]) {
      const ran = run("npx", ["--no-install", "exflate", ...args]);
      assert.ok(ran.code > 0 && ran.said.trim().split("\n").length === 1, `${args.join(" ")}: ${ran.code} ${ran.said}`);
    }
    const other = run("npx", ["--no-install", "exflate", "run", animation, "-o", "own.json"], { env: { EXFLATE_PLUGIN: "/other.so" } });
    assert.deepEqual([other.code, /^\/other.so: there is no such plug-in/.test(other.said)], [4, true], other.said);
  },
  "its command works on many files, one after another"() {
    const ran = succeed("npx", ["--no-install", "exflate", "run", "--jobs", "2", "--out-dir", "out", animation, join(sources, "tests/golden/journals/typical_request.json")]);
    assert.match(ran.said, /un-nested/);
    assert.ok(existsSync(at("out/lift_off.json")));
  },
  "its command makes the report's page, player inside"() {
    assert.ok(run("npx", ["--no-install", "exflate", "report", animation, "-o", "page.html"]).code <= 1);
    assert.match(readFileSync(at("page.html"), "utf8"), /lottie/);
    assert.match(succeed("npx", ["--no-install", "exflate", "report", "--flatten", animation, "-o", "page.html"]).said, /0 pre-comps left, look kept/);
  },
  "its functions give results, verdicts and reasons, its errors are told by class"() {
    writeFileSync(at("api.mjs"), `
      import assert from "node:assert/strict";
      import { readFileSync } from "node:fs";
      import { gzipSync, gunzipSync } from "node:zlib";
      import { check, flatten, list, run, InputError, UsageError, LookChangesError, ExflateError } from "exflate";
      const bytes = readFileSync(${JSON.stringify(animation)});
      const flat = await flatten(bytes.toString());
      assert.equal(flat.text, readFileSync("native-flat.json", "utf8"));
      assert.ok(flat.code <= 1 && flat.animations[0].nests.length > 0);
      assert.ok(flat.animations[0].nests.every((nest) => ["flat", "kept"].includes(nest.becomes)));
      const packed = await flatten(gzipSync(bytes));
      assert.equal(packed.text, null);
      assert.equal(gunzipSync(packed.bytes).toString(), flat.text);
      assert.ok((await run(bytes, { recursive: true, prefix: "-x" })).text.includes("-x_"));
      const judged = await check(bytes);
      assert.ok(["exact", "equal to the eye", "changes"].includes(judged.verdict) && judged.animations[0].nests.length > 0);
      assert.ok((await list(bytes)).animations[0].compositions[0].layers.length > 0);
      await assert.rejects(flatten("{}"), (error) => error instanceof InputError && error instanceof ExflateError && error.code === 3 && error.message.length > 10);
      await assert.rejects(run(bytes, { noSuch: true }), UsageError);
      await assert.rejects(run(bytes, { layer: "no such" }), UsageError);
    `);
    run(exflate, ["flatten", animation, "-o", "native-flat.json"]);
    for (const node of nodes) succeed(node, ["api.mjs"]);
  },
  "its worker works beside the program, and ends in the middle"() {
    writeFileSync(at("worker.mjs"), `
      import assert from "node:assert/strict";
      import { readFileSync } from "node:fs";
      import { ExflateWorker } from "exflate/worker";
      import { InputError, TimeLimitError } from "exflate";
      const bytes = readFileSync(${JSON.stringify(animation)});
      const worker = new ExflateWorker();
      const two = await Promise.all([worker.flatten(bytes), worker.list(bytes)]);
      assert.ok(two[0].bytes.length > 100 && two[1].animations.length === 1);
      await assert.rejects(worker.check("no animation"), InputError);
      const slow = readFileSync(${JSON.stringify(join(sources, "tests/node_modules/lottie-web/test/animations/bodymovin.json"))});
      await assert.rejects(worker.check(slow, {}, { timeLimit: 30 }), TimeLimitError);
      const stop = new AbortController();
      setTimeout(() => stop.abort(), 30);
      await assert.rejects(worker.check(slow, {}, { signal: stop.signal }), { name: "AbortError" });
      setTimeout(() => worker.cancel(), 30);
      await assert.rejects(worker.check(slow), { name: "AbortError" });
      assert.ok((await worker.list(bytes)).animations.length === 1, "goes on after it");
      worker.close();
    `);
    for (const node of nodes) succeed(node, ["worker.mjs"]);
  },
  "its types are what it gives"() {
    const tsc = join(sources, "tests/node_modules/typescript/bin/tsc");
    assert.ok(existsSync(tsc), "typescript is missing: run tools/setup web");
    writeFileSync(at("types.mts"), `
      import { check, flatten, init, list, run, InputError, type Flattened, type Verdict } from "exflate";
      import { ExflateWorker } from "exflate/worker";
      const flat: Flattened = await flatten("{}", { keepUnused: true });
      const text: string | null = flat.text;
      const kept: string[] = (flat.animations ?? []).flatMap((animation) => animation.nests).flatMap((nest) => nest.kept_because ?? []);
      const verdict: Verdict = (await check(new Uint8Array())).verdict;
      await run("", { layer: ["a"], maxGrowth: 3 });
      const rate: number = (await list("")).animations[0].compositions[0].frame_rate;
      await init(new URL("https://example.com/exflate.wasm"));
      const worker = new ExflateWorker({ timeLimit: 5 });
      await worker.flatten("", {}, { signal: new AbortController().signal });
      const code: number = new InputError("").code;
      // @ts-expect-error: no such option
      await flatten("", { recursive: true });
      export { text, kept, verdict, rate, code };
    `);
    for (const resolution of [["--module", "nodenext"], ["--module", "esnext", "--moduleResolution", "bundler"]]) {
      succeed(process.execPath, [tsc, "--noEmit", "--strict", "--target", "es2022", "--lib", "es2022,dom", ...resolution, "types.mts"]);
    }
  },
};
for (const [name, work] of Object.entries(cases)) {
  await work();
  console.log(`ok: ${name}`);
}
