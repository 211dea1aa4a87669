// The page: files in, the program in a worker, results out.
import { TimeLimitError } from "../package/src/errors.mjs";
import { ExflateWorker } from "../package/src/worker_front.mjs";
import { makeTree } from "./tree.mjs";
import { textOf } from "./unpack.mjs";

const { changesOf, counted, element, fillFacts, grouped, growth, number, outcomeOf, quoted, reasonItem, reasonsOf, setVerdict } = parts;
const byId = (id) => document.getElementById(id);

const kTimeLimit = 300000; // milliseconds, for each command
const kMostBytes = 256 * 1024 * 1024;
const kLooks = 24; // frames that are compared

const jobs = []; // {name, bytes, state, listing, checked, result, error}
let shown = null;
let worker = null;

function tell(words) {
  byId("told").textContent = words;
}

// ---- the worker

async function programBytes() {
  const packed = Uint8Array.from(atob(byId("program").textContent), (character) => character.charCodeAt(0));
  return new Uint8Array(await new Response(new Blob([packed]).stream().pipeThrough(new DecompressionStream("gzip"))).arrayBuffer());
}

async function startWorker() {
  const program = await programBytes();
  const source = URL.createObjectURL(new Blob([byId("worker-program").textContent], { type: "text/javascript" }));
  return new ExflateWorker({ program, timeLimit: kTimeLimit, createWorker: () => new Worker(source) });
}

// ---- what to do

const commandNow = () => document.querySelector("input[name=command]:checked").value;

function optionsNow() {
  const value = (name) => document.querySelector(`[name=${name}]`);
  if (commandNow() === "flatten") return { keepUnused: value("keepUnused").checked };
  const options = {};
  for (const name of ["recursive", "deleteSource", "keepInComp", "prependName", "fixRandom"]) options[name] = value(name).checked;
  options[value("copyAttributes").checked ? "copyAttributes" : "discardAttributes"] = true;
  if (value("prefix").value) options.prefix = value("prefix").value;
  return options;
}

// ---- work

let isWorking = false;
let isCancelled = false;

function showProgress(words) {
  const done = jobs.filter((job) => job.state === "done").length;
  byId("progress").max = Math.max(1, jobs.length);
  byId("progress").value = done;
  byId("progress-words").textContent = words;
}

async function step(job, words, work) {
  job.words = words;
  drawList();
  showProgress(`${words} ${job.name}, ${number(jobs.indexOf(job) + 1)} of ${counted(jobs.length, "file")}`);
  return work();
}

async function workOn(job) {
  job.error = null;
  job.result = null;
  job.command = commandNow();
  try {
    if (job.bytes.length > kMostBytes) throw new Error("larger than 256 MB, the most that is read here");
    job.listing ??= await step(job, "Reading", () => worker.list(job.bytes));
    job.result = await step(job, job.command === "flatten" ? "Flattening" : "Un-nesting", () => worker[job.command](job.bytes, optionsNow()));
    job.checked ??= await step(job, "Judging", () => worker.check(job.bytes).catch((error) => {
      if (error.name === "AbortError") throw error;
      return { animations: [] };
    }));
  } catch (error) {
    job.error = error.name === "AbortError" ? "cancelled" : error instanceof TimeLimitError ? "took longer than five minutes" : error.message;
  }
  job.state = "done";
}

async function work() {
  if (isWorking) return;
  isWorking = true;
  isCancelled = false;
  byId("work").hidden = false;
  worker ??= await startWorker();
  for (let job = next(); job; job = next()) {
    await workOn(job);
    drawList();
    if (!shown || shown === job) await show(job);
  }
  isWorking = false;
  byId("work").hidden = true;
  byId("again").disabled = jobs.length === 0;
  byId("all").hidden = jobs.filter((job) => job.result).length < 2;
  const failed = jobs.filter((job) => job.error).length;
  tell(`Done: ${counted(jobs.length - failed, "file")}${failed ? `, ${counted(failed, "file")} with a problem` : ""}.`);
}

function next() {
  const waiting = jobs.filter((job) => job.state === "waiting");
  if (!isCancelled) return waiting[0];
  for (const job of waiting) Object.assign(job, { state: "done", error: "cancelled" });
  return undefined;
}

async function add(files) {
  for (const file of files) {
    jobs.push({ name: file.name, bytes: new Uint8Array(await file.arrayBuffer()), state: "waiting" });
  }
  drawList();
  await work();
}

// ---- the list

function stateWords(job) {
  if (job.state === "waiting") return job.words ? `${job.words} …` : "waiting";
  if (job.error) return job.error === "cancelled" ? "cancelled" : "a problem";
  return `${grouped(job.bytes.length)} → ${grouped(job.result.bytes.length)} bytes`;
}

