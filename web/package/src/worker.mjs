// The thread behind ExflateWorker: one command after another.
import { answer } from "./answer.mjs";
import { init } from "./load.mjs";

if (typeof WorkerGlobalScope === "undefined") {
  const { parentPort } = await import(/* webpackIgnore: true */ /* @vite-ignore */ "node:worker_threads");
  parentPort.on("message", (request) => answer(request, init, (reply) => parentPort.postMessage(reply)));
} else {
  globalThis.onmessage = (event) => answer(event.data, init, (reply) => globalThis.postMessage(reply));
}
