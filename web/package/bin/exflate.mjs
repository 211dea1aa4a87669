#!/usr/bin/env node
// The command exflate for Node.js: the program with this system's files and streams.
import fs from "node:fs";
import { fileURLToPath } from "node:url";

import { nodeFiles, nodeStreams } from "../src/node_files.mjs";
import { runProgram } from "../src/program.mjs";
import { unableTo } from "../src/errors.mjs";

const program = fs.realpathSync(fileURLToPath(import.meta.url));
const module = new WebAssembly.Module(fs.readFileSync(new URL("../exflate.wasm", import.meta.url)));
try {
  process.exitCode = runProgram(module, {
    args: ["exflate", ...process.argv.slice(2)],
    environment: process.env,
    programFile: program,
    files: nodeFiles,
    streams: nodeStreams,
  });
} catch (problem) {
  nodeStreams.writeError(new TextEncoder().encode(`exflate: ${unableTo(problem)}\n`));
  process.exitCode = 4;
}