function drawList() {
  const focused = document.activeElement?.dataset?.job;
  byId("list").replaceChildren(...jobs.map((job, index) => {
    const name = element("button", { type: "button", class: "name", "data-job": index, "aria-current": String(job === shown) }, job.name);
    name.addEventListener("click", async () => {
      if (job.state !== "done") return;
      await show(job);
      byId("file-title").focus();
    });
    const item = element("li", {}, name);
    if (job.state === "done") item.append(setVerdict(element("span"), verdictOf(job)));
    item.lastChild.textContent = job.state === "done" ? headline(job) : item.lastChild.textContent;
    item.append(element("span", { class: "state" }, stateWords(job)));
    return item;
  }));
  if (focused !== undefined) document.querySelector(`[data-job="${focused}"]`)?.focus();
}

// ---- one file

const nestsOf = (job) => (job.result?.animations ?? []).flatMap((animation) => animation.nests);
const leftIn = (job) => nestsOf(job).filter((nest) => nest.becomes === "kept").length;

function verdictOf(job) {
  if (job.error) return "changes";
  if (job.command === "run") return job.checked?.verdict ?? "exact";
  return leftIn(job) > 0 ? "changes" : nestsOf(job).some((nest) => nest.verdict !== "exact") ? "equal to the eye" : "exact";
}

function headline(job) {
  if (job.error) return "no result";
  if (job.command === "run") return { exact: "un-nested, look kept", "equal to the eye": "un-nested, equal to the eye", changes: "un-nested, look may change" }[verdictOf(job)];
  if (leftIn(job) > 0) return `${counted(leftIn(job), "nest")} left`;
  return nestsOf(job).length ? "flat, look kept" : "was flat";
}

function nestCard(nest, at) {
  const id = `nest-${at}`;
  const place = nest.composition === null ? "" : ` in composition ${quoted(nest.composition_name)}`;
  const badge = setVerdict(element("span"), nest.becomes === "kept" ? "changes" : nest.verdict);
  if (nest.becomes === "kept") badge.textContent = "stays nested";
  const card = element("article", { class: "card", "aria-labelledby": id },
    element("div", { class: "card-head" },
      element("h3", { id }, element("span", { class: "place" }, `#${nest.number}`), ` ${nest.name}${place}`), badge));
  if (nest.becomes) card.append(...outcomeOf(nest));
  const reasons = reasonsOf(nest);
  if (reasons.length) card.append(element("ul", { class: "reasons" }, ...reasons.map((reason) => reasonItem(reason, beforeAfter.jumpButton))));
  return card;
}

function fillNests(nests) {
  const kMost = 200;
  const order = [...nests].sort((a, b) => Number(b.becomes === "kept") - Number(a.becomes === "kept"));
  byId("nests").replaceChildren(...order.slice(0, kMost).map(nestCard));
  if (nests.length > kMost) byId("nests").append(element("p", { class: "note" }, `and ${counted(nests.length - kMost, "nest")} more`));
  if (!nests.length) byId("nests").append(element("p", {}, "There was none."));
}

async function show(job) {
  shown = job;
  drawList();
  byId("result").hidden = false;
  byId("file-title").textContent = job.name;
  setVerdict(byId("verdict"), verdictOf(job)).textContent = headline(job);
  byId("problem").hidden = !job.error;
  byId("problem").textContent = job.error ? `${job.error}.` : "";
  byId("save").disabled = !job.result;
  byId("facts").replaceChildren();
  byId("summary").textContent = job.result ? summary(job) : "";
  if (job.result) {
    const [before, after] = [job.bytes.length, job.result.bytes.length];
    fillFacts(byId("facts"), [["Bytes", `${grouped(before)} → ${grouped(after)} (${growth(before, after)})`]]);
  }
  byId("messages").hidden = !job.result?.messages.length;
  byId("messages").querySelector("ul").replaceChildren(...(job.result?.messages ?? []).slice(0, 300).map((words) => element("li", {}, words)));
  const animations = job.listing?.animations ?? [];
  byId("which-label").hidden = animations.length < 2;
  byId("which").replaceChildren(...animations.map((animation, index) => element("option", { value: index }, animation.id ?? job.name)));
  await showAnimation(0);
}

function summary(job) {
  if (job.command === "run") return "The plug-in’s command as its dialog would run it.";
  const nests = nestsOf(job);
  const mended = nests.filter((nest) => nest.mended?.length).length;
  const kept = leftIn(job);
  const words = [`${counted(nests.length - kept, "nest")} taken out`];
  if (mended) words.push(`${number(mended)} of them mended so that the look stays`);
  if (kept) words.push(`${number(kept)} kept because the look would change`);
  return nests.length ? `${words.join(", ")}.` : "It has no nests: nothing to do.";
}

