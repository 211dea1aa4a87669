#!/usr/bin/env node
// Every package has a bill of materials that the published schema accepts, and that comes out the same each time.
//
// usage: boms_test.mjs WRITE_BOMS DIST
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { createHash } from "node:crypto";
import { readdirSync, readFileSync, statSync } from "node:fs";
import { createRequire } from "node:module";
import { dirname, join } from "node:path";

const require = createRequire(new URL("../", import.meta.url));
const Ajv = require("ajv");
const schemas = join(dirname(require.resolve("@cyclonedx/cyclonedx-library/package.json")), "res/schema");
const schema = (name) => JSON.parse(readFileSync(join(schemas, `${name}.SNAPSHOT.schema.json`), "utf8"));

const [writeBoms, dist] = process.argv.slice(2);
// Formats such as "iri-reference" are not looked at.
const ajv = new Ajv({ strict: false, validateFormats: false });
for (const part of ["spdx", "jsf-0.82"]) ajv.addSchema({ ...schema(part), $id: undefined }, `http://cyclonedx.org/schema/${part}.SNAPSHOT.schema.json`);
const validate = ajv.compile(schema("bom-1.6"));

const kEnding = ".cdx.json";
function written() {
  execFileSync(writeBoms, [dist], { stdio: "inherit" });
  const files = readdirSync(dist).flatMap((folder) => readdirSync(join(dist, folder)).map((name) => join(dist, folder, name)));
  return new Map(files.filter((file) => file.endsWith(kEnding)).map((file) => [file, readFileSync(file, "utf8")]));
}

const boms = written();
assert.deepEqual(written(), boms, "the same bytes each time");
const packages = readdirSync(join(dist, "linux")).filter((name) => /\.(deb|gz)$/.test(name)).map((name) => join(dist, "linux", name));
packages.push(join(dist, "windows/Exflate.aex"), join(dist, "macos/Exflate.plugin"));
assert.ok(packages.length >= 6, packages.join(" "));
for (const file of packages) assert.ok(boms.has(file + kEnding), `${file} has none`);
for (const [place, text] of boms) {
  const file = place.slice(0, -kEnding.length);
  const bom = JSON.parse(text);
  assert.ok(validate(bom), `${file}: ${ajv.errorsText(validate.errors)}`);
  assert.ok(!validate({ ...bom, components: [{ type: "nothing", name: "x" }] }), "the schema refuses what is wrong");
  if (statSync(file).isFile()) {
    assert.equal(bom.metadata.component.hashes[0].content, createHash("sha256").update(readFileSync(file)).digest("hex"));
  }
  for (const component of bom.components) assert.ok(component.type === "file" || component.version, `${file}: ${component.name} has no version`);
}

const namesIn = (place) => JSON.parse(boms.get(join(dist, place) + kEnding)).components.map((component) => component.name);
const command = readdirSync(join(dist, "linux")).find((name) => /^exflate_.*\.deb$/.test(name));
for (const name of ["duktape", "rapidjson", "jsmn", "lottie-web", "libzip4", "librlottie0-1"]) {
  assert.ok(namesIn(`linux/${command}`).includes(name), `${command} has ${name}`);
}
assert.ok(namesIn("windows/Exflate.aex").includes("mingw-w64 runtime"));
console.log(`${boms.size} bills of materials`);
