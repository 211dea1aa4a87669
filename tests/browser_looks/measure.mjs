// What un-nesting each nest of a file by itself does: the verdict of `exflate check`, and the pictures of two renderers.
import { spawnSync } from "node:child_process";
import { createHash } from "node:crypto";
import { existsSync, readFileSync, writeFileSync } from "node:fs";
import path from "node:path";
import { alone } from "./alone.mjs";
import { compareFrames } from "./comparison.mjs";
import { ascending, frameCount, spread } from "./frames.mjs";

const kMostBytes = 1 << 28;

/** @returns standard output; the command must end with one of the codes. */
export function output(command, args, codes) {
  const ran = spawnSync(command, args, { encoding: "utf8", maxBuffer: kMostBytes });
  if (ran.error) throw ran.error;
  if (!codes.includes(ran.status)) throw new Error(`${command} ${args.join(" ")}: ${ran.stderr || ran.status}`);
  return ran.stdout;
}

export function selection(nest) {
  return [...(nest.composition === null ? [] : ["--comp", nest.composition]), "--layer", `#${nest.number}`];
}

/** Frames of the composition that the verdict or the other renderer's pictures name. */
function namedFrames(nest) {
  const frames = nest.reasons.filter((reason) => "frame" in reason).map((reason) => reason.frame);
  if (nest.pictures) frames.push(nest.pictures.worst_frame);
  return frames;
}

/** One composition before the run; its pictures are drawn once, when they are first needed. */
export class Composition {
  constructor(browser, animation, nests) {
    this.browser = browser;
    const one = alone(animation, nests[0].composition);
    const count = frameCount(one);
    const named = nests.flatMap(namedFrames).map((frame) => Math.round(frame - one.ip));
    this.frames = ascending([...spread(count), ...named], count);
    this.before = JSON.stringify(one);
  }

  async compare(after) {
    this.old ??= await this.browser.pictures(this.before, this.frames);
    return compareFrames(this.old, await this.browser.pictures(after, this.frames));
  }
}

/** Comparisons made before, one file each in a folder; without a folder none is kept. */
export class Kept {
  constructor(folder) {
    this.folder = folder;
  }

  async get(composition, after) {
    if (!this.folder) return composition.compare(after);
    const key = createHash("sha256").update(JSON.stringify([composition.frames, composition.before, after]));
    const file = path.join(this.folder, `${key.digest("hex")}.json`);
    if (!existsSync(file)) writeFileSync(file, JSON.stringify(await composition.compare(after)));
    return JSON.parse(readFileSync(file, "utf8"));
  }
}

/**
 * @param folder where comparisons are kept for the next time; empty: nowhere
 * @returns the nests as `exflate check --prove` tells them, with `lottieWeb`: compareFrames() of the nest's composition
 */
export async function measure(browser, exflate, file, folder) {
  const checked = JSON.parse(output(exflate, ["check", "--prove", "--format", "json", file], [0, 1])).files[0];
  const animation = JSON.parse(readFileSync(file, "utf8"));
  const kept = new Kept(folder);
  const nests = [];
  for (const id of new Set(checked.nests.map((nest) => nest.composition))) {
    const siblings = checked.nests.filter((nest) => nest.composition === id);
    const composition = new Composition(browser, animation, siblings);
    for (const nest of siblings) {
      const after = JSON.parse(output(exflate, ["run", file, ...selection(nest), "-o", "-"], [0]));
      nests.push({ ...nest, lottieWeb: await kept.get(composition, JSON.stringify(alone(after, id))) });
    }
  }
  return nests;
}
