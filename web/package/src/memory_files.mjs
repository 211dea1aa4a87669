// Files in memory: what the program sees where it has no disk. A name is one file; there are no folders.
const encoder = new TextEncoder();

const refuse = (reason) => { throw new Error(reason); };

// `contents` is a Map of names to bytes; results are put into it.
export function memoryFiles(contents) {
  return {
    kind: (name) => (contents.has(name) ? "file" : "none"),
    entries: () => refuse("there are no folders"),
    real: (name) => name,
    identity: () => null,
    read: (name, limit) => {
      const bytes = contents.get(name) ?? refuse("No such file or directory");
      return bytes.length > limit ? refuse(`it is larger than ${Math.floor(limit / 1048576)} MB, the most that is read`) : bytes;
    },
    makeFolder: () => {},
    move: (name, to) => {
      if (!contents.has(name)) return;
      contents.set(to, contents.get(name));
      contents.delete(name);
    },
    replace: (name, bytes) => { contents.set(name, bytes); },
  };
}

// Streams in memory: nothing to read, and everything written kept.
export function memoryStreams() {
  const written = { output: [], error: [] };
  const joined = (parts) => {
    const all = new Uint8Array(parts.reduce((sum, part) => sum + part.length, 0));
    let at = 0;
    for (const part of parts) {
      all.set(part, at);
      at += part.length;
    }
    return all;
  };
  return {
    readAll: () => new Uint8Array(),
    writeOutput: (bytes) => written.output.push(bytes),
    writeError: (bytes) => written.error.push(bytes),
    outputIsTerminal: () => false,
    errorIsTerminal: () => false,
    output: () => joined(written.output),
    errors: () => new TextDecoder().decode(joined(written.error)),
  };
}

export const bytesOf = (input) => (typeof input === "string" ? encoder.encode(input) : input);
