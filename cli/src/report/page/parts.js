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

  // What was mended, by the code of what un-nesting had lost.
  const kMended = {
    "time-remap": "the nest’s remapped clock is worked into the keyframes of its layers",
    stretch: "the nest’s stretch is worked into the keyframes of its layers",
    trim: "layers begin and end no earlier and no later than the nest let them show",
    place: "layers keep their places, on a null that has the nest’s transform",
    parent: "layers hang on a null that moves as the nest did",
    children: "what hung on the nest hangs on a null that moves as it did",
    shear: "turned and squeezed as before, for the nest’s transform stays by itself, on a null",
    "auto-orient": "layers turn along the path as the nest did, on a null",
    "lost-link": "layers beside the nest have their parents back",
    opacity: "the nest’s opacity is multiplied into that of each layer",
    "blend-mode": "the layer that is seen has the nest’s blend mode",
    mask: "layers that the nest’s masks cut have those masks themselves",
    clip: "layers that the nest’s frame cut off have masks of that frame",
    "matte-split": "mattes stand right above the layers that they shape again",
    "matte-used": "layers that the nest’s matte shaped have it as a mask or a matte of their own",
    "name-clash": "layers have names of their own, so that expressions find the right ones",
    "long-name": "layers keep their whole names, so that expressions find them",
    "quoted-name": "layers keep their names with quotation marks, so that expressions find them",
    "layer-reference": "expressions ask for layers by their names, no more by numbers that have changed",
  };
  const kLooks = { exact: "looks exactly the same", "equal to the eye": "looks the same to every eye", changes: "looks different" };

  // What becomes of a nest when its file is made flat, as elements.
  function outcomeOf(nest) {
    if (nest.becomes === "kept") {
      const said = nest.reasons.some((reason) => reason.weight === "change" && `${reason.code}: ${reason.sentence}` === nest.kept_because);
      const start = element("b", {}, "Stays a nest: ");
      return [said ? element("p", { class: "outcome" }, start, "un-nested and mended as far as possible, it would look different.") :
        element("p", { class: "outcome" }, start, element("span", {}, `${nest.kept_because.replace(/^[a-z-]+: /, "")}.`))];
    }
    const looks = kLooks[nest.verdict];
    if (!nest.mended.length) return [element("p", { class: "outcome" }, element("b", {}, "Becomes flat as it is "), `and ${looks}.`)];
    return [element("p", { class: "outcome" }, element("b", {}, "Becomes flat, mended, "), `and ${looks}:`),
      element("ul", { class: "mended" }, ...nest.mended.map((code) => element("li", {}, element("code", {}, code), kMended[code] ?? "")))];
  }

  // What matters of what was found: all that un-nesting would do; where the file is made flat, what would be seen if a kept
  // nest were flat, or what is not to be seen of a flat one, and what helps besides keeping it.
  function reasonsOf(nest) {
    const reasons = nest.reasons.filter((reason) => reason.code !== "size");
    if (!nest.becomes) return reasons;
    const weights = nest.becomes === "kept" ? ["change"] : ["change", "slight"];
    const kKeep = /(?:, or |^)keep (?:this|the) nest(?:$|, or )/;
    return reasons.filter((reason) => weights.includes(reason.weight)).map((reason) => ({ ...reason, way_out: reason.way_out?.replace(kKeep, "") }));
  }

  // The frames at which looks begin to change, and what changes there.
  const changesOf = (nests) => nests.flatMap((nest) => nest.reasons
    .filter((reason) => reason.frame !== undefined && reason.weight === "change" && nest.becomes !== "kept")
    .map((reason) => ({ frame: Math.floor(reason.frame), words: `${nest.name}: ${reason.code}` })));

  return { kMended, changesOf, counted, element, fillFacts, growth, grouped, number, outcomeOf, quoted, reasonItem, reasonsOf, setVerdict, shape };
})();
