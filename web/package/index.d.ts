// Un-nests compositions of Lottie animations: the commands of exflate as functions.

/** A Lottie animation as text or bytes, or a packed one (.lottie, .tgs) as bytes. */
export type Input = string | Uint8Array;

export type Verdict = "exact" | "equal to the eye" | "changes";

export interface Finding {
  /** What kind of reason it is, one word that does not change. */
  code: string;
  weight: "harmless" | "slight" | "change";
  sentence: string;
  way_out?: string;
  layer?: string;
  property?: string;
  frame?: number;
}

/** What became of one nest. */
export interface FlattenedNest extends CheckedNest {
  becomes: "flat" | "kept";
  /** Of a kept nest: the code of a reason and a sentence. */
  kept_because?: string;
  /** Of a flat one: the codes of what was mended so that the look stays. */
  mended?: string[];
}

export interface FlattenedAnimation extends CheckedAnimation {
  nests: FlattenedNest[];
}

export interface Changed {
  /** The file after it, in the form that it had. */
  bytes: Uint8Array;
  /** The same as text; null for packed files. */
  text: string | null;
  /** 0, or 1 where the look changes or a nest had to stay. */
  code: 0 | 1;
  /** What the command said, sentence by sentence. */
  messages: string[];
}

export interface Flattened extends Changed {
  /** What became of each nest; null with `all`, `exact` or `maxGrowth`. */
  animations: FlattenedAnimation[] | null;
}

export interface CheckedNest {
  composition: string | null;
  composition_name: string;
  number: number;
  name: string;
  /** How many layers come out of it. */
  layers: number;
  /** The size of the animation with this nest un-nested. */
  bytes_after: number;
  verdict: Verdict;
  reasons: Finding[];
}

export interface CheckedAnimation {
  file: string;
  bytes: number;
  verdict: Verdict | null;
  error?: string;
  /** Where in the animation's text the error is, from 1. */
  line?: number;
  column?: number;
  nests: CheckedNest[];
}

export interface Checked {
  /** The worst of all. */
  verdict: Verdict;
  animations: CheckedAnimation[];
}

export interface Layer {
  number: number;
  type: string;
  name: string;
  in: number;
  out: number;
  /** Of a nest: the composition that it shows. */
  composition?: string | null;
}

export interface Composition {
  id: string | null;
  name: string;
  width: number;
  height: number;
  frame_rate: number;
  layers: Layer[];
}

export interface ListedAnimation {
  file: string;
  id?: string;
  compositions: Composition[];
}

export interface Listing {
  animations: ListedAnimation[];
}

/** Options are those of the command line: `keepUnused: true` is --keep-unused. */
export interface CommonOptions {
  /** Only the animation of this id in a .lottie file. */
  animation?: string;
}

export interface ScriptOptions extends CommonOptions {
  /** Seconds that the scripts of an animation may take. */
  scriptTime?: number;
}

/** What is un-nested. */
export interface SelectionOptions extends ScriptOptions {
  /** The composition by id or name. */
  comp?: string;
  /** Names of nests, or "#3" for the third layer; all if it is left out. */
  layer?: string | string[];
}

export interface FlattenOptions extends SelectionOptions {
  keepUnused?: boolean;
  /** Everything, whatever becomes of the look. */
  all?: boolean;
  /** Nothing but what stays exactly the same. */
  exact?: boolean;
  /** Percent that the file may grow. */
  maxGrowth?: number;
}

/** The answers to the plug-in's dialog. */
export interface DialogOptions extends SelectionOptions {
  copyAttributes?: boolean;
  discardAttributes?: boolean;
  deleteSource?: boolean;
  keepInComp?: boolean;
  prefix?: string;
  prependName?: boolean;
  fixRandom?: boolean;
}

export interface RunOptions extends DialogOptions {
  recursive?: boolean;
  strict?: boolean;
  onlyExact?: boolean;
  keepLook?: boolean;
  /** Percent that the file may grow. */
  maxGrowth?: number;
}

export type CheckOptions = DialogOptions;
export type ListOptions = CommonOptions;

/** Nested to flat, with the look kept. */
export function flatten(input: Input, options?: FlattenOptions): Promise<Flattened>;
/** The plug-in's command, with its dialog's choices. */
export function run(input: Input, options?: RunOptions): Promise<Changed>;
/** What un-nesting each nest would do to the look. */
export function check(input: Input, options?: CheckOptions): Promise<Checked>;
/** Compositions and layers. */
export function list(input: Input, options?: ListOptions): Promise<Listing>;

/** Where exflate.wasm is, for bundlers that move it; before anything else. */
export type Program = URL | string | ArrayBuffer | Uint8Array | WebAssembly.Module;
export function init(program?: Program): Promise<WebAssembly.Module>;

export class ExflateError extends Error {
  /** The exit code of the command. */
  readonly code: number;
  /** Everything that the command said. */
  readonly messages: string[];
}
/** Code 1: nothing came out because a look would change, and the options forbid that. */
export class LookChangesError extends ExflateError {}
/** Code 2: the options make no sense, or name something that the animation does not have. */
export class UsageError extends ExflateError {}
/** Code 3: the bytes are no animation that can be read. */
export class InputError extends ExflateError {}
/** Code 4: the plug-in or its host reported an error, or the engine could not go on. */
export class HostError extends ExflateError {}
/** Of a worker: the time limit was reached. */
export class TimeLimitError extends ExflateError {}
