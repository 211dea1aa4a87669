#!/usr/bin/env node
// Makes random animations flat and checks that nothing of what is said to look the same looks different in a browser.
//
// usage: random_looks.mjs EXFLATE FOLDER
//
// FOLDER takes files that failed. Environment: EXFLATE_RANDOM_FILES is how many animations (default 12),
// EXFLATE_RANDOM_SEED the first seed (default 1, so that a failure of the tests is never chance). Both are printed, and a
// seed makes the same animation again.
import { mkdirSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import os from "node:os";
import path from "node:path";
import { fileURLToPath } from "node:url";
import { compareFrames } from "./comparison.mjs";
import { ascending, frameCount } from "./frames.mjs";
import { output } from "./measure.mjs";
import { Browser } from "./pictures.mjs";

const kMaker = fileURLToPath(new URL("../random_files/vivid_animations.py", import.meta.url));
const kPictures = 12; // of each animation

const [exflate, folder] = process.argv.slice(2);
const count = Number(process.env.EXFLATE_RANDOM_FILES ?? 12);
const first = Number(process.env.EXFLATE_RANDOM_SEED ?? 1);

async function looksTheSame(browser, before, after) {
  if (before === after) return null;
  const length = frameCount(JSON.parse(before));
  const spread = Array.from({ length: kPictures }, (_, i) => Math.round((i * (length - 1)) / (kPictures - 1)));
  const frames = ascending(spread, length);
  return compareFrames(await browser.pictures(before, frames), await browser.pictures(after, frames));
}

console.log(`EXFLATE_RANDOM_FILES=${count} EXFLATE_RANDOM_SEED=${first}`);
const scratch = mkdtempSync(path.join(os.tmpdir(), "random-looks-"));
const browser = await Browser.open();
let failures = 0, drawn = 0, flat = 0, kept = 0;
try {
  for (let seed = first; seed < first + count; ++seed) {
    const file = path.join(scratch, "before.json"), result = path.join(scratch, "after.json");
    writeFileSync(file, output("python3", [kMaker, String(seed)], [0]));
    output(exflate, ["flatten", file, "-o", result], [0, 1]);
    const { nests } = JSON.parse(output(exflate, ["check", "--flatten", "--format", "json", file], [0, 1])).files[0];
    flat += nests.filter((nest) => nest.becomes === "flat").length;
    kept += nests.filter((nest) => nest.becomes === "kept").length;
    const compared = await looksTheSame(browser, readFileSync(file, "utf8"), readFileSync(result, "utf8"));
    if (compared === null) continue;
    ++drawn;
    if (compared.equal) continue;
    ++failures;
    mkdirSync(folder, { recursive: true });
    const failed = path.join(folder, `looks_${seed}.json`);
    writeFileSync(failed, readFileSync(file));
    console.error(`FAILED seed ${seed}: frame ${compared.worstFrame}: mean ${compared.mean.toFixed(3)}, ` +
                  `${(100 * compared.share).toFixed(2)} % of pixels, SSIM ${compared.ssim.toFixed(4)}\n  ${failed}`);
  }
} finally {
  await browser.close();
  rmSync(scratch, { recursive: true });
}
console.log(`${count} animations, ${drawn} drawn before and after, ${flat} nests flat, ${kept} kept, ${failures} failures`);
process.exitCode = failures > 0 || drawn === 0 ? 1 : 0;
