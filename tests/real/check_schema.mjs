#!/usr/bin/env node
// Made flat, or un-nested by one run, an animation has no kind of error that it did not have before, by the published
// schema of the format.
//
// usage: check_schema.mjs EXFLATE FILE...
import { execFileSync } from "node:child_process";
import { readFileSync } from "node:fs";
import { createRequire } from "node:module";
import path from "node:path";

const require = createRequire(import.meta.url);
const { LottieValidator, get_schema_path } = require("@lottie-animation-community/lottie-specs/src/validator-node.js");
const Ajv = require("ajv/dist/2020");

const [exflate, ...files] = process.argv.slice(2);
if (files.length === 0) {
  console.error("usage: check_schema.mjs EXFLATE FILE...");
  process.exit(2);
}
const validator = new LottieValidator(Ajv, JSON.parse(readFileSync(get_schema_path(), "utf8")));

/** By what is wrong with which member, wherever it stands: the same mistake in two layers is of one kind. */
function kinds(text) {
  const member = (error) => error.path.split("/").findLast((name) => !/^\d*$/.test(name)) ?? "";
  return new Map(validator.validate(JSON.parse(text), false).map((error) => [`${member(error)}: ${error.message}`, error]));
}

function output(...args) {
  try {
    return execFileSync(exflate, args, { encoding: "utf8", maxBuffer: 1 << 30, stdio: ["ignore", "pipe", "pipe"] });
  } catch (failure) {
    if (failure.status === 1) return failure.stdout; // something stays nested or changes
    throw failure;
  }
}

let added = 0;
let known = 0;
for (const file of files) {
  const before = kinds(readFileSync(file, "utf8"));
  known += before.size;
  for (const command of [["flatten"], ["flatten", "--all"], ["run", "--recursive"]]) {
    for (const [kind, error] of kinds(output(...command, file, "-o", "-"))) {
      if (before.has(kind)) continue;
      ++added;
      console.error(`${path.basename(file)}: ${command.join(" ")} adds at ${error.path}: ${error.message}`);
    }
  }
}
console.log(`${files.length} animations with ${known} kinds of errors of their own, ${added} added`);
process.exit(added > 0 ? 1 : 0);
