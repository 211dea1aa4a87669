#!/usr/bin/env node
// The page in a browser, opened from a file and without a network: what people do with it, and what hostile files try.
//
// usage: page_test.mjs EXFLATE PAGE SOURCES [PICTURE_FOLDER]
import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";
import { existsSync, mkdtempSync, readFileSync, readdirSync, rmSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { tmpdir } from "node:os";
import { basename, join } from "node:path";
import { pathToFileURL } from "node:url";
import { gzipSync } from "node:zlib";

const [exflate, pageFile, sources, pictureFolder] = process.argv.slice(2);
const require = createRequire(join(sources, "tests/package.json"));
const { chromium } = require("playwright-core");
const folder = mkdtempSync(join(tmpdir(), "exflate-page-"));
process.on("exit", () => rmSync(folder, { recursive: true, force: true }));
const browser = await chromium.launch({ executablePath: "/usr/bin/chromium",
  args: ["--no-sandbox", "--disable-gpu", "--force-color-profile=srgb", "--disable-background-networking"] });

async function open(options = {}) {
  const context = await browser.newContext({ offline: true, viewport: { width: 1100, height: 900 }, ...options });
  const page = await context.newPage();
  const seen = { complaints: [], requests: [] };
  page.on("console", (message) => seen.complaints.push(`${message.type()}: ${message.text()}`));
  page.on("pageerror", (error) => seen.complaints.push(error.message));
  page.on("dialog", (dialog) => { seen.complaints.push(`dialog: ${dialog.message()}`); dialog.dismiss(); });
  page.on("request", (request) => { if (!/^(file|data|blob|about):/.test(request.url())) seen.requests.push(request.url()); });
  await page.goto(pathToFileURL(pageFile).href);
  return { page, context, seen };
}

const isIdle = () => document.querySelector("#work").hidden;
const done = (page) => page.waitForFunction(isIdle, null, { timeout: 300000 });

async function give(page, files) {
  await page.setInputFiles("#chosen", files);
  await page.waitForFunction((count) => document.querySelectorAll("#list li").length >= count, files.length);
  await done(page);
}

async function drop(page, files) {
  const transfer = await page.evaluateHandle((list) => {
    const dropped = new DataTransfer();
    for (const [name, text] of list) dropped.items.add(new File([Uint8Array.from(atob(text), (character) => character.charCodeAt(0))], name));
    return dropped;
  }, files.map((file) => [basename(file), readFileSync(file).toString("base64")]));
  await page.dispatchEvent("#drop", "drop", { dataTransfer: transfer });
  await page.waitForFunction((count) => document.querySelectorAll("#list li").length === count, files.length);
  await done(page);
}

// Both players draw something, and go on together.
async function play(page) {
  await page.waitForFunction(() => !document.querySelector("#play").disabled && document.querySelector("#worst").textContent, null, { timeout: 120000 });
  const frames = () => page.frames()[1].evaluate(() => [document.body.dataset.frames, ...Array.from(document.querySelectorAll(".box svg"), (svg) => svg.querySelectorAll("path, image, text").length)]);
  const [start, ...drawn] = await frames();
  assert.ok(drawn.length === 2 && drawn.every((count) => count > 0), `${drawn} shapes`);
  await page.press("#play", "Enter");
  await page.waitForFunction((before) => document.querySelector("#frame").textContent !== before, await page.textContent("#frame"));
  await page.press("#play", "Enter");
  await page.waitForTimeout(100);
  const [end] = await frames();
  assert.notEqual(end, start);
  assert.equal(new Set(end.split(" ")).size, 1, end);
}

async function downloaded(page, click) {
  const [download] = await Promise.all([page.waitForEvent("download"), click()]);
  return readFileSync(await download.path());
}

function native(file, ...command) {
  const result = join(folder, "native");
  const ran = spawnSync(exflate, [...command, file, "-o", result], { encoding: "utf8" });
  assert.ok(ran.status <= 1, ran.stderr);
  return readFileSync(result);
}

const picture = async (page, name) => {
  if (!pictureFolder) return;
  await page.locator("#files").scrollIntoViewIfNeeded();
  await page.screenshot({ path: join(pictureFolder, `${name}.png`) });
  if (await page.locator("#stage").isVisible()) await page.locator("#stage").scrollIntoViewIfNeeded();
  await page.waitForTimeout(1000); // the shut frame is painted by a process of its own
  await page.screenshot({ path: join(pictureFolder, `${name}-player.png`) });
};

const example = join(sources, "examples/lift_off.json");
const real = join(sources, "tests/node_modules/lottie-web/test/animations");

// ---- hostile files

const still = (k) => ({ a: 0, k });
const ks = { o: still(100), r: still(0), p: still([50, 50, 0]), a: still([0, 0, 0]), s: still([100, 100, 100]) };
const layer = (ind, more) => ({ ind, ty: 4, nm: "s", sr: 1, ks, shapes: [], ip: 0, op: 30, st: 0, bm: 0, ddd: 0, ...more });
const nest = (refId, more) => layer(1, { ty: 0, refId, w: 100, h: 100, shapes: undefined, ...more });
const animation = (more, inner = [layer(1)]) => ({ v: "5.7.0", fr: 30, ip: 0, op: 30, w: 100, h: 100, assets: [{ id: "a", layers: inner }], layers: [nest("a")], ...more });
const expression = (x) => animation({}, [layer(1, { ks: { ...ks, r: { ...still(0), x } } })]);
const script = "</script><script>alert(1)</script><img src=x onerror=alert(1)>";
const kHostile = [
  "", "null", "[]", "{", "\u0000\u0001", `{"v":${"[".repeat(100000)}`, script,
  animation({ nm: script }), animation({ layers: [nest("a", { nm: script })] }), animation({ layers: [nest("b")] }),
  animation({ assets: [{ id: "a", layers: [nest("a")] }] }),
  animation({ w: 1e9, h: 1e9 }), animation({ op: 1e12 }), animation({ fr: 0 }), animation({ ip: -1e9 }),
  expression("fetch('https://example.com/');$bm_rt=0"), expression("parent.document.title='taken';$bm_rt=0"),
  expression("top.location='https://example.com/';$bm_rt=0"), expression("new RTCPeerConnection();$bm_rt=0"),
  animation({ assets: [{ id: "a", layers: [layer(1)] }, { id: "p", p: "https://example.com/a.png", u: "", w: 9, h: 9 }] }),
  animation({ fonts: { list: [{ fName: "f", fFamily: "f", fPath: "https://example.com/f.css", origin: 3, fOrigin: "p" }] } }),
  "PK\u0003\u0004 no archive", gzipSync(Buffer.alloc(1 << 26)),
].map((content, i) => ({
  name: `hostile${i}${i === 3 ? script.replace(/[/]/g, "") : ""}.json`, mimeType: "application/json",
  buffer: Buffer.isBuffer(content) ? content : Buffer.from(typeof content === "string" ? content : JSON.stringify(content)),
}));

const cases = {
  async "makes every public animation flat as the native command does, and plays it"() {
    const files = [example, ...readdirSync(real).filter((name) => name.endsWith(".json")).map((name) => join(real, name))];
    const packed = join(folder, "packed.tgs");
    writeFileSync(packed, gzipSync(readFileSync(example)));
    files.push(packed);
    const { page, seen, context } = await open();
    await drop(page, files);
    for (const [index, file] of files.entries()) {
      await page.click(`[data-job="${index}"]`);
      await page.waitForFunction((name) => document.querySelector("#file-title").textContent === name, basename(file));
      assert.ok((await downloaded(page, () => page.click("#save"))).equals(native(file, "flatten")), file);
      assert.equal(await page.isVisible("#problem"), false, file);
      await play(page);
    }
    await page.click(`[data-job="0"]`);
    await page.waitForFunction(() => !document.querySelector("#play").disabled && document.querySelector("#worst").textContent);
    assert.deepEqual(seen, { complaints: [], requests: [] });
    await picture(page, "light");
    await page.emulateMedia({ colorScheme: "dark" });
    await picture(page, "dark");
    await page.setViewportSize({ width: 390, height: 800 });
    assert.ok(await page.evaluate(() => document.documentElement.scrollWidth <= innerWidth), "nothing sticks out on a phone");
    await picture(page, "phone");
    await context.close();
  },
  async "runs the plug-in's command with its dialog's choices"() {
    const { page, context } = await open();
    await page.check("input[value=run]", { force: true });
    await page.fill("[name=prefix]", "p");
    await page.check("[name=prependName]");
    await give(page, [example]);
    const result = await downloaded(page, () => page.click("#save"));
    assert.ok(result.equals(native(example, "run", "--recursive", "--copy-attributes", "--prepend-name", "--prefix", "p")));
    await context.close();
  },
  async "is worked by the keyboard alone, and tells what it does"() {
    const { page, context } = await open();
    const reach = async (selector) => {
      for (let i = 0; i < 60; i += 1) {
        if (await page.evaluate((what) => document.activeElement.matches(what), selector)) return;
        await page.keyboard.press("Tab");
      }
      assert.fail(`Tab does not reach ${selector}`);
    };
    await reach("#paste-details summary");
    await page.keyboard.press("Enter");
    await reach("#paste");
    await page.evaluate((text) => { document.querySelector("#paste").value = text; }, readFileSync(example, "utf8"));
    await reach("#add-paste");
    await page.keyboard.press("Enter");
    await page.waitForFunction(() => /^Done/.test(document.querySelector("#told").textContent));
    await reach(".file-list button");
    await page.keyboard.press("Enter");
    assert.equal(await page.evaluate(() => document.activeElement.id), "file-title");
    await page.waitForFunction(() => !document.querySelector("#play").disabled);
    await reach("#play");
    await page.keyboard.press("Enter");
    assert.equal(await page.textContent("#play"), "Pause");
    await page.keyboard.press("Enter");
    await reach("#scrub");
    await page.keyboard.press("End");
    assert.match(await page.textContent("#frame"), /^119 \//);
    await context.close();
  },
  async "has nothing that axe finds fault with"() {
    for (const colorScheme of ["light", "dark"]) {
      const { page, context } = await open({ colorScheme });
      await page.click("#paste-details summary");
      await give(page, [example]);
      await page.waitForFunction(() => document.querySelector("#worst").textContent);
      await page.evaluate(readFileSync(require.resolve("axe-core/axe.min.js"), "utf8"));
      const { violations } = await page.evaluate(() => window.axe.run(document, { iframes: false }));
      assert.deepEqual(violations.map(({ id, nodes }) => `${id}: ${nodes.map((node) => node.html).join(" ")}`), []);
      await context.close();
    }
  },
  async "ends an animation that takes too long when it is told to"() {
    const { page, context } = await open();
    // Two nests of two nests, forty times over: each composition is small, and un-nesting all of them is endless.
    const assets = Array.from({ length: 40 }, (_, i) => ({ id: `c${i}`, layers: [1, 2].map((ind) => ({ ...nest(`c${i + 1}`), ind })) }));
    const many = Array.from({ length: 2000 }, (_, i) => layer(i + 1));
    const endless = animation({ assets: [...assets, { id: "c40", layers: many }], layers: [nest("c0")] });
    await page.check("input[value=run]", { force: true });
    await page.setInputFiles("#chosen", [{ name: "endless.json", mimeType: "application/json", buffer: Buffer.from(JSON.stringify(endless)) },
      { name: "big.json", mimeType: "application/json", buffer: readFileSync(join(real, "bodymovin.json")) }]);
    await page.waitForSelector("#cancel", { state: "visible" });
    const start = Date.now();
    await page.click("#cancel");
    await done(page);
    assert.ok(Date.now() - start < 5000, "at once");
    await page.check("input[value=flatten]", { force: true });
    await give(page, [example, example, example]);
    assert.match(await page.textContent("#list"), /lift_off\.json/);
    await context.close();
  },
  async "is not moved by hostile files"() {
    const { page, seen, context } = await open();
    for (const file of kHostile) {
      await page.setInputFiles("#chosen", [file]);
      await page.waitForTimeout(50);
      await done(page);
      await page.click("#list li:last-child button");
      await page.waitForTimeout(300);
    }
    assert.equal(await page.locator("#list li").count(), kHostile.length);
    assert.equal(await page.title(), "Exflate: flatten Lottie animations");
    assert.deepEqual(seen.requests, []);
    assert.deepEqual(seen.complaints.filter((words) => /^dialog/.test(words)), []);
    assert.equal(await page.locator("#list script, #result script, #list img, #result img").count(), 0);
    await give(page, [example]);
    assert.match(await page.textContent("#list li:last-child"), /lift_off/);
    await context.close();
  },
};

if (pictureFolder) assert.ok(existsSync(pictureFolder));
let code = 0;
for (const [name, work] of Object.entries(cases)) {
  try {
    await work();
    console.log(`ok: ${name}`);
  } catch (problem) {
    console.error(`not ok: ${name}\n${problem.stack}`);
    code = 1;
  }
}
await browser.close();
process.exit(code);
