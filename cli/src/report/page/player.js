// The player of before and after: two animations in one shut frame, and what works them. Its markup is player.html.
"use strict";
const beforeAfter = (() => {
  const { counted, element, number } = parts;
  const byId = (id) => document.getElementById(id);
  const isStill = matchMedia("(prefers-reduced-motion: reduce)");
  const nonce = document.currentScript.nonce;

  const player = {
    rate: 30,
    first: 0,
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
    shown: null, // what open() was given
    owed: 1, // answers; at first, that the frame is ready
    frame: null,

    // The frame is shut in by "sandbox"; it inherits the page's policy, and so cannot load anything either.
    open() {
      this.frame?.remove();
      this.frame = element("iframe", { sandbox: "allow-scripts", tabindex: "-1", title: "The animation before and after", "aria-hidden": "true" });
      this.owed = 1;
      byId("stage").classList.add("loading");
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
      this.wait();
    },
    send(message) {
      if (!this.frame?.isConnected) return;
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
      if (message.kind === "measured") this.measured?.(Array.from(message.differences ?? [], Number));
      if (message.kind === "problem") this.complain(`The animation cannot be played: ${message.sentence}.`);
    },
    close(reason) {
      this.frame.remove();
      player.pause();
      for (const id of ["play", "back", "forth", "scrub"]) byId(id).disabled = true;
      this.complain(`The animation was closed: ${reason}.`);
    },
    complain(sentence) {
      byId("stage").classList.remove("loading");
      byId("stage-problem").textContent = sentence;
      byId("stage-problem").hidden = false;
    },
    load() {
      const { before, after } = this.shown;
      this.layout();
      byId("scrub").max = player.count - 1;
      this.send({ kind: "open", before, after });
    },
    opened(missing) {
      byId("stage").classList.remove("loading");
      if (missing > 0) {
        byId("missing").textContent = `${counted(missing, "picture")} of the animation ${missing === 1 ? "lies" : "lie"} outside its file and cannot be shown here.`;
        byId("missing").hidden = false;
      }
      for (const id of ["play", "back", "forth", "scrub"]) byId(id).disabled = false;
      addMarks(this.shown.marks);
      player.go(Math.floor(this.shown.start)); // nothing plays by itself
      this.shown.whenOpen?.();
    },
    view() {
      return document.querySelector("input[name=view]:checked").value;
    },
    layout() {
      const view = this.view();
      if (!this.shown) return;
      const ratio = this.shown.width / Math.max(1, this.shown.height);
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

  // The keys that a control wants for itself.
  function ownKeys(target) {
    if (target.matches("input[type=text], textarea")) return /./;
    if (target.matches("select, input[type=radio]")) return /^(Arrow.*|Home|End| )$/;
    if (target.matches("button, summary, input[type=checkbox]")) return /^ $/;
    // What can be scrolled sideways.
    return target.scrollWidth > target.clientWidth && target.matches("[tabindex='0']") ? /^Arrow/ : null;
  }

  // Keys work wherever the focus is, while there is something to play; a control's own keys come first.
  function hearKey(event) {
    if (event.ctrlKey || event.altKey || event.metaKey || byId("play").disabled) return;
    const act = kKeys[event.key.length === 1 ? event.key.toLowerCase() : event.key];
    if (!act || ownKeys(event.target)?.test(event.key)) return;
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
    document.addEventListener("keydown", hearKey);
    for (const radio of document.querySelectorAll("input[name=view]")) {
      radio.addEventListener("change", () => setView(radio.value));
    }
    for (const id of ["background", "gain"]) byId(id).addEventListener("change", () => stage.layout());
  }

  const kMostCaptions = 6;

  // Frames of the composition that are worth a look: dots over the scrubber, and below it what each is about.
  function addMarks(marks) {
    const words = new Map();
    for (const mark of marks) words.set(mark.frame, new Set([...(words.get(mark.frame) ?? []), mark.words]));
    const captions = [...words].sort(([a], [b]) => a - b).map(([frame, all]) => [frame, [...all].join("; ")]);
    const last = Math.max(1, player.count - 1);
    byId("marks").replaceChildren(...captions.filter(([frame]) => frame >= player.first && frame <= player.first + last).map(([frame, caption]) => {
      const mark = element("span", { title: `Frame ${number(frame)}: ${caption}` });
      mark.style.left = `${(100 * (frame - player.first)) / last}%`;
      mark.addEventListener("click", () => player.step(frame - player.first - player.frame));
      return mark;
    }));
    const items = captions.map(([frame, caption]) => element("li", {}, jumpButton(frame), ` ${caption}`));
    const block = byId("mark-captions");
    block.replaceChildren("Where a look begins to change, with a dot each:", element("ul", {}, ...items.slice(0, kMostCaptions)));
    if (items.length > kMostCaptions) {
      block.append(element("details", {}, element("summary", {}, `${number(items.length - kMostCaptions)} more`), element("ul", {}, ...items.slice(kMostCaptions))));
    }
    block.hidden = items.length === 0;
  }

  // A button that brings the composition's frame to the stage.
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

  // Shows two animations; those shown before are gone. `marks` are frames of the composition with words for
  // each, as parts.changesOf gives them; `start` counts from the first.
  function open(shown) {
    player.pause();
    Object.assign(player, {
      rate: shown.rate || 30, first: shown.first, count: Math.max(1, Math.ceil(shown.before.op - shown.before.ip)),
      frame: 0, isBusy: false, drawn: -1,
    });
    for (const id of ["play", "back", "forth", "scrub"]) byId(id).disabled = true;
    for (const id of ["stage-problem", "missing", "mark-captions"]) byId(id).hidden = true;
    stage.shown = { start: player.count / 2, ...shown };
    stage.open();
  }

  // How far the two are apart at these frames, counted from the first: the mean over all channels, 0 to 255. There are fewer
  // numbers than frames where it takes too long or they cannot be drawn as pictures.
  function measure(frames) {
    return new Promise((resolve) => {
      stage.measured = resolve;
      stage.send({ kind: "measure", frames });
    });
  }

  addEventListener("message", (event) => {
    if (stage.frame?.isConnected && event.source === stage.frame.contentWindow) stage.hear(event.data);
  });
  addEventListener("resize", () => stage.layout());
  wirePlayer();
  return { open, measure, jumpButton };
})();
