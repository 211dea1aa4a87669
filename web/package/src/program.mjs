// Runs the program once: a fresh instance each time, so that nothing of one run is left for the next.
import { makeSystem, ProgramEnd } from "./system.mjs";

// `module` is the compiled program; returns its exit code. What the engine itself cannot do (no stack or memory left) is thrown
// as a RangeError or a WebAssembly.RuntimeError.
export function runProgram(module, surroundings) {
  const system = makeSystem(surroundings);
  const instance = new WebAssembly.Instance(module, system.imports);
  system.begin(instance);
  try {
    instance.exports._start();
    return 0;
  } catch (end) {
    if (end instanceof ProgramEnd) return end.code;
    throw end;
  }
}
