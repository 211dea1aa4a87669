#!/usr/bin/env node
// Un-nests made animations and looks at the pictures of lottie-web.
//
// usage: looks_test.mjs EXFLATE
import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";
import { existsSync } from "node:fs";
import { compareFrames } from "./comparison.mjs";
import { alone } from "./alone.mjs";
import { Browser, kBrowser } from "./pictures.mjs";

const kFrames = [0, 7, 15, 29];

const still = (k) => ({ a: 0, k });

/** A red square of 60 pixels in the middle of its layer's coordinates. */
function square(number, transform) {
  return {
    ddd: 0, ind: number, ty: 4, nm: `square ${number}`, sr: 1, ip: 0, op: 30, st: 0, bm: 0, ao: 0,
    ks: { o: still(100), r: still(0), p: still([100, 100, 0]), a: still([0, 0, 0]), s: still([100, 100, 100]), ...transform },
    shapes: [{
      ty: "gr", nm: "group", it: [
        { ty: "rc", d: 1, s: still([60, 60]), p: still([0, 0]), r: still(0) },
        { ty: "fl", c: still([1, 0, 0, 1]), o: still(100) },
        { ty: "tr", p: still([0, 0]), a: still([0, 0]), s: still([100, 100]), r: still(0), o: still(100) },
      ],
    }],
  };
}

/** A nest, moved and turned, that holds the layers. */
function nested(layers, nestTransform = {}) {
  const nest = {
    ddd: 0, ind: 1, ty: 0, nm: "nest", refId: "inside", sr: 1, ip: 0, op: 30, st: 0, bm: 0, ao: 0, w: 200, h: 200,
    ks: { o: still(100), r: still(20), p: still([110, 90, 0]), a: still([100, 100, 0]), s: still([80, 80, 100]), ...nestTransform },
  };
  const frame = { v: "5.7.0", fr: 30, ip: 0, op: 30, w: 200, h: 200, nm: "main", ddd: 0 };
  return { ...frame, assets: [{ id: "inside", nm: "inside", layers }], layers: [nest] };
}

/** Fine stripes, as pictures of sharp edges. */
function stripes(number, place, opacity) {
  const bars = Array.from({ length: 40 }, (_, i) => ({ ty: "rc", d: 1, s: still([2.4, 190]), p: still([4.8 * i, 95]), r: still(0) }));
  const layer = square(number, { p: still([...place, 0]), o: opacity });
  layer.shapes[0].it.splice(0, 2, ...bars, { ty: "fl", c: still([0, 0, 0, 1]), o: still(100) });
  return layer;
}

/** Two pictures that fade together in a nest, and the same by themselves. */
function fading(width, places) {
  const frame = { v: "5.7.0", fr: 30, ip: 0, op: 30, w: width, h: 800, nm: "main", ddd: 0 };
  const layers = places.map((place, i) => stripes(i + 1, place, still(100)));
  const nest = { ...square(1), ty: 0, shapes: undefined, refId: "inside", w: width, h: 800 };
  nest.ks = { ...nest.ks, o: still(80), p: still([0, 0, 0]) };
  return {
    together: { ...frame, assets: [{ id: "inside", nm: "inside", layers }], layers: [nest] },
    alone: { ...frame, assets: [], layers: places.map((place, i) => stripes(i + 1, place, still(80))) },
  };
}

function random(number) {
  const position = still([100, 100, 0]);
  position.x = "var $bm_rt;\n$bm_rt = [random(50, 150), random(50, 150)];";
  return square(number, { p: position });
}

function unnested(exflate, animation, ...options) {
  const ran = spawnSync(exflate, ["run", "-", "-o", "-", ...options], { input: JSON.stringify(animation), encoding: "utf8" });
  assert.equal(ran.status, 0, ran.stderr);
  return JSON.parse(ran.stdout);
}

/** The animation with its first layer that has that name only. */
function only(animation, name) {
  const layer = animation.layers.find((candidate) => candidate.nm === name);
  assert.ok(layer, `no layer ${name} among ${animation.layers.map((each) => each.nm)}`);
  return { ...animation, layers: [layer] };
}

async function run(browser, exflate) {
  const draw = (animation) => browser.pictures(JSON.stringify(animation), kFrames);
  const compare = async (a, b) => compareFrames(await draw(a), await draw(b));

  const tests = {
    "a nest that only moves and turns looks the same un-nested": async () => {
      const before = nested([square(1)]);
      const difference = await compare(before, unnested(exflate, before));
      assert.ok(difference.equal, JSON.stringify(difference));
      assert.equal((await compare(before, { ...before, layers: [] })).equal, false, "nothing was drawn");
    },
    "a nest that lets half of the light through looks different un-nested": async () => {
      const before = nested([square(1)], { o: still(50) });
      const difference = await compare(before, unnested(exflate, before));
      assert.ok(!difference.equal && difference.mean > 1, JSON.stringify(difference));
    },
    "pictures that fade together are as sharp as alone when they are near, and blurred when far apart": async () => {
      const near = fading(2000, [[20.3, 20.3], [220.3, 20.3]]);
      const far = fading(2000, [[20.3, 20.3], [1720.3, 380.3]]);
      const sharp = await compare(near.together, near.alone);
      assert.ok(sharp.equal, JSON.stringify(sharp));
      const blurred = await compare(far.together, far.alone);
      assert.ok(!blurred.equal, JSON.stringify(blurred));
      const kept = spawnSync(exflate, ["flatten", "-", "-o", "-"], { input: JSON.stringify(far.together), encoding: "utf8" });
      assert.equal(kept.status, 1, kept.stderr);
      assert.match(kept.stderr, /1 pre-comp left: .*opacity/);
    },
    "a composition alone looks as it does in its nest": async () => {
      const whole = { p: still([100, 100, 0]), r: still(0), s: still([100, 100, 100]) };
      const animation = nested([square(1, { p: still([60, 130, 0]) })], whole);
      const difference = await compare(animation, alone(animation, "inside"));
      assert.ok(difference.equal, JSON.stringify(difference));
    },
    "a seeded random layer looks the same in every load, and unlike its neighbour": async () => {
      const seeded = unnested(exflate, nested([random(1), random(2)]), "--fix-random");
      const [first, second] = ["square 1", "square 2"].map((name) => only(seeded, name));
      for (const { layers } of [first, second]) assert.match(layers[0].ks.p.x, /seedRandom/);
      const again = await compare(first, first);
      assert.equal(again.mean, 0, JSON.stringify(again));
      const apart = await compare(first, second);
      assert.ok(!apart.equal, JSON.stringify(apart));
    },
  };
  let failures = 0;
  for (const [name, test] of Object.entries(tests)) {
    try {
      await test();
      console.log(`ok: ${name}`);
    } catch (error) {
      ++failures;
      console.error(`FAILED: ${name}\n${error.stack}`);
    }
  }
  return failures;
}

if (!existsSync(kBrowser)) {
  console.error(`there is no ${kBrowser}: run 'tools/setup test'`);
  process.exit(1);
}
const browser = await Browser.open();
try {
  process.exitCode = (await run(browser, process.argv[2])) > 0 ? 1 : 0;
} finally {
  await browser.close();
}
