// The commands in a thread of their own, which can be ended in the middle.
import { HostError, TimeLimitError, unpackError } from "./errors.mjs";

// A thread of this system: {post, end, listen}.
async function startThread(createWorker) {
  if (typeof Worker !== "undefined") {
    const worker = createWorker?.() ?? new Worker(new URL("./worker.mjs", import.meta.url), { type: "module" });
    return {
      post: (message) => worker.postMessage(message),
      end: () => worker.terminate(),
      listen: (reply, failure) => {
        worker.onmessage = (event) => reply(event.data);
        worker.onerror = (event) => failure(new Error(event.message ?? "the worker could not be started"));
      },
    };
  }
  const { Worker: Thread } = await import(/* webpackIgnore: true */ /* @vite-ignore */ "node:worker_threads");
  const worker = new Thread(new URL("./worker.mjs", import.meta.url));
  worker.unref();
  return {
    post: (message) => {
      worker.ref(); // while it works, the process waits for it
      worker.postMessage(message);
    },
    end: () => { worker.terminate(); },
    listen: (reply, failure) => {
      worker.on("message", (message) => {
        worker.unref();
        reply(message);
      });
      worker.on("error", failure);
    },
  };
}

export class ExflateWorker {
  #options;
  #thread = null;
  #queue = Promise.resolve();
  #end = null; // what ends the command under way

  // `timeLimit`: milliseconds for each command, none if it is left out. `program`: as of init(). `createWorker`: makes the
  // Worker, where a bundler cannot see it here.
  constructor(options = {}) {
    this.#options = options;
  }

  flatten(input, options, settings) { return this.#call("flatten", input, options, settings); }
  run(input, options, settings) { return this.#call("run", input, options, settings); }
  check(input, options, settings) { return this.#call("check", input, options, settings); }
  list(input, options, settings) { return this.#call("list", input, options, settings); }

  // Ends the command under way, which throws an AbortError; those that wait go on.
  cancel() {
    this.#end?.(new DOMException("The command was cancelled", "AbortError"));
  }

  // Ends the thread too. A command after it starts another one.
  close() {
    this.cancel();
    this.#drop();
  }

  #drop() {
    this.#thread?.then((thread) => thread.end(), () => {});
    this.#thread = null;
  }

  // `settings`: {signal, timeLimit} of this command.
  #call(command, input, options = {}, settings = {}) {
    const work = this.#queue.then(() => this.#work({ command, input, options }, settings));
    this.#queue = work.catch(() => {});
    return work;
  }

  async #work(request, { signal, timeLimit = this.#options.timeLimit }) {
    signal?.throwIfAborted();
    this.#thread ??= startThread(this.#options.createWorker).then((thread) => ({ ...thread, program: this.#options.program }));
    const thread = await this.#thread;
    let timer;
    const abort = () => this.#end?.(signal.reason);
    try {
      return await new Promise((resolve, reject) => {
        // The engine looks at no flag while it computes: only ending the thread ends the command.
        this.#end = (reason) => {
          this.#drop();
          reject(reason);
        };
        thread.listen(
          ({ result, error }) => (error ? reject(unpackError(error)) : resolve(result)),
          (problem) => {
            this.#drop();
            reject(new HostError(problem.message, 4));
          });
        signal?.addEventListener("abort", abort, { once: true });
        if (timeLimit !== undefined)
          timer = setTimeout(() => this.#end(new TimeLimitError(`not done within ${timeLimit} ms`, 4)), timeLimit);
        thread.post({ ...request, program: thread.program });
        thread.program = undefined; // the first command brings it
      });
    } finally {
      clearTimeout(timer);
      signal?.removeEventListener("abort", abort);
      this.#end = null;
    }
  }
}
