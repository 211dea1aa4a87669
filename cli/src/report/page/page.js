// Fills the report's page from its data.
"use strict";
(() => {
  const byId = (id) => document.getElementById(id);
  const data = JSON.parse(byId("data").textContent);
  const { changesOf, counted, element, fillFacts, growth, grouped, number, quoted, reasonItem, setVerdict } = parts;

  const kGroups = [["exact", "exact"], ["equal to the eye", "equal to the eye"], ["changes", "changing"]];

  function pictureWords(pictures) {
    if (pictures.mean === 0) return `the same, pixel for pixel, at all ${counted(pictures.frames, "frame")} drawn`;
    return pictures.equal ? "equal to the eye" : "different";
  }

  // ---- the head

  function fillHead() {
    const composition = data.composition;
    const counts = kGroups
      .map(([verdict, word]) => [data.nests.filter((nest) => nest.verdict === verdict).length, word])
      .filter(([count]) => count > 0)
      .map(([count, word]) => `${number(count)} ${word}`);
    const name = data.file.replace(/^.*[/\\]/, "") || data.file;
    document.title = `${name} – un-nesting report`;
    byId("file").textContent = name;
    setVerdict(byId("verdict"), data.verdict);
    byId("summary").textContent = data.nests.length
      ? `${counted(data.nests.length, "nest")} of composition ${quoted(composition.name)}: ${counts.join(", ")}.`
      : `Composition ${quoted(composition.name)} has no nests: nothing to un-nest.`;
    const facts = [
      ["Composition", `${number(composition.width)} × ${number(composition.height)}, ${number(composition.frame_rate)} frames a second`],
      ["Layers", `${number(data.stack_before.length)} → ${number(data.stack_after.length)}`],
      ["Bytes of the file", `${grouped(data.bytes_before)} → ${grouped(data.bytes_after)} (${growth(data.bytes_before, data.bytes_after)})`],
    ];
    if (data.pictures) facts.push(["Pictures, all nests together", pictureWords(data.pictures)]);
    if (data.pictures_problem) facts.push(["Pictures", `none: ${data.pictures_problem}`]);
    fillFacts(byId("facts"), facts);
    byId("version").textContent = data.version;
    byId("licence").textContent = data.licence;
  }

  // ---- pictures of the worst frame

  // What the renderer of the pictures does not know, by the codes of reasons.
  const kUnknownToPictures = {
    "expressions": ["transform-expression", "time-in-expression", "composition-in-expression", "index-in-expression", "random",
      "layer-reference", "composition-reference", "name-clash", "long-name", "quoted-name"],
    "effects": ["effects"], "layer styles": ["layer-styles"], "blend modes": ["blend-mode", "blend-inside"],
    "adjustment layers": ["adjustment-inside"], "motion blur": ["motion-blur"], "cameras": ["camera"],
    "state machines and themes": ["interaction"],
  };

  // Why pictures show nothing of what the verdict says.
  function unseenChange(reasons) {
    const codes = new Set(reasons.filter((reason) => reason.weight === "change").map((reason) => reason.code));
    const unknown = Object.entries(kUnknownToPictures).filter(([, known]) => known.some((code) => codes.has(code))).map(([word]) => word);
    return unknown.length
      ? `The pictures cannot show what changes: they are drawn by rlottie, which knows no ${unknown.join(" and no ")}. Other players show it: play the animation above.`
      : "The verdict compares the layers themselves and is careful: it says “changes” where it cannot exclude a change. None showed at the frames drawn; look at the others above.";
  }

  function figureOf(source, caption, description) {
    return element("figure", {}, element("img", { src: source, alt: description }), element("figcaption", {}, caption));
  }

  // `reasons` gave the verdict of what the holder's pictures show.
  function fillPictures(block, title, holder, reasons) {
    const pictures = holder.pictures;
    if (holder.pictures_problem) block.append(element("p", { class: "note" }, `No pictures: ${holder.pictures_problem}.`));
    if (!pictures) return;
    const why = holder.verdict === "changes" && pictures.equal ? [element("p", { class: "why" }, unseenChange(reasons))] : [];
    if (pictures.mean === 0) {
      block.append(element("p", { class: "note" }, `${title}: ${pictureWords(pictures)}.`), ...why);
      return;
    }
    const frame = number(pictures.worst_frame);
    block.append(element("p", {}, element("strong", {}, `${title}: ${pictureWords(pictures)}. `),
      `Furthest apart at frame ${frame}, of ${counted(pictures.frames, "frame")} drawn. `, beforeAfter.jumpButton(pictures.worst_frame)), ...why);
    if (holder.worst) {
      block.append(element("div", { class: "pictures" },
        figureOf(holder.worst.before, "Before", `Frame ${frame} before`),
        figureOf(holder.worst.after, "After", `Frame ${frame} after`),
        figureOf(holder.worst.difference, "Difference × 4", `Difference of frame ${frame}: black is equal`)));
    } else if (!pictures.equal) {
      block.append(element("p", { class: "note" }, "The pictures are left out, for the page has many already."));
    }
    const figures = [
      ["Mean difference", pictures.mean < 0.001 ? "below 0.001 of 255" : `${pictures.mean.toFixed(3)} of 255`],
      ["Pixels beyond 8", `${(100 * pictures.share_beyond_8).toFixed(2)} %`],
      ["Structural similarity", pictures.ssim.toFixed(4)],
    ];
    block.append(fillFacts(element("dl", { class: "facts small" }), figures));
  }

  // ---- the nests

  function nestCard(nest) {
    const card = element("article", { class: "card", "aria-labelledby": `nest-${nest.number}` },
      element("div", { class: "card-head" },
        element("h3", { id: `nest-${nest.number}` }, element("span", { class: "place" }, `#${nest.number}`), ` ${nest.name}`),
        setVerdict(element("span"), nest.verdict),
        element("p", { class: "note" }, `${counted(nest.layers, "layer")} come${nest.layers === 1 ? "s" : ""} out; the file ${growth(data.bytes_before, nest.bytes_after)}`)));
    const reasons = nest.reasons.filter((reason) => reason.code !== "size");
    if (reasons.length) card.append(element("ul", { class: "reasons" }, ...reasons.map((reason) => reasonItem(reason, beforeAfter.jumpButton))));
    const block = element("div", { class: "pictures-block" });
    fillPictures(block, "Pictures", nest, nest.reasons);
    card.append(block);
    return card;
  }

  function fillNests() {
    for (const nest of data.nests) byId("nests").append(nestCard(nest));
    if (!data.nests.length) byId("nests").append(element("p", {}, "There is none in this composition."));
    fillPictures(byId("together"), "All nests together", data, data.nests.flatMap((nest) => nest.reasons));
  }

  function fillCommand() {
    byId("command").textContent = data.command;
    byId("copy").addEventListener("click", async () => {
      getSelection().selectAllChildren(byId("command"));
      try {
        await navigator.clipboard.writeText(data.command);
        byId("copy").textContent = "Copied";
      } catch {
        byId("copy").textContent = "Selected";
      }
      setTimeout(() => { byId("copy").textContent = "Copy"; }, 2000);
    });
    for (const message of data.messages) byId("messages").querySelector("ul").append(element("li", {}, message));
    byId("messages").hidden = data.messages.length === 0;
  }

  // ---- the player

  function showAnimations() {
    const { composition, pictures } = data;
    beforeAfter.open({
      before: JSON.parse(byId("before-animation").textContent),
      after: JSON.parse(byId("after-animation").textContent),
      rate: composition.frame_rate,
      first: composition.first_frame,
      width: composition.width,
      height: composition.height,
      marks: changesOf(data.nests),
      // The most telling frame.
      ...(pictures && pictures.mean > 0 ? { start: pictures.worst_frame - composition.first_frame } : {}),
    });
  }

  fillHead();
  fillNests();
  drawing.fill(data);
  fillCommand();
  showAnimations();
})();
