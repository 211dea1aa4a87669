// The commands on one animation in memory. Every option is one of the command line's own: `keepUnused: true` is --keep-unused,
// `layer: ["a", "b"]` is --layer a --layer b, `maxGrowth: 10` is --max-growth 10.
import { errorFor, HostError, unableTo } from "./errors.mjs";
import { bytesOf, memoryFiles, memoryStreams } from "./memory_files.mjs";
import { runProgram } from "./program.mjs";

const kInput = "animation";
const kResult = "result";

const dashed = (name) => `--${name.replace(/[A-Z]/g, (letter) => `-${letter.toLowerCase()}`)}`;

// Neither what this module gives itself, nor names that are no options of an animation in memory.
function flagsOf(options) {
  const flags = [];
  for (const [name, value] of Object.entries(options)) {
    if (value === undefined || value === false || value === null) continue;
    if (value === true) flags.push(dashed(name));
    else for (const one of [value].flat()) flags.push(`${dashed(name)}=${one}`);
  }
  return flags;
}

// The sentences without the name that the animation has here.
const messagesIn = (errors) =>
  errors.split("\n").filter(Boolean).map((line) => line.replace(/^(?:animation|exflate):(?: )?/, ""));

function execute(module, command, input, options, more = []) {
  const contents = new Map([[kInput, bytesOf(input)]]);
  const streams = memoryStreams();
  let code;
  try {
    code = runProgram(module, {
      args: ["exflate", command, ...flagsOf(options), ...more, "--", kInput],
      environment: {},
      programFile: "/exflate/bin/exflate",
      files: memoryFiles(contents),
      streams,
    });
  } catch (problem) {
    throw new HostError(unableTo(problem), 4, messagesIn(streams.errors()));
  }
  return { code, contents, output: streams.output(), messages: messagesIn(streams.errors()) };
}

const decoded = (bytes) => new TextDecoder().decode(bytes);
// Packed files begin like zip and gzip files.
const isPacked = (bytes) => (bytes[0] === 0x50 && bytes[1] === 0x4b) || (bytes[0] === 0x1f && bytes[1] === 0x8b);

function changed(done) {
  const bytes = done.contents.get(kResult);
  if (!bytes) throw errorFor(done.code, done.messages);
  return { bytes, text: isPacked(bytes) ? null : decoded(bytes), code: done.code, messages: done.messages };
}

function told(done) {
  if (done.code > 1 || done.output.length === 0) throw errorFor(done.code, done.messages);
  return JSON.parse(decoded(done.output));
}

export const commands = {
  flatten(module, input, options = {}) {
    const result = changed(execute(module, "flatten", input, options, ["-o", kResult]));
    // What becomes of each nest is told by check, which knows nothing of limits and of wishes beyond the look.
    const { keepUnused: _, ...shared } = options;
    if (shared.all || shared.exact || shared.maxGrowth !== undefined) return { ...result, animations: null };
    return { ...result, animations: commands.check(module, input, { ...shared, flatten: true }).animations };
  },
  run(module, input, options = {}) {
    return changed(execute(module, "run", input, options, ["-o", kResult]));
  },
  check(module, input, options = {}) {
    const { files } = told(execute(module, "check", input, options, ["--format", "json"]));
    const order = ["exact", "equal to the eye", "changes"];
    return { verdict: order[Math.max(...files.map((file) => order.indexOf(file.verdict)))], animations: files };
  },
  list(module, input, options = {}) {
    const listing = told(execute(module, "list", input, options, ["--json"]));
    return { animations: listing.animations ?? [listing] };
  },
};
