// The commands in a thread of their own, which can be ended in the middle.
import type { Changed, Checked, CheckOptions, Flattened, FlattenOptions, Input, Listing, ListOptions, Program, RunOptions } from "./index.js";

export interface CallSettings {
  /** Ends this command. */
  signal?: AbortSignal;
  /** Milliseconds for this command. */
  timeLimit?: number;
}

export class ExflateWorker {
  constructor(options?: { timeLimit?: number; program?: Program; createWorker?: () => Worker });
  flatten(input: Input, options?: FlattenOptions, settings?: CallSettings): Promise<Flattened>;
  run(input: Input, options?: RunOptions, settings?: CallSettings): Promise<Changed>;
  check(input: Input, options?: CheckOptions, settings?: CallSettings): Promise<Checked>;
  list(input: Input, options?: ListOptions, settings?: CallSettings): Promise<Listing>;
  /** Ends the command under way with an AbortError; those that wait go on. */
  cancel(): void;
  /** Ends the thread. */
  close(): void;
}
