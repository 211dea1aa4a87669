#!/usr/bin/env node
// What `exflate flatten` makes of real animations, each nest by itself and whole files, as two renderers draw it before
// and after; docs/flattening.md is the result for the animations of the tests.
//
// usage: flatten_table.mjs EXFLATE KEEP FILE...
//
// KEEP: a folder for comparisons already made, which are used again; "" for none. Prints Markdown; exit code 1 when
// something that is said to look the same does not.
import { readFileSync, mkdtempSync, rmSync, statSync } from "node:fs";
import os from "node:os";
import path from "node:path";
import { alone, compositions } from "./alone.mjs";
import { falsePromises, flatteningPage } from "./flatten_page.mjs";
import { Composition, Kept, output, selection } from "./measure.mjs";
import { Browser } from "./pictures.mjs";

const [exflate, keep, ...files] = process.argv.slice(2);
if (files.length === 0) {
  console.error("usage: flatten_table.mjs EXFLATE KEEP FILE...");
  process.exit(2);
}
const folder = mkdtempSync(path.join(os.tmpdir(), "flattening-"));

function checked(file, ...options) {
  return JSON.parse(output(exflate, ["check", ...options, "--prove", "--format", "json", file], [0, 1])).files[0];
}

/** Each nest of the file, made flat by itself; `lottieWeb` of those that became flat. */
async function nestsAlone(browser, file) {
  const animation = JSON.parse(readFileSync(file, "utf8"));
  const listed = JSON.parse(output(exflate, ["check", "--format", "json", file], [0, 1])).files[0].nests;
  const kept = new Kept(keep);
  const nests = [];
  for (const id of new Set(listed.map((nest) => nest.composition))) {
    const siblings = listed.filter((nest) => nest.composition === id);
    const composition = new Composition(browser, animation, siblings);
    for (const sibling of siblings) {
      const [nest] = checked(file, "--flatten", ...selection(sibling)).nests;
      nest.bare = sibling.verdict;
      if (nest.becomes === "flat") {
        const after = JSON.parse(output(exflate, ["flatten", file, ...selection(nest), "--keep-unused", "-o", "-"], [0]));
        nest.lottieWeb = await kept.get(composition, JSON.stringify(alone(after, id)));
      }
      nests.push({ file: path.basename(file), ...nest });
    }
  }
  return nests;
}

/** The file made flat as far as it goes. */
async function whole(browser, file) {
  const flat = path.join(folder, "flat.json");
  const began = performance.now();
  output(exflate, ["flatten", file, "-o", flat], [0, 1]);
  const seconds = (performance.now() - began) / 1000;
  const animation = JSON.parse(readFileSync(file, "utf8"));
  const { nests, pictures } = checked(file, "--flatten");
  const composition = new Composition(browser, animation, [{ composition: null, reasons: [], pictures }]);
  return {
    file: path.basename(file), nests, pictures, seconds,
    bytes: [statSync(file).size, statSync(flat).size],
    left: nestsIn(JSON.parse(readFileSync(flat, "utf8"))),
    lottieWeb: await new Kept(keep).get(composition, readFileSync(flat, "utf8")),
  };
}

/** Layers that show a composition, in all compositions that are there. */
function nestsIn(animation) {
  const all = compositions(animation);
  return [...all.values()].flatMap(({ layers }) => layers).filter((layer) => layer.ty === 0 && all.has(layer.refId)).length;
}

const browser = await Browser.open();
try {
  const rows = [];
  const wholes = [];
  for (const file of files) {
    rows.push(...(await nestsAlone(browser, file)));
    wholes.push(await whole(browser, file));
    console.error(`${path.basename(file)}: done`);
  }
  process.stdout.write(flatteningPage(rows, wholes));
  const broken = falsePromises(rows, wholes);
  for (const sentence of broken) console.error(sentence);
  process.exitCode = broken.length > 0 ? 1 : 0;
} finally {
  await browser.close();
  rmSync(folder, { recursive: true });
}
