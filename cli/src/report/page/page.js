// Fills the page from its data and works the player.
"use strict";
(() => {
  const byId = (id) => document.getElementById(id);
  const data = JSON.parse(byId("data").textContent);
  const { element, number } = drawing;

  const kVerdictClasses = { exact: "exact", "equal to the eye": "equal", changes: "changes" };
  const kGroups = [["exact", "exact"], ["equal to the eye", "equal to the eye"], ["changes", "changing"]];
  const grouped = (value) => value.toLocaleString("en-GB");
  const counted = (count, noun) => `${number(count)} ${noun}${count === 1 ? "" : "s"}`;
  const quoted = (name) => `“${name}”`;
  const isStill = matchMedia("(prefers-reduced-motion: reduce)");

  function growth(before, after) {
    const percent = before > 0 ? (100 * (after - before)) / before : 0;
    return `${percent < 0 ? "−" : "+"}${Math.abs(percent).toFixed(1)} %`;
  }

  function setVerdict(badge, verdict) {
    badge.textContent = verdict;
    badge.className = `verdict ${kVerdictClasses[verdict]}`;
    return badge;
  }

  function pictureWords(pictures) {
    if (pictures.mean === 0) return `the same, pixel for pixel, at all ${counted(pictures.frames, "frame")} drawn`;
    return pictures.equal ? "equal to the eye" : "different";
  }

  // ---- the head

  function fillHead() {
    const composition = data.composition;
    const parts = kGroups
      .map(([verdict, word]) => [data.nests.filter((nest) => nest.verdict === verdict).length, word])
      .filter(([count]) => count > 0)
      .map(([count, word]) => `${number(count)} ${word}`);
    const name = data.file.replace(/^.*[/\\]/, "") || data.file;
    document.title = `${name} – un-nesting report`;
    byId("file").textContent = name;
    setVerdict(byId("verdict"), data.verdict);
    byId("summary").textContent = data.nests.length
      ? `${counted(data.nests.length, "nest")} of composition ${quoted(composition.name)}: ${parts.join(", ")}.`
      : `Composition ${quoted(composition.name)} has no nests: nothing to un-nest.`;
    const facts = [
      ["Composition", `${number(composition.width)} × ${number(composition.height)}, ${number(composition.frame_rate)} frames a second`],
      ["Layers", `${number(data.stack_before.length)} → ${number(data.stack_after.length)}`],
      ["Bytes of the file", `${grouped(data.bytes_before)} → ${grouped(data.bytes_after)} (${growth(data.bytes_before, data.bytes_after)})`],
    ];
    if (data.pictures) facts.push(["Pictures, all nests together", pictureWords(data.pictures)]);
    if (data.pictures_problem) facts.push(["Pictures", `none: ${data.pictures_problem}`]);
    for (const [name, value] of facts) {
      byId("facts").append(element("div", {}, element("dt", {}, name), element("dd", {}, value)));
    }
    byId("version").textContent = data.version;
    byId("licence").textContent = data.licence;
  }

  // ---- the player

  const player = {
    rate: data.composition.frame_rate || 30,
    first: data.composition.first_frame,
    count: 1,
    frame: 0,
    isPlaying: false,
    isBusy: false, // the stage has not drawn yet what it was asked for
    drawn: -1,

    sentence() {
      return `Frame ${number(this.first + this.frame)}, ${(this.frame / this.rate).toFixed(2)} seconds`;
    },
    say(words) {
      clearTimeout(this.saying);
      this.saying = setTimeout(() => { byId("said").textContent = words; }, 250);
    },
    draw() {
      const scrub = byId("scrub");
      scrub.value = this.frame;
      scrub.setAttribute("aria-valuetext", this.sentence());
      scrub.style.setProperty("--done", `${(100 * this.frame) / Math.max(1, this.count - 1)}%`);
      byId("frame").textContent =
        `${number(this.first + this.frame)} / ${number(this.first + this.count - 1)}`;
      if (this.isBusy || this.drawn === this.frame) return;
      this.isBusy = true;
      stage.send({ kind: "show", frame: this.frame });
    },
    shown(frame) {
      this.isBusy = false;
      this.drawn = frame;
      if (frame !== this.frame) this.draw();
    },
    go(frame) {
      this.frame = Math.min(this.count - 1, Math.max(0, Math.round(frame)));
      this.draw();
    },
    step(frames) {
      this.pause();
      this.go(this.frame + frames);
      this.say(this.sentence());
    },
    play() {
      if (this.isPlaying || byId("play").disabled) return;
      this.isPlaying = true;
      byId("play").textContent = "Pause";
      this.say("Playing");
      this.restart();
      const tick = (now) => {
        if (!this.isPlaying) return;
        const speed = Number(byId("speed").value);
        const frames = ((now - this.since) / 1000) * this.rate * speed;
        this.go((this.from + Math.max(0, Math.floor(frames))) % this.count);
        requestAnimationFrame(tick);
      };
      requestAnimationFrame(tick);
    },
    restart() {
      this.since = performance.now();
      this.from = this.frame;
    },
    pause() {
      if (!this.isPlaying) return;
      this.isPlaying = false;
      byId("play").textContent = "Play";
      this.say(`Paused. ${this.sentence()}`);
    },
    toggle() {
      if (this.isPlaying) this.pause();
      else this.play();
    },
  };

  const kPatience = 30000; // milliseconds

  const stage = {
    owed: 1, // answers; at first, that the frame is ready
    frame: element("iframe", { sandbox: "allow-scripts", tabindex: "-1", title: "The animation before and after", "aria-hidden": "true" }),

    // The frame is shut in by "sandbox"; it inherits the page's policy, and so cannot load anything either.
    open() {
      const nonce = document.currentScript.nonce;
      const text = (id) => byId(id).textContent;
      const pane = (id, name) => `<figure class="pane" id="${id}"><div class="box"></div><figcaption>${name}</figcaption></figure>`;
      this.frame.srcdoc =
        `<!doctype html><html lang="en"><meta charset="utf-8"><title>The animation before and after</title>` +
        `<style>${text("stage-style")}</style><body data-view="side" data-background="white" data-columns="2">` +
        `<div class="stage">${pane("before", "Before")}${pane("after", "After")}</div>` +
        `<script nonce="${nonce}">${text("guard-program")}</script>` +
        `<script nonce="${nonce}">${text("player-program")}</script>` +
        `<script nonce="${nonce}">${text("stage-program")}</script></body></html>`;
      byId("stage").append(this.frame);
      addEventListener("message", (event) => {
        if (this.frame.isConnected && event.source === this.frame.contentWindow) this.hear(event.data);
      });
      this.wait();
      addEventListener("resize", () => this.layout());
    },
    send(message) {
      if (!this.frame.isConnected) return;
      this.frame.contentWindow.postMessage(message, "*");
      if (message.kind === "layout") return;
      this.owed += 1;
      this.wait();
    },
    // An expression may never come to an end; the frame is a program of its own then, and the page goes on.
    wait() {
      clearTimeout(this.waiting);
      this.waiting = setTimeout(() => this.close("it did not answer for half a minute, and an expression in it may have no end"), kPatience);
    },
    // The animation may say anything; more than it was asked for means that its expressions speak.
    hear(message) {
      clearTimeout(this.waiting);
      this.owed -= 1;
      if (this.owed < 0) {
        this.close("its expressions work on the page");
        return;
      }
      if (this.owed > 0) this.wait();
      if (message.kind === "ready") this.load();
      if (message.kind === "opened") this.opened(Number(message.missing));
      if (message.kind === "shown") player.shown(Number(message.frame));
      if (message.kind === "problem") this.complain(`The animation cannot be played: ${message.sentence}.`);
    },
    close(reason) {
      this.frame.remove();
      player.pause();
      for (const id of ["play", "back", "forth", "scrub"]) byId(id).disabled = true;
      this.complain(`The animation was closed: ${reason}.`);
    },
    complain(sentence) {
      byId("stage-problem").textContent = sentence;
      byId("stage-problem").hidden = false;
    },
    load() {
      const before = JSON.parse(byId("before-animation").textContent);
      const after = JSON.parse(byId("after-animation").textContent);
      this.layout();
      player.count = Math.max(1, Math.ceil(before.op - before.ip));
      byId("scrub").max = player.count - 1;
      this.send({ kind: "open", before, after });
    },
    opened(missing) {
      if (missing > 0) {
        byId("missing").textContent = `${counted(missing, "picture")} of the animation ${missing === 1 ? "lies" : "lie"} outside its file and cannot be shown here.`;
        byId("missing").hidden = false;
      }
      for (const id of ["play", "back", "forth", "scrub"]) byId(id).disabled = false;
      addMarks();
      // The most telling frame; nothing plays by itself.
      const worst = data.pictures && data.pictures.mean > 0 ? data.pictures.worst_frame - player.first : player.count / 2;
      player.go(Math.floor(worst));
    },
    view() {
      return document.querySelector("input[name=view]:checked").value;
    },
    layout() {
      const view = this.view();
      const ratio = data.composition.width / Math.max(1, data.composition.height);
      const room = byId("stage").clientWidth - 24;
      const most = Math.max(180, 0.6 * innerHeight);
      const columns = view === "side" && room >= 560 && ratio < 2.4 ? 2 : 1;
      const rows = view === "side" && columns === 1 ? 2 : 1;
      const width = Math.floor(Math.min((room - 16 * (columns - 1)) / columns, (most / rows) * ratio));
      const height = Math.round(width / ratio);
      this.frame.style.height = `${rows * (height + (view === "side" ? 24 : 0)) + 8 * (rows - 1)}px`;
      document.body.dataset.view = view;
      this.send({ kind: "layout", view, columns, width, height, background: byId("background").value, gain: byId("gain").value });
    },
  };

  function setView(view) {
    document.querySelector(`input[name=view][value=${view}]`).checked = true;
    stage.layout();
    player.say(view === "difference" ? "Difference" : "Side by side");
  }

  const kKeys = {
    " ": () => player.toggle(),
    ArrowLeft: () => player.step(-1),
    ArrowRight: () => player.step(1),
    Home: () => player.step(-Infinity),
    End: () => player.step(Infinity),
    d: () => setView(stage.view() === "difference" ? "side" : "difference"),
  };

  // Keys work while the focus is in the player; a control's own keys come first.
  function hearKey(event) {
    if (event.ctrlKey || event.altKey || event.metaKey) return;
    const target = event.target;
    const ownKeys = target.matches("select, input[type=radio]") ? /^(Arrow.*|Home|End| )$/ : target.matches("button") ? /^ $/ : null;
    const act = kKeys[event.key.length === 1 ? event.key.toLowerCase() : event.key];
    if (!act || (ownKeys && ownKeys.test(event.key))) return;
    event.preventDefault();
    act();
  }

  function wirePlayer() {
    byId("play").addEventListener("click", () => player.toggle());
    byId("back").addEventListener("click", () => player.step(-1));
    byId("forth").addEventListener("click", () => player.step(1));
    byId("stage").addEventListener("click", () => player.toggle());
    byId("scrub").addEventListener("input", (event) => {
      player.pause();
      player.go(Number(event.target.value));
    });
    byId("speed").addEventListener("change", () => player.restart());
    byId("animation").addEventListener("keydown", hearKey);
    for (const radio of document.querySelectorAll("input[name=view]")) {
      radio.addEventListener("change", () => setView(radio.value));
    }
    for (const id of ["background", "gain"]) byId(id).addEventListener("change", () => stage.layout());
  }

  // Frames of the composition that are worth a look, as marks over the scrubber.
  function addMarks() {
    const frames = new Set();
    for (const nest of data.nests) {
      for (const reason of nest.reasons) if (reason.frame !== undefined && reason.weight === "change") frames.add(Math.floor(reason.frame));
    }
    const last = Math.max(1, player.count - 1);
    for (const frame of frames) {
      const place = (frame - player.first) / last;
      if (place < 0 || place > 1) continue;
      const mark = element("span", {});
      mark.style.left = `${100 * place}%`;
      byId("marks").append(mark);
    }
  }

  function jumpButton(frame) {
    const button = element("button", { type: "button", class: "jump" }, `Show frame ${number(Math.floor(frame))}`);
    button.addEventListener("click", () => {
      player.pause();
      player.go(Math.floor(frame) - player.first);
      byId("animation").scrollIntoView({ behavior: isStill.matches ? "auto" : "smooth" });
      byId("stage").focus({ preventScroll: true });
      player.say(player.sentence());
    });
    return button;
  }

  // ---- pictures of the worst frame

  function figureOf(source, caption, description) {
    return element("figure", {}, element("img", { src: source, alt: description }), element("figcaption", {}, caption));
  }

  function fillPictures(block, title, holder) {
    const pictures = holder.pictures;
    if (holder.pictures_problem) block.append(element("p", { class: "note" }, `No pictures: ${holder.pictures_problem}.`));
    if (!pictures) return;
    if (pictures.mean === 0) {
      block.append(element("p", { class: "note" }, `${title}: ${pictureWords(pictures)}.`));
      return;
    }
    const frame = number(pictures.worst_frame);
    block.append(element("p", {}, element("strong", {}, `${title}: ${pictureWords(pictures)}. `),
      `Furthest apart at frame ${frame}, of ${counted(pictures.frames, "frame")} drawn. `, jumpButton(pictures.worst_frame)));
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
    block.append(element("dl", { class: "facts small" }, ...figures.map(([name, value]) => element("div", {}, element("dt", {}, name), element("dd", {}, value)))));
  }

  // ---- the nests

  const kWeights = { change: "changes the look", slight: "not to be seen", harmless: "harmless" };

  function reasonItem(reason) {
    const item = element("li", { class: `reason ${reason.weight}` },
      element("p", {}, element("code", {}, reason.code), element("span", { class: "weight" }, kWeights[reason.weight])),
      element("p", { class: "sentence" }, `${reason.sentence}. `));
    if (reason.frame !== undefined) item.lastChild.append(jumpButton(reason.frame));
    if (reason.way_out) item.append(element("p", { class: "way-out" }, element("b", {}, "What helps: "), `${reason.way_out}.`));
    return item;
  }

  function nestCard(nest) {
    const card = element("article", { class: "card", "aria-labelledby": `nest-${nest.number}` },
      element("div", { class: "card-head" },
        element("h3", { id: `nest-${nest.number}` }, element("span", { class: "place" }, `#${nest.number}`), ` ${nest.name}`),
        setVerdict(element("span"), nest.verdict),
        element("p", { class: "note" }, `${counted(nest.layers, "layer")} come${nest.layers === 1 ? "s" : ""} out; the file ${growth(data.bytes_before, nest.bytes_after)}`)));
    const reasons = nest.reasons.filter((reason) => reason.code !== "size");
    if (reasons.length) card.append(element("ul", { class: "reasons" }, ...reasons.map(reasonItem)));
    const block = element("div", { class: "pictures-block" });
    fillPictures(block, "Pictures", nest);
    card.append(block);
    return card;
  }

  function fillNests() {
    for (const nest of data.nests) byId("nests").append(nestCard(nest));
    if (!data.nests.length) byId("nests").append(element("p", {}, "There is none in this composition."));
    fillPictures(byId("together"), "All nests together", data);
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

  fillHead();
  fillNests();
  drawing.fill(data);
  fillCommand();
  wirePlayer();
  stage.open();
})();
