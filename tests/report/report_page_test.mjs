#!/usr/bin/env node
// Works the page of `exflate report` in a browser, by keyboard and without a network.
//
// usage: report_page_test.mjs EXFLATE [PICTURE FOLDER]
import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";
import { existsSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { createServer } from "node:http";
import { createRequire } from "node:module";
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
const require = createRequire(import.meta.url);
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

// Two levels of nests that become flat, and one beside them that stays for its blur.
function levels(name) {
  const content = animation([layer(1, 0, "Inner", { refId: "leaf", w: 200, h: 200, ks: transform(0, 0), st: 5 }), square(2, "frame", 150)], { st: 5, ip: 5, op: 20, w: 120, h: 120 });
  content.assets[0].nm = "Middle";
  content.assets.push({ id: "leaf", nm: "Leaf", layers: [square(1, "core", 40)] }, { id: "two", nm: "Two", layers: [square(1, "one", 80), square(2, "two", 60)] });
  const blur = { ty: 29, nm: "Blur", ix: 1, en: 1, ef: [{ ty: 0, nm: "Blurriness", ix: 1, v: still(20) }] };
  content.layers.push(layer(2, 0, name, { refId: "two", w: 200, h: 200, ks: transform(0, 0), ef: [blur] }));
  return content;
}

// The page for the animation, and its bytes beyond those of the animation itself.
function makePage(name, content, options = []) {
  const file = join(folder, `${name}.json`);
  const page = join(folder, `${name}.html`);
  writeFileSync(file, JSON.stringify(content));
  const ran = spawnSync(exflate, ["report", ...options, file, "-o", page], { encoding: "utf8" });
  assert.ok(ran.status <= 1, ran.stderr);
  const text = readFileSync(page, "utf8");
  const animations = ["before", "after"].map((id) => text.split(`id="${id}-animation">`)[1].split("</script>")[0]);
  return { status: ran.status, url: pathToFileURL(page).href, extra: text.length - animations[0].length - animations[1].length };
}

// ---- a trap for whatever calls out

// A server on this machine that notes every connection and every request.
async function setTrap() {
  const trap = { caught: [] };
  const server = createServer((request, response) => {
    if (request.url !== "/favicon.ico") trap.caught.push(request.url);
    response.setHeader("Access-Control-Allow-Origin", "*");
    response.setHeader("Content-Type", request.url.startsWith("/control") ? "text/html" : request.url.includes("css") || request.url.includes("sheet") ? "text/css" : "text/javascript");
    response.end(request.url.startsWith("/control") ? "<!doctype html><title>control</title>" : "");
  });
  server.on("connection", () => trap.caught.push("/connection"));
  server.on("upgrade", (request, socket) => { trap.caught.push(request.url); socket.destroy(); });
  await new Promise((resolve) => server.listen(0, "127.0.0.1", resolve));
  trap.place = `http://127.0.0.1:${server.address().port}`;
  trap.close = () => { server.closeAllConnections(); server.close(); };
  return trap;
}

// Programs that try to reach it, each in its own way. The player hides the ordinary names of what a browser offers.
function attemptsTo({ place }) {
  const made = (name, then) => `var d = this.document, e = d.createElement('${name}'); ${then}; d.documentElement.append(e);`;
  const link = (relation, kind, more = "") => made("link", `e.rel = '${relation}'; e.href = '${place}/${kind}'; ${more}`);
  const markup = `<link rel="stylesheet" href="${place}/markup"><img src="${place}/markup"><iframe src="${place}/markup"></iframe>`;
  return [
    `this.fetch('${place}/fetch', { mode: 'no-cors' }).catch(function () {});`,
    `var r = new this.XMLHttpRequest(); r.open('GET', '${place}/xhr'); r.send();`,
    `this.navigator.sendBeacon('${place}/beacon', 'x');`,
    `new this.WebSocket('${place.replace("http", "ws")}/socket');`,
    `new this.EventSource('${place}/events');`,
    `new this.WebTransport('${place.replace("http", "https")}/transport').ready.catch(function () {});`,
    `var c = new this.RTCPeerConnection({ iceServers: [{ urls: 'turn:${place.slice(7)}?transport=tcp', username: 'x', credential: 'x' }] }); c.createDataChannel('x'); c.createOffer().then(function (o) { c.setLocalDescription(o); });`,
    `new this.Image().src = '${place}/picture';`,
    made("style", `e.textContent = "@import url('${place}/import.css'); @font-face { font-family: f; src: url('${place}/face') } html { background: url('${place}/style'); font-family: f } body::after { content: 'x' }"`),
    `new this.FontFace('g', "url('${place}/face')").load().catch(function () {});`,
    `this.document.documentElement.style.backgroundImage = "url('${place}/style')";`,
    link("preconnect", "preconnect"), link("dns-prefetch", "dns"), link("prefetch", "prefetch"), link("preload", "preload", "e.as = 'image'"),
    link("modulepreload", "modulepreload"), link("stylesheet", "sheet"), link("manifest", "manifest"), link("icon", "icon"),
    made("iframe", `e.src = '${place}/frame'`), made("object", `e.data = '${place}/object'`), made("embed", `e.src = '${place}/embed'`),
    made("iframe", `var n = (d.querySelector('script') || {}).nonce; e.srcdoc = '<script nonce="' + n + '">fetch("${place}/inner-frame")</scr' + 'ipt><img src="${place}/inner-frame"><link rel=preconnect href="${place}">'`),
    made("iframe", "") + `new e.contentWindow.Image().src = '${place}/empty-frame'; new e.contentWindow.RTCPeerConnection();`,
    made("audio", `e.src = '${place}/audio'`), made("video", `e.poster = '${place}/video'; e.src = '${place}/video'`),
    made("script", `e.src = '${place}/script'`), made("script", `e.type = 'speculationrules'; e.textContent = '{"prefetch":[{"urls":["${place}/rules"]}]}'`),
    `this.eval("import('${place}/module')").catch(function () {});`,
    `new this.Worker('${place}/worker');`,
    `new this.Worker(this.URL.createObjectURL(new this.Blob(["fetch('${place}/blob-worker')"])));`,
    `var s = this.document.createElementNS('http://www.w3.org/2000/svg', 'svg'); var i = this.document.createElementNS('http://www.w3.org/2000/svg', 'image'); i.setAttribute('href', '${place}/svg-image'); s.append(i); this.document.documentElement.append(s);`,
    `var l = this.document.createElementNS('http://www.w3.org/1999/xhtml', 'x:link'); l.rel = 'preconnect'; l.href = '${place}/'; this.document.head.append(l);`,
    `this.document.documentElement.insertAdjacentHTML('beforeend', '${markup}');`,
    `var b = this.document.createElement('div'); b.innerHTML = '${markup}'; this.document.documentElement.append(b);`,
    `var r = this.document.createRange(); r.selectNode(this.document.head); this.document.head.append(r.createContextualFragment('${markup}'));`,
    `this.document.head.append(this.document.adoptNode(new this.DOMParser().parseFromString('${markup}', 'text/html').querySelector('link')));`,
    `var o = this.document.implementation.createDocument('http://www.w3.org/1999/xhtml', 'link').documentElement; o.rel = 'preconnect'; o.href = '${place}/'; this.document.head.append(this.document.adoptNode(o));`,
    `var K = class extends this.HTMLLinkElement {}; this.customElements.define('x-link', K, { extends: 'link' }); var k = new K(); k.rel = 'preconnect'; k.href = '${place}/'; this.document.head.append(k);`,
    made("form", `e.action = '${place}/form'; d.documentElement.append(e); e.submit()`),
    `this.open('${place}/popup');`,
    made("a", `e.href = '${place}/anchor'; e.ping = '${place}/ping'; e.target = '_blank'; d.documentElement.append(e); e.click()`),
    `this.top.location = '${place}/top';`,
  ];
}

// The same for programs that leave for it.
function departuresTo({ place }) {
  return [
    `var m = this.document.querySelector('meta').cloneNode(); m.httpEquiv = 'refresh'; m.content = '0;url=${place}/refresh'; this.document.head.append(m);`,
    `var a = this.document.createElementNS('http://www.w3.org/2000/svg', 'a'); a.setAttribute('href', '${place}/svg-anchor'); this.document.documentElement.append(a); a.dispatchEvent(new this.MouseEvent('click'));`,
    `this.location = '${place}/location';`,
  ];
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

async function assertAxeIsContent(page) {
  await page.evaluate(readFileSync(require.resolve("axe-core/axe.min.js"), "utf8"));
  const { violations } = await page.evaluate(() => window.axe.run(document, { iframes: false }));
  assert.deepEqual(violations.map(({ id, nodes }) => `${id}: ${nodes.map((node) => node.html).join(" ")}`), []);
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

  async "hears keys wherever the focus is, but for those that a control wants itself"() {
    const opened = await open(makePage("keys", animation([square(1, "wide", 60, { ks: moving })])));
    const { page } = opened;
    await page.evaluate(() => document.activeElement.blur());
    await page.keyboard.press("Home");
    await page.keyboard.press("ArrowRight");
    assert.equal(await settled(opened), 1, "from nowhere");
    await page.focus("#copy");
    await page.keyboard.press("ArrowRight");
    assert.equal(await settled(opened), 2, "from a button far below");
    await page.keyboard.press(" ");
    assert.equal(await page.textContent("#play"), "Play", "Space is the button's own");
    await page.focus("#speed");
    await page.keyboard.press("ArrowDown");
    assert.equal(await settled(opened), 2);
    assert.equal(await page.inputValue("#speed"), "2", "arrows are the list's own");
    await page.keyboard.press("d");
    await opened.stage.waitForFunction(() => document.body.dataset.view === "difference");
    await opened.context.close();
  },

  async "shows that it loads, names its marks, and says why pictures do not show a change"() {
    const x = "var $bm_rt; $bm_rt = random(200);";
    const fading = { ...transform(100, 100), a: still([100, 100, 0]), o: { a: 1, k: [{ t: 10, s: [100], o: { x: 0.3, y: 0.3 }, i: { x: 0.7, y: 0.7 } }, { t: 29, s: [20] }] } };
    const content = animation([square(1, "spark", 40, { ks: { ...transform(100, 100), r: { ...still(0), x } } })]);
    content.assets.push({ id: "two", nm: "Two", layers: [square(1, "near", 80), square(2, "far", 120)] });
    content.layers.push(layer(2, 0, "Fading", { refId: "two", w: 200, h: 200, ks: fading }));
    const made = makePage("marks", content);
    const context = await browser.newContext({ offline: true, viewport: { width: 390, height: 800 } });
    const page = await context.newPage();
    await page.addInitScript(() => { window.classes = []; new MutationObserver(() => {
      const stage = document.querySelector("#stage");
      if (stage) window.classes.push(stage.className);
    }).observe(document, { subtree: true, attributes: true, childList: true }); });
    await page.goto(made.url);
    await page.waitForSelector("#play:enabled");
    assert.equal(await page.evaluate(() => window.classes[0]), "loading");
    assert.equal(await page.evaluate(() => document.querySelector("#stage").className), "");
    assert.equal(await page.isVisible("#stage-loading"), false);
    assert.equal(await page.locator("#marks span").count(), 1);
    assert.match(await page.getAttribute("#marks span", "title"), /^Frame \d+: Fading: opacity$/);
    const frame = Number((await page.getAttribute("#marks span", "title")).match(/\d+/)[0]);
    assert.equal((await page.textContent("#mark-captions li")), `Show frame ${frame} Fading: opacity`);
    await page.click("#marks span");
    assert.equal(await frameOf(page), frame);
    const [random, fades] = [page.locator("article.card").nth(0), page.locator("article.card").nth(1)];
    assert.match(await random.textContent(), /changes.*the same, pixel for pixel.*rlottie, which knows no expressions/s);
    assert.equal(await fades.locator(".why").count(), 0, "these pictures show it");
    assert.ok(await page.evaluate(() => document.documentElement.scrollWidth <= innerWidth), "fits a phone");
    await picture(page, "marks-phone");
    await context.close();
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
    assert.equal(await rows(), 1 + 150 + 150);
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

  async "shows what becomes of the nests of all levels when the file is made flat"() {
    const made = makePage("flat", levels("Soft"), ["--flatten"]);
    assert.equal(made.status, 1);
    for (const colorScheme of ["light", "dark"]) {
      const opened = await open(made, { colorScheme });
      const { page } = opened;
      assert.equal(await page.textContent("#kicker"), "What exflate flatten would do");
      assert.equal(await page.textContent("#verdict"), "1 pre-comp left");
      assert.equal(await page.textContent("#summary"), "2 of 3 nests become flat, 1 of them mended, 1 stays.");
      assert.deepEqual(await page.locator("#nests > h3").allTextContents(), ["What stays (1)", "What becomes flat (2)"]);
      const cards = await page.locator("article.card").allTextContents();
      assert.match(cards[0], /^#2 Softstays2 layers inside.*Stays a nest: un-nested and mended as far as possible, it would look different\..*effects/s);
      assert.ok(!/keep this nest/.test(cards[0]), "what helps is not what is done");
      assert.match(cards[1], /^#1 Inner in composition “Middle”flat1 layer comes out.*Becomes flat as it is and looks exactly the same/s);
      assert.match(cards[2], /Becomes flat, mended, and looks exactly the same:.*cliplayers that the nest’s frame cut off/s);
      assert.match(await page.textContent("#messages"), /^How it ends1 pre-comp left: "Soft" \(effects: /);
      assert.match(await page.textContent("#command"), /^exflate flatten -o flat_flat\.json /);

      // The layers of all levels, where they are on the main timeline, and what becomes of them.
      const rows = (side) => page.locator(".stacks .row").evaluateAll((all, isRight) => all
        .filter((row) => (Number(row.querySelector(".ground").getAttribute("x")) > 400) === isRight)
        .map((row) => [...row.querySelectorAll("text")].map((text) => text.textContent).join(" ")), side === "right");
      assert.deepEqual(await rows("left"), ["1 Nest gone", "1 Inner gone", "1 core", "2 frame", "2 Soft stays", "1 one", "2 two"]);
      const right = await rows("right");
      for (const row of ["1 core", "2 frame"]) assert.ok(right.includes(row), `${row} in ${right}`);
      assert.match(right.slice(-3).join(", "), /^\d Soft, 1 one, 2 two$/);
      const barOf = (name) => page.locator(".stacks .row", { hasText: name }).first().locator(".bar").evaluateAll((bars) => bars.map((bar) => [bar.getAttribute("x"), bar.getAttribute("width")].map(Number)));
      const [[nestStart]] = await barOf("Nest");
      const [[coreStart]] = await barOf("core");
      assert.ok(coreStart > nestStart, "what begins inside begins later outside");
      assert.match(await page.locator(".stacks .row title").nth(2).textContent(), /^#1 core \(shape\), 0 to 30 of its composition, shown 10 to 20/);
      assert.ok((await page.locator(".stacks .ribbon").count()) >= 2);
      await page.click("#layer-details summary");
      await page.waitForFunction(() => document.querySelectorAll("#layer-table tbody tr").length > 4);
      assert.match(await page.textContent("#layer-table"), /out of #1 “Nest” › #1 “Inner”, where it was #1/);
      await assertAxeIsContent(page);
      await picture(page, `flat-${colorScheme}`);
      assert.deepEqual(opened.seen.complaints, []);
      assert.deepEqual(opened.seen.requests, [made.url]);
      await page.setViewportSize({ width: 390, height: 800 });
      assert.ok(await page.evaluate(() => document.documentElement.scrollWidth <= innerWidth), "fits a phone");
      await opened.context.close();
    }
  },

  async "has nothing that axe finds fault with"() {
    const opened = await open(makePage("judged", levels("Soft")));
    await assertAxeIsContent(opened.page);
    await opened.context.close();
  },

  async "knows words for whatever is mended"() {
    const opened = await open(makePage("words", levels("Soft"), ["--flatten"]));
    const table = readFileSync(new URL("../../docs/what-changes.md", import.meta.url), "utf8").split("mends\n")[1].split("\n## ")[0];
    const codes = table.split("\n").filter((row) => row.startsWith("| `")).flatMap((row) => row.split("|")[1].match(/[a-z-]+/g));
    assert.ok(codes.length > 10);
    assert.deepEqual(await opened.page.evaluate((all) => all.filter((code) => !parts.kMended[code]), codes), []);
    await opened.context.close();
  },

  async "says how many layers in nests are not drawn"() {
    const content = animation([square(1, "near", 20), layer(2, 0, "Next", { refId: "deep0", w: 200, h: 200 })]);
    for (let i = 0; i < 12; ++i) content.assets.push({ id: `deep${i}`, layers: [square(1, `at ${i}`, 20), ...(i < 11 ? [layer(2, 0, "Next", { refId: `deep${i + 1}`, w: 200, h: 200 })] : [])] });
    const opened = await open(makePage("deep", content, ["--flatten"]));
    assert.match(await opened.page.textContent("#layers-summary"), /Before, 16 layers in nests are drawn, down to level 9, and 9 more are left out\.$/);
    await opened.context.close();
  },

  async "is not moved by hostile names"() {
    const hostile = `</script><img src=x onerror="top.hit=1"><svg onload="top.hit=1">{{data}}`;
    const content = animation([square(1, hostile, 60)], { nm: hostile, w: 50, h: 50 });
    content.nm = hostile;
    content.assets[0].nm = hostile;
    for (const options of [[], ["--flatten"]]) {
      const opened = await open(makePage("hostile", content, options));
      assert.equal(await opened.page.evaluate(() => window.hit), undefined);
      assert.equal(await opened.page.locator("img[src=x], svg[onload]").count(), 0);
      assert.ok((await opened.page.textContent("#nests article h3, #nests article h4")).includes(hostile), "the name is shown as it is");
      assert.deepEqual(opened.seen.complaints, []);
      await opened.context.close();
    }
  },

  async "shuts expressions in, and reaches no network whatever they try"() {
    const trap = await setTrap();
    try {
      const attempts = attemptsTo(trap);
      const attempt = (code) => `try { (function () { ${code} }).call(globalThis); } catch (refused) {}`;
      const x = [
        ...attempts.map(attempt),
        attempt("globalThis.parent.document.title = 'taken'"),
        attempt("globalThis.document.documentElement.dataset.ran = 'yes'"),
        "var $bm_rt = value;",
      ].join(";\n");
      const content = animation([square(1, "spy", 60, { ks: { ...transform(100, 100), p: { ...still([100, 100, 0]), x } } })]);
      content.assets.push({ id: "outside", w: 10, h: 10, u: `${trap.place}/`, p: "outside.png", e: 0 });
      const drawing = `<svg xmlns="http://www.w3.org/2000/svg"><image href="${trap.place}/in-data"/><script href="${trap.place}/in-data"/></svg>`;
      content.assets.push({ id: "data", w: 10, h: 10, u: "", p: `data:image/svg+xml,${encodeURIComponent(drawing)}`, e: 1 });
      content.layers.push(layer(2, 2, "outside", { refId: "outside" }), layer(3, 2, "data", { refId: "data" }));
      content.fonts = { list: [{ fName: "f", fFamily: "f", fStyle: "", fPath: `${trap.place}/font.css`, origin: 3, fOrigin: "g", ascent: 70 }] };
      const made = makePage("spy", content);
      const opened = await open(made, { offline: false });
      await settled(opened);
      assert.equal(await opened.stage.evaluate(() => document.documentElement.dataset.ran), "yes", "expressions are live");
      assert.equal(await opened.page.title(), "spy.json – un-nesting report");
      assert.match(await opened.page.textContent("#missing"), /^1 picture /);
      // From outside too, one by one, without the words that the player hides.
      for (const frame of [opened.page.mainFrame(), opened.stage]) {
        await frame.evaluate((url) => fetch(url).catch(() => 0), `${trap.place}/fetch`);
      }
      const left = await opened.stage.evaluate(() => Object.getOwnPropertyNames(window).filter((name) => /RTC/.test(name)));
      assert.deepEqual(left, [], "nothing to call other browsers with");
      assert.equal(await opened.stage.evaluate(() => document.querySelectorAll("script, link, iframe").length), 0);
      // The frame may leave for elsewhere, but the page's policy holds for where it goes.
      await opened.page.waitForTimeout(1500);
      assert.deepEqual(trap.caught, []);
      for (const departure of departuresTo(trap)) await opened.stage.evaluate((code) => { setTimeout(code); }, attempt(departure)).catch(() => 0);
      await opened.page.waitForTimeout(1500);
      assert.equal(opened.page.url(), made.url);
      // The browser opens a connection before it asks the policy, and nothing in a page can keep it from that.
      assert.deepEqual(trap.caught.filter((url) => url !== "/connection"), []);
      await opened.context.close();

      // The same attempts in a page that forbids nothing: the trap is sharp.
      const context = await browser.newContext();
      const page = await context.newPage();
      await page.goto(`${trap.place}/control`);
      trap.caught.length = 0;
      // Those that would take the page itself elsewhere are left out.
      for (const code of attempts.filter((code) => !/e\.submit\(\)|this\.top\.location/.test(code))) await page.evaluate(attempt(code));
      await page.waitForTimeout(1500);
      const kinds = new Set(trap.caught.map((url) => url.replace(/^\/|\?.*/g, "")));
      for (const kind of ["fetch", "xhr", "beacon", "socket", "events", "picture", "style", "import.css", "face", "frame", "object", "audio",
        "module", "script", "prefetch", "sheet", "markup", "inner-frame", "svg-image", "connection"]) {
        assert.ok(kinds.has(kind), `${kind} is an attempt that works where it may: ${[...kinds].join(" ")}`);
      }
      await context.close();
    } finally {
      trap.close();
    }
  },

  async "stays awake when an expression has no end"() {
    const content = animation([square(1, "endless", 60, { ks: { ...transform(100, 100), p: { ...still([100, 100, 0]), x: "for (;;) {} var $bm_rt = value;" } } })]);
    const made = makePage("endless", content);
    const context = await browser.newContext({ offline: true });
    const page = await context.newPage();
    await page.addInitScript(() => {
      const { setTimeout } = window;
      window.setTimeout = (work, time) => setTimeout(work, time / 10);
    });
    await page.goto(made.url);
    await page.waitForTimeout(500);
    const began = performance.now();
    assert.equal(await page.textContent("#verdict"), "exact");
    await page.click("#layer-details summary");
    await page.waitForFunction(() => document.querySelectorAll("#layer-table tbody tr").length === 1);
    assert.ok(performance.now() - began < 5000, "the page answers");
    await page.waitForSelector("#stage-problem:visible");
    assert.match(await page.textContent("#stage-problem"), /^The animation was closed: .* an expression in it may have no end\.$/);
    assert.equal(await page.locator("#stage iframe").count(), 0);
    await context.close();
  },

  async "closes an animation whose expressions speak to the page"() {
    const x = "for (var i = 0; i < 100; ++i) globalThis.parent.postMessage({ kind: 'opened', missing: i }, '*'); var $bm_rt = value;";
    const made = makePage("talker", animation([square(1, "talker", 60, { ks: { ...transform(100, 100), p: { ...still([100, 100, 0]), x } } })]));
    const context = await browser.newContext({ offline: true });
    const page = await context.newPage();
    await page.goto(made.url);
    await page.waitForSelector("#stage-problem:visible");
    assert.equal(await page.textContent("#stage-problem"), "The animation was closed: its expressions work on the page.");
    assert.equal(await page.locator("#stage iframe").count(), 0);
    await context.close();
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
