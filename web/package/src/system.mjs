// What the program asks of its surroundings: the functions of a small system over files, streams and a terminal that are given.
//
// `files` answers with values, or throws an Error whose message is the reason in a few words:
//   kind(name) -> "none" | "file" | "folder" | "other"      real(name) -> name
//   entries(folder) -> [{name, kind}], a symbolic link being "other"
//   identity(name) -> {device, number, links} | null        read(name, limit, onlyRegular) -> Uint8Array
//   makeFolder(name)   move(name, to)                       replace(name, bytes, temporaryPrefix, evenIfReadOnly)
// `streams` has readAll(limit) -> Uint8Array, writeOutput(bytes), outputIsTerminal(), writeError(bytes), errorIsTerminal().

const kKinds = { none: 0, file: 1, folder: 2, other: 3 };
const kBadDescriptor = 8; // of the system interface below
const kNotSupported = 58;

// Ends a program from within.
export class ProgramEnd extends Error {
  constructor(code) {
    super(`ended with ${code}`);
    this.code = code;
  }
}

export function makeSystem({ args, environment, programFile, files, streams }) {
  const encoder = new TextEncoder();
  const decoder = new TextDecoder();
  let exports = null;
  let answer = new Uint8Array();

  // Views end when memory grows, so each use makes its own.
  const bytesAt = (at, size) => new Uint8Array(exports.memory.buffer, at, size);
  const textAt = (at, size) => decoder.decode(bytesAt(at, size));
  const view = () => new DataView(exports.memory.buffer);

  function attempt(work) {
    try {
      const result = work();
      if (result instanceof Uint8Array) answer = result;
      else if (typeof result === "string") answer = encoder.encode(result);
      return 1;
    } catch (error) {
      answer = encoder.encode(error.message);
      return 0;
    }
  }

  const own = {
    answer_size: () => answer.length,
    take_answer: (to) => {
      bytesAt(to, answer.length).set(answer);
      answer = new Uint8Array();
    },
    program_file: () => { answer = encoder.encode(programFile); },
    kind_of_file: (name, size) => kKinds[files.kind(textAt(name, size))],
    entries_of: (name, size) =>
      attempt(() => files.entries(textAt(name, size)).map((entry) => `${kKinds[entry.kind]}${entry.name}\0`).join("")),
    real_path: (name, size) => attempt(() => files.real(textAt(name, size))),
    identity: (name, size) => {
      const found = files.identity(textAt(name, size));
      if (found) answer = encoder.encode(`${found.device} ${found.number} ${found.links}`);
      return found ? 1 : 0;
    },
    read_file: (name, size, limit, onlyRegular) => attempt(() => files.read(textAt(name, size), limit, onlyRegular === 1)),
    read_standard_input: (limit) => attempt(() => streams.readAll(limit)),
    write_standard_output: (at, size) => attempt(() => { streams.writeOutput(bytesAt(at, size).slice()); }),
    make_folder: (name, size) => attempt(() => { files.makeFolder(textAt(name, size)); }),
    move_file: (name, size, to, toSize) => attempt(() => { files.move(textAt(name, size), textAt(to, toSize)); }),
    replace_file: (name, size, at, count, prefix, prefixSize, evenIfReadOnly) =>
      attempt(() => { files.replace(textAt(name, size), bytesAt(at, count).slice(), textAt(prefix, prefixSize), evenIfReadOnly === 1); }),
    output_is_terminal: () => (streams.outputIsTerminal() ? 1 : 0),
    error_is_terminal: () => (streams.errorIsTerminal() ? 1 : 0),
    shortest_digits: (number, to) => {
      const text = number.toExponential();
      const bytes = bytesAt(to, text.length);
      for (let i = 0; i < text.length; ++i) bytes[i] = text.charCodeAt(i);
      return text.length;
    },
  };

  // A list of texts, each ended by a zero byte: where each begins, and the texts one after another.
  const asList = (texts) => texts.map((text) => encoder.encode(`${text}\0`));
  const lists = { args: asList(args), environ: asList(Object.entries(environment).map(([name, value]) => `${name}=${value}`)) };
  const sizesOf = (list) => (count, size) => {
    view().setUint32(count, list.length, true);
    view().setUint32(size, list.reduce((sum, text) => sum + text.length, 0), true);
    return 0;
  };
  const copyOf = (list) => (places, texts) => {
    for (const text of list) {
      view().setUint32(places, texts, true);
      bytesAt(texts, text.length).set(text);
      places += 4;
      texts += text.length;
    }
    return 0;
  };

  const standard = {
    args_sizes_get: sizesOf(lists.args),
    args_get: copyOf(lists.args),
    environ_sizes_get: sizesOf(lists.environ),
    environ_get: copyOf(lists.environ),
    clock_time_get: (_id, _precision, to) => {
      view().setBigUint64(to, BigInt(Math.round(performance.now() * 1e6)), true);
      return 0;
    },
    fd_write: (descriptor, vectors, count, written) => {
      if (descriptor !== 1 && descriptor !== 2) return kBadDescriptor;
      let sum = 0;
      for (let i = 0; i < count; ++i) {
        const size = view().getUint32(vectors + 8 * i + 4, true);
        const bytes = bytesAt(view().getUint32(vectors + 8 * i, true), size).slice();
        if (descriptor === 1) streams.writeOutput(bytes);
        else streams.writeError(bytes);
        sum += size;
      }
      view().setUint32(written, sum, true);
      return 0;
    },
    fd_read: () => kBadDescriptor,
    fd_close: () => 0,
    fd_seek: () => kNotSupported,
    proc_exit: (code) => { throw new ProgramEnd(code); },
  };

  const imports = {
    host: own,
    wasi_snapshot_preview1: standard,
    // The standard library's locales would read dates with the second; nobody does.
    env: { emscripten_notify_memory_growth: () => {}, strptime: () => 0 },
  };
  return { imports, begin: (instance) => { exports = instance.exports; } };
}
