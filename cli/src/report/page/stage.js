// Plays the two animations, shut away: expressions in them run here and reach neither the page nor any network.
"use strict";
(() => {
  const players = [];
  const tell = (message) => parent.postMessage(message, "*");

  // What lies outside the file cannot be shown; asking for it would only fail. Returns how many pictures that are.
  function leaveOutsideOut(animation) {
    let count = 0;
    for (const asset of animation.assets || []) {
      if (typeof asset.p !== "string" || asset.p.startsWith("data:")) continue;
      asset.u = "";
      asset.e = 1;
      asset.p = "data:image/gif;base64,R0lGODlhAQABAIAAAAAAAP///yH5BAEAAAAALAAAAAABAAEAAAIBRAA7";
      count += 1;
    }
    for (const font of (animation.fonts && animation.fonts.list) || []) {
      font.fPath = "";
      font.origin = 0;
      delete font.fOrigin;
    }
    return count;
  }

  function open(id, animation) {
    return new Promise((resolve, reject) => {
      const player = lottie.loadAnimation({
        container: document.querySelector(`#${id} .box`),
        renderer: "svg",
        loop: false,
        autoplay: false,
        animationData: animation,
      });
      players.push(player);
      player.addEventListener("DOMLoaded", () => resolve());
      player.addEventListener("data_failed", () => reject(new Error("the player does not accept this animation")));
      player.addEventListener("error", (event) => reject(event.nativeError || new Error("the player failed")));
      if (player.isLoaded) resolve();
    });
  }

  function show(frame) {
    for (const player of players) player.goToAndStop(frame, true);
    document.body.dataset.frames = players.map((player) => player.currentFrame).join(" ");
    tell({ kind: "shown", frame });
  }

  // ---- how far apart the two are: both drawn small, as pictures, over white

  const kSide = 160; // pixels, of the longer side
  const kMostTime = 6000; // milliseconds

  function small(player, canvas, frame) {
    player.goToAndStop(frame, true);
    const drawn = document.querySelector(`#${player.wrapper.closest(".pane").id} svg`).cloneNode(true);
    drawn.setAttribute("xmlns", "http://www.w3.org/2000/svg");
    drawn.setAttribute("width", canvas.width);
    drawn.setAttribute("height", canvas.height);
    const picture = document.createElement("img");
    picture.src = `data:image/svg+xml;charset=utf-8,${encodeURIComponent(new XMLSerializer().serializeToString(drawn))}`;
    return picture.decode().then(() => {
      const pen = canvas.getContext("2d", { willReadFrequently: true });
      pen.fillStyle = "#fff";
      pen.fillRect(0, 0, canvas.width, canvas.height);
      pen.drawImage(picture, 0, 0, canvas.width, canvas.height);
      return pen.getImageData(0, 0, canvas.width, canvas.height).data;
    });
  }

  async function difference(canvas, frame) {
    const [before, after] = [await small(players[0], canvas, frame), await small(players[1], canvas, frame)];
    let sum = 0;
    for (let i = 0; i < before.length; i += 1) sum += Math.abs(before[i] - after[i]); // the fourth channel is the same
    return (4 * sum) / (3 * before.length);
  }

  const answers = {
    async measure(message) {
      const { w, h } = players[0].animationData;
      const canvas = document.createElement("canvas");
      canvas.width = Math.max(1, Math.round((kSide * w) / Math.max(w, h)));
      canvas.height = Math.max(1, Math.round((kSide * h) / Math.max(w, h)));
      const differences = [];
      const now = players[0].currentFrame;
      const end = performance.now() + kMostTime;
      try {
        for (const frame of message.frames) {
          if (performance.now() > end) break;
          differences.push(await difference(canvas, frame));
        }
      } catch {
        // What cannot be drawn as a picture is not measured.
      }
      for (const player of players) player.goToAndStop(now, true);
      tell({ kind: "measured", differences });
    },
    async open(message) {
      try {
        const missing = leaveOutsideOut(message.before);
        leaveOutsideOut(message.after);
        await Promise.all([open("before", message.before), open("after", message.after)]);
        tell({ kind: "opened", missing });
      } catch (problem) {
        tell({ kind: "problem", sentence: String(problem && problem.message) });
      }
    },
    show(message) {
      try {
        show(message.frame);
      } catch (problem) {
        tell({ kind: "problem", sentence: String(problem && problem.message) });
      }
    },
    layout(message) {
      Object.assign(document.body.dataset, { view: message.view, background: message.background, columns: message.columns });
      const style = document.documentElement.style;
      style.setProperty("--width", `${message.width}px`);
      style.setProperty("--height", `${message.height}px`);
      style.setProperty("--gain", message.gain);
    },
  };
  addEventListener("message", (event) => {
    if (event.source === parent) answers[event.data.kind](event.data);
  });

  // From here on nothing in this document or in one that it makes can become a program, expressions apart.
  for (const program of document.querySelectorAll("script")) program.remove();
  const policy = document.querySelector("meta").cloneNode();
  policy.removeAttribute("charset");
  policy.httpEquiv = "Content-Security-Policy";
  policy.content = "script-src 'unsafe-eval'";
  document.head.append(policy);
  tell({ kind: "ready" });
})();
