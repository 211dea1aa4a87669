#!/usr/bin/env node
// Says how far pairs of animations differ as lottie-web draws them.
//
// usage: compare_looks.mjs BEFORE AFTER [BEFORE AFTER]...
//
// Prints a JSON array with one object per pair: before, after, frames (drawn of each), equal (whether all are within the
// limits), worstFrame, and at that frame mean, share (of pixels more than 8 apart) and ssim.
import { readFileSync } from "node:fs";
import { compareFrames } from "./comparison.mjs";
import { frameCount, spread } from "./frames.mjs";
import { Browser } from "./pictures.mjs";

async function comparePair(browser, before, after) {
  const texts = [before, after].map((file) => readFileSync(file, "utf8"));
  const frames = spread(Math.min(...texts.map((text) => frameCount(JSON.parse(text)))));
  const [old, now] = [await browser.pictures(texts[0], frames), await browser.pictures(texts[1], frames)];
  return { before, after, ...compareFrames(old, now) };
}

const files = process.argv.slice(2);
if (files.length === 0 || files.length % 2 !== 0) {
  console.error("usage: compare_looks.mjs BEFORE AFTER [BEFORE AFTER]...");
  process.exit(2);
}
const browser = await Browser.open();
try {
  const pairs = [];
  for (let i = 0; i < files.length; i += 2) pairs.push(await comparePair(browser, files[i], files[i + 1]));
  console.log(JSON.stringify(pairs, null, 2));
} finally {
  await browser.close();
}
