// Pieces of the pages: elements, words for numbers, verdicts and reasons.
"use strict";
const parts = (() => {
  const kVerdictClasses = { exact: "exact", "equal to the eye": "equal", changes: "changes" };
  const kWeights = { change: "changes the look", slight: "not to be seen", harmless: "harmless" };

  const number = (value) => String(Math.round(value * 1000) / 1000);
  const grouped = (value) => value.toLocaleString("en-GB");
  const counted = (count, noun) => `${number(count)} ${noun}${count === 1 ? "" : "s"}`;
  const quoted = (name) => `“${name}”`;

  function growth(before, after) {
    const percent = before > 0 ? (100 * (after - before)) / before : 0;
    return `${percent < 0 ? "−" : "+"}${Math.abs(percent).toFixed(1)} %`;
  }

  // Text becomes text, never markup.
  function fill(node, attributes, children) {
    for (const [name, value] of Object.entries(attributes)) node.setAttribute(name, value);
    node.append(...children);
    return node;
  }
  const element = (name, attributes = {}, ...children) => fill(document.createElement(name), attributes, children);
  const shape = (name, attributes = {}, ...children) => fill(document.createElementNS("http://www.w3.org/2000/svg", name), attributes, children);

  function setVerdict(badge, verdict) {
    badge.textContent = verdict;
    badge.className = `verdict ${kVerdictClasses[verdict]}`;
    return badge;
  }

  function fillFacts(list, facts) {
    for (const [name, value] of facts) list.append(element("div", {}, element("dt", {}, name), element("dd", {}, value)));
    return list;
  }

  // `jumpButton` makes the button for a frame.
  function reasonItem(reason, jumpButton) {
    const item = element("li", { class: `reason ${reason.weight}` },
      element("p", {}, element("code", {}, reason.code), element("span", { class: "weight" }, kWeights[reason.weight])),
      element("p", { class: "sentence" }, `${reason.sentence}. `));
    if (reason.frame !== undefined) item.lastChild.append(jumpButton(reason.frame));
    if (reason.way_out) item.append(element("p", { class: "way-out" }, element("b", {}, "What helps: "), `${reason.way_out}.`));
    return item;
  }

  // The frames at which looks begin to change, and what changes there.
  const changesOf = (nests) => nests.flatMap((nest) => nest.reasons
    .filter((reason) => reason.frame !== undefined && reason.weight === "change")
    .map((reason) => ({ frame: Math.floor(reason.frame), words: `${nest.name}: ${reason.code}` })));

  return { changesOf, counted, element, fillFacts, growth, grouped, number, quoted, reasonItem, setVerdict, shape };
})();
