// Puts the page together: one file with the program, its worker, the player and the components of the report's page.
//
// usage: build.mjs TREE PROGRAM PLAYER_FOLDER NOTICES VERSION RESULT
import { createHash } from "node:crypto";
import { readFileSync, writeFileSync } from "node:fs";
import { dirname, join } from "node:path";
import { gzipSync } from "node:zlib";

const [tree, program, playerFolder, notices, version, result] = process.argv.slice(2);
const read = (...path) => readFileSync(join(...path), "utf8");
const report = join(tree, "cli/src/report/page");
const page = join(tree, "web/page");

// Modules as one: each after those that it imports, without the words that tie them. Names must not meet; the engine looks.
function joined(file, seen = new Set()) {
  if (seen.has(file)) return "";
  seen.add(file);
  let text = "";
  const own = read(file).replace(/^(?:import|export) [^;]*? from "(\.[^"]+)";\n/gm, (_, other) => {
    text += joined(join(dirname(file), other), seen);
    return "";
  });
  return text + own.replace(/^export (?=const|function|async|class)/gm, "");
}

const asProgram = (text) => text.replaceAll("</script", "<\\/script").replaceAll("<!--", "<\\!--");
const asText = (text) => text.replaceAll("&", "&amp;").replaceAll("<", "&lt;");

const parts = {
  "head.html": read(report, "head.html"),
  "page.css": read(report, "page.css"),
  "own.css": read(page, "own.css"),
  "player.html": read(report, "player.html"),
  version,
  notices: asText(read(notices)),
  program: gzipSync(readFileSync(program), { level: 9 }).toString("base64"),
  "worker.mjs": asProgram(`"use strict";\n${joined(join(page, "worker.mjs"))}`),
  "guard.js": asProgram(read(report, "guard.js")),
  player: asProgram(read(playerFolder, "lottie.min.js")),
  "stage.js": asProgram(read(report, "stage.js")),
  "stage.css": read(report, "stage.css"),
  "parts.js": asProgram(read(report, "parts.js")),
  "player.js": asProgram(read(report, "player.js")),
  "page.mjs": asProgram(joined(join(page, "page.mjs"))),
};
// Only the page's own programs carry it; it need not be secret.
parts.nonce = createHash("sha256").update(JSON.stringify(parts)).digest("hex").slice(0, 16);
writeFileSync(result, read(page, "page.html").replace(/\{\{([a-z.]+)\}\}/g, (_, name) => {
  if (!(name in parts)) throw new Error(`the page wants ${name}`);
  return parts[name];
}));
