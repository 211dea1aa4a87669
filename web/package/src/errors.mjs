// What can go wrong, a class for each exit code of the command.

// `code` is the command's exit code, `messages` all that the program said.
export class ExflateError extends Error {
  constructor(message, code, messages = []) {
    super(message);
    this.name = new.target.name;
    this.code = code;
    this.messages = messages;
  }
}

// Nothing came out because the look of a nest would change, and the options forbid that.
export class LookChangesError extends ExflateError {}
// The options make no sense, or name something that the animation does not have.
export class UsageError extends ExflateError {}
// The bytes are no animation that can be read.
export class InputError extends ExflateError {}
// The plug-in or its host reported an error, or the engine could not go on.
export class HostError extends ExflateError {}
// The time limit was reached before the work was done.
export class TimeLimitError extends ExflateError {}

const kClasses = { 1: LookChangesError, 2: UsageError, 3: InputError, 4: HostError };
const kByName = Object.fromEntries(
  [LookChangesError, UsageError, InputError, HostError, TimeLimitError].map((type) => [type.name, type]));

export function errorFor(code, messages) {
  const Type = kClasses[code] ?? HostError;
  return new Type(messages.at(-1) ?? `ended with exit code ${code}`, code, messages);
}

// Why the engine could not go on, in a sentence.
export function unableTo(problem) {
  if (problem instanceof RangeError) return "the animation is nested more deeply than this JavaScript engine can follow: use the native command";
  return `the program stopped in the middle (${problem.message}): more memory may be needed than a page or Node.js gives it`;
}

// Errors between threads.
export const packError = (error) =>
  error instanceof ExflateError
    ? { type: error.name, message: error.message, code: error.code, messages: error.messages }
    : { type: "HostError", message: String(error?.message ?? error), code: 4, messages: [] };
export const unpackError = ({ type, message, code, messages }) => new kByName[type](message, code, messages);
