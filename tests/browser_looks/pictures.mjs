// Frames of animations as lottie-web draws them in a browser without a window.
import { readFileSync } from "node:fs";
import { createRequire } from "node:module";
import { chromium } from "playwright-core";
import { PNG } from "pngjs";

const kWidth = 400; // pixels; what the limits were measured at
export const kBrowser = "/usr/bin/chromium";
const kArguments = [
  "--no-sandbox", "--disable-gpu", "--force-color-profile=srgb", "--font-render-hinting=none", "--disable-lcd-text",
  "--disable-quic", "--no-first-run", "--disable-background-networking", "--disable-component-update",
  "--disable-sync",
];

// Expressions draw random numbers while the library loads and later; a constant makes every load the same.
const kNoChance = "Math.random = () => 0.5;";

const kPage = `<!DOCTYPE html><style>
html, body { margin: 0; background: white; overflow: hidden }
#stage { position: fixed; left: 0; top: 0; width: ${kWidth}px; height: 100% }
</style><div id="stage"></div>`;

/** Runs in the page; the animation may have been loaded before anyone could listen. */
function load(text) {
  return new Promise((resolve, reject) => {
    const animation = lottie.loadAnimation({
      container: document.getElementById("stage"), renderer: "svg", autoplay: false, loop: false,
      animationData: JSON.parse(text),
    });
    window.animation = animation;
    const done = () => resolve();
    animation.addEventListener("data_failed", () => reject(new Error("the animation could not be loaded")));
    if (animation.isLoaded) done();
    else animation.addEventListener("DOMLoaded", done);
  });
}

/** One browser for many animations; each gets a fresh page without a network. */
export class Browser {
  static async open() {
    const browser = await chromium.launch({ executablePath: kBrowser, args: kArguments });
    const context = await browser.newContext({ offline: true, deviceScaleFactor: 1 });
    const library = createRequire(import.meta.url).resolve("lottie-web/build/player/lottie.min.js");
    return new Browser(browser, context, readFileSync(library, "utf8"));
  }

  constructor(browser, context, library) {
    this.browser = browser;
    this.context = context;
    this.library = library;
  }

  /**
   * @param text the animation
   * @param frames ascending, counted from the animation's first one
   * @returns pictures by frame, 400 pixels wide over white
   */
  async pictures(text, frames) {
    const { w, h } = JSON.parse(text);
    const height = Math.max(1, Math.round((kWidth * h) / w));
    const page = await this.context.newPage();
    try {
      page.setDefaultTimeout(300000);
      await page.setViewportSize({ width: kWidth, height });
      await page.setContent(kPage);
      await page.addScriptTag({ content: kNoChance + this.library });
      await page.evaluate(load, text);
      const pictures = new Map();
      for (const frame of frames) {
        await page.evaluate((k) => window.animation.goToAndStop(k, true), frame);
        const png = await page.screenshot({ clip: { x: 0, y: 0, width: kWidth, height } });
        pictures.set(frame, PNG.sync.read(png));
      }
      return pictures;
    } finally {
      await page.close();
    }
  }

  async close() {
    await this.browser.close();
  }
}
