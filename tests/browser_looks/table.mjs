// The table of verdicts and pictures as Markdown.

/** A key of the notes. */
function place(row) {
  return `${row.file} ${row.composition ?? "main"} #${row.number}`;
}

/** rlottie counts whole frames inside of nests, so what it shows of other clocks and of fractional starts says nothing. */
const CLOCKS = new Set(["time-remap", "stretch"]);

export function isOnAnotherClock(reason) {
  return CLOCKS.has(reason.code) && reason.weight === "slight";
}

export function rlottieCanJudge(row) {
  return Boolean(row.pictures) && !row.reasons.some((reason) => reason.code === "fractional-start" || isOnAnotherClock(reason));
}

export function staysInBoth(row) {
  return row.lottieWeb.equal && !(rlottieCanJudge(row) && !row.pictures.equal);
}

/** The verdict and the pictures disagree. */
function isException(row) {
  return (row.verdict === "changes") === staysInBoth(row);
}

export function numbers({ mean, share, ssim }) {
  return `${mean.toFixed(3)} · ${(100 * share).toFixed(2)} % · ${ssim.toFixed(4)}`;
}

export function cell(equal, text) {
  return equal ? text : `**${text}**`;
}

function rlottieCell(row) {
  if (!row.pictures) return "none";
  const { equal, mean, share_beyond_8: share, ssim } = row.pictures;
  if (mean === 0) return rlottieCanJudge(row) ? "0" : "(0)";
  return rlottieCanJudge(row) ? cell(equal, numbers({ mean, share, ssim })) : `(${numbers({ mean, share, ssim })})`;
}

export function lottieWebCell({ lottieWeb }) {
  return lottieWeb.mean === 0 ? "0" : cell(lottieWeb.equal, numbers(lottieWeb));
}

function reasons(row) {
  const codes = row.reasons.filter((reason) => reason.weight !== "harmless").map((reason) => reason.code);
  return [...new Set(codes)].join(", ");
}

function line(row, notes) {
  const name = row.name.replaceAll("|", "\\|");
  const cells = [row.file, row.composition ?? "main", `#${row.number} ${name}`, row.verdict, reasons(row),
                 rlottieCell(row), lottieWebCell(row), notes[place(row)] ?? ""];
  return `| ${cells.join(" | ")} |`;
}

export function percent(part, whole) {
  return whole === 0 ? "none" : `${((100 * part) / whole).toFixed(1)} %`;
}

function totals(rows) {
  const called = (verdict) => rows.filter((row) => row.verdict === verdict);
  const stay = rows.filter(staysInBoth);
  const keepCalled = stay.filter((row) => row.verdict !== "changes");
  const held = (some) => some.filter(staysInBoth).length;
  return [
    `- ${rows.length} nests: ${called("exact").length} called \`exact\`, ${called("equal to the eye").length} ` +
      `\`equal to the eye\`, ${called("changes").length} \`changes\`.`,
    `- Of those called \`exact\`, ${held(called("exact"))} of ${called("exact").length} are within the limits in both ` +
      `renderers; of those called \`equal to the eye\`, ${held(called("equal to the eye"))} of ` +
      `${called("equal to the eye").length}.`,
    `- ${stay.length} nests are within the limits in both; ${keepCalled.length} of them ` +
      `(${percent(keepCalled.length, stay.length)}) are called \`exact\` or \`equal to the eye\`.`,
    `- lottie-web compared ${rows.reduce((sum, row) => sum + row.lottieWeb.frames, 0)} pairs of pictures, rlottie ` +
      `${rows.reduce((sum, row) => sum + (row.pictures?.frames ?? 0), 0)}.`,
  ].join("\n");
}

const kHead = `# Verdicts and pictures

What \`exflate check\` says of each nest of the animations that the tests use, and how far the pictures of the composition
that holds it are apart before and after the nest alone is un-nested: in rlottie (\`check --prove\`) and in lottie-web in a
browser. Both are 400 pixels wide over white; a cell gives the worst frame: mean difference (0 to 255), pixels more than 8
apart, SSIM; 0 means the same pictures, **bold** beyond what people call equal (rlottie: 0.1, 0.1 %, 0.998; lottie-web,
which draws edges anew without a group: 0.3, 1 %, 0.995). In parentheses what does not count: rlottie knows whole frames
only. Reasons without weight are left out. \`tests/browser_looks/README.md\` tells how the table is made.
`;

export function table(rows, notes) {
  return [kHead, totals(rows), "",
          "| File | Composition | Nest | Verdict | Reasons | rlottie | lottie-web | Why verdict and pictures differ |",
          "|---|---|---|---|---|---|---|---|", ...rows.map((row) => line(row, notes)), ""].join("\n");
}

/** Sentences about exceptions without a cause and causes without an exception. */
export function problems(rows, notes) {
  const exceptions = new Set(rows.filter(isException).map(place));
  return [...[...exceptions].filter((key) => !(key in notes)).map((key) => `${key}: verdict and pictures differ; no cause given`),
          ...Object.keys(notes).filter((key) => !exceptions.has(key)).map((key) => `${key}: a cause is given, but verdict and pictures agree`)];
}
