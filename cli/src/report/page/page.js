// Fills the report's page from its data.
"use strict";
(() => {
  const byId = (id) => document.getElementById(id);
  const data = JSON.parse(byId("data").textContent);
  const { changesOf, counted, element, fillFacts, growth, grouped, number, outcomeOf, quoted, reasonItem, reasonsOf, setVerdict } = parts;

  const kGroups = [["exact", "exact"], ["equal to the eye", "equal to the eye"], ["changes", "changing"]];

  function pictureWords(pictures) {
    if (pictures.mean === 0) return `the same, pixel for pixel, at all ${counted(pictures.frames, "frame")} drawn`;
    return pictures.equal ? "equal to the eye" : "different";
  }

  // ---- the head

  function summary() {
    const name = `composition ${quoted(data.composition.name)}`;
    if (data.flat) {
      const { nests, un_nested: unNested, mended, kept } = data.flat;
      if (!nests) return "There are no nests: nothing to make flat.";
      if (!unNested) return `None of ${counted(nests, "nest")} becomes flat: the file stays as it is.`;
      const words = [`${number(unNested)} of ${counted(nests, "nest")} ${unNested === 1 ? "becomes" : "become"} flat`];
      if (mended) words.push(`${number(mended)} of them mended`);
      if (kept) words.push(`${number(kept)} ${kept === 1 ? "stays" : "stay"}`);
      return `${words.join(", ")}.`;
    }
    if (!data.nests.length) return `C${name.slice(1)} has no nests: nothing to un-nest.`;
    const counts = kGroups
      .map(([verdict, word]) => [data.nests.filter((nest) => nest.verdict === verdict).length, word])
      .filter(([count]) => count > 0)
      .map(([count, word]) => `${number(count)} ${word}`);
    return `${counted(data.nests.length, "nest")} of ${name}: ${counts.join(", ")}.`;
  }

  function fillHead() {
    const composition = data.composition;
    const name = data.file.replace(/^.*[/\\]/, "") || data.file;
    if (data.flat) byId("kicker").textContent = "What exflate flatten would do";
    document.title = `${name} – ${data.flat ? "made flat" : "un-nesting report"}`;
    byId("file").textContent = name;
    setVerdict(byId("verdict"), data.flat && !data.flat.as_asked ? "changes" : data.verdict);
    if (data.flat) byId("verdict").textContent = data.flat.as_asked ? "flat, look kept" : `${counted(data.flat.left, "pre-comp")} left`;
    byId("summary").textContent = summary();
    const facts = [
      ["Composition", `${number(composition.width)} × ${number(composition.height)}, ${number(composition.frame_rate)} frames a second`],
      ["Layers", `${number(data.layers_before.length)} → ${number(data.layers_after.length)}`],
      ["Bytes of the file", `${grouped(data.bytes_before)} → ${grouped(data.bytes_after)} (${growth(data.bytes_before, data.bytes_after)})`],
    ];
    if (data.pictures) facts.push([data.flat ? "Pictures" : "Pictures, all nests together", pictureWords(data.pictures)]);
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

  const kDrawnOtherwise = "The verdicts say that the look is kept, by comparing the layers themselves. These pictures are drawn by rlottie, " +
    "which draws some things otherwise than other players do, inside nests and outside: play the animation above to see what lottie-web makes of it.";

  function figureOf(source, caption, description) {
    return element("figure", {}, element("img", { src: source, alt: description }), element("figcaption", {}, caption));
  }

  // `reasons` gave the verdict of what the holder's pictures show.
  function fillPictures(block, title, holder, reasons) {
    const pictures = holder.pictures;
    if (holder.pictures_problem) block.append(element("p", { class: "note" }, `No pictures: ${holder.pictures_problem}.`));
    if (!pictures) return;
    const whyText = holder.verdict === "changes" && pictures.equal ? unseenChange(reasons) : data.flat && !pictures.equal ? kDrawnOtherwise : "";
    const why = whyText ? [element("p", { class: "why" }, whyText)] : [];
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

  function badgeOf(nest) {
    const badge = setVerdict(element("span"), nest.becomes === "kept" ? "changes" : nest.verdict);
    if (nest.becomes) badge.textContent = nest.becomes === "kept" ? "stays" : nest.mended.length ? "flat, mended" : "flat";
    return badge;
  }

  function nestCard(nest, index) {
    const id = `nest-${index + 1}`;
    const come = `${counted(nest.layers, "layer")} ${nest.becomes === "kept" ? "inside" : `come${nest.layers === 1 ? "s" : ""} out`}`;
    const place = data.flat && nest.composition !== null ? ` in composition ${quoted(nest.composition_name)}` : "";
    const card = element("article", { class: "card", "aria-labelledby": id },
      element("div", { class: "card-head" },
        element(data.flat ? "h4" : "h3", { id }, element("span", { class: "place" }, `#${nest.number}`), ` ${nest.name}`, element("span", { class: "place" }, place)),
        badgeOf(nest),
        element("p", { class: "note" }, data.flat ? come : `${come}; the file ${growth(data.bytes_before, nest.bytes_after)}`)));
    if (nest.becomes) card.append(...outcomeOf(nest));
    const reasons = reasonsOf(nest);
    if (reasons.length) card.append(element("ul", { class: "reasons" }, ...reasons.map((reason) => reasonItem(reason, beforeAfter.jumpButton))));
    if (nest.pictures || nest.pictures_problem) {
      const block = element("div", { class: "pictures-block" });
      fillPictures(block, "Pictures", nest, nest.reasons);
      card.append(block);
    }
    return card;
  }

  function fillNests() {
    const cards = data.nests.map(nestCard);
    const place = byId("nests");
    const kept = data.nests.filter((nest) => nest.becomes === "kept").length; // they come first
    if (data.flat) {
      byId("nests-note").textContent = "From the innermost composition outward each nest is un-nested, what that loses is mended, and the look is judged. Where it would change, the nest stays.";
      if (kept) place.append(element("h3", {}, `What stays (${number(data.flat.kept)})`), ...cards.slice(0, kept));
      if (cards.length > kept) place.append(element("h3", {}, `What becomes flat (${number(data.flat.un_nested)})`), ...cards.slice(kept));
      const more = data.flat.nests - cards.length;
      if (more > 0) place.append(element("p", { class: "note" }, `${counted(more, "nest")} more: exflate check --flatten lists every one.`));
    } else {
      place.append(...cards);
    }
    if (!cards.length) place.append(element("p", {}, data.flat ? "There are none." : "There is none in this composition."));
    fillPictures(byId("together"), data.flat ? "Before and made flat" : "All nests together", data, data.nests.flatMap((nest) => nest.reasons));
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
    if (data.flat) byId("messages-title").textContent = "How it ends";
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
