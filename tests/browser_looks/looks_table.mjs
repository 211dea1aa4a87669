#!/usr/bin/env node
// Compares the verdicts of `exflate check` on real animations with the pictures of two renderers; docs/looks.md is the
// result for the animations of the tests.
//
// usage: looks_table.mjs EXFLATE NOTES KEEP FILE...
//
// NOTES: a JSON file that gives the cause of each exception. KEEP: a folder for comparisons already made, which are used
// again; "" for none. Prints Markdown; exit code 1 when an exception has no cause or a cause has no exception.
import { readFileSync } from "node:fs";
import path from "node:path";
import { measure } from "./measure.mjs";
import { Browser } from "./pictures.mjs";
import { problems, table } from "./table.mjs";

const [exflate, notesFile, keep, ...files] = process.argv.slice(2);
if (files.length === 0) {
  console.error("usage: looks_table.mjs EXFLATE NOTES KEEP FILE...");
  process.exit(2);
}
const notes = JSON.parse(readFileSync(notesFile, "utf8"));
const browser = await Browser.open();
try {
  const rows = [];
  for (const file of files) {
    for (const nest of await measure(browser, exflate, file, keep)) rows.push({ file: path.basename(file), ...nest });
    console.error(`${path.basename(file)}: done`);
  }
  process.stdout.write(table(rows, notes));
  const found = problems(rows, notes);
  for (const problem of found) console.error(problem);
  process.exitCode = found.length > 0 ? 1 : 0;
} finally {
  await browser.close();
}
