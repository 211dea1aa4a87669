// Un-nests compositions of Lottie animations: the commands of exflate as functions.
import { commands } from "./commands.mjs";
import { init } from "./load.mjs";

export { ExflateError, HostError, InputError, LookChangesError, TimeLimitError, UsageError } from "./errors.mjs";
export { init };

const call = (name) => async (input, options) => commands[name](await init(), input, options);

export const flatten = call("flatten");
export const run = call("run");
export const check = call("check");
export const list = call("list");
