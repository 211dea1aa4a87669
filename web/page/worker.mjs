// The thread of the page: it gets the program's bytes with the first command, for it can fetch nothing.
import { answer } from "../package/src/answer.mjs";

let compiled = null;
const load = (program) => (compiled ??= WebAssembly.compile(program));
globalThis.onmessage = (event) => answer(event.data, load, (reply) => globalThis.postMessage(reply));