async function showAnimation(index) {
  const job = shown;
  const listed = job.listing?.animations[index];
  for (const id of ["animation", "nests-title", "tree-title"]) (id === "animation" ? byId(id) : byId(id).parentElement).hidden = !listed || !job.result;
  if (!listed || !job.result) return;
  const checked = job.checked?.animations[index]?.nests ?? [];
  const nests = job.command === "flatten" ? job.result.animations[index].nests : checked;
  fillNests(nests);
  byId("tree").replaceChildren(makeTree(listed.compositions, checked));
  byId("worst").textContent = "";
  const [before, after] = await Promise.all([textOf(job.bytes, listed.id), textOf(job.result.bytes, listed.id)]);
  if (shown !== job) return;
  const main = listed.compositions.find((composition) => composition.id === null) ?? listed.compositions[0];
  const animation = JSON.parse(before);
  const marks = nests.flatMap((nest) => nest.reasons.filter((reason) => reason.frame !== undefined).map((reason) => Math.floor(reason.frame)));
  beforeAfter.open({
    before: animation, after: JSON.parse(after), rate: main.frame_rate, first: Number(animation.ip) || 0,
    width: main.width, height: main.height, marks: changesOf(nests),
    whenOpen: () => findWorst(job, animation, marks),
  });
}

// The frames at which the two players are furthest apart, of a comb of them and of those that verdicts name.
async function findWorst(job, animation, marks) {
  const count = Math.max(1, Math.ceil(animation.op - animation.ip));
  const comb = Array.from({ length: Math.min(kLooks, count) }, (_, i) => Math.floor((i * count) / Math.min(kLooks, count)));
  const frames = [...new Set([...comb, ...marks.map((frame) => frame - animation.ip)])].filter((frame) => frame >= 0 && frame < count).slice(0, 2 * kLooks);
  const differences = await beforeAfter.measure(frames);
  frames.length = differences.length;
  if (shown !== job) return;
  const told = byId("worst");
  if (!differences.length) {
    told.textContent = "The two could not be compared as pictures.";
    return;
  }
  const worst = frames.map((frame, i) => [differences[i], frame]).sort((a, b) => b[0] - a[0]).slice(0, 3).filter(([value]) => value > 0.05);
  if (!worst.length) {
    told.textContent = `Drawn small, the two are the same at all ${counted(frames.length, "frame")} compared.`;
    return;
  }
  told.replaceChildren(`Furthest apart of ${counted(frames.length, "frame")} compared: `,
    ...worst.flatMap(([value, frame], i) => [i ? ", " : "", beforeAfter.jumpButton(frame + animation.ip), ` (mean difference ${value.toFixed(2)} of 255)`]));
}

// ---- results

const resultName = (name) => name.replace(/(\.[a-z]+)?$/i, (extension) => `_flat${extension || ".json"}`);

function save(job) {
  const link = element("a", { href: URL.createObjectURL(new Blob([job.result.bytes], { type: "application/octet-stream" })), download: resultName(job.name) });
  link.click();
  setTimeout(() => URL.revokeObjectURL(link.href), 60000);
}

// ---- what people do

byId("choose").addEventListener("click", () => byId("chosen").click());
byId("chosen").addEventListener("change", async (event) => {
  const files = [...event.target.files];
  event.target.value = "";
  await add(files);
});
for (const kind of ["dragover", "dragleave", "drop"]) {
  addEventListener(kind, (event) => {
    event.preventDefault();
    byId("drop").classList.toggle("over", kind === "dragover");
    if (kind === "drop" && event.dataTransfer?.files.length) add([...event.dataTransfer.files]);
  });
}
const pasted = (text) => add([new File([text], `pasted ${jobs.length + 1}.json`)]);
addEventListener("paste", (event) => {
  if (event.target.matches?.("textarea, input[type=text]")) return;
  const { files } = event.clipboardData;
  if (files.length) add([...files]);
  else if (event.clipboardData.getData("text").trim()) pasted(event.clipboardData.getData("text"));
});
byId("add-paste").addEventListener("click", () => {
  const text = byId("paste").value;
  if (!text.trim()) return byId("paste").focus();
  byId("paste").value = "";
  byId("paste-details").open = false;
  pasted(text);
});
for (const radio of document.querySelectorAll("input[name=command]")) {
  radio.addEventListener("change", () => { byId("choices").dataset.command = commandNow(); });
}
// The dialog allows one of the two.
for (const [name, other] of [["deleteSource", "keepInComp"], ["keepInComp", "deleteSource"]]) {
  document.querySelector(`[name=${name}]`).addEventListener("change", (event) => {
    if (event.target.checked) document.querySelector(`[name=${other}]`).checked = false;
  });
}
byId("again").addEventListener("click", () => {
  for (const job of jobs) job.state = "waiting";
  byId("again").disabled = true;
  byId("progress-words").textContent = "Working";
  work();
});
byId("cancel").addEventListener("click", () => {
  isCancelled = true;
  worker?.cancel();
  byId("choose").focus();
});
byId("save").addEventListener("click", () => save(shown));
byId("save-all").addEventListener("click", () => jobs.filter((job) => job.result).forEach(save));
byId("which").addEventListener("change", (event) => showAnimation(Number(event.target.value)));
