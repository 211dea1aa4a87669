#!/usr/bin/env node
// Works the page of `exflate report` in a browser, by keyboard and without a network.
//
// usage: report_page_test.mjs EXFLATE [PICTURE FOLDER]
import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";
import { existsSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { createServer } from "node:http";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { pathToFileURL } from "node:url";

const kBrowser = "/usr/bin/chromium";
const kArguments = ["--no-sandbox", "--disable-gpu", "--force-color-profile=srgb", "--disable-quic", "--no-first-run",
  "--disable-background-networking", "--disable-component-update", "--disable-sync"];

function stop(sentence) {
  console.error(sentence);
  process.exit(1);
}

const { chromium } = await import("playwright-core").catch(() => stop("playwright-core is missing: run tools/setup test"));
if (!existsSync(kBrowser)) stop(`${kBrowser} is missing: run tools/setup test`);
const [exflate, pictureFolder] = process.argv.slice(2);
const folder = mkdtempSync(join(tmpdir(), "exflate-report-"));

// ---- animations

const still = (k) => ({ a: 0, k });
const transform = (x, y) => ({ o: still(100), r: still(0), p: still([x, y, 0]), a: still([0, 0, 0]), s: still([100, 100, 100]) });
const layer = (ind, ty, nm, more) => ({ ddd: 0, ind, ty, nm, sr: 1, ks: transform(100, 100), ao: 0, ip: 0, op: 30, st: 0, bm: 0, ...more });
const square = (ind, nm, size, more) => layer(ind, 4, nm, {
  shapes: [
    { ty: "rc", d: 1, s: still([size, size]), p: still([0, 0]), r: still(0) },
    { ty: "fl", c: still([0.8, 0.1, 0.1, 1]), o: still(100) },
  ],
  ...more,
});
const moving = { ...transform(0, 0), p: { a: 1, k: [{ t: 0, s: [60, 100, 0], o: { x: 0.3, y: 0 }, i: { x: 0.7, y: 1 } }, { t: 29, s: [140, 100, 0] }] } };
const animation = (inner, nest = {}) => ({
  v: "5.7.0", fr: 30, ip: 0, op: 30, w: 200, h: 200, nm: "Main", ddd: 0,
  assets: [{ id: "inside", nm: "Inside", layers: inner }],
  layers: [layer(1, 0, "Nest", { refId: "inside", w: 200, h: 200, ks: { ...transform(100, 100), a: still([100, 100, 0]) }, ...nest })],
});

// The page for the animation, and its bytes beyond those of the animation itself.
function makePage(name, content) {
  const file = join(folder, `${name}.json`);
  const page = join(folder, `${name}.html`);
  writeFileSync(file, JSON.stringify(content));
  const ran = spawnSync(exflate, ["report", file, "-o", page], { encoding: "utf8" });
  assert.ok(ran.status <= 1, ran.stderr);
  const text = readFileSync(page, "utf8");
  const animations = ["before", "after"].map((id) => text.split(`id="${id}-animation">`)[1].split("</script>")[0]);
  return { status: ran.status, url: pathToFileURL(page).href, extra: text.length - animations[0].length - animations[1].length };
}

// ---- the browser

const browser = await chromium.launch({ executablePath: kBrowser, args: kArguments });

// A page, opened without a network and ready to play, with what it complained about and asked for.
async function open(made, options = {}) {
  const context = await browser.newContext({ offline: true, viewport: { width: 1100, height: 900 }, ...options });
  const page = await context.newPage();
  const seen = { complaints: [], requests: [] };
  page.on("console", (message) => seen.complaints.push(`${message.type()}: ${message.text()}`));
  page.on("pageerror", (error) => seen.complaints.push(error.message));
  page.on("request", (request) => { if (!/^(data|about):/.test(request.url())) seen.requests.push(request.url()); });
  await page.goto(made.url);
  await page.waitForSelector("#play:enabled");
  await page.waitForFunction(() => document.querySelector("#frame").textContent !== "");
  return { page, context, seen, stage: page.frames()[1] };
}

const frameOf = async (page) => Number((await page.textContent("#frame")).split(" / ")[0]);

// Waits until both animations show the page's frame, and returns it.
async function settled({ page, stage }) {
  const frame = await frameOf(page);
  await stage.waitForFunction((both) => document.body.dataset.frames === both, `${frame} ${frame}`);
  return frame;
}

// The brightest channel of the brightest pixel of what the page shows of the stage.
async function brightest({ page }) {
  const box = await page.locator("#stage iframe").boundingBox();
  const bytes = await page.screenshot({ clip: { x: box.x + box.width / 2 - 90, y: box.y + 10, width: 180, height: box.height - 20 } });
  const other = await browser.newPage();
  const value = await other.evaluate(async (source) => {
    const image = await createImageBitmap(await (await fetch(source)).blob());
    const canvas = new OffscreenCanvas(image.width, image.height).getContext("2d");
    canvas.drawImage(image, 0, 0);
    return canvas.getImageData(0, 0, image.width, image.height).data.reduce((most, byte, i) => (i % 4 === 3 ? most : Math.max(most, byte)), 0);
  }, `data:image/png;base64,${bytes.toString("base64")}`);
  await other.close();
  return value;
}

const picture = async (page, name) => {
  if (pictureFolder) await page.screenshot({ path: join(pictureFolder, `${name}.png`), fullPage: true });
};

const cases = {
  async "is worked by keyboard, both animations in step"() {
    const made = makePage("cut", animation([square(1, "wide", 150, { ks: moving })], { w: 120, h: 120, ks: { ...transform(100, 100), a: still([60, 60, 0]) } }));
    assert.equal(made.status, 1);
    const opened = await open(made);
    const { page, stage } = opened;
    assert.equal(await page.textContent("#verdict"), "changes");

    const start = await settled(opened);
    await page.waitForTimeout(200);
    assert.equal(await settled(opened), start, "nothing plays by itself");

    for (let i = 0; i < 20 && (await page.evaluate(() => document.activeElement.id)) !== "play"; i += 1) await page.keyboard.press("Tab");
    assert.equal(await page.evaluate(() => document.activeElement.id), "play", "Tab reaches the button");
    assert.notEqual(await page.evaluate(() => getComputedStyle(document.activeElement).outlineStyle), "none", "the focus shows");
    await page.keyboard.press("Enter");
    assert.equal(await page.textContent("#play"), "Pause");
    await page.waitForFunction((frame) => Number(document.querySelector("#frame").textContent.split(" / ")[0]) !== frame, start);
    await page.keyboard.press("Enter");
    assert.equal(await page.textContent("#play"), "Play");
    await settled(opened);

    await page.keyboard.press("Home");
    assert.equal(await settled(opened), 0);
    await page.keyboard.press("ArrowRight");
    await page.keyboard.press("ArrowRight");
    assert.equal(await settled(opened), 2);
    await page.keyboard.press("ArrowLeft");
    assert.equal(await settled(opened), 1);
    await page.keyboard.press("End");
    assert.equal(await settled(opened), 29);
    await page.waitForFunction(() => document.querySelector("#said").textContent.startsWith("Frame 29"));

    await page.focus("#scrub");
    await page.keyboard.press("ArrowLeft");
    assert.equal(await settled(opened), 28);
    assert.match(await page.getAttribute("#scrub", "aria-valuetext"), /^Frame 28, 0\.93 seconds$/);
    await page.locator("#scrub").fill("12");
    assert.equal(await settled(opened), 12);

    await page.focus("#stage");
    await page.keyboard.press("d");
    await stage.waitForFunction(() => document.body.dataset.view === "difference");
    assert.equal(await stage.evaluate(() => getComputedStyle(document.querySelector("#after")).mixBlendMode), "difference");
    assert.ok((await brightest(opened)) > 100, "what is not cut off any more shines");
    await picture(page, "cut-difference");
    await page.keyboard.press("d");
    await stage.waitForFunction(() => document.body.dataset.view === "side");

    await page.click("button.jump >> nth=0");
    const frame = await settled(opened);
    assert.ok((await page.textContent("button.jump >> nth=0")).endsWith(` ${frame}`));
    assert.equal(await page.evaluate(() => document.activeElement.id), "stage");
    assert.deepEqual(opened.seen.complaints, []);
    assert.deepEqual(opened.seen.requests, [made.url]);
    await opened.context.close();
  },

  async "shows no difference where there is none, is small, structured, and follows the system's colours"() {
    const made = makePage("plain", animation(Array.from({ length: 150 }, (unused, i) => square(i + 1, `square ${i + 1}`, 20))));
    assert.equal(made.status, 0);
    assert.ok(made.extra < 2e6, `${made.extra} bytes beyond the animations`);
    const opened = await open(made);
    const { page, stage } = opened;
    assert.equal(await page.textContent("#verdict"), "exact");
    const grounds = [];
    for (const colorScheme of ["light", "dark"]) {
      await page.emulateMedia({ colorScheme });
      grounds.push(await page.evaluate(() => getComputedStyle(document.documentElement).backgroundColor));
      await picture(page, `plain-${colorScheme}`);
    }
    assert.notEqual(grounds[0], grounds[1]);

    for (const landmark of ["header", "main", "footer", "h1"]) assert.equal(await page.locator(landmark).count(), 1, landmark);
    const nameless = await page.evaluate(() => [...document.querySelectorAll("button, select, input")]
      .filter((control) => !control.textContent.trim() && !control.ariaLabel && !control.closest("label")?.textContent.trim()).length);
    assert.equal(nameless, 0, "controls without a name");

    const rows = () => page.locator(".stacks .row").count();
    assert.ok((await rows()) < 20, "long runs of layers are folded at first");
    await page.click("#unfold");
    assert.equal(await rows(), 1 + 150);
    await page.click("#layer-details summary");
    // The table is made once its details have opened.
    await page.waitForFunction(() => document.querySelectorAll("#layer-table tbody tr").length === 150);

    await page.focus("#stage");
    await page.keyboard.press("d");
    await stage.waitForFunction(() => document.body.dataset.view === "difference");
    await settled(opened);
    assert.equal(await brightest(opened), 0);
    assert.deepEqual(opened.seen.complaints, []);
    await opened.context.close();
  },

  async "is not moved by hostile names"() {
    const hostile = `</script><img src=x onerror="top.hit=1"><svg onload="top.hit=1">{{data}}`;
    const content = animation([square(1, hostile, 60)], { nm: hostile, w: 50, h: 50 });
    content.nm = hostile;
    content.assets[0].nm = hostile;
    const opened = await open(makePage("hostile", content));
    assert.equal(await opened.page.evaluate(() => window.hit), undefined);
    assert.equal(await opened.page.locator("img[src=x], svg[onload]").count(), 0);
    assert.ok((await opened.page.textContent("#nests h3")).includes(hostile), "the name is shown as it is");
    assert.deepEqual(opened.seen.complaints, []);
    await opened.context.close();
  },

  async "shuts expressions in, and reaches no network even when asked to"() {
    const asked = [];
    const server = createServer((request, response) => { asked.push(request.url); response.end(); });
    await new Promise((resolve) => server.listen(0, "127.0.0.1", resolve));
    const place = `http://127.0.0.1:${server.address().port}`;
    try {
      // The player hides the ordinary names of what a browser offers.
      const attempt = (code) => `try { globalThis.${code} } catch (refused) {}`;
      const x = [
        attempt("parent.document.title = 'taken'"),
        attempt(`top.location = '${place}/top'`),
        attempt(`document.createElement('img').src = '${place}/picture'`),
        attempt(`fetch('${place}/fetch').catch(() => 0)`),
        attempt("document.documentElement.dataset.ran = 'yes'"),
        "var $bm_rt = value;",
      ].join(";\n");
      const content = animation([square(1, "spy", 60, { ks: { ...transform(100, 100), p: { ...still([100, 100, 0]), x } } })]);
      content.assets.push({ id: "outside", w: 10, h: 10, u: `${place}/`, p: "outside.png", e: 0 });
      content.layers.push(layer(2, 2, "outside", { refId: "outside" }));
      const made = makePage("spy", content);
      const opened = await open(made, { offline: false });
      await settled(opened);
      assert.equal(await opened.stage.evaluate(() => document.documentElement.dataset.ran), "yes", "expressions are live");
      assert.equal(await opened.page.title(), "spy.json – un-nesting report");
      assert.match(await opened.page.textContent("#missing"), /^1 picture /);
      for (const frame of [opened.page.mainFrame(), opened.stage]) {
        await frame.evaluate((url) => fetch(url).catch(() => 0), `${place}/fetch`);
      }
      // The frame may leave for elsewhere, but the page's policy holds for where it goes.
      await opened.stage.evaluate((url) => { setTimeout(() => { location = url; }); }, `${place}/frame`);
      await opened.page.waitForTimeout(500);
      assert.equal(opened.page.url(), made.url);
      assert.deepEqual(asked, []);
      await opened.context.close();
    } finally {
      server.close();
    }
  },
};

let failures = 0;
try {
  for (const [name, test] of Object.entries(cases)) {
    const began = performance.now();
    try {
      await test();
      console.log(`ok      ${name} (${Math.round(performance.now() - began)} ms)`);
    } catch (failure) {
      failures += 1;
      console.log(`FAILED  ${name}\n${failure.stack}`);
    }
  }
} finally {
  await browser.close();
  rmSync(folder, { recursive: true });
}
process.exit(failures ? 1 : 0);
