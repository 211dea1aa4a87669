// The compiled program, once for all calls.

let compiled = null;

async function load(source) {
  if (source instanceof WebAssembly.Module) return source;
  if (ArrayBuffer.isView(source) || source instanceof ArrayBuffer) return WebAssembly.compile(source);
  if (source.protocol === "file:") {
    const { readFile } = await import(/* webpackIgnore: true */ /* @vite-ignore */ "node:fs/promises");
    return WebAssembly.compile(await readFile(source));
  }
  const answer = await fetch(source);
  if (!answer.ok) throw new Error(`exflate.wasm cannot be fetched from ${source}: ${answer.status}`);
  return WebAssembly.compile(await answer.arrayBuffer());
}

// `source`: the bytes of exflate.wasm, a URL of it, or the compiled module; needed only where a bundler moves the file away from
// this one. The first call decides.
export function init(source = compiled ?? new URL("../exflate.wasm", import.meta.url)) {
  compiled ??= load(typeof source === "string" ? new URL(source, globalThis.location?.href) : source);
  return compiled;
}
