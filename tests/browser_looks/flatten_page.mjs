// What becomes of nests made flat, and how it looks, as Markdown.
import { cell, lottieWebCell, numbers, percent, isOnAnotherClock, rlottieCanJudge, staysInBoth } from "./table.mjs";

const kHead = `# Flat, and looking the same

What \`exflate flatten\` makes of the animations that the tests use, drawn before and after in rlottie and in lottie-web as in
[looks.md](looks.md), with the same limits: **bold** is beyond what people call equal, 0 the same pictures, a number in
parentheses does not count.
`;

function rlottieCell(row) {
  if (!row.pictures) return row.becomes === "kept" ? "" : "none";
  const { equal, mean, share_beyond_8: share, ssim } = row.pictures;
  const text = mean === 0 ? "0" : numbers({ mean, share, ssim });
  return rlottieCanJudge(row) ? cell(equal, text) : `(${text})`;
}

function place(row) {
  return `${row.file} ${row.composition ?? "main"} #${row.number} ${row.name}`;
}

function remedies(row) {
  if (row.becomes === "kept") return `stays: ${row.kept_because.split(":")[0]}`;
  return row.mended.length > 0 ? row.mended.join(", ") : row.bare === "changes" ? "" : "not needed";
}

function nestLine(row) {
  const name = row.name.replaceAll("|", "\\|");
  const cells = [row.file, row.composition ?? "main", `#${row.number} ${name}`, row.bare, remedies(row), rlottieCell(row),
                 row.lottieWeb ? lottieWebCell(row) : ""];
  return `| ${cells.join(" | ")} |`;
}

/** A whole file as a row of its own. */
function asRow(whole) {
  const flat = whole.nests.filter((nest) => nest.becomes === "flat");
  return { ...whole, reasons: flat.flatMap((nest) => nest.reasons).filter(isOnAnotherClock) };
}

function wholeLine(row) {
  const reasons = row.nests.filter((nest) => nest.becomes === "kept").map((nest) => nest.kept_because.split(":")[0]);
  const cells = [row.file, row.nests.length, row.left, [...new Set(reasons)].join(", "), rlottieCell(asRow(row)),
                 lottieWebCell(row), row.bytes[0], `${row.bytes[1]} (${percent(row.bytes[1], row.bytes[0])})`,
                 row.seconds.toFixed(2)];
  return `| ${cells.join(" | ")} |`;
}

function countedBy(keys) {
  const counts = new Map();
  for (const key of keys) counts.set(key, (counts.get(key) ?? 0) + 1);
  return [...counts].sort(([a, m], [b, n]) => n - m || a.localeCompare(b)).map(([key, count]) => `${key} ${count}`).join(", ");
}

function totals(rows, wholes) {
  const flat = rows.filter((row) => row.becomes === "flat");
  const kept = rows.filter((row) => row.becomes === "kept");
  return [
    `- ${rows.length} nests, each by itself: ${flat.filter(staysInBoth).length} become flat and are within the limits in both ` +
      `renderers, ${flat.length - flat.filter(staysInBoth).length} become flat and are not, ${kept.length} stay.`,
    `- Mended for: ${countedBy(flat.flatMap((row) => row.mended))}.`,
    `- What keeps the others, by the first reason: ${countedBy(kept.map((row) => row.kept_because.split(":")[0]))}; by all of ` +
      `their reasons: ${countedBy(kept.flatMap((row) => [...new Set(changes(row))]))}.`,
    `- ${wholes.length} files: ${wholes.filter((row) => row.left === 0).length} without any pre-comp, ` +
      `${wholes.map(asRow).filter(staysInBoth).length} within the limits in both renderers.`,
  ].join("\n");
}

function changes(row) {
  return row.reasons.filter((reason) => reason.weight === "change").map((reason) => reason.code);
}

/**
 * @param rows nests by themselves, as `exflate check --flatten` tells them, with `file`, `bare` (the verdict without mending)
 *   and, if they became flat, `lottieWeb`
 * @param wholes files: `file`, `nests`, `pictures`, `lottieWeb`, `bytes` (before, after), `left`, `seconds`
 */
export function flatteningPage(rows, wholes) {
  return [
    kHead, totals(rows, wholes), "", "## Files", "",
    "| File | Nests | Pre-comps left | Because of | rlottie | lottie-web | Bytes before | Bytes after | Seconds |",
    "|---|---|---|---|---|---|---|---|---|", ...wholes.map(wholeLine), "",
    "## Nests, each by itself", "",
    "Un-nested as `exflate run` does it (its verdict), then mended.", "",
    "| File | Composition | Nest | Un-nested only | Mended for | rlottie | lottie-web |",
    "|---|---|---|---|---|---|---|", ...rows.map(nestLine), "",
  ].join("\n");
}

/** Sentences about what is said to look the same and does not. */
export function falsePromises(rows, wholes) {
  return [
    ...rows.filter((row) => row.becomes === "flat" && !staysInBoth(row)).map((row) => `${place(row)}: does not look the same`),
    ...wholes.map(asRow).filter((row) => !staysInBoth(row)).map((row) => `${row.file}: does not look the same`),
  ];
}
